#include "resourceinfo/parser/context/Actions.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"
#include "zel/Assert.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

int parseBfAction( BfResourceParser* parser, Json table, BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfAction );
    String const tableName( table[ "name" ].GetString() );
    Json const actions = table[ "actions" ];
    ZEL_ASSERT( actions.IsArray() );
    for( Json const action : actions ) {
        ZEL_ASSERT( action.IsObject() );
        BfActionInfo record;
        record.handle = getHandle( action, context );
        record.name = action[ "name" ].GetString();
        record.tableName = tableName;
        BF_TRACE( 7 ) << "Parsed action " << record.name;
        parser->bfActionsPush( std::move( record ) );
    }
    return 0;
}

std::vector<Context::SurveyedAction> surveyActions( Context::LooseJson table,
                                                    BfResourceParserContext const& context ) {
    std::vector<Context::SurveyedAction> actions;
    for( auto const& element : table[ "actions" ].elements() ) {
        Context::LooseJson const action( element );
        actions.push_back( { action[ "name" ].text(), Context::surveyHandle( action, context ) } );
    }
    return actions;
}
