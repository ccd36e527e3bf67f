#include "resourceinfo/parser/context/Resources.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

BfResourceType stringToResourceType( std::string_view text ) {
    Zel::Operation const operation( Context::Signatures::stringToResourceType );
    for( auto const& [ type, typeText ] : bfResourceTypeTexts ) {
        if( typeText == text )
            return type;
    }
    BF_TRACE( 0 ) << "Unexpected BfResourceType " << text;
    ZEL_ASSERT( false && "Unexpected BfResourceType" );
}

int parseBfResource( BfResourceParser* parser, Json table, BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfResource );
    BfResource record;
    record.name = table[ "name" ].GetString();
    record.handle = getHandle( table, context );
    record.size = table[ "size" ].GetUint();
    record.ingress = table[ "direction" ].GetString() == "ingress";
    auto const [ stages, count ] = Context::findStageTables( table );
    if( count == 0 )
        return 1;
    ZEL_ASSERT( stages->IsArray() );
    Json const stage = ( *stages )[ 0 ];
    record.stages = count;
    record.stageStart = static_cast<U32>( stage[ "stage_number" ].GetInt64() );
    record.type = static_cast<U32>( stringToResourceType( Context::stageTableType( table, stage ) ) );
    BF_TRACE( 7 ) << "Parsed resource " << record.name;
    parser->bfResourcesPush( std::move( record ) );
    return 0;
}

void surveyResource( Context::SurveyedTable const& table, Context::FileSurvey& file ) {
    if( table.direction != "ingress" && table.direction != "egress" )
        file.unknownWords.push_back( { table.index, "direction", table.direction } );
    auto const stage = table.stageTables.empty() ? std::nullopt : table.stageTables.front().stage;
    if( stage && *stage != static_cast<U8>( *stage ) )
        file.truncatedSizes.push_back( { Context::TruncatedSize::Kind::firstStage, table.index, table.name,
                                         *stage, static_cast<U8>( *stage ) } );
}
