#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/MemberNames.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/resourceinfo/parser/context/OutcomeTable.h"
#include "tests/resourceinfo/parser/context/Surveys.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <random>
#include <rapidjson/document.h>
#include <rapidjson/istreamwrapper.h>
#include <set>
#include <sys/resource.h>
#include <unistd.h>

using namespace Context;

// Valid inputs, damaged in every place: loading either fails by a broken condition that names the file, or
// succeeds; it never crashes, hangs, or leaves anything allocated.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;

/// How a load ends: with a model, or with a failure.
struct Outcome {
    String model;
    Zel::AssertionFailure failure;

    bool loaded() const { return failure.condition.empty(); }
    bool operator==( Outcome const& other ) const {
        return model == other.model && failure.condition == other.failure.condition &&
               failure.position == other.failure.position && failure.line == other.failure.line;
    }
};

/// The conditions that damage of a context file may break, those without a test left out.
std::set<String> expectedConditions() {
    std::ifstream file( BFRI_TREE "/tests/resourceinfo/behaviour.json" );
    rapidjson::IStreamWrapper stream( file );
    rapidjson::Document table;
    table.ParseStream( stream );
    std::set<String> conditions;
    for( auto const& section : table.GetArray() ) {
        if( !section.HasMember( "brokenByDamage" ) )
            continue;
        for( auto const& row : section[ "rows" ].GetArray() ) {
            String const subject = row[ "cells" ][ 0 ].GetString(); // `condition`
            if( row.HasMember( "tests" ) )
                conditions.insert( subject.substr( 1, subject.size() - 2 ) );
        }
    }
    return conditions;
}

/// The most memory that the process has had so far, in MB. Nothing under the sanitizers, which keep what was
/// given back.
long peakMemory() {
#ifdef BFRI_SANITIZED
    return 0;
#else
    rusage usage;
    getrusage( RUSAGE_SELF, &usage );
    return usage.ru_maxrss / 1024;
#endif
}

class Damage : public testing::Test {
  protected:
    ~Damage() override { EXPECT_LT( peakMemory() - peakBefore_, 64 ); }

    /// With a survey, in turns without digests and with them, it ends as it does without.
    Outcome load( std::string_view bytes ) {
        using Wanted = SurveyCollector::Wanted;
        folder_.write( "context.json", bytes );
        Outcome const outcome = load();
        SurveyCollector collector( ++loads_ % 2 ? Wanted::facts : Wanted::digests );
        EXPECT_TRUE( load() == outcome ) << "with a survey";
        EXPECT_EQ( collector.files.size(), 1 );
        EXPECT_EQ( collector.files.at( 0 ).isLoaded, outcome.loaded() );
        return outcome;
    }
    Outcome load() const {
        alarm( 60 ); // a load that hangs ends the program
        Support::ThrowingAssertions const scope;
        std::clock_t const start = std::clock();
        Outcome outcome;
        try {
            outcome.model = modelText( *bfResourceParserFactory( conf_ ) );
        } catch( Zel::AssertionError const& error ) {
            outcome.failure = error.failure();
        }
        alarm( 0 );
        EXPECT_LT( std::clock() - start, CLOCKS_PER_SEC ) << "one second of computing";
        EXPECT_EQ( liveAllocations(), before_ );
        return outcome;
    }
    /// A failure has a condition that is expected, and says where: the file, then why it cannot be used or
    /// a place in it, then the table of what is in one.
    void expectSound( Outcome const& outcome ) const {
        if( outcome.loaded() )
            return;
        EXPECT_EQ( outcome.failure.source, "BfResourceParser" );
        EXPECT_TRUE( conditions().count( outcome.failure.condition ) ) << outcome.failure.condition;
        ASSERT_THAT( outcome.failure.position, testing::StartsWith( file() ) );
        String const rest = outcome.failure.position.substr( file().size() );
        EXPECT_TRUE( rest.empty() || rest.starts_with( ": " ) || rest.starts_with( " at /" ) ||
                     rest.starts_with( ", member \"" ) || rest.starts_with( ", table " ) )
            << rest;
        if( rest.starts_with( " at /tables/" ) ) {
            String const index = rest.substr( 12, rest.find_first_of( "/,", 12 ) - 12 );
            EXPECT_NE( rest.find( ", table " + index ), String::npos ) << rest;
        }
    }
    static std::set<String> const& conditions() {
        static std::set<String> const all = expectedConditions();
        return all;
    }

    /// The condition that was broken, and where, as seen from the damaged value.
    String toText( Outcome const& outcome, String const& pointer ) const {
        return outcome.failure.condition +
               seenFrom( pointer, outcome.failure.position.substr( file().size() ) );
    }
    /// How every position starts.
    String file() const { return "context file " + folder_.path( "context.json" ); }

    SwitchFolder folder_;
    String const conf_ = folder_.conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    Support::TraceCollector const quiet_{ "BfResourceParser", {} };
    LiveAllocations const before_ = liveAllocations();
    long const peakBefore_ = peakMemory();
    int loads_ = 0;
};

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
                          !outcome.loaded()        ? toText( outcome, pointer )
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
    std::ifstream file( path );
    String const golden( std::istreambuf_iterator<char>( file ), {} );
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

TEST_F( Damage, TextCutOffAtEveryCharacter ) {
    String const text = ContextBuilder().table( matchTable( "acl" ) ).text();
    ASSERT_TRUE( load( text ).loaded() );
    for( std::size_t size = 0; size < text.size(); ++size ) {
        SCOPED_TRACE( size );
        Outcome const outcome = load( text.substr( 0, size ) );
        EXPECT_EQ( outcome.failure.condition, "IsObject()" );
        expectSound( outcome );
    }
}

TEST_F( Damage, CompressedFileCutOffAtEveryByte ) {
    String const bytes = Support::gzip( ContextBuilder().table( matchTable( "acl" ) ).text() );
    ASSERT_TRUE( load( bytes ).loaded() );
    for( std::size_t size = 0; size < bytes.size(); ++size ) {
        SCOPED_TRACE( size );
        Outcome const outcome = load( bytes.substr( 0, size ) );
        EXPECT_EQ( outcome.failure.condition, "IsObject()" );
        expectSound( outcome );
    }
}

TEST_F( Damage, EveryBitOfACompressedFileFlipped ) {
    String const text = ContextBuilder().table( matchTable( "acl" ).idleTime( 3 ) ).text();
    String const good = Support::gzip( text );
    String const model = load( good ).model;
    ASSERT_EQ( model, load( text ).model );
    int failed = 0;
    for( std::size_t bit = 0; bit < good.size() * 8; ++bit ) {
        SCOPED_TRACE( "bit " + std::to_string( bit % 8 ) + " of byte " + std::to_string( bit / 8 ) );
        String bytes = good;
        bytes[ bit / 8 ] = static_cast<char>( bytes[ bit / 8 ] ^ 1 << bit % 8 );
        Outcome const outcome = load( bytes );
        expectSound( outcome );
        if( outcome.loaded() )
            EXPECT_EQ( outcome.model, model );
        else
            EXPECT_EQ( outcome.failure.condition, "IsObject()" );
        failed += !outcome.loaded();
    }
    EXPECT_GT( failed, 7 * static_cast<int>( good.size() ) ) << "only parts of the header say nothing";
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

TEST_F( Damage, RandomRunsOfACompressedFileReplaced ) {
    String const good = Support::gzip( contextOfEveryPass().text() );
    std::mt19937 random( 11 );
    for( int round = 0; round < 500; ++round ) {
        SCOPED_TRACE( round );
        String bytes = good;
        std::size_t const start = random() % bytes.size();
        std::size_t const end = std::min( bytes.size(), start + 1 + random() % 40 );
        for( std::size_t i = start; i < end; ++i )
            bytes[ i ] = static_cast<char>( random() );
        expectSound( load( bytes ) );
    }
}

} // namespace
} // namespace BfResourceInfo
