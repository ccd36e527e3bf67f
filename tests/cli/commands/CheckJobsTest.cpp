// What a build job asks of `check`: a baseline, a summary, SARIF, a text that is not too long.

#include "tests/cli/commands/CheckFixture.h"

#include "inspect/check/Findings.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Match tables without a size, each a finding.
Support::ContextBuilder emptyTables( U32 count, U32 firstHandle = 1 ) {
    Support::ContextBuilder context;
    for( U32 i = 0; i < count; ++i )
        context.table( Support::matchTable( "t" + std::to_string( i ) ).handle( firstHandle + i ).size( 0 ) );
    return context;
}

class CheckWithABaseline : public Check {
  protected:
    CheckWithABaseline() {
        outcomeOf( emptyTables( 800 ).text() );
        writeFile( "baseline.json", bfri( { "check", "switch.conf", "--json" } ).out );
    }
    /// Checks again, with tables that have other handles.
    Outcome checkAgain( Support::ContextBuilder const& context, std::vector<char const*> options = {} ) {
        writeFile( "context.json", context.text() );
        options.insert( options.begin(), { "check", "switch.conf", "--baseline", "baseline.json" } );
        return bfri( options );
    }
};

TEST_F( CheckWithABaseline, CountsNewFindingsAlone ) {
    auto const same = checkAgain( emptyTables( 800, 5000 ) );
    EXPECT_EQ( same.status, 0 );
    EXPECT_EQ( same.out,
               "switch.conf: nothing new, 800 known in 1 context file, 800 match tables, 800 hardware "
               "resources, 800 actions\n" );
    auto const more = checkAgain( emptyTables( 801, 5000 ) );
    EXPECT_EQ( more.status, 1 );
    EXPECT_THAT( more.out, StartsWith( "switch.conf: 1 new finding (1 warning), 800 known in " ) );
    EXPECT_THAT( more.out, HasSubstr( "\n  BF402 warning, empty-table: 1\n"
                                      "    match table \"t800\" (0x000016a8): has a size of 0 entries\n" ) );
    EXPECT_EQ( checkAgain( emptyTables( 801 ), { "--fail-on", "error" } ).status, 0 );
}

TEST_F( CheckWithABaseline, TellsWhatIsGone ) {
    auto const less = checkAgain( emptyTables( 798 ) );
    EXPECT_EQ( less.status, 0 );
    EXPECT_THAT( less.out,
                 HasSubstr( "\n2 findings of the baseline are gone:\n"
                            "  BF402 match table \"t798\" (0x0000031f): has a size of 0 entries\n"
                            "  BF402 match table \"t799\" (0x00000320): has a size of 0 entries\n" ) );
    auto const none = checkAgain( Support::ContextBuilder().table( Support::matchTable( "t0" ) ) );
    EXPECT_THAT( none.out, HasSubstr( "\n  and 795 more\n" ) );
    EXPECT_THAT( checkAgain( emptyTables( 798 ), { "--ignore", "BF402" } ).out, Not( HasSubstr( "gone" ) ) );
    writeFile( "context.json", "[" ); // nothing is known to be gone
    EXPECT_THAT( bfri( { "check", "switch.conf", "--baseline", "baseline.json" } ).out,
                 Not( HasSubstr( "gone" ) ) );
}

TEST_F( CheckWithABaseline, AsJsonHasAllAndIsTheNextBaseline ) {
    auto const answer =
        checkAgain( emptyTables( 801, 7000 ).table( Support::matchTable( "x" ).size( 0 ) ), { "--json" } );
    EXPECT_EQ( answer.status, 1 );
    auto const json = parsed( answer.out );
    auto const& findings = json[ "configurations" ][ 0 ][ "findings" ];
    ASSERT_EQ( findings.Size(), 802U );
    EXPECT_FALSE( findings[ 799 ][ "isNew" ].GetBool() );
    EXPECT_TRUE( findings[ 800 ][ "isNew" ].GetBool() );
    EXPECT_EQ( json[ "gone" ].Size(), 0U );
    writeFile( "baseline.json", answer.out );
    EXPECT_EQ( bfri( { "check", "switch.conf", "--baseline", "baseline.json" } ).status, 0 );
    auto const less = parsed( checkAgain( emptyTables( 801 ), { "--json" } ).out );
    ASSERT_EQ( less[ "gone" ].Size(), 1U );
    EXPECT_STREQ( less[ "gone" ][ 0 ][ "name" ].GetString(), "x" );
}

TEST_F( CheckWithABaseline, KnowsEachOfSeveralFindingsOfOneRecord ) {
    auto const context = [ & ]( std::vector<char const*> const& unknown ) {
        Support::Table table = Support::matchTable( "acl" ).handle( 7 );
        for( char const* const name : unknown )
            table.statistics( name );
        return Support::ContextBuilder().table( table );
    };
    writeFile( "context.json", context( { "one", "two" } ).text() );
    writeFile( "baseline.json", bfri( { "check", "switch.conf", "--json" } ).out );
    EXPECT_EQ( checkAgain( context( { "two", "one" } ) ).status, 0 );
    auto const more = checkAgain( context( { "zero", "one", "two" } ) );
    EXPECT_EQ( more.status, 1 );
    EXPECT_THAT( more.out, HasSubstr( "1 new finding" ) );
    EXPECT_THAT( more.out, HasSubstr( Bfri::hexText( Support::handleOf( "zero" ) ) ) );
}

TEST_F( CheckWithABaseline, RefusesOtherFiles ) {
    for( char const* const text : { "", "{}", "[]", R"({"format":2,"configurations":[]})",
                                    R"({"format":1,"configurations":[{}]})" } ) {
        writeFile( "baseline.json", text );
        auto const outcome = bfri( { "check", "switch.conf", "--baseline", "baseline.json" } );
        EXPECT_EQ( outcome.status, 3 ) << text;
        EXPECT_THAT( outcome.err, StartsWith( "bfri: the baseline baseline.json is not " ) );
    }
    auto const missing = bfri( { "check", "switch.conf", "--baseline", "none.json" } );
    EXPECT_EQ( missing.status, 3 );
    EXPECT_EQ( missing.err, "bfri: the baseline none.json can't be read\n" );
}

TEST_F( CheckWithABaseline, KnowsAFileInAnotherFolder ) {
    for( char const* const folder : { "one", "two" } ) {
        std::filesystem::create_directories( folder );
        writeFile( String( folder ) + "/context.json", Support::ContextBuilder().text() );
        writeFile( String( folder ) + "/switch.conf",
                   Support::SwitchConfBuilder()
                       .device( Support::DeviceBuilder().pipeline( "context.json", {} ) )
                       .text() );
    }
    writeFile( "baseline.json", bfri( { "check", "one/switch.conf", "--json" } ).out );
    EXPECT_EQ( bfri( { "check", "one/switch.conf" } ).status, 1 );
    EXPECT_EQ( bfri( { "check", "two/switch.conf", "--baseline", "baseline.json" } ).status, 0 );
}

TEST_F( CheckWithABaseline, KnowsNamesOfAnyBytes ) {
    auto const odd = Support::ContextBuilder().table( Support::matchTable( "a\xff\x1b\"\u200b" ).size( 0 ) );
    writeFile( "context.json", odd.text() );
    writeFile( "baseline.json", bfri( { "check", "switch.conf", "--json" } ).out );
    EXPECT_EQ( checkAgain( odd ).status, 0 );
}

TEST_F( Check, OfManyFindingsHasRoomForTheFirstOfEachCode ) {
    auto const outcome = outcomeOf( emptyTables( 5000 ).text() );
    auto const lines = std::count( outcome.out.begin(), outcome.out.end(), '\n' );
    EXPECT_LE( lines, 60 );
    EXPECT_THAT( outcome.out,
                 HasSubstr( "\n  BF402 warning, empty-table: 5000 (has a size of 0 entries)\n" ) );
    EXPECT_THAT( outcome.out, HasSubstr( "\n    match table \"t9\" (0x0000000a)\n    and 4990 more\n"
                                         "  --all shows all of them\n" ) );
    auto const all = bfri( { "check", "switch.conf", "--all" } );
    EXPECT_THAT( all.out, HasSubstr( "\n    match table \"t4999\" (0x00001388)\n" ) );
}

TEST_F( Check, OfManyCodesHasAtMost60Lines ) {
    // 35 findings of a code, and of a second and a third.
    Support::ContextBuilder context = emptyTables( 35 );
    for( U32 i = 0; i < 35; ++i )
        context.table( Support::matchTable( "u" + std::to_string( i ) ).handle( 100 + i ).stages( {} ) )
            .table( Support::statisticsTable( "c" + std::to_string( i ) )
                        .handle( 200 + i )
                        .referenced( "indirect" ) )
            .table( Support::matchTable( "s" + std::to_string( i ) )
                        .handle( 300 + i )
                        .statistics( "none" + std::to_string( i ) ) )
            .table( Support::matchTable( "o\x1b" + std::to_string( i ) ).handle( 400 + i ) );
    auto const outcome = outcomeOf( context.text() );
    EXPECT_LE( std::count( outcome.out.begin(), outcome.out.end(), '\n' ), 60 );
    for( char const* const code : { "BF208 warning, odd-name: 35", "BF301 error, unknown-reference: 35",
                                    "BF305 warning, unreferenced: 35", "BF401 note, unplaced-table: 35",
                                    "BF402 warning, empty-table: 35" } )
        EXPECT_THAT( outcome.out, HasSubstr( code ) );
    EXPECT_THAT( outcome.out, HasSubstr( "    and 2" ) );
}

TEST_F( Check, AsASummaryHasALineForEachCode ) {
    outcomeOf( emptyTables( 3 ).table( Support::matchTable( "off" ).handle( 9 ).stages( {} ) ).text() );
    auto const outcome = bfri( { "check", "switch.conf", "--summary" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_THAT(
        outcome.out,
        HasSubstr( " actions\n  BF402 warning, empty-table: 3\n  BF401 note, unplaced-table: 1\n'bfri" ) );
    auto const json = parsed( bfri( { "check", "switch.conf", "--summary", "--json" } ).out );
    EXPECT_EQ( compact( json[ "configurations" ][ 0 ][ "codes" ] ),
               R"([{"code":"BF402","title":"empty-table","severity":"warning","findings":3,"new":3},)"
               R"({"code":"BF401","title":"unplaced-table","severity":"note","findings":1,"new":1}])" );
    EXPECT_FALSE( json[ "configurations" ][ 0 ].HasMember( "findings" ) );
}

rapidjson::Document sarif( std::vector<char const*> options = {} ) {
    options.insert( options.begin(), { "check", "switch.conf", "--sarif" } );
    rapidjson::Document document;
    document.Parse( bfri( options ).out.c_str() );
    EXPECT_FALSE( document.HasParseError() );
    return document;
}

TEST_F( Check, AsSarifHasTheFileLineAndColumnOfEachFinding ) {
    outcomeOf( "{\n" + Support::ContextBuilder()
                           .table( Support::matchTable( "a b" ).handle( 7 ).size( 0 ) )
                           .text()
                           .substr( 1 ) );
    auto const log = sarif();
    EXPECT_THAT( memberNames( log ), testing::ElementsAre( "version", "$schema", "runs" ) );
    auto const& run = log[ "runs" ][ 0 ];
    auto const& rules = run[ "tool" ][ "driver" ][ "rules" ];
    EXPECT_EQ( rules.Size(), Bfri::findingKinds().size() );
    ASSERT_EQ( run[ "results" ].Size(), 1U );
    auto const& result = run[ "results" ][ 0 ];
    EXPECT_STREQ( result[ "ruleId" ].GetString(), "BF402" );
    EXPECT_STREQ( rules[ result[ "ruleIndex" ].GetUint() ][ "id" ].GetString(), "BF402" );
    EXPECT_STREQ( result[ "level" ].GetString(), "warning" );
    EXPECT_EQ(
        compact( result[ "locations" ][ 0 ] ),
        R"({"physicalLocation":{"artifactLocation":{"uri":"context.json"},"region":{"startLine":2,"startColumn":33}},)"
        R"("logicalLocations":[{"name":"a b","kind":"match table"}]})" );
    EXPECT_FALSE( result.HasMember( "baselineState" ) );
    EXPECT_TRUE( run[ "invocations" ][ 0 ][ "executionSuccessful" ].GetBool() );
    EXPECT_EQ( bfri( { "check", "switch.conf", "--sarif" } ).status, 1 );
    EXPECT_EQ( bfri( { "check", "switch.conf", "--sarif", "--json" } ).status, 2 );
    EXPECT_EQ( bfri( { "check", "switch.conf", "--sarif", "--summary" } ).status, 2 );
}

TEST_F( CheckWithABaseline, AsSarifTellsNewFromOldAndGone ) {
    writeFile(
        "context.json",
        emptyTables( 800 ).without( "/tables/0" ).table( Support::matchTable( "x" ).size( 0 ) ).text() );
    auto const log = sarif( { "--baseline", "baseline.json" } );
    auto const& results = log[ "runs" ][ 0 ][ "results" ];
    ASSERT_EQ( results.Size(), 801U );
    EXPECT_STREQ( results[ 0 ][ "baselineState" ].GetString(), "unchanged" );
    EXPECT_STREQ( results[ 799 ][ "baselineState" ].GetString(), "new" );
    EXPECT_STREQ( results[ 800 ][ "baselineState" ].GetString(), "absent" );
}

TEST_F( Check, AsSarifTellsWhatCannotBeLoaded ) {
    outcomeOf( "{\n  \"tables\": [ ] ]\n}" );
    auto const log = sarif( { "a%b c.conf" } );
    auto const& invocation = log[ "runs" ][ 0 ][ "invocations" ][ 0 ];
    EXPECT_FALSE( invocation[ "executionSuccessful" ].GetBool() );
    auto const& told = invocation[ "toolExecutionNotifications" ];
    ASSERT_EQ( told.Size(), 2U );
    auto const& place = told[ 0 ][ "locations" ][ 0 ][ "physicalLocation" ];
    EXPECT_STREQ( place[ "artifactLocation" ][ "uri" ].GetString(), "context.json" );
    EXPECT_EQ( place[ "region" ][ "startLine" ].GetUint(), 2U );
    EXPECT_STREQ(
        told[ 1 ][ "locations" ][ 0 ][ "physicalLocation" ][ "artifactLocation" ][ "uri" ].GetString(),
        "a%25b%20c.conf" );
}

} // namespace
