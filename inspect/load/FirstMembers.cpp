#include "inspect/load/FirstMembers.h"

#include <algorithm>
#include <charconv>

namespace Bfri {

std::optional<std::int64_t> wholeNumber( String const& literal ) {
    std::int64_t number = 0;
    char const* const end = literal.data() + literal.size();
    auto const [ rest, error ] = std::from_chars( literal.data(), end, number );
    return error == std::errc() && rest == end ? std::optional( number ) : std::nullopt;
}

String FirstMembers::scalar() {
    String text = text_.scalar();
    if( auto const nul = text.find( '\0' ); nul != String::npos )
        text.resize( nul );
    return text;
}

String FirstMembers::literal() {
    bool const isString = text_.toValue() == '"';
    String const text = scalar();
    return isString ? '"' + text + '"' : text;
}

void FirstMembers::walk() {
    constexpr std::size_t deepest = 1000; // no library's document goes deeper
    char const first = text_.toValue();
    if( first == '{' && path_.size() < deepest )
        eachMember( [ this ]( std::string_view ) { walk(); } );
    else if( first == '[' && path_.size() < deepest )
        eachElement( [ this ] { walk(); } );
    else
        text_.skip();
}

String FirstMembers::path() const {
    String text;
    for( Step const& step : path_ ) {
        text += text.empty() ? "" : "/";
        text += step.name.empty() ? std::to_string( step.index ) : String( step.name );
    }
    return text;
}

bool FirstMembers::isAgain( std::string_view name, std::size_t seenBefore ) {
    auto const first = seen_.begin() + static_cast<std::ptrdiff_t>( seenBefore );
    bool const again = std::find( first, seen_.end(), name ) != seen_.end();
    if( again ) {
        String const object = path();
        repeated_.push_back( object + ( object.empty() ? "" : "/" ) + String( name ) );
    }
    return again;
}

} // namespace Bfri
