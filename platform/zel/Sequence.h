#pragma once

#include "mirrow/Slab.h"
#include "vessa/Types.h"
#include "vessa/VectorException.h"

#include <functional>
#include <tuple>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Zel {

using Vessa::U32;

/// Sequence of records with an index for each Key, by which the first record of a key value is found at once.
/// A Key is a type with the key's type, `Type`, and `static Type of( T const& )`. The indexes are kept on
/// change, so that reading takes no lock. Thread-compatible.
template<class T, class... Keys>
class Sequence {
    using Elements = std::vector<T, Mirrow::Allocator<T>>;

    /// The lowest position of every value of one key.
    template<class Key>
    class Index {
        struct Position {
            U32 value;
        };
        // Not noexcept on purpose: the standard set then keeps each hash instead of computing it again.
        struct Hash {
            using is_transparent = void;
            std::size_t operator()( Position p ) const {
                return ( *this )( Key::of( ( *elements )[ p.value ] ) );
            }
            std::size_t operator()( typename Key::Type const& key ) const {
                return std::hash<typename Key::Type>()( key );
            }
            Elements const* elements;
        };
        struct Equal {
            using is_transparent = void;
            bool operator()( Position a, Position b ) const {
                return ( *this )( Key::of( ( *elements )[ a.value ] ), b );
            }
            bool operator()( typename Key::Type const& a, Position b ) const {
                return a == Key::of( ( *elements )[ b.value ] );
            }
            bool operator()( Position a, typename Key::Type const& b ) const { return ( *this )( b, a ); }
            Elements const* elements;
        };

      public:
        explicit Index( Elements const& elements )
            : elements_( elements ), first_( 0, Hash{ &elements }, Equal{ &elements } ) {}

        /// The lowest position with that key, or the number of elements.
        U32 first( typename Key::Type const& key ) const {
            auto const found = first_.find( key );
            return found == first_.end() ? static_cast<U32>( elements_.size() ) : found->value;
        }

        /// Takes the element at a position in: it counts when no lower one has its key.
        void add( U32 position ) {
            auto const [ holder, added ] = first_.insert( Position{ position } );
            if( added || holder->value < position )
                return;
            first_.erase( holder );
            first_.insert( Position{ position } );
        }

        /// Forgets the element at a position, which still has its key; the next higher one of that key
        /// counts.
        void remove( U32 position ) {
            auto const key = Key::of( elements_[ position ] );
            auto const holder = first_.find( key );
            if( holder->value != position )
                return;
            first_.erase( holder );
            for( U32 next = position + 1; next < elements_.size(); ++next ) {
                if( Key::of( elements_[ next ] ) == key ) {
                    first_.insert( Position{ next } );
                    return;
                }
            }
        }

        void clear() { first_.clear(); }

      private:
        Elements const& elements_;
        std::unordered_set<Position, Hash, Equal, Mirrow::Allocator<Position, T>> first_;
    };

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
        elements_.push_back( std::move( element ) );
        ( std::get<Index<Keys>>( indexes_ ).add( size() - 1 ), ... );
    }
    /// Replaces the element at an index below size(), else throws Vessa::VectorOutOfRange and changes
    /// nothing. Linear: the replaced element may have been the first of its key.
    void is( U32 index, T element ) {
        requireIndex( index );
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
    void requireIndex( U32 index ) const {
        if( index >= size() )
            throw Vessa::VectorOutOfRange( index, size() );
    }

    Elements elements_;
    std::tuple<Index<Keys>...> indexes_{ Index<Keys>( elements_ )... };
};

} // namespace Zel
