#pragma once

// How RapidJSON's reader deals with a context file: the specialisations that it finds for the types of its
// stream and handler. They take the bulk of a file in large steps; everything else is the reader's, the
// syntax of what is dropped included.

#include "resourceinfo/parser/context/ByteScan.h"
#include "resourceinfo/parser/context/GZFileReadStream.h"
#include "resourceinfo/parser/context/PruningFilter.h"

#include <algorithm>
#include <string_view>

#include <rapidjson/reader.h>

/// Most of a pretty-printed file is indentation.
inline void SkipWhitespace( GZFileReadStream& stream ) {
    // Most tokens have none between them, or one space: one look tells.
    if( static_cast<unsigned char>( stream.Peek() ) > ' ' )
        return;
    if( stream.Peek() == ' ' )
        stream.Take();
    if( static_cast<unsigned char>( stream.Peek() ) > ' ' )
        return;
    stream.takeTo( ByteScan::findNoSpace<>, []( std::string_view ) {} );
}

using ContextReader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator>;

/// A string or name of more characters than this is a syntax error at its quote, kept or dropped: so a file
/// takes memory for what is kept of it and for one such string, whatever is packed into it.
inline constexpr std::size_t longestString = std::size_t{ 16 } << 20;

/// Thrown and caught within the reading of a string.
struct StringTooLong {};

inline void requireLength( std::size_t length ) {
    if( length > longestString )
        throw StringTooLong();
}

/// Takes the text of a string that is dropped.
struct NoText {
    void Put( char ) { ++length; }

    std::size_t length = 0;
};

namespace rapidjson {

/// Takes the plain characters at the front of a string's rest. Comes behind each escape, too.
template<>
template<>
inline void ContextReader::ScanCopyUnescapedString( GZFileReadStream& stream, StackStream<char>& text ) {
    stream.takeTo( ByteScan::findNoPlain<>, [ & ]( std::string_view run ) {
        requireLength( text.Length() + run.size() );
        auto* const place = static_cast<char*>( text.Push( static_cast<SizeType>( run.size() ) ) );
        std::copy( run.begin(), run.end(), place );
    } );
}

template<>
template<>
inline void ContextReader::ScanCopyUnescapedString( GZFileReadStream& stream, NoText& text ) {
    stream.takeTo( ByteScan::findNoPlain<>, [ & ]( std::string_view run ) {
        text.length += run.size();
        requireLength( text.length );
    } );
}

template<>
template<>
inline void ContextReader::ParseString<kParseDefaultFlags>( GZFileReadStream& stream, PruningFilter& filter,
                                                            bool isKey ) {
    std::size_t const start = stream.Tell();
    stream.Take(); // the quote
    StackStream<char> text( stack_ );
    try {
        ParseStringToStream<kParseDefaultFlags, UTF8<>, UTF8<>>( stream, text );
    } catch( StringTooLong ) {
        SetParseError( kParseErrorTermination, start );
    }
    if( HasParseError() )
        return;
    auto const length = static_cast<SizeType>( text.Length() - 1 ); // without the NUL behind it
    char const* const string = text.Pop();
    isKey ? filter.Key( string, length, true ) : filter.String( string, length, true );
}

/// A dropped string, or the name of a member in a dropped value, needs no place in memory.
template<>
template<>
inline void ContextReader::ParseString<kParseDefaultFlags>( GZFileReadStream& stream,
                                                            [[maybe_unused]] DroppedValue& handler,
                                                            [[maybe_unused]] bool isKey ) {
    std::size_t const start = stream.Tell();
    stream.Take(); // the quote
    NoText text;
    try {
        ParseStringToStream<kParseDefaultFlags, UTF8<>, UTF8<>>( stream, text );
    } catch( StringTooLong ) {
        SetParseError( kParseErrorTermination, start );
    }
}

/// The value of a member that is dropped goes to a handler that the compiler makes nothing of.
template<>
template<>
inline void ContextReader::ParseValue<kParseDefaultFlags>( GZFileReadStream& stream, PruningFilter& filter ) {
    if( filter.dropsNext() ) {
        DroppedValue dropped = filter.dropped();
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
