#include "resourceinfo/parser/context/MemberNames.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <optional>
#include <random>
#include <set>
#include <sys/resource.h>

// Valid inputs, damaged in every place: loading either fails by a broken condition that names the file, or
// succeeds; it never crashes, hangs, or leaves anything behind.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;

/// How a load ends: with a model, or with a failure.
struct Outcome {
    String model;
    Zel::AssertionFailure failure;

    bool loaded() const { return failure.condition.empty(); }
};

/// The conditions that the steps for a context file may break, those without a test left out: they are listed
/// on a page.
std::set<String> documentedConditions() {
    std::filesystem::path page( __FILE__ );
    while( page.has_relative_path() && !exists( page / "docs/behaviour.md" ) )
        page = page.parent_path();
    std::ifstream lines( page / "docs/behaviour.md" );
    std::set<String> conditions;
    String section;
    for( String line; std::getline( lines, line ); ) {
        if( line.starts_with( "### " ) )
            section = line;
        bool const ofAStep =
            section > "### `" && section.ends_with( ".cpp`" ) &&
            exists( page / "resourceinfo/parser/context" / section.substr( 5, section.size() - 6 ) );
        if( ( ofAStep || section == "### JSON access" ) && line.starts_with( "| `" ) &&
            line.find( "| none: " ) == String::npos )
            conditions.insert( line.substr( 3, line.find( "` |" ) - 3 ) );
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

    Outcome load( std::string_view bytes ) const {
        folder_.write( "context.json", bytes );
        Support::ThrowingAssertions const scope;
        std::clock_t const start = std::clock();
        Outcome outcome;
        try {
            outcome.model = modelText( *bfResourceParserFactory( conf_ ) );
        } catch( Zel::AssertionError const& error ) {
            outcome.failure = error.failure();
        }
        EXPECT_LT( std::clock() - start, CLOCKS_PER_SEC ) << "one second of computing";
        EXPECT_EQ( liveAllocations(), before_ );
        return outcome;
    }
    /// A failure has a condition that is documented, and says where: the file, then why it cannot be used or
    /// a place in it, then the table of what stands in one.
    void expectSound( Outcome const& outcome ) const {
        if( outcome.loaded() )
            return;
        EXPECT_EQ( outcome.failure.source, "BfResourceParser" );
        EXPECT_TRUE( conditions().count( outcome.failure.condition ) ) << outcome.failure.condition;
        String const file = "context file " + folder_.path( "context.json" );
        EXPECT_THAT( outcome.failure.position, testing::StartsWith( file ) );
        String const rest = outcome.failure.position.substr( file.size() );
        EXPECT_TRUE( rest.empty() || rest.starts_with( ": " ) || rest.starts_with( " at /" ) ||
                     rest.starts_with( ", member \"" ) || rest.starts_with( ", table " ) )
            << rest;
        if( rest.starts_with( " at /tables/" ) ) {
            String const index = rest.substr( 12, rest.find_first_of( "/,", 12 ) - 12 );
            EXPECT_NE( rest.find( ", table " + index ), String::npos ) << rest;
        }
    }
    static std::set<String> const& conditions() {
        static std::set<String> const all = documentedConditions();
        return all;
    }

    SwitchFolder folder_;
    String const conf_ = folder_.conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    Support::TraceCollector const quiet_{ "BfResourceParser", {} };
    LiveAllocations const before_ = liveAllocations();
    long const peakBefore_ = peakMemory();
};

/// What a value is replaced by: no value, and those of every type, empty ones too.
std::optional<char const*> const replacements[] = {
    removed, "null", "true", "7", "\"x\"", "\"\"", "[]", "[null]", "{}",
};

/// What a number is replaced by: those around the bounds of what is read.
char const* const numbers[] = {
    "0",
    "-1",
    "1.5",
    "1e300",
    "2147483648",
    "4294967295",
    "4294967296",
    "9223372036854775808",
    "18446744073709551615",
    "18446744073709551616",
    "-9223372036854775809",
};

bool isNumber( Support::JsonTree const& value ) {
    String const text = value.text();
    return !text.empty() && text.find_first_not_of( "-0123456789" ) == String::npos;
}

/// The name of a member, none of an element.
std::string memberName( std::string const& pointer ) {
    std::string const step = pointer.substr( pointer.rfind( '/' ) + 1 );
    return step.find_first_not_of( "0123456789" ) == std::string::npos ? "" : step;
}

TEST_F( Damage, EveryMemberRemovedOrRetyped ) {
    Support::JsonTree const good = contextOfEveryPass().tree();
    ASSERT_TRUE( load( good.text() ).loaded() );
    int loaded = 0;
    std::set<String> met;
    std::set<std::string> touched;
    auto const replace = [ & ]( std::string const& pointer, std::optional<char const*> json ) {
        SCOPED_TRACE( pointer + ( json ? std::string( " is " ) + *json : " is gone" ) );
        Support::JsonTree tree = good;
        if( json )
            tree.with( pointer, *json );
        else
            tree.without( pointer );
        Outcome const outcome = load( tree.text() );
        expectSound( outcome );
        loaded += outcome.loaded();
        met.insert( outcome.failure.condition );
    };
    for( std::string const& pointer : good.pointers() ) {
        touched.insert( memberName( pointer ) );
        for( auto const& json : replacements )
            replace( pointer, json );
        if( isNumber( good.at( pointer ) ) ) {
            for( char const* const number : numbers )
                replace( pointer, number );
        }
    }
    EXPECT_GT( loaded, 100 ) << "some members are not required";
    EXPECT_THAT( touched, testing::IsSupersetOf( memberNames ) );
    EXPECT_GT( met.size(), conditions().size() / 2 ) << "the others take two faults, or a fault of the code";
}

TEST_F( Damage, EveryMemberDuplicatedOrMoved ) {
    Support::JsonTree const good = contextOfEveryPass().tree();
    String const model = load( good.text() ).model;
    for( std::string const& pointer : good.pointers() ) {
        std::string const name = memberName( pointer );
        if( name.empty() )
            continue;
        SCOPED_TRACE( pointer );
        Support::JsonTree const value = good.at( pointer );
        auto tree = [ & ]( char const* json ) { return Support::JsonTree( good ).with( pointer, json ); };
        // The first of a name counts.
        EXPECT_EQ( load( tree( "null" ).withFirst( pointer, value ).text() ).model, model );
        Outcome const first = load( Support::JsonTree( good ).withFirst( pointer, "[null]" ).text() );
        Outcome const replaced = load( tree( "[null]" ).text() );
        EXPECT_EQ( first.failure.condition, replaced.failure.condition );
        EXPECT_EQ( first.failure.line, replaced.failure.line );
        expectSound( first );
        // The order does not; the object does.
        EXPECT_EQ( load( tree( "null" ).without( pointer ).withFirst( pointer, value ).text() ).model,
                   model );
        expectSound( load( tree( "null" ).without( pointer ).withFirst( "/" + name, value ).text() ) );
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
