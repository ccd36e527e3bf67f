#include "inspect/budget/Rules.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::RuleLevel;
using Bfri::Rules;
using Bfri::RulesMistake;
using testing::ElementsAre;

class RulesFile : public InFolder {
  protected:
    static Rules rulesOf( String const& text ) {
        writeFile( "rules.toml", text );
        auto rules = Bfri::readRules( "rules.toml" );
        if( auto const* const mistake = std::get_if<RulesMistake>( &rules ) )
            throw std::runtime_error( mistake->problem );
        return std::get<Rules>( std::move( rules ) );
    }
    /// "line:column: problem".
    static String mistakeIn( String const& text ) {
        writeFile( "rules.toml", text );
        auto const rules = Bfri::readRules( "rules.toml" );
        auto const* const mistake = std::get_if<RulesMistake>( &rules );
        if( !mistake )
            return "none";
        EXPECT_EQ( mistake->path, "rules.toml" );
        return std::to_string( mistake->line ) + ":" + std::to_string( mistake->column ) + ": " +
               mistake->problem;
    }
};

/// The keys of every rule.
String const common = "level = 'warn'\nreason = 'r'\n";

TEST_F( RulesFile, HasEveryKindOfRule ) {
    Rules const rules = rulesOf( "[chip]\nstages = 12\n" + common + "[[capacity]]\ntype = 'hash_match'\n" +
                                 "direction = 'egress'\nstages = [ 4, 1 ]\ntables = 8\n" + common +
                                 "[[capacity]]\ntype = '*'\nentries = 9\nlevel = 'off'\nreason = 'x'\n" +
                                 "[[table]]\nname = 'acl'\nmin = 1\nmax = 2\n" + common +
                                 "[[program]]\ncontext_file = 'a.json'\nstages = 3\n" + common +
                                 "[[growth]]\nmax_percent = 10\nof = 'tables'\n" + common );
    EXPECT_EQ( rules.path, "rules.toml" );
    EXPECT_EQ( rules.chip->stages, 12U );
    EXPECT_EQ( rules.chip->level, RuleLevel::warn );
    EXPECT_EQ( rules.chip->reason, "r" );
    EXPECT_EQ( rules.chip->line, 1U );
    ASSERT_EQ( rules.capacities.size(), 2U );
    auto const& first = rules.capacities[ 0 ];
    EXPECT_EQ( first.type, "hash_match" );
    EXPECT_EQ( first.ingress, false );
    EXPECT_THAT( first.stages, ElementsAre( 1U, 4U ) );
    EXPECT_EQ( first.of, Bfri::StageMeasure::tables );
    EXPECT_EQ( first.available, 8U );
    EXPECT_EQ( first.line, 5U );
    EXPECT_EQ( rules.capacities[ 1 ].of, Bfri::StageMeasure::entries );
    EXPECT_EQ( rules.capacities[ 1 ].level, RuleLevel::off );
    EXPECT_EQ( rules.capacities[ 1 ].ingress, std::nullopt );
    EXPECT_EQ( rules.sizes.at( 0 ).name, "acl" );
    EXPECT_EQ( rules.sizes.at( 0 ).least, 1U );
    EXPECT_EQ( rules.sizes.at( 0 ).most, 2U );
    EXPECT_EQ( rules.programs.at( 0 ).contextFile, "a.json" );
    EXPECT_EQ( rules.programs.at( 0 ).stages, 3U );
    EXPECT_EQ( rules.growths.at( 0 ).percent, 10U );
    EXPECT_EQ( rules.growths.at( 0 ).of, Bfri::StageMeasure::tables );
}

struct Mistaken {
    char const* text;
    char const* mistake;
};

TEST_F( RulesFile, IsToldItsMistakesWithLineAndColumn ) {
    Mistaken const mistaken[] = {
        { "", "1:1: there is no rule" },
        { "[chip]\nstages = 12\nreason = 'r'\n", "1:1: a chip needs level" },
        { "[chip]\nstages = 12\nlevel = 'warn'\n", "1:1: a chip needs reason" },
        { "[chip]\nlevel = 'warn'\nreason = 'r'\n", "1:1: a chip needs stages" },
        { "[chip]\nstages = 12\nlevel = 'fatal'\nreason = 'r'\n",
          "3:9: \"fatal\" is no level; there are off, warn, error" },
        { "[chip]\nstages = 12\nlevel = 'warn'\nreason = ''\n",
          "4:10: reason takes a text in quotes, not an empty one" },
        { "[chip]\nstages = -1\nlevel = 'warn'\nreason = 'r'\n",
          "2:10: stages takes a whole number from 0 to 4294967295" },
        { "[chip]\nstages = 'x'\n", "1:1: a chip needs level" },
        { "[chip]\nstages = 1\nlevel = 'warn'\nreason = 'r'\nstagse = 2\n",
          "5:1: a chip has no \"stagse\"; did you mean \"stages\"?" },
        { "[[capacity]]\ntype = 'meter'\ntabels = 1\nlevel = 'warn'\nreason = 'r'\n",
          "3:1: a capacity has no \"tabels\"; did you mean \"tables\"?" },
        { "[[chip]]\nstages = 1\n", "1:1: write [chip], once" },
        { "[table]\nname = 'a'\n", "1:1: write [[table]], once a rule" },
        { "\n[[tabel]]\nname = 'a'\n", "2:3: \"tabel\" is no section; did you mean \"table\"?" },
        { "[[table]]\nname = 'a'\nlevel = 'warn'\nreason = 'r'\n", "1:1: a table needs min or max" },
        { "[[table]]\nname = 'a'\nlevel = 'warn'\nreason = 'r'\nmin = 3\nmax = 2\n",
          "5:7: min is more than max" },
        { "[[capacity]]\ntype = 'hash_mach'\ntables = 1\nlevel = 'warn'\nreason = 'r'\n",
          "2:8: \"hash_mach\" is no type of resource; did you mean \"hash_match\"?" },
        { "[[capacity]]\ntype = 'meter'\nlevel = 'warn'\nreason = 'r'\n",
          "1:1: a capacity needs entries or tables, and not both" },
        { "[[capacity]]\ntype = 'meter'\ntables = 1\nentries = 1\nlevel = 'warn'\nreason = 'r'\n",
          "1:1: a capacity needs entries or tables, and not both" },
        { "[[capacity]]\ntype = 'meter'\ndirection = 'up'\ntables = 1\nlevel = 'warn'\nreason = 'r'\n",
          "3:13: \"up\" is no direction; there are egress, ingress" },
        { "[[capacity]]\ntype = 'meter'\nstages = 3\ntables = 1\nlevel = 'warn'\nreason = 'r'\n",
          "3:10: stages takes a list of whole numbers: [ 0, 1 ]" },
        { "[chip]\nstages = 3\nlevel = 'warn'\nreason = 'r'\n[[capacity]]\ntype = 'meter'\nstages = [ 3 ]\n"
          "tables = 1\nlevel = 'warn'\nreason = 'r'\n",
          "5:1: stage 3 is none of the chip's 3" },
        { "[[growth]]\nlevel = 'warn'\nreason = 'r'\n",
          "1:1: a growth needs max or max_percent, and not both" },
    };
    for( Mistaken const& one : mistaken )
        EXPECT_EQ( mistakeIn( one.text ), one.mistake ) << one.text;
    EXPECT_THAT( mistakeIn( "[chip]\nstages = = 3\n" ), testing::StartsWith( "2:10: " ) );
    EXPECT_THAT( mistakeIn( "[chip]\nstages = 1\nstages = 2\n" ), testing::StartsWith( "3:" ) );
}

TEST_F( RulesFile, ThatCannotBeReadHasNoLine ) {
    auto const rules = Bfri::readRules( "missing.toml" );
    ASSERT_TRUE( std::holds_alternative<RulesMistake>( rules ) );
    EXPECT_EQ( std::get<RulesMistake>( rules ).line, 0U );
    EXPECT_NE( std::get<RulesMistake>( rules ).problem, "" );
}

TEST( Patterns, HaveStarsForAnythingAndQuestionMarksForACharacter ) {
    for( auto const& [ pattern, text ] :
         std::vector<std::pair<char const*, char const*>>{ { "", "" },
                                                           { "*", "" },
                                                           { "*", "abc" },
                                                           { "a*c", "abbc" },
                                                           { "a*c", "ac" },
                                                           { "?", "x" },
                                                           { "*.acl_?", "pipe.acl.acl_7" },
                                                           { "a*b*c", "a_b_b_c" },
                                                           { "**", "x" },
                                                           { "a[0]*", "a[0]x" } } )
        EXPECT_TRUE( Bfri::matches( pattern, text ) ) << pattern << ' ' << text;
    for( auto const& [ pattern, text ] : std::vector<std::pair<char const*, char const*>>{
             { "", "a" }, { "a", "" }, { "a*c", "abcd" }, { "?", "" }, { "?", "xy" }, { "a*b*c", "a_c_b" } } )
        EXPECT_FALSE( Bfri::matches( pattern, text ) ) << pattern << ' ' << text;
    EXPECT_TRUE( Bfri::isPattern( "a*" ) );
    EXPECT_FALSE( Bfri::isPattern( "a.b" ) );
}

} // namespace
