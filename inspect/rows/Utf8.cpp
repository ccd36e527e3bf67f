#include "inspect/rows/Utf8.h"

#include <algorithm>

#include <fmt/format.h>

namespace Bfri {

namespace {

using Vessa::U8;

std::size_t sequenceLength( U8 lead ) {
    if( lead < 0x80 )
        return 1;
    if( lead < 0xC0 || lead > 0xF7 )
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

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
