// Damage of what a context file says. However the file is packed, it ends alike.

#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/MemberNames.h"
#include "tests/resourceinfo/parser/context/Damage.h"
#include "tests/resourceinfo/parser/context/OutcomeTable.h"

#include <cstdlib>
#include <filesystem>
#include <random>

using namespace Context;

namespace BfResourceInfo {
namespace {

/// Replacements for a value: values of every type, including empty ones.
char const* const replacements[] = { "null", "true", "false", "7", "\"x\"", "\"\"", "[]", "[null]", "{}" };

/// Replacements for a number: at the bounds of what is read, and others.
std::pair<char const*, char const*> const numbers[] = {
    { "0", "0" },
    { "-1", "-1" },
    { "1.5", "1.5" },
    { "1e300", "1e300" },
    { "2147483647", "2^31-1" },
    { "2147483648", "2^31" },
    { "4294967295", "2^32-1" },
    { "4294967296", "2^32" },
    { "9223372036854775807", "2^63-1" },
    { "9223372036854775808", "2^63" },
    { "18446744073709551615", "2^64-1" },
    { "18446744073709551616", "2^64" },
    { "-9223372036854775808", "-2^63" },
    { "-9223372036854775809", "-2^63-1" },
};

bool isNumber( Support::JsonTree const& value ) { return isIndex( value.text() ); }

/// The place of the object around the one that a member is in.
std::string outerObject( std::string const& pointer ) {
    std::string object = splitPointer( pointer ).first;
    while( isIndex( splitPointer( object ).second ) )
        object = splitPointer( object ).first;
    return splitPointer( object ).first;
}

/// Every damage of one value, by name.
std::vector<std::pair<std::string, Support::JsonTree>> damagesOf( Support::JsonTree const& good,
                                                                  std::string const& pointer ) {
    auto const [ outer, step ] = splitPointer( pointer );
    Support::JsonTree const& value = good.at( pointer );
    auto const copy = [ & ] { return Support::JsonTree( good ); };
    std::vector<std::pair<std::string, Support::JsonTree>> damages;
    damages.emplace_back( "gone", copy().without( pointer ) );
    if( isIndex( step ) )
        damages.emplace_back( "again", copy().with( outer + "/-", value ) );
    else if( !outer.empty() )
        damages.emplace_back(
            "moved out", copy().without( pointer ).withFirst( outerObject( pointer ) + '/' + step, value ) );
    for( char const* const json : replacements )
        damages.emplace_back( json, copy().with( pointer, json ) );
    if( isNumber( value ) ) {
        for( auto const& [ number, name ] : numbers )
            damages.emplace_back( name, copy().with( pointer, number ) );
    }
    return damages;
}

char const* const legend =
    R"(How the file of contextOfEveryPass() loads with one damage in it. Written by the test Damage.EveryMemberRemovedOrRetyped
with BFRI_UPDATE_GOLDEN=1 in its environment; each line is to be what the steps demand.

A paragraph is about values that end alike: their place, with "*" for an index, and which they are when not all of that
place. Damages: gone; again, once more at the end of its array; moved out, to the object around its own; replaced by what
is written. Outcomes: the load, as before when it makes the same model; or the condition that ends it, and where, unless
that is the damaged value ("." is that value, ".." the object that it stands in).

)";

/// The condition that was broken, and where, as seen from the damaged value.
String toText( Outcome const& outcome, String const& pointer, String const& file ) {
    return outcome.failure.condition + seenFrom( pointer, outcome.failure.position.substr( file.size() ) );
}

TEST_F( Damage, EveryMemberRemovedOrRetyped ) {
    Support::JsonTree const good = contextOfEveryPass().tree();
    String const model = load( good.text() ).model;
    OutcomeTable outcomes( good );
    std::set<std::string> touched;
    for( std::string const& pointer : good.pointers() ) {
        touched.insert( splitPointer( pointer ).second );
        for( auto const& [ damage, tree ] : damagesOf( good, pointer ) ) {
            SCOPED_TRACE( pointer + ": " + damage );
            Outcome const outcome = load( tree.text() );
            expectSound( outcome );
            outcomes.add( pointer, damage,
                          !outcome.loaded()        ? toText( outcome, pointer, file() )
                          : outcome.model == model ? "loads as before"
                                                   : "loads" );
        }
    }
    EXPECT_THAT( touched, testing::IsSupersetOf( memberNames ) );
    std::filesystem::path const path = BFRI_TREE "/tests/resourceinfo/parser/context/damage.golden";
    String const table = legend + outcomes.text();
    if( std::getenv( "BFRI_UPDATE_GOLDEN" ) ) {
        std::ofstream( path ) << table;
        FAIL() << "wrote " << path << ": read what changed";
    }
    std::ifstream stream( path );
    String const golden( std::istreambuf_iterator<char>( stream ), {} );
    EXPECT_TRUE( table == golden ) << difference( golden, table );
}

TEST_F( Damage, FirstOfANameCountsAndTheOrderDoesNot ) {
    Support::JsonTree const good = contextOfEveryPass().tree();
    String const model = load( good.text() ).model;
    for( std::string const& pointer : good.pointers() ) {
        if( isIndex( splitPointer( pointer ).second ) )
            continue;
        SCOPED_TRACE( pointer );
        Support::JsonTree const& value = good.at( pointer );
        Support::JsonTree const replaced = Support::JsonTree( good ).with( pointer, "[null]" );
        auto with = [ & ]( Support::JsonTree tree ) {
            return load( tree.withFirst( pointer, value ).text() );
        };
        EXPECT_EQ( with( replaced ).model, model );
        EXPECT_EQ( with( Support::JsonTree( good ).without( pointer ) ).model, model );
        Outcome const first = load( Support::JsonTree( good ).withFirst( pointer, "[null]" ).text() );
        Outcome const only = load( replaced.text() );
        EXPECT_EQ( first.failure.condition, only.failure.condition );
        EXPECT_EQ( first.failure.position, only.failure.position );
        EXPECT_EQ( first.model, only.model );
    }
}

TEST_F( Damage, RandomBytesOfAPlainFileReplaced ) {
    String const good = contextOfEveryPass().text();
    std::mt19937 random( 7 );
    auto const below = [ & ]( std::size_t bound ) {
        return std::uniform_int_distribution<std::size_t>( 0, bound - 1 )( random );
    };
    for( int round = 0; round < 1500; ++round ) {
        SCOPED_TRACE( round );
        String bytes = good;
        for( std::size_t i = 0; i <= below( 3 ); ++i )
            bytes[ below( bytes.size() ) ] = static_cast<char>( below( 256 ) );
        expectSound( load( bytes ) );
    }
}

} // namespace
} // namespace BfResourceInfo
