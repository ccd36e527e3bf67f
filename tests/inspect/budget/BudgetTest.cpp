#include "inspect/budget/Budget.h"
#include "tests/inspect/Inputs.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace {

using Bfri::RuleLevel;
using Support::StageTable;
using testing::ElementsAre;
using testing::IsEmpty;

class BudgetOf : public InFolder {
  protected:
    BudgetOf() {
        context
            .table(
                Support::matchTable( "pipe.acl" ).stages( { sized( 0, 100 ), sized( 2, 60 ) } ).size( 160 ) )
            .table( Support::matchTable( "pipe.big_acl" ).stages( { sized( 2, 50 ) } ).size( 50 ) )
            .table( Support::meterTable( "pipe.police" )
                        .stages( { StageTable( "meter" ).number( 2 ).without( "/size" ) } )
                        .size( 8 ) )
            .table( Support::matchTable( "out.acl" )
                        .stages( { sized( 2, 7 ) } )
                        .with( "/direction", "\"egress\"" )
                        .size( 7 ) );
    }
    static StageTable sized( std::int64_t stage, U32 entries ) {
        return StageTable().number( stage ).size( entries );
    }
    Bfri::Budget judged( String const& text, Bfri::Configuration const* old = nullptr ) {
        writeFile( "rules.toml", text );
        auto read = Bfri::readRules( "rules.toml" );
        if( auto const* const mistake = std::get_if<Bfri::RulesMistake>( &read ) )
            throw std::runtime_error( mistake->problem );
        rules = std::get<Bfri::Rules>( std::move( read ) );
        configuration = modelOf( context );
        return Bfri::budgetOf( rules, *configuration, old );
    }
    /// "what in stage: used of available, percent, slack".
    static std::vector<String> usesIn( Bfri::Budget const& budget ) {
        std::vector<String> texts;
        for( Bfri::Use const& use : budget.uses )
            texts.push_back( fmt::format( "{}{}: {} of {}, {}%, {}{}", use.what,
                                          use.stage ? fmt::format( " in {}", *use.stage ) : "", use.used,
                                          use.available, use.percent().value_or( -1 ), use.slack(),
                                          use.isOver() ? " over" : "" ) );
        return texts;
    }
    static std::vector<String> problemsIn( Bfri::Budget const& budget ) {
        std::vector<String> texts;
        for( Bfri::RuleProblem const& problem : budget.problems )
            texts.push_back( problem.problem );
        return texts;
    }
    static String rule( String const& section, String const& members, char const* level = "error" ) {
        return section + "\n" + members + "\nlevel = '" + level + "'\nreason = 'r'\n";
    }

    Support::ContextBuilder context;
    Bfri::Rules rules = {};
    ConfigurationPtr configuration = {};
};

TEST_F( BudgetOf, AChipIsItsStages ) {
    EXPECT_THAT( usesIn( judged( rule( "[chip]", "stages = 3" ) ) ),
                 ElementsAre( "stages: 3 of 3, 100%, 0" ) );
    auto const over = judged( rule( "[chip]", "stages = 2" ) );
    EXPECT_THAT( usesIn( over ), ElementsAre( "stages: 3 of 2, 150%, -1 over" ) );
    EXPECT_EQ( over.broken( RuleLevel::error ), 1U );
    EXPECT_EQ( over.broken( RuleLevel::warn ), 0U );
    EXPECT_EQ( over.uses[ 0 ].contextFile, "context.json" );
}

TEST_F( BudgetOf, CapacitiesAreThoseOfEachStageWorstFirst ) {
    EXPECT_THAT( usesIn( judged( rule( "[[capacity]]", "type = 'ternary_match'\nentries = 100" ) ) ),
                 ElementsAre( "ternary_match entries in 2: 117 of 100, 117%, -17 over",
                              "ternary_match entries in 0: 100 of 100, 100%, 0" ) );
    EXPECT_THAT( usesIn( judged( rule( "[[capacity]]", "type = '*'\ntables = 3" ) ) ),
                 ElementsAre( "* tables in 2: 4 of 3, 134%, -1 over", "* tables in 0: 1 of 3, 34%, 2" ) );
    EXPECT_THAT(
        usesIn( judged( rule( "[[capacity]]", "type = '*_match'\ndirection = 'egress'\nentries = 0" ) ) ),
        ElementsAre( "egress *_match entries in 2: 7 of 0, -1%, -7 over" ) );
    EXPECT_THAT(
        usesIn( judged(
            rule( "[[capacity]]", "type = '*_match'\ndirection = 'ingress'\nstages = [ 0 ]\ntables = 4" ) ) ),
        ElementsAre( "ingress *_match tables in 0: 1 of 4, 25%, 3" ) );
}

TEST_F( BudgetOf, CapacitiesTellWhatIsNotStated ) {
    auto const budget = judged( rule( "[[capacity]]", "type = 'meter'\nentries = 100" ) );
    ASSERT_THAT( usesIn( budget ), ElementsAre( "meter entries in 2: 0 of 100, 0%, 100" ) );
    EXPECT_EQ( budget.uses[ 0 ].unstated, 1U );
    EXPECT_EQ( judged( rule( "[[capacity]]", "type = 'meter'\ntables = 1" ) ).uses.at( 0 ).unstated, 0U );
}

TEST_F( BudgetOf, AStageThatNoProgramTakesIsNothingUnlessTheChipHasIt ) {
    String const late = rule( "[[capacity]]", "type = 'meter'\nstages = [ 5 ]\ntables = 1" );
    EXPECT_THAT( problemsIn( judged( late ) ),
                 ElementsAre( "matches nothing: no program has these stages" ) );
    EXPECT_THAT( problemsIn( judged( rule( "[chip]", "stages = 6" ) + late ) ), IsEmpty() );
}

TEST_F( BudgetOf, TablesAreFoundByNameEndAndPattern ) {
    EXPECT_THAT( usesIn( judged( rule( "[[table]]", "name = 'big_acl'\nmin = 10\nmax = 50" ) ) ),
                 ElementsAre( "size of match table \"pipe.big_acl\": 50 of 50, 100%, 0",
                              "least size of match table \"pipe.big_acl\": 10 of 50, 20%, 40" ) );
    EXPECT_THAT( usesIn( judged( rule( "[[table]]", "name = 'pipe.*acl'\nmax = 100" ) ) ),
                 ElementsAre( "size of match table \"pipe.acl\": 160 of 100, 160%, -60 over",
                              "size of match table \"pipe.big_acl\": 50 of 100, 50%, 50" ) );
    EXPECT_THAT( usesIn( judged( rule( "[[table]]", "name = 'police'\nmin = 16" ) ) ),
                 ElementsAre( "least size of meter table \"pipe.police\": 16 of 8, 200%, -8 over" ) );
}

TEST_F( BudgetOf, ARuleThatMatchesNothingOrSeveralIsAProblem ) {
    EXPECT_THAT( problemsIn( judged( rule( "[[table]]", "name = 'acl'\nmin = 1", "warn" ) ) ),
                 ElementsAre( "\"acl\" is the end of several names: out.acl, pipe.acl" ) );
    EXPECT_THAT(
        problemsIn( judged( rule( "[[table]]", "name = 'bigacl'\nmin = 1" ) ) ),
        ElementsAre( "matches nothing: no resource is called \"bigacl\"; names like it: pipe.big_acl" ) );
    EXPECT_THAT( problemsIn( judged( rule( "[[table]]", "name = 'x*'\nmin = 1" ) ) ),
                 ElementsAre( "matches nothing: no resource's name is like \"x*\"" ) );
    EXPECT_THAT( problemsIn( judged( rule( "[[program]]", "context_file = 'b.json'\nstages = 1" ) ) ),
                 ElementsAre( "matches nothing: no context file is \"b.json\"" ) );
    EXPECT_THAT( problemsIn( judged( rule( "[[table]]", "name = 'x*'\nmin = 1", "off" ) ) ), IsEmpty() );
}

TEST_F( BudgetOf, ProgramsHaveTheirStages ) {
    EXPECT_THAT( usesIn( judged( rule( "[[program]]", "context_file = 'context.json'\nstages = 4" ) ) ),
                 ElementsAre( "stages: 3 of 4, 75%, 1" ) );
    EXPECT_THAT( usesIn( judged( rule( "[[program]]", "stages = 2", "warn" ) ) ),
                 ElementsAre( "stages: 3 of 2, 150%, -1 over" ) );
}

TEST_F( BudgetOf, TwoProgramsHaveTheirOwnStages ) {
    // No runtime_config: handles do not tell the context files apart.
    writeFile( "a.json", context.text() );
    writeFile( "b.json", context.text() );
    writeFile( "switch.conf",
               Support::SwitchConfBuilder()
                   .device( Support::DeviceBuilder().pipeline( "a.json", { 0 } ).pipeline( "b.json", { 1 } ) )
                   .text() );
    writeFile( "rules.toml", rule( "[[capacity]]", "type = 'meter'\ntables = 1" ) );
    auto const both = loaded();
    auto const read = std::get<Bfri::Rules>( Bfri::readRules( "rules.toml" ) );
    auto const budget = Bfri::budgetOf( read, *both, nullptr );
    EXPECT_THAT( usesIn( budget ),
                 ElementsAre( "meter tables in 2: 1 of 1, 100%, 0", "meter tables in 2: 1 of 1, 100%, 0" ) );
    EXPECT_EQ( budget.uses.at( 1 ).contextFile, "b.json" );
}

TEST_F( BudgetOf, GrowthIsJudgedAgainstSomethingOlder ) {
    for( auto const& [ level, is ] :
         { std::pair( "error", RuleLevel::error ), std::pair( "warn", RuleLevel::warn ) } ) {
        auto const unjudged = judged( rule( "[[growth]]", "max = 5", level ) );
        EXPECT_EQ( unjudged.notJudged, 1U );
        EXPECT_EQ( unjudged.broken( is ), 1U );
        EXPECT_EQ( unjudged.broken( RuleLevel::error ) + unjudged.broken( RuleLevel::warn ), 1U );
    }
    auto const old = modelOf( context );
    context.table( Support::matchTable( "pipe.new" ).stages( { sized( 1, 30 ) } ).size( 30 ) );
    EXPECT_THAT( usesIn( judged( rule( "[[growth]]", "max_percent = 10" ), old.get() ) ),
                 ElementsAre( "growth of entries: 30 of 22, 137%, -8 over" ) );
    EXPECT_THAT( usesIn( judged( rule( "[[growth]]", "max = 1\nof = 'tables'" ), old.get() ) ),
                 ElementsAre( "growth of resources: 1 of 1, 100%, 0" ) );
    EXPECT_THAT( usesIn( judged( rule( "[[growth]]", "name = 'new'\nmax_percent = 50" ), old.get() ) ),
                 ElementsAre( "growth of size of \"pipe.new\": 30 of 0, -1%, -30 over" ) );
    EXPECT_THAT(
        usesIn( judged( rule( "[[growth]]", "name = 'pipe.*'\nof = 'tables'\nmax = 2" ), old.get() ) ),
        ElementsAre( "growth of resources like \"pipe.*\": 1 of 2, 50%, 1" ) );
    // What no stage holds counts as well, with a name or without.
    context = Support::ContextBuilder().table( Support::matchTable( "pipe.acl" ).stages( {} ).size( 500 ) );
    for( char const* const name : { "", "name = 'pipe.acl'\n" } )
        EXPECT_EQ( judged( rule( "[[growth]]", name + String( "max = 1" ) ), old.get() ).uses.at( 0 ).used,
                   *name ? 340 : 275 );
    context = Support::ContextBuilder().table( Support::matchTable( "pipe.acl" ).size( 160 ) );
    auto const bigger = modelOf( context );
    context = Support::ContextBuilder().table( Support::matchTable( "pipe.acl" ) );
    EXPECT_THAT( usesIn( judged( rule( "[[growth]]", "name = 'pipe.acl'\nmax = 1000" ), bigger.get() ) ),
                 ElementsAre( "growth of size of \"pipe.acl\": 864 of 1000, 87%, 136" ) );
}

} // namespace
