#include "resourceinfo/parser/context/MatchTables.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::handleOf;
using Support::matchTable;
using Support::StageTable;
using Support::Table;

class MatchTables : public testing::Test {
  protected:
    int parse( Table const& table, String const& file = "context.json", U32 handlePipeBits = 0 ) {
        ParsedJson const json( table.text() );
        return parseBfTable( parser_.get(), json.json(), file, { BfPipeMask( 1 ), handlePipeBits } );
    }
    /// The record of a table that is kept.
    BfTableInfo record( Table const& table, String const& file = "context.json", U32 handlePipeBits = 0 ) {
        EXPECT_EQ( parse( table, file, handlePipeBits ), 0 );
        return parser_->bfTables().at( parser_->bfTables().size() - 1 );
    }
    void known( U32 handle, U32 size ) {
        BfZelResource resource;
        resource.handle = handle;
        resource.size = size;
        parser_->resourceHandlesIs( handle, resource );
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

TEST_F( MatchTables, PlainTableHasItsNumbersAndNoReferences ) {
    BfTableInfo const acl = record( matchTable( "acl" ).handle( 77 ).size( 512 ) );
    EXPECT_EQ( acl.name, "acl" );
    EXPECT_EQ( acl.handle, 77 );
    EXPECT_EQ( acl.size, 512 );
    EXPECT_EQ( acl.totalEntries, 512 );
    EXPECT_EQ( acl.maxEntries, 512 );
    EXPECT_EQ( acl.maxPrios, 255 );
    EXPECT_EQ( acl.maxPartitions, 0 );
    EXPECT_FALSE( acl.hasActionProfile );
    EXPECT_EQ( acl.maxAdtEntries, 0 );
    EXPECT_EQ( acl.maxSelGroups, 0 );
    EXPECT_EQ( acl.maxSelEntries, 0 );
    EXPECT_EQ( acl.adtHandle, 0 );
    EXPECT_EQ( acl.selHandle, 0 );
    EXPECT_EQ( acl.adtName, "" );
    EXPECT_EQ( acl.selName, "" );
    EXPECT_EQ( acl.logicalPipe, "" );
}

TEST_F( MatchTables, TableWithoutIdleTimeTakesNoHitBits ) {
    BfTableInfo const acl = record( matchTable( "acl" ) );
    EXPECT_FALSE( acl.hitBitSupported );
    EXPECT_EQ( acl.idleTimePrecision, 0 );
    EXPECT_EQ( acl.hitBitSmashOffset, 0 );
    EXPECT_EQ( acl.hitBitSmashLast, 0 );
    EXPECT_EQ( parser_->hitBitSmashEntries(), 0 );
}

TEST_F( MatchTables, TablesOfOtherKindsAreSkipped ) {
    for( Table const& table :
         { Support::conditionTable( "if" ), Support::actionDataTable( "adt" ),
           matchTable( "acl" ).controllable( false ), matchTable( "acl" ).with( "/static_entries", "[ 1 ]" ),
           matchTable( "acl" ).with( "/table_type", "\"match \"" ),
           matchTable( "acl" ).with( "/table_type", "\"Match\"" ) } )
        EXPECT_EQ( parse( table ), 1 ) << table.text();
    EXPECT_TRUE( parser_->bfTables().empty() );
}

TEST_F( MatchTables, EmptyStaticEntriesKeepTheTable ) {
    EXPECT_EQ( parse( matchTable( "acl" ).with( "/static_entries", "[]" ) ), 0 );
}

TEST_F( MatchTables, HitBitRangesFollowOneAnother ) {
    BfTableInfo const first = record( matchTable( "first" ).size( 1000 ).idleTime( 3 ) );
    EXPECT_TRUE( first.hitBitSupported );
    EXPECT_EQ( first.idleTimePrecision, 3 );
    EXPECT_EQ( first.hitBitSmashOffset, 0 );
    EXPECT_EQ( first.hitBitSmashLast, 32 );
    EXPECT_EQ( parser_->hitBitSmashEntries(), 33 );
    record( matchTable( "between, without idle time" ).size( 5000 ) );
    BfTableInfo const second = record( matchTable( "second" ).size( 31 ).idleTime( 6 ) );
    EXPECT_EQ( second.hitBitSmashOffset, 33 );
    EXPECT_EQ( second.hitBitSmashLast, 34 );
    EXPECT_EQ( parser_->hitBitSmashEntries(), 35 );
}

TEST_F( MatchTables, HitBitRangeRoundsDownAndTakesTwoMore ) {
    struct Row {
        U32 size, last, entries;
    };
    for( auto const& [ size, last, entries ] :
         { Row{ 0, 1, 2 }, Row{ 31, 1, 2 }, Row{ 32, 2, 3 }, Row{ 63, 2, 3 }, Row{ 64, 3, 4 } } ) {
        parser_->hitBitSmashEntriesIs( 0 );
        EXPECT_EQ( record( matchTable( "acl" ).size( size ).idleTime( 1 ) ).hitBitSmashLast, last ) << size;
        EXPECT_EQ( parser_->hitBitSmashEntries(), entries ) << size;
    }
}

TEST_F( MatchTables, HitBitNumbersWrapAt32Bits ) {
    parser_->hitBitSmashEntriesIs( 0xFFFFFFFF );
    BfTableInfo const acl = record( matchTable( "acl" ).size( 1000 ).idleTime( 3 ) );
    EXPECT_EQ( acl.hitBitSmashOffset, 0xFFFFFFFF );
    EXPECT_EQ( acl.hitBitSmashLast, 31 );
    EXPECT_EQ( parser_->hitBitSmashEntries(), 32 );
    BfTableInfo const huge = record( matchTable( "huge" ).size( 0xFFFFFFFF ).idleTime( 3 ) );
    EXPECT_EQ( huge.hitBitSmashLast, 32 + 134217727 + 1 );
}

TEST_F( MatchTables, IdleTimeOfALaterStageCountsButTheFirstIsRead ) {
    BfTableInfo const acl =
        record( matchTable( "acl" ).stages( { StageTable().idleTime( 2 ), StageTable().idleTime( 6 ) } ) );
    EXPECT_EQ( acl.idleTimePrecision, 2 );
}

TEST_F( MatchTables, StageTablesBehindTheFirstIdleTimeAreNotLookedAt ) {
    EXPECT_EQ( parse( matchTable( "acl" ).idleTime( 2 ).with( "/match_attributes/stage_tables/-", "null" ) ),
               0 );
}

TEST_F( MatchTables, IdleTimeIsReadFromTheTablesOwnStageTablesWhenItHasThem ) {
    auto const table = matchTable( "acl" ).idleTime( 2 ).with(
        "/stage_tables", R"([ { "idletime_stage_table": { "precision": 5 } } ])" );
    EXPECT_EQ( record( table ).idleTimePrecision, 5 );
}

TEST_F( MatchTables, OwnStageTablesAreNotReadWithoutIdleTime ) {
    EXPECT_EQ( parse( matchTable( "acl" ).with( "/stage_tables", "null" ) ), 0 );
}

TEST_F( MatchTables, EmptyStageTablesBesideTheUnitsGivePrecisionOne ) {
    BfTableInfo const lpm = record( matchTable( "lpm" )
                                        .matchType( "chained_lpm" )
                                        .units( { { StageTable().size( 100 ).idleTime( 3 ) } } )
                                        .with( "/match_attributes/stage_tables", "[]" ) );
    EXPECT_TRUE( lpm.hitBitSupported );
    EXPECT_EQ( lpm.idleTimePrecision, 1 );
    EXPECT_EQ( lpm.hitBitSmashLast, 100 / 32 + 1 );
}

TEST_F( MatchTables, StageTablesBesideTheUnitsGiveThePrecision ) {
    BfTableInfo const lpm = record( matchTable( "lpm" )
                                        .matchType( "chained_lpm" )
                                        .units( { { StageTable().idleTime( 3 ) } } )
                                        .with( "/match_attributes/stage_tables",
                                               R"([ { "idletime_stage_table": { "precision": 6 } } ])" ) );
    EXPECT_EQ( lpm.idleTimePrecision, 6 );
}

TEST_F( MatchTables, EntriesOfUnitsAreThoseOfAllTheirStageTables ) {
    for( char const* type : { "chained_lpm", "algorithmic_tcam" } ) {
        BfTableInfo const table = record( matchTable( "t" ).matchType( type ).size( 7 ).partitions( 4 ).units(
            { { StageTable().size( 100 ), StageTable().size( 20 ) },
              {},
              { StageTable().size( 3 ), StageTable().size( 0 ) } } ) );
        EXPECT_EQ( table.totalEntries, 123 ) << type;
        EXPECT_EQ( table.size, 7 ) << type;
        EXPECT_EQ( table.maxEntries, 7 ) << type;
        EXPECT_EQ( table.maxPartitions, 4 ) << type;
        EXPECT_FALSE( table.hitBitSupported ) << type;
    }
}

TEST_F( MatchTables, IdleTimeOfAnyStageTableOfAnyUnitCounts ) {
    for( int where = 0; where < 3; ++where ) {
        std::vector<std::vector<StageTable>> units{ { StageTable(), StageTable() }, { StageTable() } };
        ( where == 2 ? units[ 1 ][ 0 ] : units[ 0 ][ static_cast<std::size_t>( where ) ] ).idleTime( 3 );
        auto const table = matchTable( "t" )
                               .matchType( "chained_lpm" )
                               .units( units )
                               .with( "/match_attributes/stage_tables", "[]" );
        EXPECT_TRUE( record( table ).hitBitSupported ) << where;
    }
}

TEST_F( MatchTables, EntriesOfUnitsWrapAt32Bits ) {
    BfTableInfo const table =
        record( matchTable( "t" )
                    .matchType( "chained_lpm" )
                    .units( { { StageTable().size( 0xFFFFFFFF ) }, { StageTable().size( 33 ) } } ) );
    EXPECT_EQ( table.totalEntries, 32 );
}

TEST_F( MatchTables, NoUnitsAreNoEntries ) {
    BfTableInfo const table = record( matchTable( "t" ).matchType( "chained_lpm" ).units( {} ) );
    EXPECT_EQ( table.totalEntries, 0 );
}

TEST_F( MatchTables, UnitsOfOtherMatchTypesAreNotRead ) {
    BfTableInfo const table = record( matchTable( "t" ).size( 9 ).with( "/match_attributes/units", "null" ) );
    EXPECT_EQ( table.totalEntries, 9 );
}

TEST_F( MatchTables, PartitionsAreReadWhenThereAndRequiredForAlgorithmicTcamOnly ) {
    EXPECT_EQ( record( matchTable( "a" ).partitions( 1024 ) ).maxPartitions, 1024 );
    EXPECT_EQ( record( matchTable( "b" ) ).maxPartitions, 0 );
    EXPECT_EQ( record( matchTable( "c" ).matchType( "chained_lpm" ).units( {} ) ).maxPartitions, 0 );
}

TEST_F( MatchTables, ActionProfileIsThereWhateverItsValue ) {
    for( char const* value : { "null", "false", "\"\"", "\"profile\"" } )
        EXPECT_TRUE( record( matchTable( "acl" ).with( "/action_profile", value ) ).hasActionProfile )
            << value;
}

TEST_F( MatchTables, LogicalPipeIsTheTablesElseTheFiles ) {
    EXPECT_EQ( record( matchTable( "acl" ), "/x/context_b.json" ).logicalPipe, "b" );
    EXPECT_EQ( record( matchTable( "acl" ), "/x/context.json" ).logicalPipe, "" );
    EXPECT_EQ( record( matchTable( "acl" ).logicalPipe( "own" ), "/x/context_b.json" ).logicalPipe, "own" );
}

TEST_F( MatchTables, IndirectActionDataIsLookedUp ) {
    known( handleOf( "adt" ), 64 );
    BfTableInfo const acl = record( matchTable( "acl" ).actionData( "adt" ) );
    EXPECT_EQ( acl.adtHandle, handleOf( "adt" ) );
    EXPECT_EQ( acl.adtName, "adt" );
    EXPECT_EQ( acl.maxAdtEntries, 64 );
}

TEST_F( MatchTables, ActionDataReferencedOtherwiseIsNot ) {
    for( char const* how : { "direct", "", "Indirect" } ) {
        auto const table =
            matchTable( "acl" ).actionData( "adt", how ).without( "/action_data_table_refs/0/handle" );
        BfTableInfo const acl = record( table );
        EXPECT_EQ( acl.adtHandle, 0 ) << how;
        EXPECT_EQ( acl.maxAdtEntries, 0 ) << how;
        EXPECT_EQ( acl.adtName, "" ) << how;
    }
}

TEST_F( MatchTables, SelectionIsLookedUpAndAlwaysHasTwoGroups ) {
    known( handleOf( "sel" ), 128 );
    BfTableInfo const acl = record( matchTable( "acl" )
                                        .selection( "sel" )
                                        .with( "/max_groups", "17" )
                                        .with( "/selection_table_refs/0/groups", "9" ) );
    EXPECT_EQ( acl.selHandle, handleOf( "sel" ) );
    EXPECT_EQ( acl.selName, "sel" );
    EXPECT_EQ( acl.maxSelEntries, 128 );
    EXPECT_EQ( acl.maxSelGroups, 2 );
}

TEST_F( MatchTables, OnlyTheFirstReferenceIsLookedAt ) {
    known( handleOf( "adt" ), 1 );
    known( handleOf( "sel" ), 2 );
    BfTableInfo const acl = record( matchTable( "acl" )
                                        .actionData( "adt" )
                                        .with( "/action_data_table_refs/-", "null" )
                                        .selection( "sel" )
                                        .with( "/selection_table_refs/-", "null" ) );
    EXPECT_EQ( acl.adtName, "adt" );
    EXPECT_EQ( acl.selName, "sel" );
    auto const secondIndirect = matchTable( "nat" ).actionData( "other", "direct" ).actionData( "adt" );
    EXPECT_EQ( record( secondIndirect ).adtHandle, 0 );
}

TEST_F( MatchTables, EmptyReferencesAreNone ) {
    BfTableInfo const acl = record(
        matchTable( "acl" ).with( "/action_data_table_refs", "[]" ).with( "/selection_table_refs", "[]" ) );
    EXPECT_EQ( acl.adtHandle, 0 );
    EXPECT_EQ( acl.maxSelGroups, 0 );
}

TEST_F( MatchTables, EveryHandleCarriesThePipeBits ) {
    known( 0x20000002, 64 );
    known( 0x20000003, 32 );
    known( 2, 1 );
    BfTableInfo const acl = record( matchTable( "acl" )
                                        .handle( 1 )
                                        .actionData( "adt" )
                                        .with( "/action_data_table_refs/0/handle", "2" )
                                        .selection( "sel" )
                                        .with( "/selection_table_refs/0/handle", "3" ),
                                    "context.json", 0x20000000 );
    EXPECT_EQ( acl.handle, 0x20000001 );
    EXPECT_EQ( acl.adtHandle, 0x20000002 );
    EXPECT_EQ( acl.maxAdtEntries, 64 );
    EXPECT_EQ( acl.selHandle, 0x20000003 );
    EXPECT_EQ( acl.maxSelEntries, 32 );
}

TEST_F( MatchTables, TextsEndAtTheirFirstNul ) {
    known( handleOf( "adt" ), 1 );
    BfTableInfo const acl = record( matchTable( "acl" )
                                        .with( "/name", R"("acl\u0000x")" )
                                        .actionData( "adt" )
                                        .with( "/action_data_table_refs/0/name", R"("adt\u0000x")" )
                                        .with( "/logical_pipe", R"("\u0000x")" ) );
    EXPECT_EQ( acl.name, "acl" );
    EXPECT_EQ( acl.adtName, "adt" );
    EXPECT_EQ( acl.logicalPipe, "" );
}

TEST_F( MatchTables, KeptTablesAreTracedAtLevelSeven ) {
    Support::TraceCollector const trace( "BfResourceParser", { 7 } );
    parse( matchTable( "acl" ) );
    parse( matchTable( "skipped" ).controllable( false ) );
    EXPECT_THAT( trace.texts(), testing::ElementsAre( "Parsed table acl" ) );
}

} // namespace
} // namespace BfResourceInfo
