#include "zel/OrderedMap.h"
#include "vessa/Types.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using Vessa::String;
using Zel::Ptr;
using Zel::U32;

struct ZelNames : Zel::OrderedMapEntry<ZelNames, U32, String> {
    using OrderedMapEntry::OrderedMapEntry;
};
using Map = Zel::OrderedMap<ZelNames>;

std::vector<U32> keys( Map const& map ) {
    std::vector<U32> result;
    for( auto const& entry : map )
        result.push_back( entry.key() );
    return result;
}

class OrderedMapOfThree : public testing::Test {
  protected:
    OrderedMapOfThree() {
        map_.is( 20, "b" );
        map_.is( 10, "a" );
        map_.is( 30, "c" );
    }

    Map map_;
};

TEST( OrderedMap, AnswersDefaultsWhileEmpty ) {
    Map map;
    EXPECT_TRUE( map.empty() );
    EXPECT_EQ( map.size(), 0U );
    EXPECT_EQ( map.changes(), 1U );
    EXPECT_FALSE( map.has( 1 ) );
    EXPECT_EQ( map.value( 1 ), "" );
    EXPECT_EQ( map.find( 1 ), map.end() );
    EXPECT_EQ( map.begin(), map.end() );
    EXPECT_EQ( map.del( 1 ), "" );
    EXPECT_EQ( map.del( map.end() ), "" );
    map.delAll();
    EXPECT_EQ( map.changes(), 1U );
}

TEST_F( OrderedMapOfThree, StandsInAscendingOrder ) {
    EXPECT_EQ( keys( map_ ), ( std::vector<U32>{ 10, 20, 30 } ) );
    EXPECT_EQ( map_.value( 20 ), "b" );
    EXPECT_EQ( map_.value( 25 ), "" );
}

TEST_F( OrderedMapOfThree, TheChangeCounterMovesOnInsertionAndRemovalOnly ) {
    EXPECT_EQ( map_.changes(), 4U );
    map_.is( 20, "other" );
    map_.is( 20, "" );
    map_.del( 99 );
    map_.del( map_.end() );
    map_.value( 99 );
    EXPECT_EQ( map_.changes(), 4U );
    map_.del( 20 );
    EXPECT_EQ( map_.changes(), 5U );
    map_.del( map_.find( 10 ) );
    EXPECT_EQ( map_.changes(), 6U );
    map_.is( 10, "again" );
    EXPECT_EQ( map_.changes(), 7U );
    map_.delAll();
    EXPECT_EQ( map_.changes(), 9U );
}

TEST_F( OrderedMapOfThree, AReplacedValueStaysInTheSameEntry ) {
    auto const* const entry = &*map_.find( 20 );
    map_.is( 20, "new" );
    EXPECT_EQ( &*map_.find( 20 ), entry );
    EXPECT_EQ( entry->value(), "new" );
    EXPECT_EQ( map_.size(), 3U );
}

TEST_F( OrderedMapOfThree, RemovalReturnsTheFormerValue ) {
    EXPECT_EQ( map_.del( 20 ), "b" );
    EXPECT_EQ( map_.del( 20 ), "" );
    EXPECT_EQ( map_.del( map_.find( 30 ) ), "c" );
    EXPECT_EQ( map_.del( map_.find( 30 ) ), "" );
    EXPECT_EQ( keys( map_ ), std::vector<U32>{ 10 } );
}

TEST_F( OrderedMapOfThree, RemovesByAKeyOfItsOwn ) {
    EXPECT_EQ( map_.del( map_.begin()->key() ), "a" );
    EXPECT_EQ( keys( map_ ), ( std::vector<U32>{ 20, 30 } ) );
}

TEST_F( OrderedMapOfThree, AnEntryStaysValidForItsHolders ) {
    auto const iterator = map_.find( 20 );
    Ptr<ZelNames> const entry( const_cast<ZelNames*>( &*iterator ) );
    EXPECT_EQ( entry->references(), 3U ); // the map's, the iterator's, this one
    map_.delAll();
    EXPECT_EQ( entry->references(), 2U );
    EXPECT_EQ( entry->key(), 20U );
    EXPECT_EQ( iterator->value(), "b" );
}

TEST_F( OrderedMapOfThree, AnIteratorWhoseEntryIsGoneRemovesNothing ) {
    auto const position = map_.find( 20 );
    EXPECT_EQ( map_.del( position ), "b" );
    EXPECT_EQ( map_.del( position ), "" );
    EXPECT_EQ( map_.changes(), 5U );
    // The same key again is another entry.
    map_.is( 20, "new" );
    EXPECT_EQ( map_.del( position ), "" );
    EXPECT_EQ( map_.value( 20 ), "new" );
    EXPECT_EQ( position->value(), "b" );
    EXPECT_EQ( map_.changes(), 6U );
}

TEST_F( OrderedMapOfThree, IteratorsAreEqualOnTheSameEntry ) {
    auto it = map_.begin();
    EXPECT_EQ( it, map_.find( 10 ) );
    EXPECT_EQ( it++, map_.find( 10 ) );
    EXPECT_EQ( it, map_.find( 20 ) );
    EXPECT_EQ( ++it, map_.find( 30 ) );
    EXPECT_NE( it, map_.end() );
    EXPECT_EQ( ++it, map_.end() );
    EXPECT_EQ( Map::iterator(), map_.end() );
}

/// One change of the map while an iterator is at 20, and what a walk from there visits.
struct WalkRow {
    char const* name;
    void ( *change )( Map& map );
    std::vector<U32> visited;
};

WalkRow const walkRows[] = {
    { "nothing", []( Map& ) {}, { 20, 30 } },
    { "own entry removed", []( Map& map ) { map.del( 20 ); }, { 20, 30 } },
    { "own entry removed and put back",
      []( Map& map ) {
          map.del( 20 );
          map.is( 20, "new" );
      },
      { 20, 30 } },
    { "next entry removed", []( Map& map ) { map.del( 30 ); }, { 20 } },
    { "own and next removed",
      []( Map& map ) {
          map.del( 20 );
          map.del( 30 );
      },
      { 20 } },
    { "former entry removed", []( Map& map ) { map.del( 10 ); }, { 20, 30 } },
    { "insertion before", []( Map& map ) { map.is( 15, "" ); }, { 20, 30 } },
    { "insertion right behind", []( Map& map ) { map.is( 21, "" ); }, { 20, 21, 30 } },
    { "insertion at the end", []( Map& map ) { map.is( 40, "" ); }, { 20, 30, 40 } },
    { "own removed, one put right behind",
      []( Map& map ) {
          map.del( 20 );
          map.is( 21, "" );
      },
      { 20, 21, 30 } },
    { "next replaced by a smaller and a greater",
      []( Map& map ) {
          map.del( 30 );
          map.is( 5, "" );
          map.is( 35, "" );
      },
      { 20, 35 } },
    { "value replaced", []( Map& map ) { map.is( 20, "new" ); }, { 20, 30 } },
    { "all removed", []( Map& map ) { map.delAll(); }, { 20 } },
    { "all removed and others put in",
      []( Map& map ) {
          map.delAll();
          map.is( 1, "" );
          map.is( 22, "" );
      },
      { 20, 22 } },
};

TEST( OrderedMapIteration, GoesOnAtTheNextGreaterKeyAfterAChange ) {
    for( WalkRow const& row : walkRows ) {
        SCOPED_TRACE( row.name );
        Map map;
        for( U32 const key : { 10U, 20U, 30U } )
            map.is( key, "former" );
        auto it = map.find( 20 );
        row.change( map );
        std::vector<U32> visited;
        for( ; it != map.end(); ++it )
            visited.push_back( it->key() );
        EXPECT_EQ( visited, row.visited );
    }
}

TEST( OrderedMapIteration, EachEntryMayRemoveItself ) {
    Map map;
    for( U32 key = 0; key < 100; ++key )
        map.is( key, std::to_string( key ) );
    U32 expected = 0;
    for( auto it = map.begin(); it != map.end(); ++it, ++expected )
        EXPECT_EQ( map.del( it ), std::to_string( expected ) );
    EXPECT_EQ( expected, 100U );
    EXPECT_TRUE( map.empty() );
}

TEST( OrderedMapIteration, VisitsWhatIsInsertedAheadUntilItStops ) {
    Map map;
    map.is( 1, "" );
    std::vector<U32> visited;
    for( auto const& entry : map ) {
        visited.push_back( entry.key() );
        if( entry.key() < 16 )
            map.is( entry.key() * 2, "" );
        map.is( 0, "" ); // before it: never visited
    }
    EXPECT_EQ( visited, ( std::vector<U32>{ 1, 2, 4, 8, 16 } ) );
    EXPECT_EQ( map.size(), 6U );
}

} // namespace
