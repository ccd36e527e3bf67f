#include "resourceinfo/parser/context/Preprocess.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::handleOf;
using Support::matchTable;
using Support::StageTable;
using testing::ElementsAre;

std::vector<U32> inOrder( Vessa::Queue<U32> const& queue ) { return { queue.begin(), queue.end() }; }

class Preprocess : public testing::Test {
  protected:
    void run( ContextBuilder const& context, U32 handlePipeBits = 0 ) {
        ParsedJson const d( context.text() );
        preprocessContext( parser_.get(), d.json(), { BfPipeMask( 1 ), handlePipeBits } );
    }
    BfZelResource entry( std::string_view name ) const {
        return parser_->resourceHandles( handleOf( name ) );
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

TEST_F( Preprocess, PlacedTableHasAnEntry ) {
    run( ContextBuilder().table( matchTable( "acl" ).size( 512 ).stages( { StageTable().number( 7 ) } ) ) );
    EXPECT_EQ( parser_->resourceHandles().size(), 1 );
    BfZelResource const acl = entry( "acl" );
    EXPECT_EQ( acl.handle, handleOf( "acl" ) );
    EXPECT_EQ( acl.name, "acl" );
    EXPECT_EQ( acl.size, 512 );
    EXPECT_EQ( acl.stageStart, 7 );
    EXPECT_TRUE( acl.statReferences().empty() && acl.meterReferences().empty() &&
                 acl.statefulReferences().empty() );
}

TEST_F( Preprocess, EveryKindOfTableHasAnEntry ) {
    run( ContextBuilder()
             .table( matchTable( "match" ) )
             .table( Support::actionDataTable( "adt" ) )
             .table( Support::selectionTable( "sel" ) )
             .table( Support::statisticsTable( "stat" ) )
             .table( Support::meterTable( "meter" ) )
             .table( Support::wredTable( "wred" ) )
             .table( Support::statefulTable( "reg" ) ) );
    for( char const* name : { "match", "adt", "sel", "stat", "meter", "wred", "reg" } )
        EXPECT_EQ( entry( name ).name, name );
}

TEST_F( Preprocess, ConditionHasNoEntryAndIsNobodysParent ) {
    run( ContextBuilder().table( Support::conditionTable( "if" )
                                     .stages( { StageTable() } )
                                     .statistics( "counter" )
                                     .action( "count", { "counter" } ) ) );
    EXPECT_TRUE( parser_->resourceHandles().empty() );
    EXPECT_TRUE( parser_->parentTable().empty() );
}

TEST_F( Preprocess, TableWithoutStagesHasNoEntryAndIsNobodysParent ) {
    auto const withoutStages = matchTable( "acl" ).stages( {} ).action( "count", { "counter" } );
    auto const withoutInUnits = matchTable( "lpm" ).units( { {}, {} } ).action( "count", { "other" } );
    auto const own = Support::actionDataTable( "adt" ).stages( {} ).action( "count", { "third" } );
    run( ContextBuilder().table( withoutStages ).table( withoutInUnits ).table( own ) );
    EXPECT_TRUE( parser_->resourceHandles().empty() );
    EXPECT_TRUE( parser_->parentTable().empty() );
}

TEST_F( Preprocess, FirstStageIsThatOfTheFirstUnit ) {
    run( ContextBuilder().table(
        matchTable( "lpm" ).units( { { StageTable().number( 4 ), StageTable().number( 1 ), StageTable() },
                                     { StageTable(), StageTable() } } ) ) );
    EXPECT_EQ( entry( "lpm" ).stageStart, 4 );
}

TEST_F( Preprocess, StageListOfTheFirstUnitMustNotBeEmptyWhenAnotherHasStages ) {
    auto const context = ContextBuilder().table( matchTable( "lpm" ).units( { {}, { StageTable() } } ) );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( context ); } ), "index < data_.a.size" );
}

TEST_F( Preprocess, StageNumberKeepsItsLowEightBits ) {
    for( auto const& [ number, expected ] :
         { std::pair( "260", 4 ), std::pair( "255", 255 ), std::pair( "256", 0 ), std::pair( "-1", 255 ),
           std::pair( "9223372036854775807", 255 ), std::pair( "-9223372036854775808", 0 ) } ) {
        run( ContextBuilder().table(
            matchTable( "acl" ).with( "/match_attributes/stage_tables/0/stage_number", number ) ) );
        EXPECT_EQ( entry( "acl" ).stageStart, expected ) << number;
    }
}

TEST_F( Preprocess, ReferencesAreKeptInTheirOrder ) {
    run( ContextBuilder().table( matchTable( "acl" )
                                     .statistics( "s2" )
                                     .statistics( "s1" )
                                     .meter( "m1" )
                                     .stateful( "r1" )
                                     .stateful( "r2" )
                                     .stateful( "r1" ) ) );
    BfZelResource const acl = entry( "acl" );
    EXPECT_THAT( inOrder( acl.statReferences() ), ElementsAre( handleOf( "s2" ), handleOf( "s1" ) ) );
    EXPECT_THAT( inOrder( acl.meterReferences() ), ElementsAre( handleOf( "m1" ) ) );
    EXPECT_THAT( inOrder( acl.statefulReferences() ),
                 ElementsAre( handleOf( "r1" ), handleOf( "r2" ), handleOf( "r1" ) ) );
}

TEST_F( Preprocess, EveryHandleCarriesThePipeBits ) {
    auto const context = ContextBuilder().table(
        matchTable( "acl" ).handle( 5 ).statistics( "s" ).with( "/statistics_table_refs/0/handle", "7" ) );
    run( context, 0x30000000 );
    BfZelResource const acl = parser_->resourceHandles( 0x30000005 );
    EXPECT_EQ( acl.handle, 0x30000005 );
    EXPECT_THAT( inOrder( acl.statReferences() ), ElementsAre( 0x30000007 ) );
    run( context );
    EXPECT_EQ( parser_->resourceHandles( 5 ).handle, 5 );
    EXPECT_THAT( inOrder( parser_->resourceHandles( 5 ).statReferences() ), ElementsAre( 7 ) );
    EXPECT_EQ( parser_->resourceHandles().size(), 2 );
}

TEST_F( Preprocess, LaterTableOfAHandleReplacesTheEntryWhole ) {
    run( ContextBuilder()
             .table( matchTable( "first" ).handle( 5 ).statistics( "s" ) )
             .table( matchTable( "second" ).handle( 5 ).meter( "m" ) ) );
    BfZelResource const entry = parser_->resourceHandles( 5 );
    EXPECT_EQ( entry.name, "second" );
    EXPECT_TRUE( entry.statReferences().empty() );
    EXPECT_EQ( entry.meterReferences().size(), 1 );
}

TEST_F( Preprocess, ResourceOfOneTableHasItAsParent ) {
    run( ContextBuilder().table(
        matchTable( "acl" ).action( "a", { "counter", "meter" } ).action( "b", { "counter" } ) ) );
    EXPECT_EQ( parser_->parentTable( "counter" ), "acl" );
    EXPECT_EQ( parser_->parentTable( "meter" ), "acl" );
    EXPECT_TRUE( parser_->multipleParentTables().empty() );
}

TEST_F( Preprocess, ResourceOfTwoTablesHasNoParent ) {
    run( ContextBuilder()
             .table( matchTable( "acl" ).action( "a", { "counter", "own" } ) )
             .table( matchTable( "nat" ).action( "a", { "counter" } ) ) );
    EXPECT_FALSE( parser_->parentTableHas( "counter" ) );
    EXPECT_EQ( parser_->parentTable( "own" ), "acl" );
    EXPECT_TRUE( parser_->multipleParentTablesHas( "counter" ) );
    EXPECT_EQ( parser_->multipleParentTables().size(), 1 );
}

TEST_F( Preprocess, ParentsAreComparedByName ) {
    run( ContextBuilder()
             .table( matchTable( "acl" ).handle( 1 ).action( "a", { "counter" } ) )
             .table( matchTable( "acl" ).handle( 2 ).action( "a", { "counter" } ) ) );
    EXPECT_EQ( parser_->parentTable( "counter" ), "acl" );
}

TEST_F( Preprocess, ParentsOfAllFilesAreOneRelation ) {
    run( ContextBuilder().table( matchTable( "acl" ).action( "a", { "counter", "own" } ) ) );
    EXPECT_EQ( parser_->parentTable( "counter" ), "acl" );
    run( ContextBuilder().table( matchTable( "nat" ).action( "a", { "counter" } ) ) );
    EXPECT_FALSE( parser_->parentTableHas( "counter" ) );
    EXPECT_EQ( parser_->parentTable( "own" ), "acl" );
}

TEST_F( Preprocess, ResourceOnceOfSeveralTablesNeverGetsAParentAgain ) {
    run( ContextBuilder()
             .table( matchTable( "acl" ).action( "a", { "counter" } ) )
             .table( matchTable( "nat" ).action( "a", { "counter" } ) ) );
    run( ContextBuilder().table( matchTable( "third" ).action( "a", { "counter", "other" } ) ) );
    EXPECT_FALSE( parser_->parentTableHas( "counter" ) );
    EXPECT_EQ( parser_->parentTable( "other" ), "third" );
    EXPECT_TRUE( parser_->multipleParentTablesHas( "counter" ) );
}

TEST_F( Preprocess, TextsEndAtTheirFirstNul ) {
    run( ContextBuilder().table(
        matchTable( "acl" )
            .action( "a", { "counter" } )
            .with( "/name", R"("acl\u0000x")" )
            .with( "/actions/1/indirect_resources/0/resource_name", R"("c\u0000x")" ) ) );
    EXPECT_EQ( entry( "acl" ).name, "acl" );
    EXPECT_EQ( parser_->parentTable( "c" ), "acl" );
}

TEST_F( Preprocess, OptionalMembersMayBeAbsentOrEmpty ) {
    run( ContextBuilder()
             .table( matchTable( "a" ).without( "/actions" ) )
             .table( matchTable( "b" )
                         .with( "/actions", "[]" )
                         .with( "/statistics_table_refs", "[]" )
                         .with( "/meter_table_refs", "[]" )
                         .with( "/stateful_table_refs", "[]" ) )
             .table( matchTable( "c" ).action( "none", {} ).with( "/actions/0/indirect_resources", "[]" ) ) );
    EXPECT_EQ( parser_->resourceHandles().size(), 3 );
    EXPECT_TRUE( parser_->parentTable().empty() );
}

TEST_F( Preprocess, StepsAreTraced ) {
    Support::TraceCollector const trace( "BfResourceParser", { 5, 6, 7 } );
    run( ContextBuilder().table( Support::conditionTable( "if" ) ).table( matchTable( "acl" ) ) );
    std::vector<std::pair<U32, String>> lines;
    for( Zel::TraceLine const& line : trace.lines() )
        lines.emplace_back( line.level, line.text );
    EXPECT_THAT( lines,
                 ElementsAre( std::pair( 5U, "void preprocessContext(BfResourceInfo::BfResourceParser*, "
                                             "rapidjson::Document&, const BfResourceParserContext&)" ),
                              std::pair( 6U, "Preprocessing tables" ),
                              std::pair( 7U, "Preprocessing table if" ),
                              std::pair( 7U, "Preprocessing table acl" ) ) );
}

class ReverseLookUp : public Preprocess {
  protected:
    ReverseLookUp() {
        run( ContextBuilder().table(
            matchTable( "acl" ).statistics( "s1" ).statistics( "s2" ).meter( "m" ).stateful( "r" ) ) );
        run( ContextBuilder().table( matchTable( "nat" ).statistics( "s3" ).meter( "s1" ) ) );
    }
    U32 find( std::string_view kind, U32 handle ) {
        return getTableThatReferences( parser_.get(), kind, handle );
    }
};

TEST_F( ReverseLookUp, FindsTheTableByTheKindOfReference ) {
    EXPECT_EQ( find( "statistics_table_refs", handleOf( "s1" ) ), handleOf( "acl" ) );
    EXPECT_EQ( find( "statistics_table_refs", handleOf( "s2" ) ), handleOf( "acl" ) );
    EXPECT_EQ( find( "statistics_table_refs", handleOf( "s3" ) ), handleOf( "nat" ) );
    EXPECT_EQ( find( "meter_table_refs", handleOf( "m" ) ), handleOf( "acl" ) );
    EXPECT_EQ( find( "meter_table_refs", handleOf( "s1" ) ), handleOf( "nat" ) );
    EXPECT_EQ( find( "stateful_table_refs", handleOf( "r" ) ), handleOf( "acl" ) );
}

TEST_F( ReverseLookUp, HandleThatOnlyAnotherQueueHoldsIsFatal ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    char const* const notFound = "false && \"Table not found\"";
    EXPECT_EQ( Support::conditionOf( [ & ] { find( "meter_table_refs", handleOf( "s3" ) ); } ), notFound );
    EXPECT_EQ( Support::conditionOf( [ & ] { find( "stateful_table_refs", handleOf( "m" ) ); } ), notFound );
    EXPECT_EQ( Support::conditionOf( [ & ] { find( "statistics_table_refs", handleOf( "r" ) ); } ),
               notFound );
}

TEST_F( ReverseLookUp, UnknownKindMatchesNothing ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    for( char const* kind : { "", "statistics_table_ref", "statistics_table_refs ", "METER_TABLE_REFS" } )
        EXPECT_EQ( Support::conditionOf( [ & ] { find( kind, handleOf( "s1" ) ); } ),
                   "false && \"Table not found\"" )
            << kind;
}

TEST_F( ReverseLookUp, MissIsTracedWithTheHandleInDecimal ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    Support::failureOf( [ & ] { find( "meter_table_refs", 0xFFFFFFFF ); } );
    EXPECT_THAT( trace.texts(), ElementsAre( "handle 4294967295 not found" ) );
}

} // namespace
} // namespace BfResourceInfo
