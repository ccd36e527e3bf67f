#pragma once

#include "mirrow/Slab.h"
#include "vessa/Types.h"
#include "vessa/VectorException.h"
#include "zel/KeyIndex.h"

#include <tuple>
#include <utility>
#include <vector>

namespace Zel {

using Vessa::U32;

/// Sequence of records with an index for each Key (see KeyIndex), by which the first record of a key value is
/// found at once. The indexes are kept on change, so that reading takes no lock. Thread-compatible.
template<class T, class... Keys>
class Sequence {
    using Elements = std::vector<T, Mirrow::Allocator<T>>;

    template<class Key>
    using Index = KeyIndex<Elements, Key>;

  public:
    using value_type = T;
    using const_iterator = typename Elements::const_iterator;

    Sequence() = default;
    Sequence( Sequence const& ) = delete;
    Sequence& operator=( Sequence const& ) = delete;

    U32 size() const { return static_cast<U32>( elements_.size() ); }
    bool empty() const { return elements_.empty(); }
    const_iterator begin() const { return elements_.begin(); }
    const_iterator end() const { return elements_.end(); }

    /// The element at an index below size(), valid until the sequence changes; any other index throws
    /// Vessa::VectorOutOfRange.
    T const& at( U32 index ) const {
        requireIndex( index );
        return elements_[ index ];
    }
    /// The lowest index whose element has that key, size() when there is none. Constant time on average.
    template<class Key>
    U32 first( typename Key::Type const& key ) const {
        return std::get<Index<Key>>( indexes_ ).first( key );
    }

    /// Appends. Amortised constant time.
    void push( T element ) {
        makeRoom();
        elements_.push_back( std::move( element ) );
        ( std::get<Index<Keys>>( indexes_ ).add( size() - 1 ), ... );
    }
    /// Replaces the element at an index below size(), else throws Vessa::VectorOutOfRange and changes
    /// nothing. Linear: the replaced element may have been the first of its key.
    void is( U32 index, T element ) {
        requireIndex( index );
        makeRoom();
        ( std::get<Index<Keys>>( indexes_ ).remove( index ), ... );
        elements_[ index ] = std::move( element );
        ( std::get<Index<Keys>>( indexes_ ).add( index ), ... );
    }
    /// Removes and returns the last element; throws Vessa::VectorEmpty when there is none.
    T pop() {
        if( empty() )
            throw Vessa::VectorEmpty();
        ( std::get<Index<Keys>>( indexes_ ).remove( size() - 1 ), ... );
        T last = std::move( elements_.back() );
        elements_.pop_back();
        return last;
    }
    void popAll() {
        ( std::get<Index<Keys>>( indexes_ ).clear(), ... );
        elements_.clear();
    }

  private:
    /// What can fail comes first, so that a failure leaves elements and indexes as they were.
    void makeRoom() { ( std::get<Index<Keys>>( indexes_ ).makeRoom(), ... ); }
    void requireIndex( U32 index ) const {
        if( index >= size() )
            throw Vessa::VectorOutOfRange( index, size() );
    }

    Elements elements_;
    std::tuple<Index<Keys>...> indexes_{ Index<Keys>( elements_ )... };
};

} // namespace Zel
