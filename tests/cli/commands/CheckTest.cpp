#include "tests/cli/commands/CheckFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// Without anything odd.
String soundContext() {
    return Support::ContextBuilder()
        .table( Support::matchTable( "acl" ).statistics( "hits" ) )
        .table( Support::statisticsTable( "hits" ).referenced( "direct" ) )
        .text();
}

TEST_F( Check, OfASoundConfigurationSaysWhatItHasLookedAt ) {
    auto const outcome = outcomeOf( soundContext() );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_EQ( outcome.out,
               "switch.conf: sound in 1 context file, 1 match table, 2 hardware resources, 1 counter, "
               "1 action\n" );
    EXPECT_THAT( outcome.err, IsEmpty() );
}

TEST_F( Check, SaysWhereWhatWasExpectedAndWhatWasFound ) {
    auto const outcome =
        outcomeOf( completeContext().with( "/tables/0/match_attributes/stage_tables", "\"abc\"" ).text() );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, IsEmpty() );
    EXPECT_THAT( outcome.out, StartsWith( "switch.conf: can't be loaded\n"
                                          "  file:      context.json\n"
                                          "  where:     /tables/0/match_attributes/stage_tables, line " ) );
    EXPECT_THAT( outcome.out,
                 HasSubstr( "\n  table:     0 \"pipe.acl\"\n"
                            "  expected:  \"stage_tables\" to be an array\n"
                            "  found:     a string, \"abc\"\n"
                            "  condition: match_attributes[ \"stage_tables\" ].IsArray(), in " ) );
}

struct Wrong {
    char const* pointer;
    char const* value;
    char const* found;
};

std::ostream& operator<<( std::ostream& os, Wrong const& row ) {
    return os << row.pointer << " is " << row.value;
}

class CheckFound : public Check, public testing::WithParamInterface<Wrong> {};

TEST_P( CheckFound, IsWhatStandsThere ) {
    auto const outcome = outcomeOf( completeContext().with( GetParam().pointer, GetParam().value ).text() );
    EXPECT_THAT( outcome.out, HasSubstr( String( "\n  found:     " ) + GetParam().found + "\n" ) );
}

INSTANTIATE_TEST_SUITE_P(
    Values, CheckFound,
    testing::Values( Wrong{ "/tables/0/name", "null", "null" }, Wrong{ "/tables/0/name", "true", "true" },
                     Wrong{ "/tables/0/handle", "-12", "the number -12" },
                     Wrong{ "/tables/1/size", "1.50", "the number 1.50" },
                     Wrong{ "/tables/0/name", "[]", "an empty array" },
                     Wrong{ "/tables/0/name", "[[1],2]", "an array of 2 elements" },
                     Wrong{ "/tables/0/name", "{}", "an empty object" },
                     Wrong{ "/tables/0", R"({"a":{"c":1},"b":2})", R"(an object with "a", "b")" },
                     Wrong{ "/tables", R"({"a":1})", R"(an object with "a")" } ) );

TEST_F( Check, OfTwoMembersThatDisagreeShowsTheOneToBlame ) {
    auto const outcome = outcomeOf( completeContext()
                                        .with( "/tables/5/dual_width_mode", "true" )
                                        .with( "/tables/5/alu_width", "16" )
                                        .text() );
    EXPECT_THAT( outcome.out, HasSubstr( "\n  found:     the number 16\n" ) );
}

TEST_F( Check, ShowsFindingsUnderTheirCode ) {
    auto const outcome = outcomeOf(
        Support::ContextBuilder().table( Support::matchTable( "acl" ).handle( 7 ).size( 0 ) ).text() );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_THAT( outcome.out,
                 HasSubstr( "\n  BF402 warning, empty-table: 1\n"
                            "    match table \"acl\" (0x00000007): has a size of 0 entries\n" ) );
    auto const answer = parsed( bfri( { "check", "switch.conf", "--json" } ).out );
    EXPECT_EQ( compact( answer[ "configurations" ][ 0 ][ "findings" ] ),
               R"-([{"code":"BF402","title":"empty-table","severity":"warning","kind":"match table",)-"
               R"-("name":"acl","handle":7,"contextFile":"context.json",)-"
               R"-("file":"context.json","line":1,"column":34,"isNew":true,)-"
               R"-("message":"match table \"acl\" (0x00000007): has a size of 0 entries"}])-" );
}

TEST_F( Check, EscapesNamesInTextAsATerminalNeedsAndInJsonAsJsonDoes ) {
    String const odd = "a\x1b"
                       "b";
    auto const outcome = outcomeOf( Support::ContextBuilder()
                                        .table( Support::matchTable( odd ).handle( 7 ) )
                                        .table( Support::matchTable( "acl" ).handle( 7 ) )
                                        .text() );
    EXPECT_THAT(
        outcome.out,
        HasSubstr( "    table \"a\\x1bb\" (0x00000007): it is the handle of 2: \"a\\x1bb\", \"acl\"\n" ) );
    EXPECT_THAT( outcome.out, HasSubstr( "match table \"a\\x1bb\" (0x00000007)" ) );
    EXPECT_THAT( outcome.out, Not( HasSubstr( "\x1b" ) ) );
    EXPECT_THAT( bfri( { "check", "switch.conf", "--json" } ).out,
                 HasSubstr( R"("match table \"a\u001bb\" (0x00000007): )" ) );
}

TEST_F( Check, CountsFindingsAndSaysOnceWhatAllOfACodeHave ) {
    auto const outcome = outcomeOf( Support::ContextBuilder()
                                        .table( Support::matchTable( "acl" ).handle( 7 ).size( 0 ) )
                                        .table( Support::matchTable( "lpm" ).handle( 8 ).size( 0 ) )
                                        .table( Support::matchTable( "off" ).handle( 9 ).stages( {} ) )
                                        .text() );
    EXPECT_THAT( outcome.out,
                 StartsWith( "switch.conf: 3 findings (2 warnings, 1 note) in 1 context file, " ) );
    EXPECT_THAT( outcome.out, HasSubstr( "\n  BF402 warning, empty-table: 2 (has a size of 0 entries)\n"
                                         "    match table \"acl\" (0x00000007)\n"
                                         "    match table \"lpm\" (0x00000008)\n"
                                         "  BF401 note, unplaced-table: 1\n"
                                         "    match table \"off\" (0x00000009): has no stage table\n" ) );
}

TEST_F( Check, OfSeveralFilesNamesThatOfAFinding ) {
    writeFile( "a.json", soundContext() );
    writeFile( "b.json",
               Support::ContextBuilder().table( Support::matchTable( "lpm" ).handle( 7 ).size( 0 ) ).text() );
    writeFile( "switch.conf", Support::SwitchConfBuilder()
                                  .device( Support::DeviceBuilder()
                                               .runtimeConfig( "r" )
                                               .pipeline( "a.json", { 0 } )
                                               .pipeline( "b.json", { 1 } ) )
                                  .text() );
    EXPECT_THAT( bfri( { "check", "switch.conf" } ).out,
                 HasSubstr( "\n    match table \"lpm\" (0x10000007) in b.json: has a size of 0 entries\n" ) );
}

TEST_F( Check, LeavesOutWhatIsToBeIgnored ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", contextOf( matchTable( "a", 1 ) + "," + matchTable( "a", 2 ) ) );
    EXPECT_EQ( bfri( { "check", "switch.conf" } ).status, 1 );
    for( char const* const codes : { "BF201", "bf201,BF304", "duplicate-table-name", " BF304 , bf201 " } ) {
        auto const outcome = bfri( { "check", "switch.conf", "--ignore", codes } );
        EXPECT_EQ( outcome.status, 0 ) << codes;
        EXPECT_THAT( outcome.out, StartsWith( "switch.conf: sound in " ) );
    }
    EXPECT_EQ( bfri( { "check", "switch.conf", "--ignore", "BF304" } ).status, 1 );
    auto const outcome = bfri( { "check", "switch.conf", "--json", "--ignore", "BF2" } );
    EXPECT_EQ( outcome.status, 2 );
    EXPECT_THAT( parsed( outcome.out )[ "error" ].GetString(),
                 StartsWith( "no finding has the code 'BF2'" ) );
}

TEST_F( Check, FailsFromTheSeverityOnThatIsAskedFor ) {
    struct Row {
        Support::ContextBuilder context;
        std::vector<int> statuses; ///< with error, warning, note
    };
    auto const acl = Support::matchTable( "acl" );
    for( auto const& [ context, statuses ] :
         { Row{ Support::ContextBuilder().table( acl ), { 0, 0, 0 } },
           Row{ Support::ContextBuilder().table( Support::Table( acl ).stages( {} ) ), { 0, 0, 1 } },
           Row{ Support::ContextBuilder().table( Support::Table( acl ).size( 0 ) ), { 0, 1, 1 } },
           Row{ Support::ContextBuilder().flexibleHeader( "h", 65544 ), { 1, 1, 1 } } } ) {
        auto const asEver = outcomeOf( context.text() );
        EXPECT_EQ( asEver.status, statuses[ 2 ] );
        std::size_t i = 0;
        for( char const* const severity : { "error", "warning", "note" } ) {
            auto const outcome = bfri( { "check", "switch.conf", "--fail-on", severity } );
            EXPECT_EQ( outcome.status, statuses[ i++ ] ) << severity << outcome.out;
            EXPECT_EQ( outcome.out, asEver.out );
        }
    }
    EXPECT_EQ( bfri( { "check", "switch.conf", "--fail-on", "all" } ).status, 2 );
    EXPECT_EQ( bfri( { "check", "no.conf", "--fail-on", "error" } ).status, 3 );
}

TEST_F( Check, OfAConfigurationWithoutContextFilesIsNotSound ) {
    writeFile( "switch.conf", R"({"devices":[]})" );
    auto const outcome = bfri( { "check", "switch.conf" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_THAT( outcome.out,
                 StartsWith( "switch.conf: 1 finding (1 warning), without a context file to look "
                             "into\n  BF107 warning, no-context-file: 1\n    switch configuration "
                             "\"switch.conf\": names no context file\n" ) );
    EXPECT_EQ( bfri( { "check", "switch.conf", "--ignore", "BF107" } ).out,
               "switch.conf: sound, without a context file to look into\n" );
}

TEST_F( Check, OfAHeaderOfTwoSizesSaysBoth ) {
    writeFile( "switch.conf", R"({"devices":[{"pipelines":[{"context_file":"a.json","pipes":[0]},)"
                              R"({"context_file":"b.json","pipes":[1]}]}]})" );
    writeFile( "a.json",
               Support::ContextBuilder().flexibleHeader( "other", 8 ).flexibleHeader( "h", 16 ).text() );
    writeFile( "b.json", Support::ContextBuilder().flexibleHeader( "h", 24 ).text() );
    auto const outcome = bfri( { "check", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.out, HasSubstr( "\n  file:      b.json\n  where:     /flexible_headers/0\n" ) );
    EXPECT_THAT( outcome.out, HasSubstr( "\n  found:     \"h\" of 24 bits, 16 bits in a.json\n" ) );
}

TEST_F( Check, OfAHeaderOfHalfABytePointsToTheHeader ) {
    auto const outcome = outcomeOf( Support::ContextBuilder()
                                        .flexibleHeader( "other", 8 )
                                        .flexibleHeader( "h", 8 )
                                        .with( "/flexible_headers/1/fields/0/slice/bit_width", "-12" )
                                        .text() );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.out, HasSubstr( "\n  where:     /flexible_headers/1\n"
                                         "  expected:  \"bit_width\"s that add up to whole bytes\n"
                                         "  found:     \"h\" of -12 bits\n" ) );
}

// Handles that lead to no table.

struct Missing {
    char const* what;
    Support::ContextBuilder context;
    char const* found;
};

std::ostream& operator<<( std::ostream& out, Missing const& missing ) { return out << missing.what; }

class CheckOfAMissingHandle : public Check, public testing::WithParamInterface<Missing> {};

TEST_P( CheckOfAMissingHandle, SaysWhy ) {
    auto const outcome = outcomeOf( GetParam().context.text() );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.out, HasSubstr( String( "\n  handle:    77 (0x0000004d)\n  found:     " ) +
                                         GetParam().found + "\n  reported:  " ) );
    EXPECT_THAT( failureOf( GetParam().context.text() ), HasSubstr( R"("handle":77,"found":")" ) );
}

Support::Table directCounter( String const& name ) {
    return Support::statisticsTable( name ).handle( 77 ).referenced( "direct" );
}

/// A table that lists handle 77.
Support::Table listing( char const* list ) {
    return Support::matchTable( "acl" ).handle( 5 ).with(
        list, R"([{"how_referenced":"indirect","handle":77,"name":"it"}])" );
}

/// The table that lists the counter is hidden by one with the same handle.
Support::ContextBuilder withHiddenTable() {
    return Support::ContextBuilder()
        .table( listing( "/statistics_table_refs" ) )
        .table( Support::matchTable( "lpm" ).handle( 5 ) )
        .table( directCounter( "hits" ) );
}

INSTANTIATE_TEST_SUITE_P(
    Faults, CheckOfAMissingHandle,
    testing::Values(
        Missing{ "unlisted", Support::ContextBuilder().table( directCounter( "hits" ) ),
                 "no table that lists it" },
        Missing{
            "hidden", withHiddenTable(),
            R"("acl" lists it in "statistics_table_refs", but its own handle 0x00000005 is also that of )"
            R"("lpm", and the model keeps one of them)" },
        Missing{ "unplacedLister",
                 Support::ContextBuilder()
                     .table( listing( "/statistics_table_refs" ).stages( {} ) )
                     .table( directCounter( "hits" ) ),
                 R"("acl" lists it in "statistics_table_refs", but has no stage table)" },
        Missing{ "unplacedListerOfUnits",
                 Support::ContextBuilder()
                     .table( listing( "/statistics_table_refs" )
                                 .matchType( "algorithmic_tcam" )
                                 .partitions( 1 )
                                 .units( { {}, {} } ) )
                     .table( directCounter( "hits" ) ),
                 R"("acl" lists it in "statistics_table_refs", but has no stage table)" },
        Missing{ "wrongList",
                 Support::ContextBuilder()
                     .table( listing( "/meter_table_refs" ) )
                     .table( directCounter( "hits" ) ),
                 R"("acl" lists it in "meter_table_refs")" },
        Missing{ "several",
                 Support::ContextBuilder()
                     .table( directCounter( "a" ) )
                     .table( directCounter( "b" ) )
                     .table( directCounter( "c" ) )
                     .table( directCounter( "d" ) )
                     .table( directCounter( "e" ) )
                     .table( directCounter( "f" ) ),
                 R"(no table that lists it; it is the handle of "a", "b", "c", "d", ...)" },
        Missing{ "nobodys", Support::ContextBuilder().table( listing( "/action_data_table_refs" ) ),
                 "no table with this handle" },
        Missing{ "unplaced",
                 Support::ContextBuilder()
                     .table( listing( "/action_data_table_refs" ) )
                     .table( Support::matchTable( "data" ).handle( 77 ).stages( {} ) ),
                 R"(this handle only with tables that are not placed: "data")" } ),
    []( auto const& test ) { return test.param.what; } );

TEST_F( Check, OfAMissingHandleWithThePipeInItComparesWithout ) {
    writeFile( "a.json", withHiddenTable().text() );
    writeFile( "switch.conf",
               Support::SwitchConfBuilder()
                   .device( Support::DeviceBuilder().runtimeConfig( "r" ).pipeline( "a.json", { 1 } ) )
                   .text() );
    auto const outcome = bfri( { "check", "switch.conf" } );
    EXPECT_THAT( outcome.out,
                 HasSubstr( "\n  handle:    268435533 (0x1000004d)\n  found:     \"acl\" lists it" ) );
    EXPECT_THAT( outcome.out, HasSubstr( " handle 0x10000005 is also that of \"lpm\"" ) );
}

TEST_F( Check, SaysThatAFileEndsTooEarly ) {
    String const context = soundContext();
    EXPECT_THAT( outcomeOf( context.substr( 0, context.size() / 2 ) ).out,
                 HasSubstr( "\n  found:     the end of the file\n" ) );
}

TEST_F( Check, OfAFileThatEndsInABlankLineShowsTheLastOneWithText ) {
    EXPECT_THAT( outcomeOf( "{\n  \"tables\": [  \n\n   \n" ).out,
                 HasSubstr( "\n               \"tables\": [\n"
                            "                          ^\n"
                            "  expected: " ) );
}

TEST_F( Check, NamesAByteOrderMark ) {
    constexpr char const* said = "\n  found:     a file that starts with a byte-order mark\n";
    EXPECT_THAT( outcomeOf( "\xEF\xBB\xBF" + soundContext() ).out, HasSubstr( said ) );
    EXPECT_THAT( outcomeOf( "\xC3\xA9" + soundContext() ).out, Not( HasSubstr( said ) ) );
    writeFile( "switch.conf", "\xEF\xBB\xBF{}" );
    EXPECT_THAT( bfri( { "check", "switch.conf" } ).out, HasSubstr( said ) );
}

TEST_F( Check, PointsAtASyntaxError ) {
    auto const outcome = outcomeOf( "{\n\t\"tables\": [,] }" );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.out, HasSubstr( "\n  problem:   line 2, column 13: Invalid value.\n"
                                         "              \"tables\": [,] }\n"
                                         "                         ^\n" ) );
}

TEST_F( Check, CutsALongLineAndKeepsControlsFromTheTerminal ) {
    auto const outcome = outcomeOf( "[" + String( 5000, ' ' ) + "\"\x1B\"" + String( 5000, ' ' ) + "]" );
    EXPECT_THAT( outcome.out, HasSubstr( "\n             ..." ) );
    EXPECT_THAT( outcome.out, HasSubstr( "\\x1b" ) );
    EXPECT_THAT( outcome.out, Not( HasSubstr( "\x1B" ) ) );
    EXPECT_LT( outcome.out.size(), 800U );
}

TEST_F( Check, OfABadSwitchConfigurationShowsThePlace ) {
    writeFile( "switch.conf", "{\n\"devices\": 7 }" );
    auto const outcome = bfri( { "check", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_EQ( outcome.out,
               "switch.conf: can't be loaded\n"
               "  file:      switch.conf\n"
               "  where:     line 2, column 12\n"
               "             \"devices\": 7 }\n"
               "                        ^\n"
               "  expected:  \"devices\" to be an array\n"
               "  found:     a number\n"
               "  reported:  There was an error in the provided switch.conf for profile "
               "switch.conf: switch.conf:2:12: expected \"devices\" to be an array, found a number. "
               "Correct the switch.conf file.\n" );
}

TEST_F( Check, SaysAllOfAFailureInJson ) {
    String const failure = failureOf( R"({ "tables": {} })" );
    EXPECT_THAT( failure,
                 StartsWith( R"({"file":"context.json","isContextFile":true,"problem":null,"line":1,)"
                             R"("column":null,"excerpt":null,"pointer":"/tables","member":null,)"
                             R"("tableIndex":null,"table":null,"expected":"\"tables\" to be an array",)"
                             R"("handle":null,"found":"an empty object","reported":[],)"
                             R"-("condition":"d[ \"tables\" ].IsArray()","function":)-" ) );
}

TEST_F( Check, GoesOnBehindABadConfiguration ) {
    outcomeOf( soundContext() );
    auto const outcome = bfri( { "check", "no.conf", "switch.conf" } );
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.out, StartsWith( "no.conf: can't be loaded\n  file:      no.conf\n"
                                          "  problem:   No such file or directory\n"
                                          "  reported:  There was an error" ) );
    EXPECT_THAT( outcome.out, HasSubstr( "\nswitch.conf: sound in " ) );
    auto const answer = parsed( bfri( { "check", "no.conf", "switch.conf", "--json" } ).out );
    EXPECT_FALSE( answer[ "configurations" ][ 0 ][ "loads" ].GetBool() );
    EXPECT_TRUE( answer[ "configurations" ][ 1 ][ "loads" ].GetBool() );
}

TEST_F( Check, WithoutAConfigurationIsWrongUsage ) {
    EXPECT_EQ( bfri( { "check" } ).status, 2 );
    EXPECT_EQ( bfri( { "check", "a.conf", "--explain", "BF101" } ).status, 2 );
}

TEST_F( Check, ExplainsACodeAndATitle ) {
    auto const outcome = bfri( { "check", "--explain", "bf101" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_THAT( outcome.out, StartsWith( "BF101 unread-context-file (error)\n\nTwo pipelines " ) );
    EXPECT_EQ( bfri( { "check", "--explain", "unread-context-file" } ).out, outcome.out );
    auto const answer = parsed( bfri( { "check", "--explain", "all", "--json" } ).out );
    EXPECT_STREQ( answer[ "codes" ][ 0 ][ "code" ].GetString(), "BF101" );
    EXPECT_GT( answer[ "codes" ].Size(), 20U );
}

TEST_F( Check, SuggestsCodes ) {
    auto const outcome = bfri( { "check", "--explain", "bf40" } );
    EXPECT_EQ( outcome.status, 2 );
    EXPECT_THAT( outcome.err, HasSubstr( "codes like it:\n  BF" ) );
    EXPECT_THAT( bfri( { "check", "--explain", "several" } ).err, HasSubstr( "  several-parents\n" ) );
}

} // namespace
