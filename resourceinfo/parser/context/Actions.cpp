#include "resourceinfo/parser/context/Actions.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Tables.h"
#include "zel/Assert.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

int parseBfAction( BfResourceParser* parser, Json table, BfResourceParserContext const& context ) {
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
