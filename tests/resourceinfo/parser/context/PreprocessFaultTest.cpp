#include "resourceinfo/parser/context/Preprocess.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

// Every fatal condition of the preprocessing pass, in the order of its steps. One condition, that the stage
// tables of a table with some are an array, is not met by any input: counting them requires it before.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;
using Support::StageTable;
using Support::Table;

void preprocess( Json d ) {
    auto const parser = emptyParser();
    preprocessContext( parser.get(), d, {} );
}

/// Rows for a table, which is tried as the second of a document.
void expectTableFaults( Table const& table, std::vector<Fault> const& faults ) {
    auto const good = ContextBuilder().table( Support::conditionTable( "first" ) ).table( table );
    std::vector<std::string> pointers;
    for( Fault const& fault : faults )
        pointers.push_back( std::string( "/tables/1" ) + fault.pointer );
    std::vector<Fault> moved = faults;
    for( std::size_t i = 0; i < faults.size(); ++i )
        moved[ i ].pointer = pointers[ i ].c_str();
    expectFaults( good.tree(), moved, preprocess );
}

TEST( PreprocessFaults, OfTheDocument ) {
    char const* const tables = "d[ \"tables\" ].IsArray()";
    expectFaults( ContextBuilder().table( matchTable( "acl" ) ).tree(),
                  {
                      { "", "null", noObject },
                      { "", "[]", noObject },
                      { "", "\"tables\"", noObject },
                      { "/tables", removed, noMember },
                      { "/tables", "null", tables },
                      { "/tables", "{}", tables },
                      { "/tables", "1", tables },
                      { "/tables/0", "null", "table.IsObject()" },
                      { "/tables/0", "[]", "table.IsObject()" },
                      { "/tables/0", "\"acl\"", "table.IsObject()" },
                  },
                  preprocess );
}

TEST( PreprocessFaults, OfAMatchTable ) {
    char const* const stageTables = "/match_attributes/stage_tables";
    char const* const stageTablesArray = "match_attributes[ \"stage_tables\" ].IsArray()";
    char const* const both = "!table.HasMember( \"match_attributes\" )";
    expectTableFaults(
        matchTable( "acl" ),
        {
            { "/name", removed, noMember },
            { "/name", "null", noString },
            { "/name", "7", noString },
            { "/table_type", removed, noMember },
            { "/table_type", "null", noString },
            { "/handle", removed, noMember },
            { "/handle", "null", noUnsigned },
            { "/handle", "-1", noUnsigned },
            { "/handle", "\"5\"", noUnsigned },
            { "/handle", "5.0", noUnsigned },
            { "/handle", "true", noUnsigned },
            { "/handle", "4294967296", noUnsigned },
            { "/size", removed, noMember },
            { "/size", "null", noUnsigned },
            { "/size", "-1", noUnsigned },
            { "/size", "4294967296", noUnsigned },
            { "/direction", removed, noMember },
            { "/direction", "null", noString },
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
            { "/match_attributes/stage_tables/0/stage_table_type", "\"meter\"", noMember },
        } );
}

TEST( PreprocessFaults, OfReferencesAndActions ) {
    expectTableFaults(
        matchTable( "acl" ).statistics( "s" ).meter( "m" ).stateful( "r" ).action( "count", { "s" } ),
        {
            { "/match_attributes/stage_tables/0/stage_table_type", removed, noMember },
            { "/statistics_table_refs", "null", noArray },
            { "/statistics_table_refs", "{}", noArray },
            { "/statistics_table_refs/0", "null", noObject },
            { "/statistics_table_refs/0/handle", removed, noMember },
            { "/statistics_table_refs/0/handle", "null", noUnsigned },
            { "/meter_table_refs", "null", noArray },
            { "/meter_table_refs/0", "[]", noObject },
            { "/meter_table_refs/0/handle", removed, noMember },
            { "/meter_table_refs/0/handle", "\"1\"", noUnsigned },
            { "/stateful_table_refs", "null", noArray },
            { "/stateful_table_refs/0", "1", noObject },
            { "/stateful_table_refs/0/handle", removed, noMember },
            { "/stateful_table_refs/0/handle", "-1", noUnsigned },
            { "/actions", "null", noArray },
            { "/actions", "{}", noArray },
            { "/actions/0", "null", noObject },
            { "/actions/1", "\"count\"", noObject },
            { "/actions/1/indirect_resources", "null", noArray },
            { "/actions/1/indirect_resources", "{}", noArray },
            { "/actions/1/indirect_resources/0", "null", noObject },
            { "/actions/1/indirect_resources/0/resource_name", removed, noMember },
            { "/actions/1/indirect_resources/0/resource_name", "null", noString },
        } );
}

TEST( PreprocessFaults, OfATableWithUnits ) {
    expectTableFaults(
        matchTable( "lpm" ).units( { { StageTable(), StageTable() }, { StageTable() } } ),
        {
            { "/match_attributes/units", "null", "units.IsArray()" },
            { "/match_attributes/units", "[]", pastTheEnd },
            { "/match_attributes/units/0", "null", noObject },
            { "/match_attributes/units/0/match_attributes", removed, noMember },
            { "/match_attributes/units/0/match_attributes", "null", noObject },
            { "/match_attributes/units/0/match_attributes/stage_tables", removed, noMember },
            { "/match_attributes/units/0/match_attributes/stage_tables", "null", noArray },
            { "/match_attributes/units/1", "null", noObject },
            { "/match_attributes/units/1/match_attributes", removed, noMember },
            { "/match_attributes/units/1/match_attributes", "[]", noObject },
            { "/match_attributes/units/1/match_attributes/stage_tables", removed, noMember },
            { "/match_attributes/units/1/match_attributes/stage_tables", "{}", noArray },
            { "/match_attributes/units/0/match_attributes/stage_tables", "[]", pastTheEnd },
            { "/match_attributes/units/0/match_attributes/stage_tables/0", "null", noObject },
            { "/match_attributes/units/0/match_attributes/stage_tables/0/stage_number", removed, noMember },
        } );
}

TEST( PreprocessFaults, OfATableWithItsOwnStageTables ) {
    char const* const both = "!table.HasMember( \"match_attributes\" )";
    expectTableFaults( Support::actionDataTable( "adt" ),
                       {
                           { "/direction", removed, noMember },
                           { "/match_attributes", "{}", both },
                           { "/match_attributes", "null", both },
                           { "/stage_tables", "null", noArray },
                           { "/stage_tables", "{}", noArray },
                           { "/stage_tables/0", "null", noObject },
                           { "/stage_tables/0/stage_number", removed, noMember },
                           { "/stage_tables/0/stage_table_type", "1", noString },
                       } );
}

TEST( PreprocessFaults, OfATableOfNeitherKind ) {
    expectTableFaults( matchTable( "acl" ), {
                                                { "/direction", removed, noMember },
                                                { "/match_attributes", removed, noMember },
                                                { "/actions", "null", noArray },
                                            } );
    expectTableFaults( Support::actionDataTable( "adt" ).action( "a" ),
                       {
                           { "/direction", removed, noMember },
                           { "/stage_tables", removed, noMember },
                           { "/actions", "null", noArray },
                       } );
}

TEST( PreprocessFaults, OfAMeter ) {
    expectTableFaults( Support::meterTable( "m" ),
                       {
                           { "/stage_tables/0/stage_table_type", "null", noString },
                           { "/meter_type", removed, noMember },
                           { "/meter_type", "null", noString },
                       } );
}

TEST( PreprocessFaults, ConditionIsReadNoFurtherThanItsType ) {
    expectTableFaults( Support::conditionTable( "if" ).without( "/handle" ).without( "/direction" ),
                       {
                           { "/name", removed, noMember },
                           { "/table_type", removed, noMember },
                       } );
}

TEST( PreprocessFaults, TableWithoutStagesIsReadNoFurtherThanThem ) {
    expectTableFaults(
        matchTable( "acl" ).stages( {} ).with( "/actions", "null" ).with( "/statistics_table_refs", "null" ),
        {
            { "/direction", removed, noMember },
        } );
}

TEST( PreprocessFaults, TableOfNeitherKindIsTracedFirst ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0 } );
    auto const context = ContextBuilder().table( matchTable( "acl" ).without( "/match_attributes" ) );
    ParsedJson const d( context.text() );
    auto const failure = Support::failureOf( [ & ] { preprocess( d.json() ); } );
    EXPECT_EQ( failure.condition, "false" );
    EXPECT_EQ( failure.source, "BfResourceParser" );
    EXPECT_EQ( failure.function,
               "void preprocessContext(BfResourceInfo::BfResourceParser*, rapidjson::Document&, "
               "const BfResourceParserContext&)" );
    EXPECT_THAT( trace.texts(), testing::ElementsAre( "acl failed" ) );
}

TEST( PreprocessFaults, TraceOfATableOfNeitherKindIsWrittenOnlyWhenItsLevelIsOn ) {
    Support::TraceCollector const trace( "BfResourceParser", {} );
    auto const context = ContextBuilder().table( matchTable( "acl" ).without( "/match_attributes" ) );
    ParsedJson const d( context.text() );
    EXPECT_EQ( Support::conditionOf( [ & ] { preprocess( d.json() ); } ), "false" );
    EXPECT_THAT( trace.texts(), testing::ElementsAre() );
}

TEST( PreprocessFaults, EarlierTableFailsFirst ) {
    auto const context = ContextBuilder()
                             .table( matchTable( "a" ).with( "/actions", "null" ) )
                             .table( matchTable( "b" ).without( "/name" ) );
    ParsedJson const d( context.text() );
    EXPECT_EQ( Support::conditionOf( [ & ] { preprocess( d.json() ); } ), noArray );
}

} // namespace
} // namespace BfResourceInfo
