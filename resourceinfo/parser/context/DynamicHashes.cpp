#include "resourceinfo/parser/context/DynamicHashes.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"
#include "zel/Assert.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

void parseDynamicHashCalculations( BfResourceParser* parser, Json d,
                                   BfResourceParserContext const& context ) {
    BF_TRACE( 6 ) << "Parsing dynamic_hash_calculations";
    for( Json const calculation : d[ "dynamic_hash_calculations" ] )
        parseBfDynamicHashInfo( parser, calculation, context );
}

int parseBfDynamicHashInfo( BfResourceParser* parser, Json calculation,
                            BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfDynamicHashInfo );
    String const name( calculation[ "name" ].GetString() );
    BfDynamicHashInfo record;
    record.tableHdl = getHandle( calculation, context );
    Json const fieldList = calculation[ "field_lists" ];
    ZEL_ASSERT( fieldList.Size() == 1 );
    record.fieldListHdl = getHandle( fieldList[ 0 ], context );
    Json const fields = fieldList[ 0 ][ "fields" ];
    U32 const fieldCount = fields.Size();
    ZEL_ASSERT( fieldCount > 0 );
    record.fieldCount = fieldCount;
    record.fieldNames.reserve( fieldCount );
    for( Json const field : fields )
        record.fieldNames.emplace_back( field[ "name" ].GetString() );
    parser->bfDynamicHashInfoIs( name, std::move( record ) );
    return 0;
}
