#include "resourceinfo/parser/context/Resources.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::actionDataTable;
using Support::matchTable;
using Support::StageTable;
using Support::Table;
using testing::ElementsAre;

char const* const unexpected = "false && \"Unexpected BfResourceType\"";

class Resources : public testing::Test {
  protected:
    int step( Table const& table, U32 handlePipeBits = 0 ) {
        ParsedJson const json( table.text() );
        return parseBfResource( parser_.get(), json.json(), { BfPipeMask( 1 ), handlePipeBits } );
    }
    void parse( Table const& table, U32 handlePipeBits = 0 ) {
        EXPECT_EQ( step( table, handlePipeBits ), 0 );
    }
    /// The record of a table that has stages.
    BfResource record( Table const& table, U32 handlePipeBits = 0 ) {
        parse( table, handlePipeBits );
        return parser_->bfResources().at( parser_->bfResources().size() - 1 );
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

TEST_F( Resources, EveryFieldIsRead ) {
    BfResource const adt = record( actionDataTable( "adt" ).handle( 77 ).size( 512 ).stages(
        { StageTable( "action_data" ).number( 7 ), StageTable( "action_data" ).number( 3 ) } ) );
    EXPECT_EQ( adt.name, "adt" );
    EXPECT_EQ( adt.handle, 77 );
    EXPECT_EQ( adt.type, 6 );
    EXPECT_EQ( adt.size, 512 );
    EXPECT_TRUE( adt.ingress );
    EXPECT_EQ( adt.stages, 2 );
    EXPECT_EQ( adt.stageStart, 7 );
}

TEST_F( Resources, StageTablesOfAMatchTableStandInItsAttributes ) {
    BfResource const acl = record( matchTable( "acl" ).stages(
        { StageTable( "hash_match" ).number( 5 ), StageTable(), StageTable() } ) );
    EXPECT_EQ( acl.type, 2 );
    EXPECT_EQ( acl.stages, 3 );
    EXPECT_EQ( acl.stageStart, 5 );
}

TEST_F( Resources, StageTablesOfUnitsAreCountedTogetherAndThoseOfTheFirstUnitRead ) {
    std::vector<StageTable> const first{ StageTable( "algorithmic_tcam_match" ).number( 4 ),
                                         StageTable().number( 1 ), StageTable() };
    std::vector<StageTable> const second{ StageTable().number( 9 ), StageTable() };
    BfResource const lpm = record( matchTable( "lpm" ).units( { first, second } ) );
    EXPECT_EQ( lpm.stages, 5 );
    EXPECT_EQ( lpm.stageStart, 4 );
    EXPECT_EQ( lpm.type, 3 );
}

TEST_F( Resources, EveryTypeHasItsNumber ) {
    struct Row {
        char const* type;
        U32 number;
    };
    for( auto const& [ type, number ] :
         { Row{ "phase_0_match", 0 }, Row{ "ternary_match", 1 }, Row{ "hash_match", 2 },
           Row{ "algorithmic_tcam_match", 3 }, Row{ "match_with_no_key", 4 }, Row{ "hash_action", 5 },
           Row{ "action_data", 6 }, Row{ "selection", 7 }, Row{ "statistics", 8 }, Row{ "meter", 9 },
           Row{ "stateful", 10 }, Row{ "wred", 12 } } ) {
        auto const table = matchTable( "t" ).stages( { StageTable( type ) } );
        EXPECT_EQ( record( Table( table ).with( "/meter_type", "\"standard\"" ) ).type, number ) << type;
        EXPECT_EQ( static_cast<U32>( stringToResourceType( type ) ), number ) << type;
    }
}

TEST_F( Resources, OtherTypesAreTracedAndFatal ) {
    for( char const* type : { "", "Meter", "meter ", "hash", "hash_match_", "11", "red", "condition" } ) {
        Support::TraceCollector const trace( "BfResourceParser", { 0 } );
        EXPECT_EQ( Support::conditionOf( [ & ] { stringToResourceType( type ); } ), unexpected ) << type;
        EXPECT_THAT( trace.texts(), ElementsAre( String( "Unexpected BfResourceType " ) + type ) );
        auto const table = matchTable( "t" ).stages( { StageTable( type ) } );
        EXPECT_EQ( Support::conditionOf( [ & ] { parse( table ); } ), unexpected ) << type;
    }
    EXPECT_TRUE( parser_->bfResources().empty() );
}

TEST_F( Resources, OtherTypesAreFatalWithoutATraceToo ) {
    Support::TraceCollector const trace( "BfResourceParser", {} );
    EXPECT_EQ( Support::conditionOf( [] { stringToResourceType( "x" ); } ), unexpected );
    EXPECT_THAT( trace.texts(), ElementsAre() );
}

TEST_F( Resources, RedMeterIsWred ) {
    for( auto const& [ meterType, number ] : { std::pair( "\"red\"", 12U ), std::pair( "\"standard\"", 9U ),
                                               std::pair( "\"Red\"", 9U ), std::pair( "\"\"", 9U ) } )
        EXPECT_EQ( record( Support::meterTable( "m" ).with( "/meter_type", meterType ) ).type, number )
            << meterType;
    EXPECT_EQ( record( Support::wredTable( "w" ).stages( { StageTable( "stateful" ) } ) ).type, 10 );
    EXPECT_EQ( record( Support::statisticsTable( "s" ).with( "/meter_type", "\"red\"" ) ).type, 8 );
}

TEST_F( Resources, OnlyTheFirstStageTableIsRead ) {
    EXPECT_EQ( record( actionDataTable( "adt" ).with( "/stage_tables/-", "null" ) ).stages, 2 );
    BfResource const meterFirst = record( Support::wredTable( "w" ).stages(
        { StageTable( "meter" ), StageTable( "unheard of" ).number( 9 ) } ) );
    EXPECT_EQ( meterFirst.type, 12 );
}

TEST_F( Resources, IngressIsADirectionOfThatText ) {
    for( auto const& [ direction, ingress ] :
         { std::pair( "\"ingress\"", true ), std::pair( "\"egress\"", false ), std::pair( "\"\"", false ),
           std::pair( "\"Ingress\"", false ), std::pair( "\"ingress \"", false ),
           std::pair( "\"ghost\"", false ) } )
        EXPECT_EQ( record( actionDataTable( "adt" ).with( "/direction", direction ) ).ingress, ingress )
            << direction;
}

TEST_F( Resources, StageNumberKeepsItsLow32Bits ) {
    for( auto const& [ number, expected ] :
         { std::pair( "260", 260U ), std::pair( "-1", 0xFFFFFFFFU ), std::pair( "4294967296", 0U ),
           std::pair( "4294967301", 5U ), std::pair( "-9223372036854775808", 0U ),
           std::pair( "9223372036854775807", 0xFFFFFFFFU ) } )
        EXPECT_EQ(
            record( actionDataTable( "adt" ).with( "/stage_tables/0/stage_number", number ) ).stageStart,
            expected )
            << number;
}

TEST_F( Resources, NumbersAreUnsignedAnd32BitsWide ) {
    BfResource const adt = record( actionDataTable( "adt" ).handle( 0xFFFFFFFF ).size( 0xFFFFFFFF ) );
    EXPECT_EQ( adt.handle, 0xFFFFFFFF );
    EXPECT_EQ( adt.size, 0xFFFFFFFF );
}

TEST_F( Resources, HandleCarriesThePipeBits ) {
    EXPECT_EQ( record( actionDataTable( "adt" ).handle( 5 ), 0x30000000 ).handle, 0x30000005 );
}

TEST_F( Resources, TableWithoutStageTablesIsSkippedAndNothingIsSaidOfIt ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9 } );
    for( Table const& table : { actionDataTable( "adt" ).stages( {} ), matchTable( "acl" ).stages( {} ),
                                matchTable( "lpm" ).units( { {}, {} } ) } )
        EXPECT_EQ( step( table ), 1 ) << table.text();
    EXPECT_TRUE( parser_->bfResources().empty() );
    EXPECT_THAT( trace.texts(), ElementsAre() );
}

TEST_F( Resources, AreKeptInTheirOrderWithRepeatedNames ) {
    parse( actionDataTable( "x" ).handle( 2 ) );
    parse( actionDataTable( "y" ).handle( 1 ) );
    parse( actionDataTable( "x" ).handle( 3 ) );
    std::vector<std::pair<String, U32>> records;
    for( BfResource const& resource : parser_->bfResources() )
        records.emplace_back( resource.name, resource.handle );
    EXPECT_THAT( records, ElementsAre( std::pair( "x", 2 ), std::pair( "y", 1 ), std::pair( "x", 3 ) ) );
}

TEST_F( Resources, NameEndsAtItsFirstNul ) {
    EXPECT_EQ( record( actionDataTable( "x" ).with( "/name", R"("adt\u0000x")" ) ).name, "adt" );
}

TEST_F( Resources, AreTracedAtLevelSeven ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    parse( Support::wredTable( "acl.wred" ) );
    ASSERT_THAT( trace.texts(), ElementsAre( "Parsed resource acl.wred" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 7 );
}

// The fatal conditions, in the order in which the step reads. One of them, that the stage tables of a table
// with some are an array, is not met by any input: counting them requires it before.

void expectResourceFaults( Table const& table, std::vector<Fault> const& faults ) {
    expectFaults( table.tree(), faults, []( Json json ) {
        auto const parser = emptyParser();
        try {
            parseBfResource( parser.get(), json, {} );
        } catch( ... ) {
            EXPECT_TRUE( parser->bfResources().empty() ) << "nothing is stored for a table that fails";
            throw;
        }
    } );
}

TEST( ResourceFaults, OfAMatchTable ) {
    char const* const stageTables = "/match_attributes/stage_tables";
    char const* const stageTablesArray = "match_attributes[ \"stage_tables\" ].IsArray()";
    char const* const both = "!table.HasMember( \"match_attributes\" )";
    expectResourceFaults(
        matchTable( "acl" ),
        {
            { "", "null", noObject },
            { "/name", removed, noMember },
            { "/name", "null", noString },
            { "/name", "7", noString },
            { "/handle", removed, noMember },
            { "/handle", "null", noUnsigned },
            { "/handle", "-1", noUnsigned },
            { "/handle", "\"5\"", noUnsigned },
            { "/handle", "5.0", noUnsigned },
            { "/handle", "4294967296", noUnsigned },
            { "/size", removed, noMember },
            { "/size", "null", noUnsigned },
            { "/size", "-1", noUnsigned },
            { "/size", "true", noUnsigned },
            { "/direction", removed, noMember },
            { "/direction", "null", noString },
            { "/direction", "[]", noString },
            { "/stage_tables", "[]", both },
            { "/stage_tables", "null", both },
            { "/match_attributes", "null", "match_attributes.IsObject()" },
            { "/match_attributes", "[]", "match_attributes.IsObject()" },
            { "/match_attributes/units", "null", "units.IsArray()" },
            { "/match_attributes/units", "{}", "units.IsArray()" },
            { "/match_attributes/units", "[]", pastTheEnd },
            { stageTables, removed, "match_attributes.HasMember( \"stage_tables\" )" },
            { stageTables, "null", stageTablesArray },
            { stageTables, "{}", stageTablesArray },
            { "/match_attributes/stage_tables/0", "null", noObject },
            { "/match_attributes/stage_tables/0/stage_number", removed, noMember },
            { "/match_attributes/stage_tables/0/stage_number", "null", noInteger },
            { "/match_attributes/stage_tables/0/stage_number", "\"0\"", noInteger },
            { "/match_attributes/stage_tables/0/stage_number", "1.5", noInteger },
            { "/match_attributes/stage_tables/0/stage_number", "9223372036854775808", noInteger },
            { "/match_attributes/stage_tables/0/stage_table_type", removed, noMember },
            { "/match_attributes/stage_tables/0/stage_table_type", "null", noString },
            { "/match_attributes/stage_tables/0/stage_table_type", "1", noString },
            { "/match_attributes/stage_tables/0/stage_table_type", "\"x\"", unexpected },
        } );
}

TEST( ResourceFaults, OfATableWithUnits ) {
    expectResourceFaults(
        matchTable( "lpm" ).units( { { StageTable(), StageTable() }, { StageTable() } } ),
        {
            { "/direction", removed, noMember },
            { "/match_attributes/units/0", "null", noObject },
            { "/match_attributes/units/0/match_attributes", removed, noMember },
            { "/match_attributes/units/0/match_attributes", "[]", noObject },
            { "/match_attributes/units/0/match_attributes/stage_tables", removed, noMember },
            { "/match_attributes/units/0/match_attributes/stage_tables", "null", noArray },
            { "/match_attributes/units/1", "null", noObject },
            { "/match_attributes/units/1/match_attributes", removed, noMember },
            { "/match_attributes/units/1/match_attributes/stage_tables", removed, noMember },
            { "/match_attributes/units/1/match_attributes/stage_tables", "{}", noArray },
            { "/match_attributes/units/0/match_attributes/stage_tables", "[]", pastTheEnd },
            { "/match_attributes/units/0/match_attributes/stage_tables/0", "null", noObject },
            { "/match_attributes/units/0/match_attributes/stage_tables/0/stage_number", removed, noMember },
            { "/match_attributes/units/0/match_attributes/stage_tables/0/stage_table_type", removed,
              noMember },
        } );
}

TEST( ResourceFaults, OfAMeter ) {
    char const* const both = "!table.HasMember( \"match_attributes\" )";
    expectResourceFaults( Support::meterTable( "m" ),
                          {
                              { "/direction", "null", noString },
                              { "/match_attributes", "{}", both },
                              { "/match_attributes", "null", both },
                              { "/stage_tables", "null", noArray },
                              { "/stage_tables", "{}", noArray },
                              { "/stage_tables/0", "null", noObject },
                              { "/stage_tables/0/stage_number", removed, noMember },
                              { "/stage_tables/0/stage_table_type", "null", noString },
                              { "/meter_type", removed, noMember },
                              { "/meter_type", "null", noString },
                              { "/meter_type", "1", noString },
                          } );
}

TEST( ResourceFaults, OfATableOfNeitherKind ) {
    expectResourceFaults( actionDataTable( "adt" ), {
                                                        { "/direction", removed, noMember },
                                                        { "/stage_tables", removed, noMember },
                                                    } );
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    ParsedJson const json( matchTable( "acl" ).without( "/match_attributes" ).text() );
    auto const parser = emptyParser();
    auto const failure = Support::failureOf( [ & ] { parseBfResource( parser.get(), json.json(), {} ); } );
    EXPECT_EQ( failure.condition, "false" );
    EXPECT_EQ( failure.function,
               "int parseBfResource(BfResourceInfo::BfResourceParser*, const rapidjson::Value&, "
               "const BfResourceParserContext&)" );
    EXPECT_THAT( trace.texts(), ElementsAre( "acl failed" ) );
}

} // namespace
} // namespace BfResourceInfo
