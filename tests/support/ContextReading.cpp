#include "tests/support/ContextReading.h"

#include "resourceinfo/parser/context/ContextReader.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace Support {

namespace {

using Context::GZFileReadStream;

/// After the characters stands what looks like more of them.
std::vector<char> bufferFor( std::size_t characters ) {
    return std::vector<char>( characters + GZFileReadStream::padding, ' ' );
}

template<class Document>
Reading readingOf( rapidjson::ParseResult const& result, Document const& document ) {
    if( result.IsError() )
        return { result.Code(), result.Offset(), "" };
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer( text );
    document.Accept( writer );
    return { rapidjson::kParseErrorNone, 0, { text.GetString(), text.GetSize() } };
}

/// Removes the members that no pass asks for. Looks at the list of names itself.
void prune( rapidjson::Value& value ) {
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

/// Reads a text as one value, for a handler at a level of nesting.
template<class Handler, class... Arguments>
DroppedReading readingBy( std::string_view text, std::size_t bufferSize, Arguments&... arguments ) {
    TextFile file( text );
    auto buffer = bufferFor( bufferSize );
    GZFileReadStream stream( file, buffer );
    Context::Depth depth;
    Handler handler( depth, arguments... );
    auto const result = Context::ContextReader().Parse( stream, handler );
    return { result.Code(), result.Offset(), stream.Tell(), depth.value() };
}

} // namespace

int TextFile::read( std::span<char> buffer ) {
    std::size_t const count = rest_.copy( buffer.data(), buffer.size() );
    rest_.remove_prefix( count );
    return static_cast<int>( count );
}

std::ostream& operator<<( std::ostream& os, Reading const& reading ) {
    return os << "error " << reading.error << " at " << reading.offset << ", document " << reading.document;
}

Reading contextReading( Context::InputFile& file, std::size_t bufferSize ) {
    auto buffer = bufferFor( bufferSize );
    GZFileReadStream stream( file, buffer );
    Context::JsonDocument document;
    rapidjson::ParseResult result;
    auto parse = [ & ]( Context::JsonDocument& ) {
        Context::PruningFilter filter( document );
        result = Context::ContextReader().Parse( stream, filter );
        return !result.IsError();
    };
    document.Populate( parse );
    return readingOf( result, document );
}

Reading plainReading( std::string const& text ) {
    rapidjson::Document document;
    rapidjson::ParseResult const result = document.Parse( text.c_str() );
    prune( document );
    return readingOf( result, document );
}

std::ostream& operator<<( std::ostream& os, DroppedReading const& reading ) {
    return os << "error " << reading.error << " at " << reading.offset << ", " << reading.taken
              << " characters taken, level " << reading.level;
}

DroppedReading droppedReading( std::string_view text, std::size_t bufferSize ) {
    Context::LineGuesses guesses;
    return readingBy<Context::DroppedValue>( text, bufferSize, guesses );
}

DroppedReading ordinaryReading( std::string_view text, std::size_t bufferSize ) {
    return readingBy<Context::CheckedValue>( text, bufferSize );
}

} // namespace Support
