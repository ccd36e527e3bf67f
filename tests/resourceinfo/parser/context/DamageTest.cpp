#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <ctime>
#include <gmock/gmock.h>
#include <optional>
#include <random>

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

class Damage : public testing::Test {
  protected:
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
    void expectSound( Outcome const& outcome ) const {
        if( outcome.loaded() )
            return;
        EXPECT_EQ( outcome.failure.source, "BfResourceParser" );
        EXPECT_THAT( outcome.failure.position,
                     testing::StartsWith( "context file " + folder_.path( "context.json" ) ) );
    }

    SwitchFolder folder_;
    String const conf_ = folder_.conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    Support::TraceCollector const quiet_{ "BfResourceParser", {} };
    LiveAllocations const before_ = liveAllocations();
};

TEST_F( Damage, EveryMemberRemovedOrRetyped ) {
    Support::JsonTree const good = contextOfEveryPass().tree();
    ASSERT_TRUE( load( good.text() ).loaded() );
    int loaded = 0;
    int failed = 0;
    for( std::string const& pointer : good.pointers() ) {
        for( std::optional<char const*> const json : { std::optional<char const*>(),
                                                       { "null" },
                                                       { "true" },
                                                       { "-1" },
                                                       { "1e300" },
                                                       { "4294967295" },
                                                       { "18446744073709551616" },
                                                       { "\"x\"" },
                                                       { "[]" },
                                                       { "[null]" },
                                                       { "{}" } } ) {
            SCOPED_TRACE( pointer + ( json ? std::string( " is " ) + *json : " is gone" ) );
            Support::JsonTree tree = good;
            if( json )
                tree.with( pointer, *json );
            else
                tree.without( pointer );
            Outcome const outcome = load( tree.text() );
            expectSound( outcome );
            ( outcome.loaded() ? loaded : failed ) += 1;
        }
    }
    EXPECT_GT( loaded, 100 ) << "some members are not required";
    EXPECT_GT( failed, 1000 ) << "most are";
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
