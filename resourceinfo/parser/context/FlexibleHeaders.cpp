#include "resourceinfo/parser/context/FlexibleHeaders.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "zel/Assert.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

namespace {

/// The sum of the fields' bits, modulo 65536.
BfHeaderInfo sizeInBits( Json fields ) {
    std::uint64_t bits = 0;
    for( Json const field : fields )
        bits += static_cast<std::uint64_t>( field[ "slice" ][ "bit_width" ].GetInt64() );
    return BfHeaderInfo( static_cast<U16>( bits ) );
}

} // namespace

void parseFlexibleHeaders( BfResourceParser* parser, Json d, BfResourceParserContext const& context ) {
    if( !d.HasMember( "flexible_headers" ) )
        return;
    BF_TRACE( 6 ) << "Parsing flexible headers";
    for( Json const element : d[ "flexible_headers" ] )
        parseBfHeaderInfo( parser, element, context );
}

int parseBfHeaderInfo( BfResourceParser* parser, Json element, BfResourceParserContext const& ) {
    Zel::Operation const operation( Context::Signatures::parseBfHeaderInfo );
    String const hdrName( element[ "name" ].GetString() );
    BfHeaderInfo header = sizeInBits( element[ "fields" ] );
    ZEL_ASSERT( header.size() % 8 == 0 );
    header = BfHeaderInfo( static_cast<U16>( header.size() / 8 ) );
    if( parser->bfHeadersHas( hdrName ) )
        ZEL_ASSERT( parser->bfHeaders( hdrName ) == header );
    else
        parser->bfHeadersIs( hdrName, header );
    return 0;
}

void surveyHeader( Context::LooseJson element, Context::SurveyedHeader& result, Context::FileSurvey& file ) {
    for( auto const& field : element[ "fields" ].elements() ) {
        auto const bits = Context::LooseJson( field )[ "slice" ][ "bit_width" ].wholeNumber();
        result.bits += static_cast<std::uint64_t>( bits.value_or( 0 ) );
    }
    if( result.bits != static_cast<U16>( result.bits ) )
        file.truncatedSizes.push_back( { Context::TruncatedSize::Kind::header, result.index, result.name,
                                         static_cast<std::int64_t>( result.bits ),
                                         static_cast<U16>( result.bits ) } );
}
