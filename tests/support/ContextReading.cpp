#include "tests/support/ContextReading.h"

#include "resourceinfo/parser/context/ContextReader.h"
#include "resourceinfo/parser/context/DigestingReader.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace Support {

namespace {

using Context::GZFileReadStream;

/// The characters are followed by what looks like more of them.
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

/// Removes the members that no pass asks for, and has a null for all static entries. Looks at the list of
/// names itself.
void prune( rapidjson::Value& value ) {
    if( value.IsArray() )
        std::for_each( value.Begin(), value.End(), prune );
    if( !value.IsObject() )
        return;
    for( auto member = value.MemberBegin(); member < value.MemberEnd(); ) {
        std::string_view const name( member->name.GetString(), member->name.GetStringLength() );
        if( std::find( Context::memberNames.begin(), Context::memberNames.end(), name ) !=
            Context::memberNames.end() ) {
            prune( member->value );
            if( name == "static_entries" && member->value.IsArray() && !member->value.Empty() ) {
                member->value.Erase( member->value.Begin() + 1, member->value.End() );
                member->value[ 0 ].SetNull();
            }
            ++member;
        } else
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

std::ostream& operator<<( std::ostream& os, Reading const& reading ) {
    return os << "error " << reading.error << " at " << reading.offset << ", document " << reading.document;
}

Reading contextReading( Context::InputFile& file, std::size_t bufferSize, Surveying surveying ) {
    auto buffer = bufferFor( bufferSize );
    GZFileReadStream stream( file, buffer );
    Context::JsonDocument document;
    Context::SurveyNotes notes;
    Context::ValueDigests digests;
    rapidjson::ParseResult result;
    auto parse = [ & ]( Context::JsonDocument& ) {
        Context::PruningFilter filter( document, Context::PruningFilter::mostKeptOf( 0 ),
                                       surveying == Surveying::nothing ? nullptr : &notes );
        result = surveying == Surveying::digests ? Context::readWithDigests( stream, filter, digests )
                                                 : Context::ContextReader().Parse( stream, filter );
        return !result.IsError();
    };
    if( surveying != Surveying::nothing )
        notes.readsFrom( stream );
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
