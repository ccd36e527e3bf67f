// Damage of a context file's bytes, which its inflater may see first.

#include "tests/resourceinfo/parser/context/Damage.h"

#include <algorithm>
#include <random>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;

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
