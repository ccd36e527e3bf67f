#pragma once

// JSON values that are written in many ways, and changed in one place.

#include <random>
#include <string>
#include <vector>

namespace Support {

/// Repeats for equal seeds, on every platform.
class Random {
  public:
    explicit Random( unsigned seed ) : engine_( seed ) {}

    std::size_t below( std::size_t bound ) { return engine_() % bound; }
    bool oneIn( std::size_t n ) { return below( n ) == 0; }
    template<class Choices>
    auto const& oneOf( Choices const& choices ) {
        return choices[ below( std::size( choices ) ) ];
    }

  private:
    std::mt19937 engine_;
};

/// A value, free of how it is written.
struct RandomJson {
    enum class Kind { null, no, yes, number, string, array, object };

    Kind kind = Kind::null;
    std::size_t number = 0;            ///< which of the numbers that are typed differently
    std::u32string text;               ///< of a string
    std::vector<std::u32string> names; ///< of an object's members
    std::vector<RandomJson> children;  ///< elements, or members in their order

    bool isContainer() const { return kind == Kind::array || kind == Kind::object; }
    /// The values, this one first.
    std::vector<RandomJson*> all();
};

/// A text like a context file, with the members that are digested part by part.
RandomJson randomContext( Random& random );

/// The one key of a value, not to be read: equal for equal values, different for others.
std::string canonical( RandomJson const& value );

/// A JSON text of the value, with white space, escapes, spellings of numbers and order of members by chance.
/// Members with the same name stay in their order.
std::string written( RandomJson const& value, Random& random );

std::string utf8( std::u32string const& text );

/// The effect of an edit.
enum class Edit { scalar, letter, type, rename, swap, add, remove, container };
inline constexpr std::size_t editKinds = 8;

/// Changes the value in one place, if it has a place for that edit; false when it has none, or when the edit
/// changes nothing.
bool edited( RandomJson& value, Edit edit, Random& random );

} // namespace Support
