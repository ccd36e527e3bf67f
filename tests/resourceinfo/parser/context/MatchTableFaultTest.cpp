#include "resourceinfo/parser/context/MatchTables.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

// Every fatal condition of the match-table step, in the order in which it reads.

namespace BfResourceInfo {
namespace {

using Support::handleOf;
using Support::matchTable;
using Support::StageTable;
using Support::Table;

/// A parser that knows the handles of the tables "adt" and "sel".
Zel::Ptr<BfResourceParser> parserWithReferencedTables() {
    auto const parser = emptyParser();
    for( char const* name : { "adt", "sel" } ) {
        BfZelResource resource;
        resource.handle = handleOf( name );
        parser->resourceHandlesIs( resource.handle, resource );
    }
    return parser;
}

void expectMatchTableFaults( Table const& table, std::vector<Fault> const& faults ) {
    expectFaults( table.tree(), faults, []( Json json ) {
        auto const parser = parserWithReferencedTables();
        try {
            EXPECT_EQ( parseBfTable( parser.get(), json, "context.json", {} ), 0 );
        } catch( ... ) {
            EXPECT_TRUE( parser->bfTables().empty() ) << "nothing is stored for a table that fails";
            throw;
        }
    } );
}

TEST( MatchTableFaults, OfSelection ) {
    expectMatchTableFaults( matchTable( "acl" ),
                            {
                                { "", "null", noObject },
                                { "/name", removed, noMember },
                                { "/name", "null", noString },
                                { "/table_type", removed, noMember },
                                { "/table_type", "1", noString },
                                { "/is_resource_controllable", removed, noMember },
                                { "/is_resource_controllable", "null", noBool },
                                { "/is_resource_controllable", "1", noBool },
                                { "/is_resource_controllable", "\"true\"", noBool },
                                { "/static_entries", "null", "table[ \"static_entries\" ].IsArray()" },
                                { "/static_entries", "{}", "table[ \"static_entries\" ].IsArray()" },
                                { "/handle", removed, noMember },
                            } );
}

TEST( MatchTableFaults, OfHandleAndSizeAndMatchType ) {
    expectMatchTableFaults( matchTable( "acl" ), {
                                                     { "/handle", removed, noMember },
                                                     { "/handle", "null", noUnsigned },
                                                     { "/handle", "-1", noUnsigned },
                                                     { "/handle", "1.0", noUnsigned },
                                                     { "/handle", "4294967296", noUnsigned },
                                                     { "/size", removed, noMember },
                                                     { "/size", "\"512\"", noUnsigned },
                                                     { "/size", "4294967296", noUnsigned },
                                                     { "/match_attributes", removed, noMember },
                                                     { "/match_attributes", "null", noObject },
                                                     { "/match_attributes/match_type", removed, noMember },
                                                     { "/match_attributes/match_type", "null", noString },
                                                     { "/match_attributes/stage_tables", removed, noMember },
                                                 } );
}

TEST( MatchTableFaults, OfOrdinaryStageTables ) {
    char const* const noStages = "matchAttributes[ \"stage_tables\" ].IsArray()";
    expectMatchTableFaults( matchTable( "acl" ),
                            {
                                { "/match_attributes/stage_tables", removed, noMember },
                                { "/match_attributes/stage_tables", "null", noStages },
                                { "/match_attributes/stage_tables", "{}", noStages },
                                { "/match_attributes/stage_tables/0", "null", noObject },
                                { "/match_attributes/number_partitions", "null", noUnsigned },
                                { "/match_attributes/number_partitions", "-1", noUnsigned },
                                { "/logical_pipe", "null", noString },
                                { "/logical_pipe", "[]", noString },
                            } );
}

class MatchTableUnitFaults : public testing::TestWithParam<char const*> {};

TEST_P( MatchTableUnitFaults, OfUnits ) {
    char const* const noUnits = "matchAttributes[ \"units\" ].IsArray()";
    char const* const noStages = "unit[ \"stage_tables\" ].IsArray()";
    expectMatchTableFaults(
        matchTable( "lpm" )
            .matchType( GetParam() )
            .units( { { StageTable(), StageTable() }, { StageTable() } } )
            .partitions( 4 ),
        {
            { "/match_attributes/units", removed, noMember },
            { "/match_attributes/units", "null", noUnits },
            { "/match_attributes/units", "{}", noUnits },
            { "/match_attributes/units/0", "null", noObject },
            { "/match_attributes/units/0/match_attributes", removed, noMember },
            { "/match_attributes/units/0/match_attributes", "null", noObject },
            { "/match_attributes/units/0/match_attributes/stage_tables", removed, noMember },
            { "/match_attributes/units/0/match_attributes/stage_tables", "null", noStages },
            { "/match_attributes/units/0/match_attributes/stage_tables/0", "null", noObject },
            { "/match_attributes/units/0/match_attributes/stage_tables/0/size", removed, noMember },
            { "/match_attributes/units/0/match_attributes/stage_tables/0/size", "null", noUnsigned },
            { "/match_attributes/units/0/match_attributes/stage_tables/0/size", "-1", noUnsigned },
            { "/match_attributes/units/0/match_attributes/stage_tables/1/size", removed, noMember },
            { "/match_attributes/units/1", "1", noObject },
            { "/match_attributes/units/1/match_attributes/stage_tables", "{}", noStages },
            { "/match_attributes/units/1/match_attributes/stage_tables/0", "[]", noObject },
            { "/match_attributes/units/1/match_attributes/stage_tables/0/size", "true", noUnsigned },
            { "/match_attributes/number_partitions", "null", noUnsigned },
        } );
}

INSTANTIATE_TEST_SUITE_P( MatchTypes, MatchTableUnitFaults,
                          testing::Values( "chained_lpm", "algorithmic_tcam" ),
                          []( auto const& row ) { return String( row.param ); } );

TEST( MatchTableFaults, OfAlgorithmicTcamWithoutPartitions ) {
    expectMatchTableFaults(
        matchTable( "tcam" ).matchType( "algorithmic_tcam" ).units( { { StageTable() } } ).partitions( 1 ),
        {
            { "/match_attributes/units/0/match_attributes/stage_tables/0/size", removed, noMember },
            { "/match_attributes/number_partitions", removed, "matAttrMatchType != \"algorithmic_tcam\"" },
            { "/logical_pipe", "null", noString },
        } );
}

TEST( MatchTableFaults, OfIdleTime ) {
    char const* const first = "/match_attributes/stage_tables/0/idletime_stage_table";
    expectMatchTableFaults(
        matchTable( "acl" )
            .stages( { StageTable().idleTime( 3 ), StageTable().idleTime( 4 ) } )
            .partitions( 1 ),
        {
            { "/match_attributes/number_partitions", "null", noUnsigned },
            { first, removed, noMember },
            { first, "null", noObject },
            { first, "[]", noObject },
            { "/match_attributes/stage_tables/0/idletime_stage_table/precision", removed, noMember },
            { "/match_attributes/stage_tables/0/idletime_stage_table/precision", "null", noUnsigned },
            { "/match_attributes/stage_tables/0/idletime_stage_table/precision", "-1", noUnsigned },
            { "/logical_pipe", "null", noString },
        } );
}

TEST( MatchTableFaults, OfIdleTimeOnATableWithStageTablesOfItsOwn ) {
    expectMatchTableFaults( matchTable( "acl" ).idleTime( 3 ).with(
                                "/stage_tables", R"([ { "idletime_stage_table": { "precision": 5 } } ])" ),
                            {
                                { "/stage_tables", "null", noArray },
                                { "/stage_tables", "{}", noArray },
                                { "/stage_tables", "[]", pastTheEnd },
                                { "/stage_tables/0", "null", noObject },
                                { "/stage_tables/0/idletime_stage_table", removed, noMember },
                                { "/stage_tables/0/idletime_stage_table/precision", removed, noMember },
                                { "/stage_tables/0/idletime_stage_table/precision", "1.5", noUnsigned },
                                { "/logical_pipe", "null", noString },
                            } );
}

TEST( MatchTableFaults, OfIdleTimeOnATableWithUnits ) {
    expectMatchTableFaults(
        matchTable( "lpm" )
            .matchType( "chained_lpm" )
            .units( { { StageTable().idleTime( 3 ) } } )
            .with( "/match_attributes/stage_tables",
                   R"([ { "idletime_stage_table": { "precision": 5 } } ])" ),
        {
            { "/match_attributes/stage_tables", removed, noMember },
            { "/match_attributes/stage_tables", "null", noArray },
            { "/match_attributes/stage_tables/0", "null", noObject },
            { "/match_attributes/stage_tables/0/idletime_stage_table", removed, noMember },
            { "/match_attributes/stage_tables/0/idletime_stage_table/precision", "null", noUnsigned },
        } );
}

TEST( MatchTableFaults, OfActionDataAndSelection ) {
    char const* const noActionData = "parser->resourceHandlesHas( adtTblHdl )";
    char const* const noSelection = "parser->resourceHandlesHas( selTblHdl )";
    expectMatchTableFaults( matchTable( "acl" ).actionData( "adt" ).selection( "sel" ).logicalPipe( "a" ),
                            {
                                { "/logical_pipe", "null", noString },
                                { "/action_data_table_refs", "null", noArray },
                                { "/action_data_table_refs", "{}", noArray },
                                { "/action_data_table_refs/0", "null", noObject },
                                { "/action_data_table_refs/0/how_referenced", removed, noMember },
                                { "/action_data_table_refs/0/how_referenced", "null", noString },
                                { "/action_data_table_refs/0/handle", removed, noMember },
                                { "/action_data_table_refs/0/handle", "null", noUnsigned },
                                { "/action_data_table_refs/0/name", removed, noMember },
                                { "/action_data_table_refs/0/name", "null", noString },
                                { "/action_data_table_refs/0/handle", "1", noActionData },
                                { "/selection_table_refs", "null", noArray },
                                { "/selection_table_refs", "1", noArray },
                                { "/selection_table_refs/0", "null", noObject },
                                { "/selection_table_refs/0/handle", removed, noMember },
                                { "/selection_table_refs/0/handle", "-1", noUnsigned },
                                { "/selection_table_refs/0/name", removed, noMember },
                                { "/selection_table_refs/0/name", "7", noString },
                                { "/selection_table_refs/0/handle", "1", noSelection },
                            } );
}

TEST( MatchTableFaults, AlgorithmicLpmIsAlwaysFatal ) {
    struct Row {
        char const* attributes;
        char const* condition;
    };
    char const* const noArrayThere = "atcamMatchAttributes.IsArray()";
    for(
        auto const& [ attributes, condition ] :
        { Row{ R"({ "match_type": "algorithmic_lpm" })", noMember },
          Row{ R"({ "match_type": "algorithmic_lpm", "atcam_table": null })", noObject },
          Row{ R"({ "match_type": "algorithmic_lpm", "atcam_table": {} })", noMember },
          Row{ R"({ "match_type": "algorithmic_lpm", "atcam_table": { "match_attributes": null } })",
               noArrayThere },
          Row{
              R"({ "match_type": "algorithmic_lpm", "atcam_table": { "match_attributes": { "units": [] } } })",
              noArrayThere },
          Row{ R"({ "match_type": "algorithmic_lpm", "atcam_table": { "match_attributes": [] } })",
               noObject },
          Row{ R"({ "match_type": "algorithmic_lpm",
                     "atcam_table": { "match_attributes": [ { "units": [] } ] } })",
               noObject } } ) {
        ParsedJson const table( matchTable( "lpm" ).with( "/match_attributes", attributes ).text() );
        auto const parser = emptyParser();
        EXPECT_EQ( Support::conditionOf( [ & ] { parseBfTable( parser.get(), table.json(), "", {} ); } ),
                   condition )
            << attributes;
        EXPECT_TRUE( parser->bfTables().empty() );
    }
}

TEST( MatchTableFaults, UnknownReferencesAreTracedFirst ) {
    struct Row {
        Table table;
        char const* trace;
    };
    BfResourceParserContext const context{ BfPipeMask( 4 ), 0x20000000 };
    for( auto const& [ table, text ] :
         { Row{ matchTable( "acl" ).actionData( "x" ).with( "/action_data_table_refs/0/handle", "7" ),
                "Can't find action tbl hdl 536870919" },
           Row{ matchTable( "acl" ).selection( "x" ).with( "/selection_table_refs/0/handle", "8" ),
                "Can't find sel tbl hdl 536870920" } } ) {
        Support::TraceCollector const trace( "BfResourceParser", { 0 } );
        ParsedJson const json( table.text() );
        auto const parser = emptyParser();
        Support::failureOf( [ & ] { parseBfTable( parser.get(), json.json(), "", context ); } );
        EXPECT_THAT( trace.texts(), testing::ElementsAre( text ) );
        EXPECT_EQ( trace.lines()[ 0 ].level, 0 );
    }
}

TEST( MatchTableFaults, SkippedTablesAreReadNoFurther ) {
    for( Table const& table :
         { matchTable( "acl" ).with( "/table_type", "\"action\"" ).without( "/is_resource_controllable" ),
           matchTable( "acl" ).controllable( false ).with( "/static_entries", "null" ),
           matchTable( "acl" ).with( "/static_entries", "[ {} ]" ).without( "/handle" ) } ) {
        ParsedJson const json( table.text() );
        auto const parser = emptyParser();
        EXPECT_EQ( parseBfTable( parser.get(), json.json(), "", {} ), 1 ) << table.text();
        EXPECT_TRUE( parser->bfTables().empty() );
    }
}

} // namespace
} // namespace BfResourceInfo
