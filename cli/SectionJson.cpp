#include "cli/SectionJson.h"

#include "cli/ContextText.h"

namespace Bfri {

HeaderBits headerBitsOf( Json const& header ) {
    Json const* const name = memberOf( header, "name" );
    HeaderBits result{ name && name->IsString() ? name->GetString() : "", 0 };
    forEachElement( memberOf( header, "fields" ), [ & ]( Json const& field ) {
        Json const* const slice = memberOf( field, "slice" );
        Json const* const width = slice ? memberOf( *slice, "bit_width" ) : nullptr;
        result.bits += width && width->IsInt64() ? static_cast<std::uint64_t>( width->GetInt64() ) : 0;
    } );
    return result;
}

std::vector<HeaderBits> headersOf( String const& contextFile ) {
    constexpr std::string_view section[] = { "flexible_headers" };
    std::vector<HeaderBits> headers;
    ContextText text( contextFile );
    if( text.skipToName( section ) != 0 )
        return headers;
    rapidjson::Document list;
    list.ParseStream<rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag>( text );
    if( !list.HasParseError() )
        forEachElement( &list, [ & ]( Json const& header ) { headers.push_back( headerBitsOf( header ) ); } );
    return headers;
}

} // namespace Bfri
