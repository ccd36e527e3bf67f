#include "report/Html.h"

#include "inspect/rows/Utf8.h"

#include <charconv>

namespace Bfri {

namespace {

/// Takes no room, or breaks a line.
bool isInvisible( U32 code ) {
    return ( code >= 0x200B && code <= 0x200D ) || code == 0x2028 || code == 0x2029 || code == 0x2060 ||
           code == 0xFEFF;
}

String referenceOf( Character const& c ) {
    switch( c.code ) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        break;
    }
    if( c.kind == Character::Kind::strayByte || c.code < 0x20 || ( c.code >= 0x7F && c.code < 0xA0 ) )
        return fmt::format( "\\x{:02x}", c.code );
    if( c.kind == Character::Kind::surrogate || isHidden( c ) || isInvisible( c.code ) )
        return fmt::format( "\\u{:04x}", c.code );
    return {};
}

} // namespace

String escapedForHtml( std::string_view text ) { return escaped( text, referenceOf ); }

OwnText scriptHashInBase64() {
    static constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string_view const hash = scriptHash;
    OwnText text;
    for( std::size_t i = 0; i < hash.size(); i += 6 ) { // 3 bytes are 4 letters
        std::string_view const digits = hash.substr( i, 6 );
        U32 bits = 0;
        std::from_chars( digits.data(), digits.data() + digits.size(), bits, 16 );
        bits <<= ( 6 - digits.size() ) * 4;
        for( std::size_t letter = 0; letter < 4; ++letter )
            text += own( "{}", letter * 6 < digits.size() * 4 ? letters[ bits >> ( 18 - 6 * letter ) & 63U ]
                                                              : '=' );
    }
    return text;
}

} // namespace Bfri
