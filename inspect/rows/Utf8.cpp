#include "inspect/rows/Utf8.h"

#include <algorithm>

#include <fmt/format.h>
#include <unistr.h>

namespace Bfri {

namespace {

using Vessa::U8;

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
    if( c.code < 0x20 || isHidden( c ) )
        return fmt::format( "\\u{:04x}", c.code );
    if( c.code == '"' || c.code == '\\' )
        return String( "\\" ) + static_cast<char>( c.code );
    return {};
}

/// The length of the front that needs no escape whatever it is for: most texts are all front.
std::size_t plainLength( std::string_view text ) {
    auto const isPlain = []( char c ) {
        return c >= ' ' && c <= '~' && c != '"' && c != '\\' && c != '&' && c != '<' && c != '>' && c != '\'';
    };
    return static_cast<std::size_t>( std::find_if_not( text.begin(), text.end(), isPlain ) - text.begin() );
}

} // namespace

Character firstCharacter( std::string_view text ) {
    auto const* const bytes = reinterpret_cast<U8 const*>( text.data() );
    ucs4_t code = 0;
    if( int const length = u8_mbtoucr( &code, bytes, text.size() ); length > 0 )
        return { Character::Kind::regular, code, static_cast<std::size_t>( length ) };
    bool const isSurrogate =
        text.size() > 2 && bytes[ 0 ] == 0xED && bytes[ 1 ] >> 5 == 5 && bytes[ 2 ] >> 6 == 2;
    if( !isSurrogate )
        return { Character::Kind::strayByte, bytes[ 0 ], 1 };
    return { Character::Kind::surrogate, 0xD000U | ( bytes[ 1 ] & 0x3FU ) << 6 | ( bytes[ 2 ] & 0x3FU ), 3 };
}

String escaped( std::string_view text, String ( *escapeOf )( Character const& ) ) {
    String result;
    for( ;; ) {
        std::size_t const plain = plainLength( text );
        result += text.substr( 0, plain );
        text.remove_prefix( plain );
        if( text.empty() )
            return result;
        Character const c = firstCharacter( text );
        String const replacement = escapeOf( c );
        result += replacement.empty() ? text.substr( 0, c.length ) : replacement;
        text.remove_prefix( c.length );
    }
}

bool isHidden( Character const& character ) {
    bool const isC1 = character.code >= 0x80 && character.code < 0xA0;
    return character.kind == Character::Kind::regular && ( isC1 || changesDirection( character.code ) );
}

bool isShowable( std::string_view text ) {
    while( !text.empty() ) {
        Character const c = firstCharacter( text );
        if( c.kind != Character::Kind::regular || c.code < 0x20 || c.code == 0x7F || isHidden( c ) )
            return false;
        text.remove_prefix( c.length );
    }
    return true;
}

String jsonQuoted( std::string_view text ) { return '"' + escaped( text, jsonEscape ) + '"'; }

String quoted( std::string_view name ) {
    String text;
    for( char const c : name )
        text.append( c == '"' || c == '\\' ? "\\" : "" ) += c;
    return '"' + text + '"';
}

} // namespace Bfri
