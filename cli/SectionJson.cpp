#include "cli/SectionJson.h"

namespace Bfri {

rapidjson::Document treeOf( ContextText& text ) {
    text.toValue();
    rapidjson::Document tree;
    tree.ParseStream<rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag>( text );
    return tree;
}

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
    std::vector<HeaderBits> headers;
    ContextText text( contextFile );
    text.eachMember( [ & ]( String const& section ) {
        if( section != "flexible_headers" || !headers.empty() )
            return text.skip();
        rapidjson::Document const list = treeOf( text );
        forEachElement( &list, [ & ]( Json const& header ) { headers.push_back( headerBitsOf( header ) ); } );
    } );
    return headers;
}

} // namespace Bfri
