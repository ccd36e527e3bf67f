#include "tests/cli/Inputs.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testing::StrEq;

struct BadContext {
    char const* what;
    String context;
    char const* where;    ///< the rest of the line "where:" or "problem:"
    char const* expected; ///< the rest of the line "expected:"
    char const* condition;
};

std::ostream& operator<<( std::ostream& os, BadContext const& row ) { return os << row.what; }

/// A table with only what every table needs, and then some members.
String table( String const& members ) {
    return contextOf( R"({ "name": "t", "table_type": "match", "handle": 1, "size": 2, "direction": "ingress",
                          "is_resource_controllable": true, "actions": [], )" +
                      members + " }" );
}

String const stage = R"({ "stage_number": 1, "stage_table_type": "hash_match" })";

class BadContextOf : public InFolder, public testing::WithParamInterface<BadContext> {};

TEST_P( BadContextOf, IsExplained ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", GetParam().context );
    auto const outcome = bfri( { "tables", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.out, IsEmpty() );
    EXPECT_THAT( outcome.err, StartsWith( "bfri: can't use context file context.json\n" ) );
    EXPECT_THAT( outcome.err, HasSubstr( String( GetParam().where ) + "\n" ) );
    EXPECT_THAT( outcome.err, HasSubstr( String( "\n  expected:  " ) + GetParam().expected + "\n" ) );
    String const condition = GetParam().condition;
    bool const says = condition != "false";
    EXPECT_THAT( outcome.err, HasSubstr( says ? "\n  condition: " + condition + ", in " : "\n" ) );
    EXPECT_EQ( outcome.err.find( "condition: " ) != String::npos, says );
    EXPECT_THAT( outcome.err, EndsWith( "\n'bfri check switch.conf' says more\n" ) );
}

INSTANTIATE_TEST_SUITE_P(
    Unreadable, BadContextOf,
    testing::Values( BadContext{ "syntax", "{\n  \"tables\": [,] }",
                                 "  problem:   line 2, column 14: Invalid value.",
                                 "a file, plain or gzip, that holds JSON", "IsObject()" },
                     BadContext{ "empty", "", "  problem:   line 1, column 1: The document is empty.",
                                 "a file, plain or gzip, that holds JSON", "IsObject()" } ) );

INSTANTIATE_TEST_SUITE_P(
    WrongValue, BadContextOf,
    testing::Values(
        BadContext{ "no object", "[]", "  where:     member \"tables\"", "an object", "IsObject()" },
        BadContext{ "missing member", contextOf( R"({ "name": "t", "table_type": "match", "handle": 1 })" ),
                    "  where:     at /tables/0, member \"size\", table 0 \"t\"",
                    "an object that has this member", "false" },
        BadContext{ "no text", contextOf( R"({ "name": 1 })" ), "  where:     at /tables/0/name, table 0",
                    "a string", "IsString()" },
        BadContext{ "no number", contextOf( R"({ "name": "t", "table_type": "match", "handle": -1 })" ),
                    "at /tables/0/handle, table 0 \"t\"", "an unsigned 32-bit number",
                    "data_.f.flags & kUintFlag" },
        BadContext{ "no big number",
                    table( R"("stage_tables": [ { "stage_number": 1.5, "stage_table_type": "x" } ])" ),
                    "at /tables/0/stage_tables/0/stage_number, table 0 \"t\"", "a signed 64-bit number",
                    "data_.f.flags & kInt64Flag" },
        BadContext{ "no flag",
                    contextOf( matchTable( "t", 1 ) + R"(, { "name": "u", "table_type": "match", "handle": 2,
                               "size": 1, "direction": "x", "stage_tables": [], "is_resource_controllable": 1,
                               "actions": [] })" ),
                    "at /tables/1/is_resource_controllable, table 1 \"u\"", "true or false", "IsBool()" },
        BadContext{ "no list of units", table( R"("match_attributes": { "units": {} })" ),
                    "at /tables/0/match_attributes/units, table 0 \"t\"", "\"units\" to be an array",
                    "units.IsArray()" },
        BadContext{ "list too short", table( R"("match_attributes": { "units": [] })" ),
                    "at /tables/0/match_attributes/units, table 0 \"t\"", "an array with more elements",
                    "index < data_.a.size" },
        BadContext{ "no list", table( R"("stage_tables": 3)" ), "at /tables/0/stage_tables, table 0 \"t\"",
                    "an array", "IsArray()" } ) );

INSTANTIATE_TEST_SUITE_P(
    WrongSection, BadContextOf,
    testing::Values( BadContext{ "tables", R"({ "tables": {} })", "  where:     at /tables",
                                 "\"tables\" to be an array", "d[ \"tables\" ].IsArray()" },
                     BadContext{ "table", contextOf( "3" ), "at /tables/0, table 0",
                                 "each element of \"tables\" to be an object", "table.IsObject()" },
                     BadContext{ "learn quanta", R"({ "tables": [], "learn_quanta": 1 })", "at /learn_quanta",
                                 "\"learn_quanta\" to be an array", "lqs.IsArray()" },
                     BadContext{ "phv", R"({ "tables": [], "learn_quanta": [], "phv_allocation": 1 })",
                                 "at /phv_allocation", "\"phv_allocation\" to be an array",
                                 "phvs.IsArray()" } ) );

INSTANTIATE_TEST_SUITE_P(
    WrongTable, BadContextOf,
    testing::Values(
        BadContext{ "both", table( R"("stage_tables": [], "match_attributes": {})" ), "table 0 \"t\"",
                    "a table with \"stage_tables\" or with \"match_attributes\", not with both",
                    "!table.HasMember( \"match_attributes\" )" },
        BadContext{ "neither", table( R"("x": 1)" ), "table 0 \"t\"",
                    "a table with \"stage_tables\" or \"match_attributes\"", "false" },
        BadContext{ "attributes", table( R"("match_attributes": 1)" ),
                    "at /tables/0/match_attributes, table 0 \"t\"", "\"match_attributes\" to be an object",
                    "match_attributes.IsObject()" },
        BadContext{ "no stages", table( R"("match_attributes": {})" ), "table 0 \"t\"",
                    "\"match_attributes\" with \"units\" or with \"stage_tables\"",
                    "match_attributes.HasMember( \"stage_tables\" )" },
        BadContext{ "stages", table( R"("match_attributes": { "stage_tables": 1 })" ), "table 0 \"t\"",
                    "\"stage_tables\" to be an array", "match_attributes[ \"stage_tables\" ].IsArray()" },
        BadContext{ "static entries", contextOf( matchTable( "t", 1, R"(, "static_entries": 1)" ) ),
                    "at /tables/0/static_entries, table 0 \"t\"", "\"static_entries\" to be an array",
                    "table[ \"static_entries\" ].IsArray()" },
        BadContext{
            "algorithmic lpm",
            table( R"("match_attributes": { "match_type": "algorithmic_lpm", "stage_tables": [ )" + stage +
                   R"( ], "atcam_table": { "match_attributes": {} } })" ),
            "table 0 \"t\"",
            "no \"algorithmic_lpm\" table that is resource-controllable; compilers mark these otherwise",
            "atcamMatchAttributes.IsArray()" },
        BadContext{
            "algorithmic lpm of the other kind",
            table( R"("match_attributes": { "match_type": "algorithmic_lpm", "stage_tables": [ )" + stage +
                   R"( ], "atcam_table": { "match_attributes": [] } })" ),
            "table 0 \"t\"",
            "no \"algorithmic_lpm\" table that is resource-controllable; compilers mark these otherwise",
            "IsObject()" },
        BadContext{ "partitions", table( R"("match_attributes": { "match_type": "algorithmic_tcam", "units": [
                              { "match_attributes": { "stage_tables": [ { "stage_number": 1, "size": 1,
                                "stage_table_type": "hash_match" } ] } } ] })" ),
                    "table 0 \"t\"",
                    "\"number_partitions\" in the \"match_attributes\" of an \"algorithmic_tcam\" table",
                    "matAttrMatchType != \"algorithmic_tcam\"" },
        BadContext{ "units of a plain table",
                    table( R"("match_attributes": { "match_type": "exact", "stage_tables": 1, "units": [
                              { "match_attributes": { "stage_tables": [ )" +
                           stage + R"( ] } } ] })" ),
                    "at /tables/0/match_attributes/stage_tables, table 0 \"t\"",
                    "\"stage_tables\" to be an array", "matchAttributes[ \"stage_tables\" ].IsArray()" } ) );

/// A context file in which a place of a complete one holds another value.
String with( char const* pointer, char const* value ) {
    return completeContext().with( pointer, value ).text();
}

/// The same with another table.
String with( Support::Table const& table ) { return completeContext().table( table ).text(); }

/// A match table without stage tables, whose actions are not read before the actions of all are.
Support::Table unplaced() { return Support::matchTable( "t" ).stages( {} ); }

INSTANTIATE_TEST_SUITE_P(
    WrongActions, BadContextOf,
    testing::Values( BadContext{ "no list", with( "/tables/0/actions", "{}" ),
                                 "at /tables/0/actions, table 0 \"pipe.acl\"", "an array", "IsArray()" },
                     BadContext{ "no list, unplaced", with( unplaced().with( "/actions", "{}" ) ),
                                 "at /tables/6/actions, table 6 \"t\"",
                                 "\"actions\" of a match table to be an array", "actions.IsArray()" },
                     BadContext{
                         "no action", with( "/tables/0/actions/1", "3" ),
                         "at /tables/0/actions/1, member \"indirect_resources\", table 0 \"pipe.acl\"",
                         "an object", "IsObject()" },
                     BadContext{ "no action, unplaced", with( unplaced().with( "/actions/0", "3" ) ),
                                 "at /tables/6/actions/0, table 6 \"t\"",
                                 "each element of \"actions\" to be an object", "action.IsObject()" } ) );

INSTANTIATE_TEST_SUITE_P( WrongRegister, BadContextOf,
                          testing::Values( BadContext{ "width of a dual one",
                                                       with( Support::statefulTable( "r" )
                                                                 .with( "/dual_width_mode", "true" )
                                                                 .with( "/alu_width", "16" ) ),
                                                       "at /tables/6/dual_width_mode, table 6 \"r\"",
                                                       "\"alu_width\" 32 where \"dual_width_mode\" is true",
                                                       "width == 32" },
                                           BadContext{ "dual width", with( "/tables/5/dual_width_mode", "1" ),
                                                       "at /tables/5/dual_width_mode, table 5 \"seen\"",
                                                       "true or false", "IsBool()" } ) );

INSTANTIATE_TEST_SUITE_P(
    WrongSectionElement, BadContextOf,
    testing::Values(
        BadContext{ "learn quanta", with( "/learn_quanta/0", "1" ), "at /learn_quanta/0",
                    "each element of \"learn_quanta\" to be an object", "lq.IsObject()" },
        BadContext{ "stage of phv", with( "/phv_allocation/0", "1" ), "at /phv_allocation/0",
                    "each element of \"phv_allocation\" to be an object", "phvStage.IsObject()" },
        BadContext{ "direction of phv", with( "/phv_allocation/0/egress", "1" ),
                    "at /phv_allocation/0/egress", "\"ingress\" and \"egress\" of a stage to be arrays",
                    "gress_info.IsArray()" },
        BadContext{ "records", with( "/phv_allocation/0/ingress/0/records", "1" ),
                    "at /phv_allocation/0/ingress/0/records", "\"records\" to be an array",
                    "records.IsArray()" },
        BadContext{ "record", with( "/phv_allocation/0/ingress/0/records/0", "1" ),
                    "at /phv_allocation/0/ingress/0/records/0", "each element of \"records\" to be an object",
                    "record.IsObject()" },
        BadContext{ "widths",
                    with( "/phv_allocation/0/ingress/0/records/-",
                          R"({ "is_pov": false, "field_name": "hdr.mac", "field_width": 5 })" ),
                    "at /phv_allocation/0/ingress/0/records/1/field_width",
                    "a field to have one \"field_width\" in all containers of a stage and direction",
                    "perStagePhvSize[ record_field_name ] == width" },
        BadContext{ "bits", with( "/flexible_headers/0/fields/0/slice/bit_width", "12" ),
                    "at /flexible_headers/0/fields/0/slice/bit_width",
                    "\"bit_width\"s that add up to whole bytes", "header.size() % 8 == 0" },
        BadContext{ "header again", completeContext().flexibleHeader( "header", 8 ).text(),
                    "at /flexible_headers/1/fields/0/slice/bit_width",
                    "a flexible header of the same size wherever its name comes again",
                    "parser->bfHeaders( hdrName ) == header" },
        BadContext{ "field lists", with( "/dynamic_hash_calculations/0/field_lists/-", "{}" ),
                    "at /dynamic_hash_calculations/0/field_lists", "exactly one element in \"field_lists\"",
                    "fieldList.Size() == 1" },
        BadContext{ "fields", with( "/dynamic_hash_calculations/0/field_lists/0/fields", "[]" ),
                    "at /dynamic_hash_calculations/0/field_lists/0/fields",
                    "at least one element in \"fields\" of the field list", "fieldCount > 0" } ) );

class Reference : public InFolder {
  protected:
    Outcome outcomeOf( String const& references ) {
        writeSwitchConf( "context.json" );
        writeFile( "context.json", contextOf( matchTable( "t", 1, ", " + references ) ) );
        return bfri( { "tables", "switch.conf" } );
    }
};

TEST_F( Reference, ToATableThatIsNotThereSaysWhichAsTheTraceLineDoes ) {
    auto const outcome = outcomeOf(
        R"("action_data_table_refs": [ { "how_referenced": "indirect", "handle": 77, "name": "adt" } ])" );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, HasSubstr( "\n  expected:  \"action_data_table_refs\" to hold the handle of a "
                                         "table that has stage tables\n"
                                         "  handle:    77 (0x0000004d)\n"
                                         "  reported:  Can't find action tbl hdl 77\n"
                                         "  condition: parser->resourceHandlesHas( adtTblHdl ), in " ) );
    EXPECT_THAT( outcome.err, Not( HasSubstr( "BfResourceParser/0" ) ) );
}

TEST_F( Reference, ToASelectionTableThatIsNotThereSaysWhich ) {
    auto const outcome = outcomeOf( R"("selection_table_refs": [ { "handle": 78, "name": "sel" } ])" );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, HasSubstr( "\n  expected:  \"selection_table_refs\" to hold " ) );
    EXPECT_THAT( outcome.err, HasSubstr( "\n  handle:    78 (0x0000004e)\n"
                                         "  reported:  Can't find sel tbl hdl 78\n" ) );
}

class OtherTable : public InFolder {
  protected:
    Outcome outcomeOf( Support::Table const& table ) {
        writeSwitchConf( "context.json" );
        writeFile( "context.json", with( table ) );
        return bfri( { "summary", "switch.conf" } );
    }
};

TEST_F( OtherTable, ThatNoneReferencesSaysItsHandle ) {
    auto const outcome =
        outcomeOf( Support::statisticsTable( "c" ).handle( 77 ).with( "/how_referenced", "\"direct\"" ) );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, HasSubstr( "table 6 \"c\"\n"
                                         "  expected:  a match table that references this one, as it is not "
                                         "\"indirect\"\n"
                                         "  handle:    77 (0x0000004d)\n"
                                         "  reported:  handle 77 not found\n"
                                         "  condition: false && \"Table not found\", in " ) );
}

TEST_F( OtherTable, OfAnUnknownTypeSaysWhich ) {
    auto const outcome =
        outcomeOf( Support::statisticsTable( "c" ).stages( { Support::StageTable( "odd" ) } ) );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err,
                 HasSubstr( "table 6 \"c\"\n"
                            "  expected:  a known \"stage_table_type\" in the first stage table\n"
                            "  reported:  Unexpected BfResourceType odd\n"
                            "  condition: false && \"Unexpected BfResourceType\", in " ) );
}

class ContextFile : public InFolder {};

TEST_F( ContextFile, ThatIsMissingIsSaidOnce ) {
    writeSwitchConf( "pipe_a/context.json" );
    auto const outcome = bfri( { "summary", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, StartsWith( "bfri: can't use context file pipe_a/context.json\n"
                                          "  problem:   can't open it: No such file or directory\n"
                                          "  expected:  a file, plain or gzip, that holds JSON\n"
                                          "  condition: IsObject(), in " ) );
    EXPECT_EQ( std::count( outcome.err.begin(), outcome.err.end(), '\n' ), 4 );
}

TEST_F( ContextFile, ThatIsDamagedGzipIsExplained ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", String( "\x1F\x8B\x08\x00\x00\x00\x00\x00\x00\x03\xFF\xFF", 12 ) );
    auto const outcome = bfri( { "summary", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, HasSubstr( "\n  problem:   can't read it as gzip: " ) );
}

TEST_F( ContextFile, ThatCannotBeUsedIsExplainedInJsonWhereAskedFor ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", R"({ "tables": {} })" );
    auto const outcome = bfri( { "resources", "switch.conf", "--json" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( parsed( outcome.out )[ "error" ].GetString(),
                 StrEq( "can't use context file context.json: expected \"tables\" to be an array (at "
                        "/tables), found an empty object" ) );
    auto const check = parsed( bfri( { "check", "switch.conf", "--json" } ).out );
    EXPECT_EQ( compact( parsed( outcome.out )[ "failure" ] ),
               compact( check[ "configurations" ][ 0 ][ "failure" ] ) );
}

TEST_F( ContextFile, HasItsNamesKeptFromTheTerminal ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", contextOf( R"({ "name": "a\u001b[2J", "table_type": 1 })" ) );
    EXPECT_THAT( bfri( { "summary", "switch.conf" } ).err, HasSubstr( "table 0 \"a\\x1b[2J\"\n" ) );
}

TEST_F( ContextFile, OfThePipelineThatFailsIsTheOneNamed ) {
    writeFile( "switch.conf", R"({ "devices": [ { "pipelines": [
        { "context_file": "a", "pipes": [ 0 ] }, { "context_file": "a.json", "pipes": [ 1 ] } ] } ] })" );
    writeFile( "a", contextOf( "" ) );
    writeFile( "a.json", "[]" );
    EXPECT_THAT( bfri( { "summary", "switch.conf" } ).err,
                 StartsWith( "bfri: can't use context file a.json\n" ) );
}

TEST_F( ContextFile, WithoutANameIsSaidToHaveNone ) {
    writeSwitchConf( "" );
    EXPECT_THAT(
        bfri( { "summary", "switch.conf" } ).err,
        StartsWith( "bfri: can't use context file with an empty path\n  problem:   can't open it: " ) );
}

TEST_F( ContextFile, IsNamedByNoDeviceWithoutPipelines ) {
    writeFile( "switch.conf", R"({ "devices": [ { "pipelines": [] } ] })" );
    auto const outcome = bfri( { "summary", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err,
                 StartsWith( "bfri: can't use switch configuration switch.conf\n"
                             "  expected:  at least one element in \"pipelines\" of every device\n"
                             "  reported:  numPipelines is 0\n"
                             "  condition: \"numPipelines > 0\" == nullptr, in " ) );
}

} // namespace
