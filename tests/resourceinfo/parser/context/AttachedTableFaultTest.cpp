#include "resourceinfo/parser/context/AttachedTables.h"
#include "resourceinfo/parser/context/ContextFile.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"

#include <gmock/gmock.h>

// Which step a table of the second pass goes to, and every fatal condition of the steps, in the order in
// which they read.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::handleOf;
using Support::matchTable;
using Support::Table;
using testing::ElementsAre;

char const* const noSuchTable = "false && \"Table not found\"";

/// A parser that knows a table which references a counter, a meter and a register, "x".
Zel::Ptr<BfResourceParser> parserWithOwner() {
    auto const parser = emptyParser();
    BfZelResource owner;
    owner.handle = 5;
    owner.name = "acl";
    owner.statReferencesEnq( handleOf( "x" ) );
    owner.meterReferencesEnq( handleOf( "x" ) );
    owner.statefulReferencesEnq( handleOf( "x" ) );
    parser->resourceHandlesIs( owner.handle, owner );
    return parser;
}

using Step = std::function<int( BfResourceParser*, Json )>;

void expectAttachedFaults( Table const& table, std::vector<Fault> const& faults, Step const& step ) {
    expectFaults( table.tree(), faults, [ & ]( Json json ) {
        auto const parser = parserWithOwner();
        try {
            EXPECT_EQ( step( parser.get(), json ), 0 );
        } catch( ... ) {
            EXPECT_TRUE( parser->bfCounters().empty() && parser->bfMeters().empty() &&
                         parser->bfWreds().empty() && parser->bfRegisterInfos().empty() )
                << "nothing is stored for a table that fails";
            throw;
        }
    } );
}

TEST( AttachedTableFaults, OfACounter ) {
    auto const table = Support::statisticsTable( "x" ).referenced( "direct" ).logicalPipe( "a" );
    expectAttachedFaults(
        table,
        {
            { "", "null", noObject },
            { "/name", removed, noMember },
            { "/name", "null", noString },
            { "/name", "7", noString },
            { "/handle", removed, noMember },
            { "/handle", "null", noUnsigned },
            { "/handle", "-1", noUnsigned },
            { "/handle", "4294967296", noUnsigned },
            { "/size", removed, noMember },
            { "/size", "null", noUnsigned },
            { "/size", "-1", noUnsigned },
            { "/size", "\"1\"", noUnsigned },
            { "/how_referenced", removed, noMember },
            { "/how_referenced", "null", noString },
            { "/how_referenced", "true", noString },
            { "/handle", "1", noSuchTable },
            { "/statistics_type", removed, noMember },
            { "/statistics_type", "null", noString },
            { "/statistics_type", "[]", noString },
            { "/logical_pipe", "null", noString },
            { "/logical_pipe", "{}", noString },
        },
        []( BfResourceParser* p, Json json ) { return parseBfTableCounterInfo( p, json, "", {} ); } );
}

class MeterFaults : public testing::TestWithParam<char const*> {};

TEST_P( MeterFaults, InTheirOrder ) {
    auto const table = Support::meterTable( "x" ).referenced( "direct" ).logicalPipe( "a" );
    expectAttachedFaults(
        Table( table ).with( "/meter_type", GetParam() ),
        {
            { "", "[]", noObject },
            { "/name", removed, noMember },
            { "/name", "null", noString },
            { "/meter_type", removed, noMember },
            { "/meter_type", "null", noString },
            { "/meter_type", "1", noString },
            { "/handle", removed, noMember },
            { "/handle", "null", noUnsigned },
            { "/handle", "1.0", noUnsigned },
            { "/handle", "4294967296", noUnsigned },
            { "/how_referenced", removed, noMember },
            { "/how_referenced", "null", noString },
            { "/how_referenced", "1", noString },
            { "/handle", "1", noSuchTable },
            { "/meter_granularity", removed, noMember },
            { "/meter_granularity", "null", noString },
            { "/meter_granularity", "{}", noString },
            { "/logical_pipe", "null", noString },
            { "/logical_pipe", "1", noString },
        },
        []( BfResourceParser* p, Json json ) { return parseBfTableMeterInfo( p, json, "", {} ); } );
}

INSTANTIATE_TEST_SUITE_P( MeterTypes, MeterFaults, testing::Values( "\"standard\"", "\"red\"" ),
                          []( auto const& row ) { return row.index == 0 ? "Meter" : "Wred"; } );

TEST( AttachedTableFaults, OfARegister ) {
    auto const table =
        Support::statefulTable( "x" ).referenced( "direct" ).with( "/dual_width_mode", "true" );
    expectAttachedFaults(
        table,
        {
            { "", "1", noObject },
            { "/name", removed, noMember },
            { "/name", "null", noString },
            { "/handle", removed, noMember },
            { "/handle", "null", noUnsigned },
            { "/handle", "-1", noUnsigned },
            { "/handle", "4294967296", noUnsigned },
            { "/how_referenced", removed, noMember },
            { "/how_referenced", "null", noString },
            { "/how_referenced", "[]", noString },
            { "/handle", "1", noSuchTable },
            { "/alu_width", removed, noMember },
            { "/alu_width", "null", noUnsigned },
            { "/alu_width", "-1", noUnsigned },
            { "/alu_width", "\"32\"", noUnsigned },
            { "/alu_width", "32.0", noUnsigned },
            { "/alu_width", "4294967296", noUnsigned },
            { "/dual_width_mode", "null", noBool },
            { "/dual_width_mode", "1", noBool },
            { "/dual_width_mode", "\"true\"", noBool },
            { "/alu_width", "16", "width == 32" },
        },
        []( BfResourceParser* p, Json json ) { return parseBfRegisterInfo( p, json, {} ); } );
}

template<class Record>
std::vector<String> namesOf( RecordSequence<Record> const& records ) {
    std::vector<String> names;
    for( Record const& record : records )
        names.push_back( record.name );
    return names;
}

class AttachedTablesOfAFile : public testing::Test {
  protected:
    void load( ContextBuilder const& context ) {
        parseContextJson( parser_.get(), folder_.write( "context.json", context.text() ), {} );
    }

    Support::TemporaryFolder folder_;
    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

TEST_F( AttachedTablesOfAFile, GoWhereTheirTypeSaysInOrder ) {
    load( ContextBuilder()
              .table( Support::statefulTable( "r2" ) )
              .table( Support::wredTable( "w2" ) )
              .table( Support::meterTable( "m2" ) )
              .table( Support::statisticsTable( "c2" ) )
              .table( matchTable( "acl" ) )
              .table( Support::statisticsTable( "c1" ) )
              .table( Support::meterTable( "m1" ) )
              .table( Support::wredTable( "w1" ) )
              .table( Support::statefulTable( "r1" ) ) );
    EXPECT_THAT( namesOf( parser_->bfCounters() ), ElementsAre( "c2", "c1" ) );
    EXPECT_THAT( namesOf( parser_->bfMeters() ), ElementsAre( "m2", "m1" ) );
    EXPECT_THAT( namesOf( parser_->bfWreds() ), ElementsAre( "w2", "w1" ) );
    EXPECT_THAT( namesOf( parser_->bfRegisterInfos() ), ElementsAre( "r2", "r1" ) );
    EXPECT_EQ( parser_->bfResources().size(), 9 );
}

TEST_F( AttachedTablesOfAFile, OfOtherTypesArePassedOver ) {
    auto const plain = Support::actionDataTable( "t" );
    ContextBuilder context;
    for( char const* type : { "\"action_data\"", "\"selection\"", "\"Meter\"", "\"meter \"", "\"wred\"",
                              "\"register\"", "\"\"" } )
        context.table( Table( plain ).with( "/table_type", type ) );
    load( context.table( Support::conditionTable( "if" ) ).table( matchTable( "acl" ) ) );
    EXPECT_TRUE( parser_->bfCounters().empty() && parser_->bfMeters().empty() && parser_->bfWreds().empty() &&
                 parser_->bfRegisterInfos().empty() );
    EXPECT_EQ( parser_->bfResources().size(), 8 );
}

TEST_F( AttachedTablesOfAFile, MayStandBeforeOrBehindTheTablesTheyBelongTo ) {
    auto const owner = matchTable( "acl" ).statistics( "before" ).statistics( "behind" );
    load( ContextBuilder()
              .table( Support::statisticsTable( "before" ).referenced( "direct" ) )
              .table( owner )
              .table( Support::statisticsTable( "behind" ).referenced( "direct" ) ) );
    ASSERT_EQ( parser_->bfCounters().size(), 2 );
    for( BfTableCounterInfo const& counter : parser_->bfCounters() ) {
        EXPECT_EQ( counter.associatedTable, "acl" ) << counter.name;
        EXPECT_EQ( counter.handle, handleOf( "acl" ) ) << counter.name;
    }
}

TEST_F( AttachedTablesOfAFile, AreReadWithoutStagesToo ) {
    load( ContextBuilder()
              .table( Support::statisticsTable( "c" ).stages( {} ) )
              .table( Support::statefulTable( "r" ).stages( {} ) ) );
    EXPECT_TRUE( parser_->bfResources().empty() );
    EXPECT_EQ( parser_->bfCounters().size(), 1 );
    EXPECT_EQ( parser_->bfRegisterInfos().size(), 1 );
}

TEST_F( AttachedTablesOfAFile, MayBelongToATableThatIsNotRecorded ) {
    load( ContextBuilder()
              .table( matchTable( "fixed" ).controllable( false ).stateful( "r" ).statistics( "c" ) )
              .table( Support::statefulTable( "r" ).referenced( "direct" ) )
              .table( Support::statisticsTable( "c" ).referenced( "direct" ) ) );
    EXPECT_TRUE( parser_->bfTables().empty() );
    EXPECT_EQ( parser_->bfRegisterInfos().at( 0 ).handle, handleOf( "fixed" ) );
    EXPECT_EQ( parser_->bfCounters().at( 0 ).associatedTable, "fixed" );
}

} // namespace
} // namespace BfResourceInfo
