#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <cstdio>

namespace Bfri {

namespace {

using Vessa::U32;
using Vessa::U8;

/// What stands at the front of a text.
struct Character {
    enum class Kind { regular, surrogate, strayByte };
    Kind kind;
    U32 code; ///< code point; of a stray byte the byte
    std::size_t length;
};

std::size_t sequenceLength( U8 lead ) {
    if( lead < 0x80 )
        return 1;
    if( lead < 0xC0 || lead > 0xF7 )
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

Character firstCharacter( std::string_view text ) {
    static constexpr U32 smallest[] = { 0, 0, 0x80, 0x800, 0x10000 };
    U8 const lead = static_cast<U8>( text[ 0 ] );
    Character const stray{ Character::Kind::strayByte, lead, 1 };
    std::size_t const length = sequenceLength( lead );
    if( length == 0 || length > text.size() )
        return stray;
    U32 code = length == 1 ? lead : lead & 0x7FU >> length;
    for( std::size_t i = 1; i < length; ++i ) {
        U8 const next = static_cast<U8>( text[ i ] );
        if( ( next & 0xC0 ) != 0x80 )
            return stray;
        code = code << 6 | ( next & 0x3FU );
    }
    if( code < smallest[ length ] || code > 0x10FFFF )
        return stray;
    bool const surrogate = code >= 0xD800 && code <= 0xDFFF;
    return { surrogate ? Character::Kind::surrogate : Character::Kind::regular, code, length };
}

String escape( char const* format, U32 code ) {
    char text[ 16 ];
    std::snprintf( text, sizeof text, format, code );
    return text;
}

/// A control character beyond ASCII.
bool isC1( U32 code ) { return code >= 0x80 && code < 0xA0; }

/// Marks and overrides of the writing direction.
bool changesDirection( U32 code ) {
    return code == 0x061C || code == 0x200E || code == 0x200F || ( code >= 0x202A && code <= 0x202E ) ||
           ( code >= 0x2066 && code <= 0x2069 );
}

String jsonEscape( Character const& c ) {
    if( c.kind != Character::Kind::regular )
        return "\\ufffd"; // whatever else would be lost on some readers, and refused by others
    if( c.code == '\n' )
        return "\\n";
    if( c.code < 0x20 || isC1( c.code ) || changesDirection( c.code ) )
        return escape( "\\u%04x", c.code );
    if( c.code == '"' || c.code == '\\' )
        return String( "\\" ) + static_cast<char>( c.code );
    return {};
}

String terminalEscape( Character const& c ) {
    if( c.kind == Character::Kind::strayByte || c.code < 0x20 || c.code == 0x7F )
        return escape( "\\x%02x", c.code );
    if( c.kind == Character::Kind::surrogate || isC1( c.code ) || changesDirection( c.code ) )
        return escape( "\\u%04x", c.code );
    return {};
}

/// The text with every character for which there is an escape replaced by it.
String escaped( std::string_view text, String ( *escapeOf )( Character const& ) ) {
    String result;
    while( !text.empty() ) {
        Character const c = firstCharacter( text );
        String const replacement = escapeOf( c );
        result += replacement.empty() ? text.substr( 0, c.length ) : replacement;
        text.remove_prefix( c.length );
    }
    return result;
}

} // namespace

String jsonQuoted( std::string_view text ) { return '"' + escaped( text, jsonEscape ) + '"'; }

String escapeForTerminal( std::string_view text ) { return escaped( text, terminalEscape ); }

} // namespace Bfri
