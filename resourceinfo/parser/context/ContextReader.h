#pragma once

// How RapidJSON's reader deals with a context file: the specialisations that it finds for the types of its
// stream and handler. They take the bulk of a file in large steps; everything else is the reader's, the
// syntax of what is dropped included.

#include "resourceinfo/parser/context/ByteScan.h"
#include "resourceinfo/parser/context/DroppedScan.h"
#include "resourceinfo/parser/context/GZFileReadStream.h"
#include "resourceinfo/parser/context/PruningFilter.h"

#include <algorithm>
#include <string_view>

#include <rapidjson/reader.h>

static_assert( RAPIDJSON_MAJOR_VERSION == 1 && RAPIDJSON_MINOR_VERSION == 1 && RAPIDJSON_PATCH_VERSION == 0,
               "ContextReader.h replaces inner functions of RapidJSON 1.1.0's reader. Compare ParseValue, "
               "ParseString, ScanCopyUnescapedString, SkipWhitespace and NumberStream of your reader.h with "
               "those of 1.1.0, and the conditions of your document.h with Json.cpp; run "
               "resourceinfo_context_test and the fuzzers; then name the version here." );

namespace Context {

/// Most of a pretty-printed file is indentation.
inline void SkipWhitespace( GZFileReadStream& stream ) {
    // Most tokens have none between them, or one space: one look tells.
    if( static_cast<unsigned char>( stream.Peek() ) > ' ' )
        return;
    if( stream.Peek() == ' ' )
        stream.Take();
    if( static_cast<unsigned char>( stream.Peek() ) > ' ' )
        return;
    stream.takeTo( ByteScan::noSpace, []( std::string_view ) {} );
}

using ContextReader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator>;

/// A string, name or number of more characters than this is a syntax error: so a file takes memory for what
/// is kept of it and for one such token, whatever is packed into it.
inline constexpr std::size_t longestToken = std::size_t{ 16 } << 20;

/// Thrown in the middle of a token, where the reader has no other way out.
struct TokenTooLong {};

inline void requireLength( std::size_t length ) {
    if( length > longestToken )
        throw TokenTooLong();
}

/// Takes the text of a string that is dropped.
struct NoText {
    void Put( char ) { ++length; }

    std::size_t length = 0;
};

} // namespace Context

namespace rapidjson {

/// Takes the plain characters at the front of a string's rest. Also called after each escape.
template<>
template<>
inline void Context::ContextReader::ScanCopyUnescapedString( Context::GZFileReadStream& stream,
                                                             StackStream<char>& text ) {
    stream.takeTo( ByteScan::noPlain, [ & ]( std::string_view run ) {
        Context::requireLength( text.Length() + run.size() );
        auto* const place = static_cast<char*>( text.Push( static_cast<SizeType>( run.size() ) ) );
        std::copy( run.begin(), run.end(), place );
    } );
}

template<>
template<>
inline void Context::ContextReader::ScanCopyUnescapedString( Context::GZFileReadStream& stream,
                                                             Context::NoText& text ) {
    stream.takeTo( ByteScan::noPlain, [ & ]( std::string_view run ) {
        text.length += run.size();
        Context::requireLength( text.length );
    } );
}

template<>
template<>
inline void Context::ContextReader::ParseString<kParseDefaultFlags>( Context::GZFileReadStream& stream,
                                                                     Context::PruningFilter& filter,
                                                                     bool isKey ) {
    stream.tokenStarts();
    stream.Take(); // the quote
    StackStream<char> text( stack_ );
    ParseStringToStream<kParseDefaultFlags, UTF8<>, UTF8<>>( stream, text );
    if( HasParseError() )
        return;
    auto const length = static_cast<SizeType>( text.Length() - 1 ); // without the NUL after it
    char const* const string = text.Pop();
    if( !( isKey ? filter.Key( string, length, true ) : filter.String( string, length, true ) ) )
        SetParseError( kParseErrorTermination, stream.Tell() );
}

/// A string that is checked alone, or a name in such a value, needs no place in memory.
template<>
template<>
inline void
Context::ContextReader::ParseString<kParseDefaultFlags>( Context::GZFileReadStream& stream,
                                                         [[maybe_unused]] Context::CheckedValue& handler,
                                                         [[maybe_unused]] bool isKey ) {
    stream.tokenStarts();
    stream.Take(); // the quote
    Context::NoText text;
    ParseStringToStream<kParseDefaultFlags, UTF8<>, UTF8<>>( stream, text );
}

/// The characters of a number. The reader adds exponent and decimal places up in an int, which an exponent of
/// ten digits overflows; after nine significant digits, more change no value, and are left out.
template<>
template<>
class GenericReader<UTF8<>, UTF8<>, Context::JsonAllocator>::NumberStream<Context::GZFileReadStream, false,
                                                                          false> {
  public:
    using Ch = char;

    NumberStream( GenericReader&, Context::GZFileReadStream& stream ) : stream_( stream ) {
        stream.tokenStarts();
    }
    Ch Peek() const { return stream_.Peek(); }
    /// Of the number in front of the exponent.
    Ch TakePush() {
        Context::requireLength( ++length_ );
        return stream_.Take();
    }
    /// Signs, the point, and of the exponent.
    Ch Take() {
        Ch const c = TakePush();
        bool const counts = isDigit( c ) && ( c != '0' || exponentDigits_ > 0 );
        if( counts && ++exponentDigits_ == 9 ) {
            while( isDigit( Peek() ) )
                TakePush();
        }
        return c;
    }
    void Push( char ) {}
    std::size_t Tell() const { return stream_.Tell(); }
    std::size_t Length() const { return 0; }
    char const* Pop() const { return nullptr; }

  private:
    static bool isDigit( char c ) { return c >= '0' && c <= '9'; }

    Context::GZFileReadStream& stream_;
    std::size_t length_ = 0;
    unsigned exponentDigits_ = 0;
};

/// A dropped value has a way of its own; its tokens that are not plain are read as values that are checked.
template<>
template<>
inline void Context::ContextReader::ParseValue<kParseDefaultFlags>( Context::GZFileReadStream& stream,
                                                                    Context::DroppedValue& dropped ) {
    Context::CheckedValue& token = dropped;
    auto const parseToken = [ & ]( bool isName ) {
        if( isName )
            ParseString<kParseDefaultFlags>( stream, token, true );
        else
            ParseValue<kParseDefaultFlags>( stream, token );
        return !HasParseError();
    };
    auto const error = Context::DroppedScan( stream, dropped, parseToken ).take();
    if( error != kParseErrorNone )
        SetParseError( error, stream.Tell() );
}

/// The value of a member that is dropped goes to another handler.
template<>
template<>
inline void Context::ContextReader::ParseValue<kParseDefaultFlags>( Context::GZFileReadStream& stream,
                                                                    Context::PruningFilter& filter ) {
    if( filter.dropsNext() ) {
        Context::DroppedValue dropped = filter.dropped();
        return ParseValue<kParseDefaultFlags>( stream, dropped );
    }
    switch( stream.Peek() ) {
    case 'n':
        return ParseNull<kParseDefaultFlags>( stream, filter );
    case 't':
        return ParseTrue<kParseDefaultFlags>( stream, filter );
    case 'f':
        return ParseFalse<kParseDefaultFlags>( stream, filter );
    case '"':
        return ParseString<kParseDefaultFlags>( stream, filter );
    case '{':
        return ParseObject<kParseDefaultFlags>( stream, filter );
    case '[':
        return ParseArray<kParseDefaultFlags>( stream, filter );
    default:
        return ParseNumber<kParseDefaultFlags>( stream, filter );
    }
}

} // namespace rapidjson
