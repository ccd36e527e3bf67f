#pragma once

#include "mirrow/Slab.h"
#include "zel/Ptr.h"

#include <cstddef>
#include <iterator>
#include <set>

namespace Zel {

/// An entry of an ordered map: a counted entity, valid for whoever holds it also after its removal. A map
/// derives its entry type from this one, `struct ZelPorts : OrderedMapEntry<ZelPorts, U32, String>`.
template<class Entry, class KeyType, class ValueType>
class OrderedMapEntry : public PtrInterface, public Mirrow::Allocated<Entry> {
  public:
    using Key = KeyType;
    using Value = ValueType;

    OrderedMapEntry( Key key, Value value ) : key_( std::move( key ) ), value_( std::move( value ) ) {}

    Key const& key() const { return key_; }
    Value const& value() const { return value_; }
    void valueIs( Value value ) { value_ = std::move( value ); }

  private:
    Key const key_;
    Value value_;
};

/// Ordered map whose entries are counted entities, in ascending key order. Iterators survive any change of
/// the map: they hold their entry, and go on at the next greater key. Thread-compatible; iterating counts
/// references, so several threads may read in the atomic pointer mode only.
template<class Entry>
class OrderedMap {
  public:
    using Key = typename Entry::Key;
    using Value = typename Entry::Value;

  private:
    struct ByKey {
        using is_transparent = void;
        bool operator()( Ptr<Entry> const& a, Ptr<Entry> const& b ) const { return a->key() < b->key(); }
        bool operator()( Ptr<Entry> const& a, Key const& b ) const { return a->key() < b; }
        bool operator()( Key const& a, Ptr<Entry> const& b ) const { return a < b->key(); }
    };
    using Tree = std::set<Ptr<Entry>, ByKey, Mirrow::Allocator<Ptr<Entry>, Entry>>;

  public:
    /// Forward iterator that holds its entry by a counted reference. Must not outlive its map.
    class iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using pointer = Entry const*;
        using reference = Entry const&;

        iterator() = default;
        reference operator*() const { return *entry_; }
        pointer operator->() const { return entry_.get(); }
        /// To the entry with the next greater key as the map is now, or to the end.
        iterator& operator++() {
            place( changes_ == map_->changes_ ? std::next( position_ )
                                              : map_->tree_.upper_bound( entry_->key() ) );
            return *this;
        }
        iterator operator++( int ) {
            iterator former = *this;
            ++*this;
            return former;
        }
        friend bool operator==( iterator const& a, iterator const& b ) { return a.entry_ == b.entry_; }

      private:
        friend class OrderedMap;
        iterator( OrderedMap const* map, typename Tree::const_iterator position ) : map_( map ) {
            place( position );
        }
        void place( typename Tree::const_iterator position ) {
            position_ = position;
            changes_ = map_->changes_;
            entry_ = position == map_->tree_.end() ? Ptr<Entry>() : *position;
        }

        OrderedMap const* map_ = nullptr;
        typename Tree::const_iterator position_; // meaningful while the map has not changed since
        U32 changes_ = 0;
        Ptr<Entry> entry_;
    };

    OrderedMap() = default;
    OrderedMap( OrderedMap const& ) = delete;
    OrderedMap& operator=( OrderedMap const& ) = delete;

    std::size_t size() const { return tree_.size(); }
    bool empty() const { return tree_.empty(); }
    /// 1 at start; moves on with every insertion and removal, not when a value is replaced.
    U32 changes() const { return changes_; }

    iterator begin() const { return { this, tree_.begin() }; }
    iterator end() const { return { this, tree_.end() }; }
    /// The entry with that key, or the end. Logarithmic.
    iterator find( Key const& key ) const { return { this, tree_.find( key ) }; }
    bool has( Key const& key ) const { return tree_.find( key ) != tree_.end(); }
    /// A copy of the key's value, Value() for a missing key. Logarithmic.
    Value value( Key const& key ) const {
        auto const found = tree_.find( key );
        return found == tree_.end() ? Value() : ( *found )->value();
    }

    /// Replaces the value of a present key in place, else inserts. Logarithmic.
    void is( Key const& key, Value value ) {
        auto const found = tree_.find( key );
        if( found != tree_.end() ) {
            ( *found )->valueIs( std::move( value ) );
            return;
        }
        tree_.insert( Ptr<Entry>( new Entry( key, std::move( value ) ) ) );
        ++changes_;
    }
    /// Removes a key's entry and returns its value; a missing key changes nothing and answers Value().
    Value del( Key const& key ) { return remove( tree_.find( key ) ); }
    /// Removes the entry that the iterator stands on and returns its value. One that stands on the end, or on
    /// an entry removed before, changes nothing and answers Value().
    Value del( iterator const& position ) {
        if( !position.entry_ )
            return Value();
        auto const found = tree_.find( position.entry_->key() );
        return found != tree_.end() && *found == position.entry_ ? remove( found ) : Value();
    }
    void delAll() {
        changes_ += static_cast<U32>( tree_.size() );
        tree_.clear();
    }

  private:
    Value remove( typename Tree::const_iterator position ) {
        if( position == tree_.end() )
            return Value();
        Value value = ( *position )->value();
        tree_.erase( position );
        ++changes_;
        return value;
    }

    Tree tree_;
    U32 changes_ = 1;
};

} // namespace Zel
