#pragma once

// JSON text under construction. Free of the library's own JSON access, so that a test never compares a reader
// with itself.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Support {

/// A JSON value that tests build and damage. Places in it are JSON pointers ("/tables/0/size", "" is the
/// value itself). Scalars keep the text they were given, so any number can be written. Numbers and words are
/// not checked: they may be wrong on purpose.
class JsonTree {
  public:
    /// The value of a JSON text; throws std::invalid_argument when brackets, quotes or separators don't fit.
    JsonTree( char const* json ) : JsonTree( std::string_view( json ) ) {}
    JsonTree( std::string_view json );

    static JsonTree object() { return JsonTree( Kind::object ); }
    static JsonTree array() { return JsonTree( Kind::array ); }
    static JsonTree number( std::int64_t value ) { return scalar( std::to_string( value ) ); }
    static JsonTree boolean( bool value ) { return scalar( value ? "true" : "false" ); }
    /// A JSON string, escaped as it needs.
    static JsonTree string( std::string_view text );

    /// Puts a value at a place: replaces what is there, else adds the last step's member. The step "-"
    /// appends to an array. The path to the place must exist, else std::out_of_range.
    JsonTree& with( std::string_view pointer, JsonTree value );
    /// Puts a member before all others of its object, which must exist, else std::out_of_range. An existing
    /// member with that name stays, after it.
    JsonTree& withFirst( std::string_view pointer, JsonTree value );
    /// Removes the value at a place, which must exist: std::out_of_range.
    JsonTree& without( std::string_view pointer );

    bool has( std::string_view pointer ) const { return find( pointer ) != nullptr; }
    /// The value at a place, which must exist: std::out_of_range.
    JsonTree const& at( std::string_view pointer ) const;
    JsonTree& at( std::string_view pointer );
    std::size_t size() const { return children_.size(); }

    /// The places of all values but the outermost, each before those inside it.
    std::vector<std::string> pointers() const;

    /// Without white space.
    std::string text() const;

  private:
    enum class Kind { scalar, array, object };
    class Parser;

    explicit JsonTree( Kind kind ) : kind_( kind ) {}
    static JsonTree scalar( std::string text );

    JsonTree const* find( std::string_view pointer ) const;
    /// The index of a child; the number of children when there is none of that name or index.
    std::size_t indexOf( std::string_view step ) const;
    void add( std::string_view name, JsonTree value );
    void collect( std::string const& prefix, std::vector<std::string>& pointers ) const;

    Kind kind_ = Kind::scalar;
    std::string scalar_;
    std::vector<std::string> names_; // of the children, empty ones in an array
    std::vector<JsonTree> children_;
};

} // namespace Support
