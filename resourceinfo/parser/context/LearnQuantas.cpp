#include "resourceinfo/parser/context/LearnQuantas.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"
#include "zel/Assert.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

void parseLearnQuantas( BfResourceParser* parser, Json d, BfResourceParserContext const& context ) {
    Json const lqs = d[ "learn_quanta" ];
    ZEL_ASSERT( lqs.IsArray() );
    BF_TRACE( 6 ) << "Parsing learn quantas";
    for( Json const lq : lqs ) {
        ZEL_ASSERT( lq.IsObject() );
        parseBfLearnQuantaInfo( parser, lq, context );
    }
}

int parseBfLearnQuantaInfo( BfResourceParser* parser, Json lq, BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfLearnQuantaInfo );
    if( !lq.HasMember( "lq_cfg_type" ) )
        return 1;
    BfLearnQuantaInfo record;
    record.name = lq[ "name" ].GetString();
    record.handle = getHandle( lq, context );
    BF_TRACE( 7 ) << "Parsed lq " << record.name;
    parser->bfLearnQuantaInfosPush( std::move( record ) );
    return 0;
}

void surveyLearnQuanta( Context::LooseJson lq, Context::SurveyedLearnQuanta& result ) {
    result.isOmitted = !lq[ "lq_cfg_type" ].exists();
}
