#include "cli/report/Html.h"

#include "cli/report/Embedded.h"
#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace Bfri {

namespace {

bool isPlain( char c ) {
    return c >= ' ' && c <= '~' && c != '&' && c != '<' && c != '>' && c != '"' && c != '\'';
}

char const* referenceOf( char c ) {
    switch( c ) {
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
        return nullptr;
    }
}

/// Takes no room, or breaks a line.
bool isInvisible( U32 code ) {
    return ( code >= 0x200B && code <= 0x200D ) || code == 0x2028 || code == 0x2029 || code == 0x2060 ||
           code == 0xFEFF;
}

bool isSafeUnquoted( std::string_view value ) {
    auto const isSafe = []( char c ) {
        return ( c >= 'a' && c <= 'z' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= '0' && c <= '9' ) ||
               std::string_view( "#%.,:;_-()" ).find( c ) != std::string_view::npos;
    };
    return !value.empty() && std::all_of( value.begin(), value.end(), isSafe );
}

/// Elements that HTML closes implicitly, at the parent's end or a neighbour's start.
bool needsNoEndTag( std::string_view tag ) {
    static constexpr std::string_view tags[] = { "li", "td",    "th",    "tr",   "dt",
                                                 "dd", "tbody", "thead", "tfoot" };
    return std::find( std::begin( tags ), std::end( tags ), tag ) != std::end( tags );
}

} // namespace

String escapedForHtml( std::string_view text ) {
    String result;
    while( !text.empty() ) {
        auto const plain =
            static_cast<std::size_t>( std::find_if_not( text.begin(), text.end(), isPlain ) - text.begin() );
        result += text.substr( 0, plain );
        text.remove_prefix( plain );
        if( text.empty() )
            break;
        Character const c = firstCharacter( text );
        if( char const* const reference = referenceOf( text.front() ) )
            result += reference;
        else if( c.kind == Character::Kind::strayByte || c.code < 0x20 ||
                 ( c.code >= 0x7F && c.code < 0xA0 ) )
            result += fmt::format( "\\x{:02x}", c.code );
        else if( c.kind == Character::Kind::surrogate || isHidden( c ) || isInvisible( c.code ) )
            result += fmt::format( "\\u{:04x}", c.code );
        else
            result += text.substr( 0, c.length );
        text.remove_prefix( c.length );
    }
    return result;
}

Attribute titled( std::string_view text ) { return { "title", text, true }; }
Attribute labelled( std::string_view text ) { return { "aria-label", text, true }; }
Attribute ofPath( std::string_view text ) { return { "data-p", text, true }; }

void Html::attribute( Attribute const& attribute ) {
    ( out_ += ' ' ) += attribute.name.view();
    if( syntax_ == Syntax::html && !attribute.isText && attribute.value.empty() )
        return;
    String const value = escapedForHtml( attribute.value );
    if( syntax_ == Syntax::html && isSafeUnquoted( value ) )
        ( out_ += '=' ) += value;
    else
        ( ( out_ += "=\"" ) += value ) += '"';
}

void Html::startTag( Literal tag, Attributes const& attributes ) {
    ( out_ += '<' ) += tag.view();
    for( Attribute const& one : attributes ) {
        if( !one.value.empty() || one.name.view() != "class" )
            attribute( one );
    }
}

Html& Html::open( Literal tag, Attributes const& attributes ) {
    startTag( tag, attributes );
    out_ += '>';
    open_.push_back( tag );
    return *this;
}

Html& Html::close() {
    if( open_.empty() )
        throw std::logic_error( "an element is closed that is not open" );
    std::string_view const tag = open_.back().view();
    open_.pop_back();
    if( syntax_ == Syntax::xml || !needsNoEndTag( tag ) )
        ( ( out_ += "</" ) += tag ) += '>';
    return *this;
}

Html& Html::text( std::string_view text ) {
    out_ += escapedForHtml( text );
    return *this;
}

Html& Html::mayBreak() { return empty( "wbr" ); }

Html& Html::leaf( Literal tag, Attributes const& attributes, std::string_view content ) {
    return open( tag, attributes ).text( content ).close();
}

Html& Html::empty( Literal tag, Attributes const& attributes ) {
    startTag( tag, attributes );
    out_ += syntax_ == Syntax::xml ? "/>" : ">";
    return *this;
}

Html& Html::shape( Literal tag, Attributes const& attributes ) {
    startTag( tag, attributes );
    out_ += " />";
    return *this;
}

Html& Html::doctype() {
    out_ += "<!DOCTYPE html>\n";
    return *this;
}

Html& Html::styleSheet() {
    ( ( out_ += "<style>" ) += embeddedStyleSheet ) += "</style>";
    return *this;
}

Html& Html::script() {
    ( ( out_ += "<script>" ) += embeddedScript ) += "</script>";
    return *this;
}

String Html::take() && {
    if( !open_.empty() )
        throw std::logic_error( "an element is not closed: " + String( open_.back().view() ) );
    return std::move( out_ );
}

OwnText scriptHash() {
    static constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    OwnText text( "" );
    for( std::size_t i = 0; i < embeddedScriptHash.size(); i += 6 ) { // 3 bytes are 4 letters
        std::string_view const digits = embeddedScriptHash.substr( i, 6 );
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
