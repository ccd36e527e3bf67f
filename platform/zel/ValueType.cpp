#include "zel/ValueType.h"

#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace Zel {

namespace {

String escaped( char c ) {
    switch( c ) {
    case '\\':
        return "\\\\";
    case '\'':
        return "\\'";
    case '\n':
        return "\\n";
    case '\t':
        return "\\t";
    case '\r':
        return "\\r";
    default:
        break;
    }
    auto const byte = static_cast<unsigned char>( c );
    if( byte >= 0x20 && byte != 0x7f )
        return String( 1, c );
    char buffer[ 5 ];
    std::snprintf( buffer, sizeof buffer, "\\x%02x", byte );
    return buffer;
}

} // namespace

UnhashableType::UnhashableType( String const& typeName ) : what_( "unhashable type: " + typeName ) {}

UnhashableType::~UnhashableType() = default;

String quotedStrep( String const& text ) {
    String result = "'";
    for( char const c : text )
        result += escaped( c );
    return result + "'";
}

U32 strepAttribute( String const& strep, String const& attribute ) {
    String const marker = "'" + attribute + "': ";
    auto const found = strep.find( marker );
    bool const bare = found == String::npos;
    char const* const begin = strep.data() + ( bare ? 0 : found + marker.size() );
    char const* const end = strep.data() + strep.size();
    U32 value = 0;
    auto const [ stop, error ] = std::from_chars( begin, end, value );
    // A bare number is the whole form; inside a form, an attribute ends at a comma or a brace.
    bool const ended = bare ? stop == end : stop != end && ( *stop == ',' || *stop == '}' );
    if( error != std::errc() || !ended )
        throw std::invalid_argument( "no unsigned attribute '" + attribute + "' in \"" + strep + "\"" );
    return value;
}

} // namespace Zel
