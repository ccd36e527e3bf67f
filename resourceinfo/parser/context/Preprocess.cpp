#include "resourceinfo/parser/context/Preprocess.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"

using BfResourceInfo::BfResourceParser;
using BfResourceInfo::BfZelResource;
using Context::Json;

namespace {

/// Hands the handle of each element of an optional list of references to `enq`.
template<class Enq>
void forEachReference( Json table, Json::Member referenceKind, BfResourceParserContext const& context,
                       Enq enq ) {
    if( !table.HasMember( referenceKind ) )
        return;
    for( Json const reference : table[ referenceKind ] )
        enq( getHandle( reference, context ) );
}

void addReferences( Json table, BfResourceParserContext const& context, BfZelResource& entry ) {
    forEachReference( table, "statistics_table_refs", context,
                      [ & ]( U32 h ) { entry.statReferencesEnq( h ); } );
    forEachReference( table, "meter_table_refs", context, [ & ]( U32 h ) { entry.meterReferencesEnq( h ); } );
    forEachReference( table, "stateful_table_refs", context,
                      [ & ]( U32 h ) { entry.statefulReferencesEnq( h ); } );
}

void addParent( BfResourceParser* parser, String const& resource, String const& table ) {
    String const* const parent = parser->parentTable().find( resource );
    if( !parent )
        parser->parentTableIs( resource, table );
    else if( *parent != table )
        parser->multipleParentTablesIs( resource );
}

void addParents( BfResourceParser* parser, Json table, String const& tableName ) {
    if( !table.HasMember( "actions" ) )
        return;
    for( Json const action : table[ "actions" ] ) {
        if( !action.HasMember( "indirect_resources" ) )
            continue;
        for( Json const resource : action[ "indirect_resources" ] )
            addParent( parser, String( resource[ "resource_name" ].GetString() ), tableName );
    }
}

void preprocessTable( BfResourceParser* parser, Json table, BfResourceParserContext const& context ) {
    ZEL_ASSERT( table.IsObject() );
    String const name( table[ "name" ].GetString() );
    std::string_view const tableType = table[ "table_type" ].GetString();
    BF_TRACE( 7 ) << "Preprocessing table " << name;
    if( tableType == "condition" )
        return;

    U32 const handle = getHandle( table, context );
    BfZelResource entry;
    entry.handle = handle;
    entry.name = name;
    entry.size = table[ "size" ].GetUint();
    table[ "direction" ].GetString(); // required here, used by later passes
    auto const [ stages, count ] = Context::findStageTables( table );
    if( count == 0 )
        return;
    ZEL_ASSERT( stages->IsArray() );
    Json const stage = ( *stages )[ 0 ];
    entry.stageStart = static_cast<U8>( stage[ "stage_number" ].GetInt64() );
    Context::stageTableType( table, stage ); // required here, used by later passes
    addReferences( table, context, entry );
    addParents( parser, table, name );
    parser->resourceHandlesIs( handle, std::move( entry ) );
}

} // namespace

void preprocessContext( BfResourceParser* parser, Json d, BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::preprocessContext );
    BF_TRACE( 5 ) << Context::Signatures::preprocessContext;
    ZEL_ASSERT( d[ "tables" ].IsArray() );
    BF_TRACE( 6 ) << "Preprocessing tables";
    Context::forEachTable( d, [ & ]( Json table ) { preprocessTable( parser, table, context ); } );
    // The relation spans the files: a name that had several parents in an earlier one gets none here either.
    for( String const& name : parser->multipleParentTables() )
        parser->parentTableDel( name );
}

U32 getTableThatReferences( BfResourceParser* parser, std::string_view referenceKind, U32 handle ) {
    Zel::Operation const operation( Context::Signatures::getTableThatReferences );
    if( auto const referrer = parser->resourceHandles().referrer( referenceKind, handle ) )
        return *referrer;
    BF_TRACE( 0 ) << "handle " << handle << " not found";
    Context::HandleScope const lookedUp( handle );
    ZEL_ASSERT( false && "Table not found" );
}

std::vector<Context::SurveyedReference> surveyReferences( Context::LooseJson table,
                                                          BfResourceParserContext const& context ) {
    static constexpr Json::Member lists[] = { "statistics_table_refs", "meter_table_refs",
                                              "stateful_table_refs", "action_data_table_refs",
                                              "selection_table_refs" };
    std::vector<Context::SurveyedReference> references;
    for( Json::Member const& list : lists ) {
        for( auto const& reference : table[ list ].elements() ) {
            if( auto const handle = Context::surveyHandle( Context::LooseJson( reference ), context ) )
                references.push_back( { list.name, *handle } );
        }
    }
    return references;
}
