#pragma once

// A JSON file as a reader takes it that asks for members by name, as the library does.

#include "inspect/load/ContextText.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace Bfri {

/// The number that a value's characters are, if it is a whole one of 64 bits.
std::optional<std::int64_t> wholeNumber( String const& literal );

/// Of each object the members that a reader asks for, of several of one name the first; those that come again
/// are noted. Each of these takes the value that comes; one of another type is passed over.
class FirstMembers {
  public:
    /// The name as a text that stays; empty for one that the reader never asks for.
    using KeptName = std::string_view ( * )( std::string_view name );

    FirstMembers( ContextText& text, KeptName keptName ) : text_( text ), keptName_( keptName ) {}

    /// Hands each member's name to `step`, which takes the value.
    template<class Step>
    void eachMember( Step step ) {
        std::size_t const seenBefore = seen_.size();
        text_.eachMember( [ & ]( String const& member ) {
            std::string_view const name = keptName_( member );
            if( name.empty() || isAgain( name, seenBefore ) )
                return text_.skip();
            seen_.push_back( name );
            path_.push_back( { name, 0 } );
            step( name );
            path_.pop_back();
        } );
        seen_.resize( seenBefore );
    }
    /// Calls `step` for each element; it takes the value.
    template<class Step>
    void eachElement( Step step ) {
        path_.push_back( {} );
        text_.eachElement( [ & ] {
            step();
            ++path_.back().index;
        } );
        path_.pop_back();
    }
    /// The text of a string to its first NUL, which is where the library stops, or the characters of a number
    /// or word; empty for a container.
    String scalar();
    /// The same with the quotes of a string.
    String literal();
    /// Goes through all that is in the value, for members that come again.
    void walk();

    /// The way from the first value taken to the one that comes or, within a `step`, to its object:
    /// "tables/3/name".
    String path() const;
    /// The ways to all members that came again.
    std::vector<String> const& repeated() const { return repeated_; }

  private:
    /// Whether a member of that name came before in the same object; noted.
    bool isAgain( std::string_view name, std::size_t seenBefore );

    struct Step {
        std::string_view name = {}; // empty for an element
        std::size_t index = 0;
    };

    ContextText& text_;
    KeptName const keptName_;
    std::vector<std::string_view> seen_; // of all open objects, the innermost last
    std::vector<Step> path_;
    std::vector<String> repeated_;
};

} // namespace Bfri
