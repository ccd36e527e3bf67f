#include "cli/terminal/Characters.h"

#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <memory>
#include <unigbrk.h>
#include <uninorm.h>
#include <unistr.h>
#include <uniwidth.h>

namespace Bfri {

namespace {

uint8_t const* units( std::string_view text ) { return reinterpret_cast<uint8_t const*>( text.data() ); }

bool isAscii( std::string_view text ) {
    return std::all_of( text.begin(), text.end(), []( char c ) { return ( c & 0x80 ) == 0; } );
}

String escapeOf( Character const& c ) {
    if( c.kind == Character::Kind::strayByte || c.code < 0x20 || c.code == 0x7F )
        return fmt::format( "\\x{:02x}", c.code );
    if( c.kind == Character::Kind::surrogate || isHidden( c ) )
        return fmt::format( "\\u{:04x}", c.code );
    return {};
}

/// The character that a text begins with, marks included.
std::string_view firstCluster( std::string_view text ) {
    uint8_t const* const end = u8_grapheme_next( units( text ), units( text ) + text.size() );
    return text.substr( 0, static_cast<std::size_t>( end - units( text ) ) );
}

/// The character of an escape at the front of a text, and how long the escape is; nothing where there is
/// none.
struct Unescaped {
    String character = {};
    std::size_t length = 0;
};

Unescaped unescapedFront( std::string_view text ) {
    bool const isByte = text.starts_with( "\\x" );
    std::size_t const length = isByte ? 4 : 6;
    if( ( !isByte && !text.starts_with( "\\u" ) ) || text.size() < length )
        return {};
    unsigned code = 0;
    auto const [ rest, error ] = std::from_chars( text.data() + 2, text.data() + length, code, 16 );
    if( error != std::errc() || rest != text.data() + length )
        return {};
    if( isByte )
        return { String( 1, static_cast<char>( code ) ), length };
    // Encoded by hand, as a lone surrogate is no character to the library.
    if( code < 0x800 )
        return { { static_cast<char>( 0xC0 | code >> 6 ), static_cast<char>( 0x80 | ( code & 0x3F ) ) },
                 length };
    return { { static_cast<char>( 0xE0 | code >> 12 ), static_cast<char>( 0x80 | ( code >> 6 & 0x3F ) ),
               static_cast<char>( 0x80 | ( code & 0x3F ) ) },
             length };
}

String unescaped( std::string_view text ) {
    String result;
    while( !text.empty() ) {
        auto const [ character, length ] = unescapedFront( text );
        result += length > 0 ? character : String( 1, text.front() );
        text.remove_prefix( std::max<std::size_t>( length, 1 ) );
    }
    return result;
}

/// The text itself where it is no valid UTF-8.
String normalized( uninorm_t form, String const& text ) {
    if( u8_check( units( text ), text.size() ) )
        return text;
    std::size_t length = 0;
    std::unique_ptr<uint8_t, decltype( &free )> const result(
        u8_normalize( form, units( text ), text.size(), nullptr, &length ), free );
    return result ? String( reinterpret_cast<char const*>( result.get() ), length ) : text;
}

} // namespace

String escapeForTerminal( std::string_view text ) { return escaped( text, escapeOf ); }

std::size_t width( std::string_view shownText ) {
    if( isAscii( shownText ) )
        return shownText.size();
    return static_cast<std::size_t>( u8_width( units( shownText ), shownText.size(), "UTF-8" ) );
}

String firstColumns( std::string_view shownText, std::size_t columns ) {
    std::size_t end = 0;
    for( std::size_t taken = 0; end < shownText.size(); ) {
        auto const cluster = firstCluster( shownText.substr( end ) );
        taken += width( cluster );
        if( taken > columns )
            break;
        end += cluster.size();
    }
    return String( shownText.substr( 0, end ) );
}

String lastColumns( std::string_view shownText, std::size_t columns ) {
    for( std::size_t left = width( shownText ); left > columns; ) {
        auto const cluster = firstCluster( shownText );
        left -= width( cluster );
        shownText.remove_prefix( cluster.size() );
    }
    return String( shownText );
}

std::vector<String> readingsOf( String const& word ) {
    std::vector<String> readings{ word };
    String const bytes = unescaped( word );
    for( String const& reading :
         { bytes, normalized( UNINORM_NFC, bytes ), normalized( UNINORM_NFD, bytes ) } ) {
        if( std::find( readings.begin(), readings.end(), reading ) == readings.end() )
            readings.push_back( reading );
    }
    return readings;
}

} // namespace Bfri
