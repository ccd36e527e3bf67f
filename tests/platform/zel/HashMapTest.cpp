#include "zel/HashMap.h"
#include "vessa/Types.h"

#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

namespace {

using Vessa::String;
using Vessa::U32;
using Random = std::independent_bits_engine<std::mt19937, 32, U32>;
using Map = Zel::HashMap<String, U32>;
using Set = Zel::HashSet<String>;

TEST( HashMap, AnswersDefaultsWhileEmpty ) {
    Map map;
    EXPECT_TRUE( map.empty() );
    EXPECT_EQ( map.find( "a" ), nullptr );
    EXPECT_FALSE( map.has( "a" ) );
    EXPECT_EQ( map.value( "a" ), 0U );
    EXPECT_EQ( map.del( "a" ), 0U );
    map.delAll();
    EXPECT_EQ( map.size(), 0U );
}

TEST( HashMap, InsertsAndReplaces ) {
    Map map;
    map.is( "a", 1 );
    map.is( "", 2 );
    U32 const* const place = map.find( "a" );
    map.is( "a", 3 );
    EXPECT_EQ( map.size(), 2U );
    EXPECT_EQ( map.find( "a" ), place );
    EXPECT_EQ( *place, 3U );
    EXPECT_EQ( map.value( "" ), 2U );
}

TEST( HashMap, RemovesAndReturns ) {
    Map map;
    map.is( "a", 1 );
    EXPECT_EQ( map.del( "b" ), 0U );
    EXPECT_EQ( map.size(), 1U );
    EXPECT_EQ( map.del( "a" ), 1U );
    EXPECT_FALSE( map.has( "a" ) );
    EXPECT_EQ( map.del( "a" ), 0U );
}

TEST( HashMap, RemovesByAKeyOfItsOwn ) {
    Map map;
    map.is( "a key too long to stand inside the string itself", 7 );
    EXPECT_EQ( map.del( map.begin()->first ), 7U );
    EXPECT_TRUE( map.empty() );
}

TEST( HashMap, KeysAreComparedByteForByte ) {
    using namespace std::string_literals;
    Map map;
    map.is( "a\0b"s, 1 );
    map.is( "A", 2 );
    EXPECT_EQ( map.value( "a" ), 0U );
    EXPECT_EQ( map.value( "a\0b"s ), 1U );
    EXPECT_EQ( map.value( "A" ), 2U );
}

TEST( HashMap, ValuesStayInPlaceWhileOthersComeAndGo ) {
    Map map;
    map.is( "stays", 1 );
    U32 const* const place = map.find( "stays" );
    for( U32 i = 0; i < 1000; ++i )
        map.is( std::to_string( i ), i );
    for( U32 i = 0; i < 1000; i += 2 )
        map.del( std::to_string( i ) );
    EXPECT_EQ( map.find( "stays" ), place );
}

TEST( HashMap, BehavesAsAMap ) {
    Random random( 5 );
    Map map;
    std::map<String, U32> model;
    for( int step = 0; step < 4000; ++step ) {
        SCOPED_TRACE( step );
        String const key = std::to_string( random() % 40 );
        U32 const dice = random() % 200;
        if( dice == 0 ) {
            map.delAll();
            model.clear();
        } else if( dice < 110 ) {
            map.is( key, dice );
            model[ key ] = dice;
        } else {
            U32 const former = model.contains( key ) ? model[ key ] : 0;
            model.erase( key );
            ASSERT_EQ( map.del( key ), former );
        }
        ASSERT_EQ( ( std::map<String, U32>( map.begin(), map.end() ) ), model );
        ASSERT_EQ( map.size(), model.size() );
        ASSERT_EQ( map.has( key ), model.contains( key ) );
    }
}

TEST( HashSet, KeepsEachKeyOnce ) {
    Set set;
    EXPECT_TRUE( set.empty() );
    EXPECT_FALSE( set.has( "a" ) );
    set.is( "a" );
    set.is( "a" );
    set.is( "b" );
    EXPECT_EQ( set.size(), 2U );
    EXPECT_TRUE( set.has( "a" ) );
    EXPECT_EQ( std::set<String>( set.begin(), set.end() ), ( std::set<String>{ "a", "b" } ) );
}

TEST( HashSet, RemovesAndReturns ) {
    Set set;
    set.is( "a" );
    EXPECT_EQ( set.del( "b" ), "" );
    EXPECT_EQ( set.size(), 1U );
    EXPECT_EQ( set.del( "a" ), "a" );
    EXPECT_TRUE( set.empty() );
    EXPECT_EQ( set.del( "a" ), "" );
    set.is( "a key too long to stand inside the string itself" );
    EXPECT_EQ( set.del( *set.begin() ), "a key too long to stand inside the string itself" );
    set.is( "c" );
    set.delAll();
    EXPECT_FALSE( set.has( "c" ) );
    EXPECT_TRUE( set.empty() );
}

} // namespace
