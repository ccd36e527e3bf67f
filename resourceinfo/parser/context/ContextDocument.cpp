#include "resourceinfo/parser/context/ContextDocument.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/ContextReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <utility>

#include <rapidjson/error/en.h>

namespace Context {

namespace {

/// How many lines end, and how many characters stand behind the last end, before a character of the file;
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

/// "line 3, column 14: REASON" for a character of the file; "character 40: REASON" when the file cannot be
/// read again.
String syntaxError( InputFile& file, std::size_t offset, String const& reason ) {
    auto const place = lineAndColumn( file, offset );
    if( !place )
        return "character " + std::to_string( offset ) + ": " + reason;
    return "line " + std::to_string( place->first + 1 ) + ", column " + std::to_string( place->second + 1 ) +
           ": " + reason;
}

/// Where reading has ended, for a reason that the reader has no code for.
constexpr auto tokenTooLong = rapidjson::kParseErrorUnspecificSyntaxError;

rapidjson::ParseResult parsed( GZFileReadStream& stream, PruningFilter& filter, ValueDigests* digests ) {
    try {
        if( !digests )
            return ContextReader().Parse( stream, filter );
        DigestingFilter digesting( filter, *digests );
        return ContextReader().Parse( stream, digesting );
    } catch( TokenTooLong ) {
        return { tokenTooLong, stream.tokenStart() };
    }
}

String reasonOf( rapidjson::ParseErrorCode code, Depth const& depth ) {
    if( code == tokenTooLong )
        return "Expected a string or number of at most " + std::to_string( longestToken >> 20 ) +
               " MiB, found a longer one.";
    if( code != rapidjson::kParseErrorTermination )
        return rapidjson::GetParseError_En( code );
    if( depth.exceeded() )
        return "More than " + std::to_string( Depth::maximum ) + " levels of nesting.";
    return "More than " + std::to_string( PruningFilter::mostKept >> 20 ) +
           " MiB of values in members that are read.";
}

} // namespace

ContextDocument::ContextDocument( String const& path, InputFile& file, Notes* notes ) : path_( path ) {
    lastJsonAccess() = {};
    read( file, notes );
    file.close();
}

ContextDocument::~ContextDocument() { lastJsonAccess() = {}; }

void ContextDocument::read( InputFile& file, Notes* notes ) {
    if( String const reason = file.open( path_ ); !reason.empty() )
        return unreadable( "open", reason );
    std::array<char, 4096> buffer;
    GZFileReadStream stream( file, buffer );
    if( notes )
        notes->places.readsFrom( stream );
    PruningFilter filter( document_, notes ? &notes->places : nullptr );
    rapidjson::ParseResult result;
    auto parse = [ & ]( JsonDocument& ) {
        result = parsed( stream, filter, notes && notes->digests ? &*notes->digests : nullptr );
        // Damaged gzip shows as text that makes no sense, or behind a NUL, long before its checksum does.
        if( !result.IsError() || file.isCompressed() )
            stream.drain();
        return !result.IsError() && !stream.failed();
    };
    document_.Populate( parse );
    if( stream.failed() )
        return unreadable( "read", file.error() );
    if( result.IsError() )
        problem_ = syntaxError( file, result.Offset(), reasonOf( result.Code(), filter.depth() ) );
}

void ContextDocument::unreadable( char const* what, String const& reason ) {
    problem_ = String( "can't " ) + what + " it: " + reason;
    BF_TRACE( 0 ) << "Can't " << what << " context file " << path_ << ": " << reason;
}

void ContextDocument::describe( std::ostream& os ) const {
    os << "context file " << path_;
    if( problem_.empty() )
        describeLastAccess( os, document_ );
    else
        os << ": " << problem_;
}

} // namespace Context
