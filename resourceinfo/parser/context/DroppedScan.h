#pragma once

// A dropped value's own way through the stream's buffer. Nothing is made of such a value: all there is to do
// is to find the end of each token, and to see that the next one may follow. Tokens that are not plain (cut
// by the buffer's end, strings with escapes, numbers that are no short integers, errors) are the reader's,
// from their first character on, and so is what it says of them.

#include "resourceinfo/parser/context/ByteScan.h"
#include "resourceinfo/parser/context/GZFileReadStream.h"
#include "resourceinfo/parser/context/PruningFilter.h"

#include <array>
#include <string_view>

#include <rapidjson/error/error.h>

namespace Context {

/// The place after a plain token that starts at a place of the buffer; null for all else.
namespace PlainToken {

/// A string without escapes.
template<class Abi = ByteScan::Native>
char const* afterString( char const* quote ) {
    char const* const end = ByteScan::findSure<Abi>( quote + 1, ByteScan::noPlain );
    return *end == '"' ? end + 1 : nullptr;
}

inline bool isDigit( char c ) { return static_cast<unsigned char>( c - '0' ) <= 9; }

/// An integer that fits 64 bits for sure.
inline char const* afterInteger( char const* begin ) {
    char const* const first = *begin == '-' ? begin + 1 : begin;
    char const* end = first;
    while( isDigit( *end ) )
        ++end;
    auto const digits = end - first;
    bool const isShort = digits == 1 || ( digits > 1 && digits <= 18 && *first != '0' );
    bool const goesOn = *end == '\0' || *end == '.' || *end == 'e' || *end == 'E';
    return isShort && !goesOn ? end : nullptr;
}

inline char const* afterScalar( char const* begin ) {
    if( *begin == '"' )
        return afterString( begin );
    std::string_view const text( begin, 5 );
    if( text == "false" )
        return begin + 5;
    return text.starts_with( "true" ) || text.starts_with( "null" ) ? begin + 4 : afterInteger( begin );
}

} // namespace PlainToken

/// Takes one dropped value. `ParseToken( bool isName )` has the reader take the token that comes next, and
/// says whether that went well; if not, the reader knows the error.
template<class ParseToken>
class DroppedScan {
    using Error = rapidjson::ParseErrorCode;

  public:
    DroppedScan( GZFileReadStream& stream, DroppedValue& value, ParseToken parseToken )
        : stream_( stream ), value_( value ), guesses_( value.guesses ), parseToken_( parseToken ) {}

    /// Takes the value that comes next, or all in front of an error. The error, where it is not the reader's.
    Error take() {
        unsigned const outside = value_.level();
        char const* p = stream_.current();
        while( ( p = toScalarEnd( p ) ) && ( p = toNextValue( p, outside ) ) )
            ;
        return error_;
    }

  private:
    // Steps from one place in the buffer to another, of the file's next piece if need be; null ends the way.

    struct Open {
        char end;
        unsigned members;
    };
    Open& open() { return opened_[ value_.level() ]; }

    /// From a value through all that opens there, to the end of the first scalar or empty container.
    char const* toScalarEnd( char const* p ) {
        while( *p == '{' || *p == '[' ) {
            char const end = *p++ == '{' ? '}' : ']';
            if( !value_.StartObject() )
                return fail( p, rapidjson::kParseErrorTermination );
            open() = { end, 0 };
            p = overLineEnd( p, value_.level() );
            if( *p == end )
                return close( p );
            if( end == '}' && !( p = overName( p ) ) )
                return nullptr;
        }
        char const* const end = PlainToken::afterScalar( p );
        return end ? end : byReader( p, false );
    }

    /// From the end of a value through all that ends there, to the next value.
    char const* toNextValue( char const* p, unsigned outside ) {
        while( value_.level() > outside ) {
            char const end = open().end;
            p = overLineEnd( p, value_.level() - 1 );
            if( *p == ',' ) {
                p = overLineEnd( p + 1, value_.level() );
                return end == '}' ? overName( p ) : p;
            }
            if( *p != end )
                return fail( p, end == '}' ? rapidjson::kParseErrorObjectMissCommaOrCurlyBracket
                                           : rapidjson::kParseErrorArrayMissCommaOrSquareBracket );
            p = close( p );
        }
        stream_.takeUpTo( p );
        return nullptr;
    }

    char const* close( char const* end ) { return value_.EndObject( 0 ) ? end + 1 : nullptr; }

    /// From the name of a member to its value.
    char const* overName( char const* const name ) {
        unsigned const level = value_.level();
        unsigned const member = open().members++;
        if( char const* const value = guesses_.afterName( name, level, member ) )
            return value;
        if( *name != '"' )
            return fail( name, rapidjson::kParseErrorObjectMissName );
        std::size_t const piece = stream_.charactersBefore();
        char const* p = PlainToken::afterString( name );
        if( !p && !( p = byReader( name, true ) ) )
            return nullptr;
        p = overSpace( p );
        if( *p != ':' )
            return fail( p, rapidjson::kParseErrorObjectMissColon );
        p = overSpace( p + 1 );
        if( piece == stream_.charactersBefore() )
            guesses_.noteName( name, p, level, member );
        return p;
    }

    /// Over white space, most probably the end of a line and the indentation of the next.
    char const* overLineEnd( char const* const lineEnd, unsigned level ) {
        if( char const* const text = guesses_.afterIndentation( lineEnd, level ) )
            return text;
        char const* const text = overSpace( lineEnd );
        guesses_.noteIndentation( lineEnd, text, level );
        return text;
    }

    char const* overSpace( char const* p ) {
        if( static_cast<unsigned char>( *p ) > ' ' )
            return p;
        stream_.takeUpTo( p );
        stream_.takeTo( ByteScan::noSpace, []( std::string_view ) {} );
        return stream_.current();
    }

    [[gnu::noinline]] char const* byReader( char const* token, bool isName ) {
        stream_.takeUpTo( token );
        return parseToken_( isName ) ? stream_.current() : nullptr;
    }

    [[gnu::noinline]] char const* fail( char const* place, Error error ) {
        stream_.takeUpTo( place );
        error_ = error;
        return nullptr;
    }

    GZFileReadStream& stream_;
    DroppedValue& value_;
    LineGuesses& guesses_;
    ParseToken parseToken_;
    Error error_ = rapidjson::kParseErrorNone;
    std::array<Open, Depth::maximum + 1> opened_; // by level
};

} // namespace Context
