#include "vessa/Types.h"
#include "zel/OrderedMap.h"

#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Vessa::String;
using Zel::U32;
using Random = std::independent_bits_engine<std::mt19937, 32, U32>;

struct ZelWords : Zel::OrderedMapEntry<ZelWords, String, U32> {
    using OrderedMapEntry::OrderedMapEntry;
};
using Map = Zel::OrderedMap<ZelWords>;

/// The map under test beside a plain one; each operation is done on both and its answer compared. A walk with
/// one iterator runs along.
class Walk {
  public:
    explicit Walk( U32 seed ) : random_( seed ), it_( map_.end() ) {}

    void step() {
        U32 const dice = random_() % 100;
        if( dice < 45 )
            insertOrReplace();
        else if( dice < 75 )
            remove();
        else if( dice < 85 )
            removeAtIterator();
        else if( dice < 99 )
            advance();
        else
            removeAll();
        expectSame();
    }

  private:
    String anyKey() { return String( 1 + random_() % 2, static_cast<char>( 'a' + random_() % 12 ) ); }

    void insertOrReplace() {
        String const key = anyKey();
        changes_ += model_.contains( key ) ? 0 : 1;
        map_.is( key, model_[ key ] = random_() );
    }

    U32 removeFromModel( String const& key ) {
        auto const found = model_.find( key );
        if( found == model_.end() )
            return 0;
        U32 const value = found->second;
        model_.erase( found );
        ++changes_;
        return value;
    }

    void remove() {
        String const key = anyKey();
        noteRemoval( key );
        U32 const expected = removeFromModel( key );
        ASSERT_EQ( map_.del( key ), expected );
    }

    void removeAtIterator() {
        U32 const expected = standing_ && present_ ? removeFromModel( at_ ) : 0;
        present_ = false;
        ASSERT_EQ( map_.del( it_ ), expected );
    }

    void removeAll() {
        changes_ += static_cast<U32>( model_.size() );
        model_.clear();
        present_ = false;
        map_.delAll();
    }

    /// The entry under the iterator is gone for good: the same key again is another one.
    void noteRemoval( String const& key ) {
        if( standing_ && key == at_ )
            present_ = false;
    }

    void advance() {
        auto const next = standing_ ? model_.upper_bound( at_ ) : model_.begin();
        if( standing_ )
            ++it_;
        else
            it_ = map_.begin();
        standing_ = present_ = next != model_.end();
        if( standing_ )
            at_ = next->first;
    }

    void expectSame() {
        std::vector<std::pair<String, U32>> entries;
        for( auto const& entry : map_ )
            entries.emplace_back( entry.key(), entry.value() );
        ASSERT_EQ( entries, ( std::vector<std::pair<String, U32>>( model_.begin(), model_.end() ) ) );
        ASSERT_EQ( map_.size(), model_.size() );
        ASSERT_EQ( map_.changes(), changes_ );
        ASSERT_EQ( it_ != map_.end(), standing_ );
        if( standing_ ) {
            ASSERT_EQ( it_->key(), at_ );
        }
        String const key = anyKey();
        ASSERT_EQ( map_.has( key ), model_.contains( key ) );
        ASSERT_EQ( map_.value( key ), model_.contains( key ) ? model_[ key ] : 0 );
    }

    Random random_;
    Map map_;
    std::map<String, U32> model_;
    U32 changes_ = 1;
    Map::iterator it_;
    bool standing_ = false; ///< whether the iterator is on an entry, the one that had the key at_
    bool present_ = false;  ///< whether that entry is still in the map
    String at_;
};

class OrderedMapWalk : public testing::TestWithParam<U32> {};

TEST_P( OrderedMapWalk, BehavesAsAMapThatCountsItsChanges ) {
    Walk walk( GetParam() );
    for( int step = 0; step < 3000 && !HasFatalFailure(); ++step ) {
        SCOPED_TRACE( step );
        walk.step();
    }
}

INSTANTIATE_TEST_SUITE_P( Seeds, OrderedMapWalk, testing::Range( 1U, 9U ) );

} // namespace
