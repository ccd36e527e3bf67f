#include "tests/support/NearlyJson.h"

#include "resourceinfo/parser/context/MemberNames.h"

namespace Support {

std::string NearlyJson::text() {
    text_.clear();
    layout_ = static_cast<Layout>( below( 3 ) );
    step_ = below( 3 ) ? 2 * below( 4 ) : below( 30 );
    indent_ = 0;
    value( 4 );
    for( std::size_t damages = below( 3 ); damages > 0 && !text_.empty(); --damages )
        damage();
    return text_;
}

void NearlyJson::value( unsigned depth ) {
    space();
    std::size_t const kind = below( depth == 0 ? 6 : 12 );
    if( kind == 0 )
        text_ += oneOf( { "null", "true", "false" } );
    else if( kind < 3 )
        number();
    else if( kind < 6 )
        string();
    else
        container( kind < 10, depth );
    space();
}

void NearlyJson::number() {
    text_ += oneOf( { "0", "7", "17", "-3", "-0", "65536", "4294967296", "123456789012345678", "1.25", "2e3",
                      "1E-5", "-1.5e+300", "18446744073709551615", "123456789012345678901234567890" } );
}

void NearlyJson::string() {
    text_ += '"';
    for( std::size_t pieces = below( 3 ); pieces > 0; --pieces ) {
        if( below( 2 ) )
            text_.append( below( 40 ), 'a' );
        else
            text_ += oneOf(
                { "\\n", "\\u00e9", "\\ud83d\\ude00", "\xc3\xa9", "/", "\\\"", "\\\\", "{", ",", " : " } );
    }
    text_ += '"';
}

void NearlyJson::container( bool isObject, unsigned depth ) {
    text_ += isObject ? '{' : '[';
    indent_ += step_;
    std::size_t const elements = below( 5 );
    for( std::size_t i = 0; i < elements; ++i ) {
        line();
        std::size_t const begin = text_.size();
        element( isObject, depth );
        for( std::size_t copies = below( 4 ) ? 0 : below( 4 ); copies > 0; --copies )
            again( begin );
        if( i + 1 < elements )
            text_ += ',';
    }
    indent_ -= step_;
    if( elements > 0 || below( 4 ) == 0 )
        line();
    text_ += isObject ? '}' : ']';
}

void NearlyJson::element( bool isObject, unsigned depth ) {
    if( isObject ) {
        name();
        space();
        text_ += ':';
        if( layout_ == Layout::pretty )
            text_ += ' ';
    }
    value( depth - 1 );
}

/// Writes what starts at a place once more, with other digits.
void NearlyJson::again( std::size_t begin ) {
    std::string copy = text_.substr( begin );
    for( char& c : copy ) {
        if( c >= '1' && c <= '9' && below( 2 ) )
            c = static_cast<char>( '1' + below( 9 ) );
    }
    text_ += ',';
    line();
    text_ += copy;
}

void NearlyJson::name() {
    text_ += '"';
    if( below( 3 ) == 0 )
        text_ += Context::memberNames[ below( Context::memberNames.size() ) ];
    else
        text_ += oneOf(
            { "", "x", "y", "nam", "names", "stage_table", "a long name of no member at all", "\\u006eame",
              "a name that is longer than all that is guessed, and then some more of it, to be sure" } );
    text_ += '"';
}

void NearlyJson::space() {
    if( layout_ != Layout::wild || below( 4 ) == 0 )
        return;
    text_ += oneOf( { "", " ", "  ", "\n", "\t\r", "\r\n" } );
    if( below( 6 ) == 0 )
        text_.append( below( 70 ), ' ' );
}

void NearlyJson::line() {
    if( layout_ == Layout::pretty )
        ( text_ += '\n' ).append( indent_, ' ' );
    else
        space();
}

void NearlyJson::damage() {
    std::size_t const place = below( text_.size() );
    switch( below( 5 ) ) {
    case 0:
        text_.resize( place );
        break;
    case 1:
        text_.erase( place, 1 );
        break;
    case 2:
        text_[ place ] = static_cast<char>( below( 256 ) );
        break;
    case 3:
        text_[ place ] = text_[ below( text_.size() ) ];
        break;
    default:
        text_.insert( place, oneOf( { ",", "\"", "{", "}", "[", "]", ":", "\\", "1", " ", "\n" } ) );
    }
}

} // namespace Support
