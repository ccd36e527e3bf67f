#pragma once

// What the reader of context files makes of a text, and what RapidJSON's own reader makes of it.

#include "resourceinfo/parser/context/ContextReader.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace Support {

/// What became of a text: a document as compact JSON, or an error with its place.
struct Reading {
    rapidjson::ParseErrorCode error = rapidjson::kParseErrorNone;
    std::size_t offset = 0;
    std::string document;

    bool operator==( Reading const& ) const = default;
    friend std::ostream& operator<<( std::ostream& os, Reading const& reading ) {
        return os << "error " << reading.error << " at " << reading.offset << ", document "
                  << reading.document;
    }
};

template<class Document>
Reading readingOf( rapidjson::ParseResult const& result, Document const& document ) {
    if( result.IsError() )
        return { result.Code(), result.Offset(), "" };
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer( text );
    document.Accept( writer );
    return { rapidjson::kParseErrorNone, 0, { text.GetString(), text.GetSize() } };
}

/// Reads an open file as context files are read, in a buffer of that size.
inline Reading contextReading( Context::InputFile& file, std::size_t bufferSize ) {
    std::vector<char> buffer( bufferSize );
    Context::GZFileReadStream stream( file, buffer );
    Context::JsonDocument document;
    rapidjson::ParseResult result;
    auto parse = [ & ]( Context::JsonDocument& ) {
        Context::PruningFilter filter( document, Context::PruningFilter::mostKeptOf( 0 ) );
        result = Context::ContextReader().Parse( stream, filter );
        return !result.IsError();
    };
    document.Populate( parse );
    return readingOf( result, document );
}

/// Removes the members that no pass asks for. Looks at the list of names itself.
inline void prune( rapidjson::Value& value ) {
    if( value.IsArray() )
        std::for_each( value.Begin(), value.End(), prune );
    if( !value.IsObject() )
        return;
    for( auto member = value.MemberBegin(); member < value.MemberEnd(); ) {
        std::string_view const name( member->name.GetString(), member->name.GetStringLength() );
        if( std::find( Context::memberNames.begin(), Context::memberNames.end(), name ) !=
            Context::memberNames.end() )
            prune( ( member++ )->value );
        else
            member = value.EraseMember( member );
    }
}

/// Reads a text, to its first NUL, as RapidJSON does, without the members that no pass asks for.
inline Reading plainReading( std::string const& text ) {
    rapidjson::Document document;
    rapidjson::ParseResult const result = document.Parse( text.c_str() );
    prune( document );
    return readingOf( result, document );
}

} // namespace Support
