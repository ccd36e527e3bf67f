#include "resourceinfo/parser/context/ContextDocument.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/ContextReader.h"
#include "resourceinfo/parser/context/DigestingReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include <rapidjson/error/en.h>

namespace Context {

namespace {

/// How many lines end, and how many characters follow the last end, before a character of the file;
/// nothing when the file cannot be read again as far as that.
std::optional<std::pair<std::size_t, std::size_t>> lineAndColumn( InputFile& file, std::size_t offset ) {
    if( !file.rewind() )
        return std::nullopt;
    std::pair<std::size_t, std::size_t> place;
    std::array<char, 4096> buffer;
    while( offset > 0 ) {
        int const result = file.read( std::span( buffer ).first( std::min( offset, buffer.size() ) ) );
        if( result <= 0 )
            return std::nullopt;
        std::string_view const text( buffer.data(), static_cast<std::size_t>( result ) );
        auto const lineEnds = static_cast<std::size_t>( std::count( text.begin(), text.end(), '\n' ) );
        place.first += lineEnds;
        place.second = lineEnds ? text.size() - text.rfind( '\n' ) - 1 : place.second + text.size();
        offset -= text.size();
    }
    return place;
}

/// Where reading has ended, for a reason that the reader has no code for.
constexpr auto tokenTooLong = rapidjson::kParseErrorUnspecificSyntaxError;

rapidjson::ParseResult parsed( GZFileReadStream& stream, PruningFilter& filter, ValueDigests* digests ) {
    try {
        return digests ? readWithDigests( stream, filter, *digests )
                       : ContextReader().Parse( stream, filter );
    } catch( TokenTooLong ) {
        return { tokenTooLong, stream.tokenStart() };
    }
}

String reasonOf( rapidjson::ParseErrorCode code, PruningFilter const& filter ) {
    if( code == tokenTooLong )
        return "Expected a string or number of at most " + std::to_string( longestToken >> 20 ) +
               " MiB, found a longer one.";
    if( code != rapidjson::kParseErrorTermination )
        return rapidjson::GetParseError_En( code );
    if( filter.depth().exceeded() )
        return "More than " + std::to_string( Depth::maximum ) + " levels of nesting.";
    return "More than " + std::to_string( filter.mostKept() >> 20 ) +
           " MiB of values in members that are read.";
}

} // namespace

ContextDocument::ContextDocument( String const& path, InputFile& file, Notes* notes ) {
    place_.kind = "context file";
    place_.file = path;
    lastJsonAccess() = {};
    read( file, notes );
    file.close();
}

ContextDocument::~ContextDocument() { lastJsonAccess() = {}; }

void ContextDocument::read( InputFile& file, Notes* notes ) {
    if( String const reason = file.open( place_.file ); !reason.empty() )
        return unreadable( Problem::open, reason );
    std::array<char, 4096 + GZFileReadStream::padding> buffer{};
    GZFileReadStream stream( file, buffer );
    if( notes )
        notes->places.readsFrom( stream );
    PruningFilter filter( document_, PruningFilter::mostKeptOf( file.sizeOnDisk() ),
                          notes ? &notes->places : nullptr );
    rapidjson::ParseResult result;
    auto parse = [ & ]( JsonDocument& ) {
        result = parsed( stream, filter, notes && notes->digests ? &*notes->digests : nullptr );
        // Damaged gzip shows as text that makes no sense, or after a NUL, long before its checksum does.
        if( !result.IsError() || file.isCompressed() )
            stream.drain();
        return !result.IsError() && !stream.failed();
    };
    document_.Populate( parse );
    if( stream.failed() )
        return unreadable( Problem::read, file.error() );
    if( result.IsError() )
        malformed( file, result.Offset(), reasonOf( result.Code(), filter ) );
}

void ContextDocument::unreadable( Problem problem, String const& reason ) {
    place_.problem = problem;
    place_.reason = reason;
    BF_TRACE( 0 ) << "Can't " << ( problem == Problem::open ? "open" : "read" ) << " context file "
                  << place_.file << ": " << reason;
}

void ContextDocument::malformed( InputFile& file, std::size_t offset, String const& reason ) {
    place_.problem = Problem::syntax;
    auto const place = lineAndColumn( file, offset );
    place_.reason = place ? reason : "character " + std::to_string( offset ) + ": " + reason;
    if( place ) {
        place_.line = place->first + 1;
        place_.column = place->second + 1;
    }
}

void ContextDocument::locate( Zel::InputPlace& place ) const {
    place = place_;
    if( place.problem == Problem::none )
        locateLastAccess( place, document_ );
}

} // namespace Context
