#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class BudgetCommand : public InFolder {
  protected:
    BudgetCommand() {
        Support::ContextBuilder context;
        context.table( Support::matchTable( "acl" )
                           .stages( { Support::StageTable().number( 3 ).size( 60 ) } )
                           .size( 60 ) );
        writeFile( "context.json", context.text() );
        writeSwitchConf( "context.json" );
        writeFile( "ok.toml", "[chip]\nstages = 4\nlevel = 'error'\nreason = 'four'\n" );
        writeFile( "over.toml", rules( "error" ) );
        writeFile( "warn.toml", rules( "warn" ) );
    }
    static String rules( String const& level ) {
        return "# none\n[[table]]\nname = 'acl'\nmax = 40\nreason = 'too\tlong'\nlevel = '" + level +
               "'\n[[capacity]]\ntype = '*_match'\nentries = 120\nlevel = 'error'\nreason = 'x'\n";
    }
};

TEST_F( BudgetCommand, EndsWithTheWorstThatIsBroken ) {
    EXPECT_EQ( bfri( { "budget", "switch.conf", "ok.toml" } ).status, 0 );
    EXPECT_EQ( bfri( { "budget", "switch.conf", "warn.toml" } ).status, 0 );
    EXPECT_EQ( bfri( { "budget", "switch.conf", "over.toml" } ).status, 1 );
    EXPECT_EQ( bfri( { "budget", "switch.conf", "missing.toml" } ).status, 3 );
    EXPECT_EQ( bfri( { "budget", "switch.conf" } ).status, 2 );
    EXPECT_EQ( bfri( { "budget", "missing.conf", "ok.toml" } ).status, 3 );
    EXPECT_EQ( bfri( { "budget", "switch.conf", "ok.toml", "--against", "missing.conf" } ).status, 3 );
}

TEST_F( BudgetCommand, PrintsTheWorstFirstAndWhy ) {
    EXPECT_EQ( bfri( { "budget", "switch.conf", "over.toml" } ).out,
               "switch.conf: 1 error\n\n"
               "IS     USED  AVAILABLE  PERCENT  SLACK  LINE  OF\n"
               "error    60         40  150%       -20     2  context.json: size of match table \"acl\"\n"
               "ok       60        120  50%         60     7  context.json, stage 3: *_match entries\n"
               "\nline 2: too\\x09long\n" );
    EXPECT_THAT( bfri( { "budget", "switch.conf", "warn.toml" } ).out,
                 StartsWith( "switch.conf: 1 warning\n" ) );
    EXPECT_THAT( bfri( { "budget", "switch.conf", "ok.toml" } ).out,
                 StartsWith( "switch.conf: within the budget\n" ) );
}

TEST_F( BudgetCommand, SaysWhatItCannotJudge ) {
    writeFile( "rules.toml", "[[table]]\nname = 'alc'\nmax = 1\nlevel = 'warn'\nreason = 'x'\n"
                             "[[growth]]\nmax = 1\nlevel = 'warn'\nreason = 'x'\n" );
    auto const answer = bfri( { "budget", "switch.conf", "rules.toml" } );
    EXPECT_EQ( answer.status, 1 );
    EXPECT_EQ( answer.out,
               "switch.conf: 1 error, 1 warning\n"
               "  rules.toml:1: matches nothing: no resource is called \"alc\"; names like it: acl\n"
               "  rules.toml:6: warning: not judged: growth needs an older configuration\n"
               "  --against OLD gives the older configuration\n" );
    auto const against = bfri( { "budget", "switch.conf", "rules.toml", "--against", "switch.conf" } );
    EXPECT_THAT( against.out, HasSubstr( "growth of entries\n" ) );
    EXPECT_THAT( against.out, Not( HasSubstr( "not judged" ) ) );
}

TEST_F( BudgetCommand, FailsWhereGrowthIsNotJudged ) {
    for( auto const& [ level, status ] : { std::pair( "error", 1 ), std::pair( "warn", 0 ) } ) {
        writeFile( "rules.toml", String( "[[growth]]\nmax = 1\nreason = 'x'\nlevel = '" ) + level + "'\n" );
        EXPECT_EQ( bfri( { "budget", "switch.conf", "rules.toml" } ).status, status );
        auto const json = parsed( bfri( { "budget", "switch.conf", "rules.toml", "--json" } ).out );
        EXPECT_EQ( json[ status ? "errors" : "warnings" ].GetUint(), 1U );
        EXPECT_STREQ( json[ "problems" ][ 0 ][ "level" ].GetString(), level );
        EXPECT_EQ( bfri( { "budget", "switch.conf", "rules.toml", "--against", "switch.conf" } ).status, 0 );
    }
}

TEST_F( BudgetCommand, TellsAMistakeInTheRulesWithItsPlace ) {
    writeFile( "rules.toml", "[chip]\nstages = 12\nlevel = 'bad'\nreason = 'x'\n" );
    auto const answer = bfri( { "budget", "switch.conf", "rules.toml" } );
    EXPECT_EQ( answer.status, 3 );
    EXPECT_EQ( answer.err, "bfri: rules.toml:3:9: unknown level: expected off, warn or error\n" );
}

TEST_F( BudgetCommand, AsJsonHasTheSame ) {
    auto const answer = bfri( { "budget", "switch.conf", "over.toml", "--json" } );
    EXPECT_EQ( answer.status, 1 );
    auto const json = parsed( answer.out );
    EXPECT_THAT( memberNames( json ),
                 testing::ElementsAre( "format", "switchConf", "rules", "against", "errors", "warnings",
                                       "notJudged", "problems", "uses" ) );
    EXPECT_EQ( json[ "errors" ].GetUint(), 1U );
    EXPECT_EQ(
        compact( json[ "uses" ][ 0 ] ),
        R"({"rule":"table","line":2,"level":"error","reason":"too\tlong","what":"size of match table \"acl\"",)"
        R"("contextFile":"context.json","stage":null,"used":60,"available":40,"percent":150,"slack":-20,)"
        R"("unstated":0,"over":true})" );
    EXPECT_EQ( json[ "uses" ][ 1 ][ "stage" ].GetUint(), 3U );
}

TEST_F( BudgetCommand, OfManyUsesShowsTheFirst ) {
    String text;
    for( int i = 0; i < 30; ++i )
        text += "[[table]]\nname = 'acl'\nmax = " + std::to_string( i == 3 ? 10 : 100 + i ) +
                "\nlevel = 'warn'\nreason = 'x'\n";
    writeFile( "rules.toml", text );
    EXPECT_THAT( bfri( { "budget", "switch.conf", "rules.toml" } ).out,
                 HasSubstr( "\nand 10 more within the budget; --json has all\n" ) );
}

TEST_F( BudgetCommand, GivesStagesItsCapacities ) {
    EXPECT_THAT( bfri( { "stages", "switch.conf", "--budget", "over.toml" } ).out,
                 HasSubstr( "capacities\n  *_match entries        0%   0%   0%  50%\n" ) );
    EXPECT_THAT( bfri( { "stages", "switch.conf", "--budget", "over.toml", "--stage", "3" } ).out,
                 HasSubstr( "  *_match entries: 60 of 120, 50%\n" ) );
    auto const json = parsed( bfri( { "stages", "switch.conf", "--budget", "over.toml", "--json" } ).out );
    auto const& capacities = json[ "pipelines" ][ 0 ][ "capacities" ];
    ASSERT_EQ( capacities.Size(), 4U );
    EXPECT_EQ( capacities[ 3 ][ "used" ].GetUint(), 60U );
    EXPECT_EQ( bfri( { "stages", "switch.conf", "--budget", "missing.toml" } ).status, 3 );
}

} // namespace
