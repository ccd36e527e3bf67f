#include "resourceinfo/parser/context/MatchTables.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "resourceinfo/parser/context/Tables.h"

using BfResourceInfo::BfResourceParser;
using Context::Json;

namespace {

bool isRecorded( Json table ) {
    if( table[ "table_type" ].GetString() != "match" || !table[ "is_resource_controllable" ].GetBool() )
        return false;
    if( !table.HasMember( "static_entries" ) )
        return true;
    ZEL_ASSERT( table[ "static_entries" ].IsArray() );
    return table[ "static_entries" ].Size() == 0;
}

bool hasIdleTime( Json stageTable ) { return stageTable.HasMember( "idletime_stage_table" ); }

/// Stops at the first stage table with idle time: those after it are not looked at.
bool anyHasIdleTime( Json stageTables ) {
    for( Json const stageTable : stageTables ) {
        if( hasIdleTime( stageTable ) )
            return true;
    }
    return false;
}

void readAlgorithmicLpm( Json matchAttributes, BfTableInfo& record ) {
    Json const atcamMatchAttributes = matchAttributes[ "atcam_table" ][ "match_attributes" ];
    // An array has no member "units": such a table always ends here. Compilers mark them not controllable.
    ZEL_ASSERT( atcamMatchAttributes.IsArray() );
    for( Json const element : atcamMatchAttributes[ "units" ] ) {
        Json const unit = element[ "match_attributes" ];
        ZEL_ASSERT( unit[ "stage_tables" ].IsArray() );
        record.hitBitSupported |= anyHasIdleTime( unit[ "stage_tables" ] );
    }
    record.totalEntries = record.size;
}

void readUnits( Json matchAttributes, BfTableInfo& record ) {
    ZEL_ASSERT( matchAttributes[ "units" ].IsArray() );
    for( Json const element : matchAttributes[ "units" ] ) {
        Json const unit = element[ "match_attributes" ];
        ZEL_ASSERT( unit[ "stage_tables" ].IsArray() );
        for( Json const stageTable : unit[ "stage_tables" ] ) {
            record.totalEntries += stageTable[ "size" ].GetUint();
            record.hitBitSupported |= hasIdleTime( stageTable );
        }
    }
}

void readStageTables( Json matchAttributes, BfTableInfo& record ) {
    ZEL_ASSERT( matchAttributes[ "stage_tables" ].IsArray() );
    record.hitBitSupported = anyHasIdleTime( matchAttributes[ "stage_tables" ] );
    record.totalEntries = record.size;
}

/// Whether the table has hit bits, and the entries that their range is sized for.
void readHitBitSupport( Json matchAttributes, std::string_view matAttrMatchType, BfTableInfo& record ) {
    if( matAttrMatchType == "algorithmic_lpm" )
        readAlgorithmicLpm( matchAttributes, record );
    else if( matAttrMatchType == "chained_lpm" || matAttrMatchType == "algorithmic_tcam" )
        readUnits( matchAttributes, record );
    else
        readStageTables( matchAttributes, record );
}

U32 maxPartitions( Json matchAttributes, std::string_view matAttrMatchType ) {
    if( matchAttributes.HasMember( "number_partitions" ) )
        return matchAttributes[ "number_partitions" ].GetUint();
    ZEL_ASSERT( matAttrMatchType != "algorithmic_tcam" );
    return 0;
}

U32 idleTimePrecision( Json table, Json matchAttributes ) {
    bool const ownStages = table.HasMember( "stage_tables" );
    Json const stageTables = ownStages ? table[ "stage_tables" ] : matchAttributes[ "stage_tables" ];
    if( !ownStages && stageTables.Size() == 0 )
        return 1;
    return stageTables[ 0 ][ "idletime_stage_table" ][ "precision" ].GetUint();
}

/// Takes the table's range in the hit-bit space that all tables of all files share.
void takeHitBits( BfResourceParser* parser, BfTableInfo& record ) {
    U32 const offset = parser->hitBitSmashEntries();
    record.hitBitSmashOffset = offset;
    record.hitBitSmashLast = offset + record.totalEntries / 32 + 1;
    parser->hitBitSmashEntriesIs( record.hitBitSmashLast + 1 );
}

/// The first element of an optional list of references; none when it is absent or empty.
std::optional<Json> firstReference( Json table, Json::Member referenceKind ) {
    if( !table.HasMember( referenceKind ) || table[ referenceKind ].Size() == 0 )
        return std::nullopt;
    return table[ referenceKind ][ 0 ];
}

void readActionData( BfResourceParser* parser, Json table, BfResourceParserContext const& context,
                     BfTableInfo& record ) {
    auto const reference = firstReference( table, "action_data_table_refs" );
    if( !reference || ( *reference )[ "how_referenced" ].GetString() != "indirect" )
        return;
    U32 const adtTblHdl = getHandle( *reference, context );
    record.adtHandle = adtTblHdl;
    record.adtName = ( *reference )[ "name" ].GetString();
    if( !parser->resourceHandlesHas( adtTblHdl ) )
        BF_TRACE( 0 ) << "Can't find action tbl hdl " << adtTblHdl;
    Context::HandleScope const lookedUp( adtTblHdl );
    ZEL_ASSERT( parser->resourceHandlesHas( adtTblHdl ) );
    record.maxAdtEntries = parser->resourceHandles().find( adtTblHdl )->size;
}

void readSelection( BfResourceParser* parser, Json table, BfResourceParserContext const& context,
                    BfTableInfo& record ) {
    auto const reference = firstReference( table, "selection_table_refs" );
    if( !reference )
        return;
    U32 const selTblHdl = getHandle( *reference, context );
    record.selHandle = selTblHdl;
    record.selName = ( *reference )[ "name" ].GetString();
    if( !parser->resourceHandlesHas( selTblHdl ) )
        BF_TRACE( 0 ) << "Can't find sel tbl hdl " << selTblHdl;
    Context::HandleScope const lookedUp( selTblHdl );
    ZEL_ASSERT( parser->resourceHandlesHas( selTblHdl ) );
    record.maxSelEntries = parser->resourceHandles().find( selTblHdl )->size;
    record.maxSelGroups = 2;
}

} // namespace

int parseBfTable( BfResourceParser* parser, Json table, String const& contextFile,
                  BfResourceParserContext const& context ) {
    Zel::Operation const operation( Context::Signatures::parseBfTable );
    BfTableInfo record;
    record.name = table[ "name" ].GetString();
    if( !isRecorded( table ) )
        return 1;
    record.handle = getHandle( table, context );
    record.size = table[ "size" ].GetUint();
    record.maxEntries = record.size;
    record.maxPrios = 255;
    Json const matchAttributes = table[ "match_attributes" ];
    std::string_view const matAttrMatchType = matchAttributes[ "match_type" ].GetString();
    readHitBitSupport( matchAttributes, matAttrMatchType, record );
    record.maxPartitions = maxPartitions( matchAttributes, matAttrMatchType );
    if( record.hitBitSupported )
        record.idleTimePrecision = idleTimePrecision( table, matchAttributes );
    record.hasActionProfile = table.HasMember( "action_profile" );
    record.logicalPipe = getLogicalPipe( table, contextFile );
    readActionData( parser, table, context, record );
    readSelection( parser, table, context, record );
    if( record.hitBitSupported )
        takeHitBits( parser, record ); // only now: a table that fails takes none
    parser->bfTablesPush( std::move( record ) );
    BF_TRACE( 7 ) << "Parsed table " << table[ "name" ].GetString();
    return 0;
}

void surveyBfTable( Context::LooseJson table, Context::SurveyedTable& result ) {
    result.isControllable = !table[ "is_resource_controllable" ].isFalse();
    result.isOmitted = result.type == "match" && ( !result.isControllable || result.staticEntries > 0 );
}
