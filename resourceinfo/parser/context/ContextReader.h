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

/// Takes the text of a string that is dropped.
struct NoText {
    void Put( char ) {}
};

namespace rapidjson {

/// Takes the plain characters at the front of a string's rest.
template<>
template<>
inline void Reader::ScanCopyUnescapedString( GZFileReadStream& stream, StackStream<char>& text ) {
    stream.takeTo( ByteScan::findNoPlain<>, [ & ]( std::string_view run ) {
        auto* const place = static_cast<char*>( text.Push( static_cast<SizeType>( run.size() ) ) );
        std::copy( run.begin(), run.end(), place );
    } );
}

template<>
template<>
inline void Reader::ScanCopyUnescapedString( GZFileReadStream& stream, NoText& ) {
    stream.takeTo( ByteScan::findNoPlain<>, []( std::string_view ) {} );
}

/// A dropped string, or the name of a member in a dropped value, needs no place in memory.
template<>
template<>
inline void Reader::ParseString<kParseDefaultFlags>( GZFileReadStream& stream,
                                                     [[maybe_unused]] DroppedValue& handler,
                                                     [[maybe_unused]] bool isKey ) {
    stream.Take(); // the quote
    NoText text;
    ParseStringToStream<kParseDefaultFlags, UTF8<>, UTF8<>>( stream, text );
}

/// The value of a member that is dropped goes to a handler that the compiler makes nothing of.
template<>
template<>
inline void Reader::ParseValue<kParseDefaultFlags>( GZFileReadStream& stream, PruningFilter& filter ) {
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
