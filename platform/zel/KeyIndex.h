#pragma once

#include "mirrow/Slab.h"
#include "vessa/Types.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace Zel {

using Vessa::U32;

/// A hash of numbers: spreads neighbours.
inline std::uint64_t keyHash( std::uint64_t number ) { return number * 0x9E3779B97F4A7C15; }

/// A hash of texts, made for names: eight characters a step, in two lanes that do not wait for each other.
/// Where the end is no full step, the last eight characters are taken once more.
inline std::uint64_t keyHash( std::string_view text ) {
    auto const word = []( char const* from, std::size_t size = 8 ) {
        std::uint64_t characters = 0;
        std::memcpy( &characters, from, size );
        return characters;
    };
    auto const mixed = []( std::uint64_t lane, std::uint64_t characters ) {
        return std::rotl( keyHash( lane ^ characters ), 29 );
    };
    std::uint64_t a = keyHash( text.size() );
    std::uint64_t b = 0;
    if( text.size() >= 8 ) {
        char const* const last = text.data() + text.size() - 8;
        char const* p = text.data();
        for( ; p + 8 <= last; p += 16 ) {
            a = mixed( a, word( p ) );
            b = mixed( b, word( p + 8 ) );
        }
        if( p < last )
            a = mixed( a, word( p ) );
        b = mixed( b, word( last ) );
    } else if( !text.empty() ) {
        a = mixed( a, word( text.data(), text.size() ) );
    }
    a = keyHash( a ^ std::rotl( b, 17 ) );
    return keyHash( a ^ a >> 32 );
}

/// The lowest position of every value that a Key has among the elements of an array: what a search from the
/// front would find, at once. A Key is a type with the key's type, `Type`, a number or a std::string_view,
/// and `static Type of( Element const& )`; it may have `static bool is( Element const&, Type const& )`, where
/// that is quicker than to compare `of`. The elements must outlive the index, at the same array object; there
/// are fewer than 2^32 - 1 of them. Thread-compatible.
///
/// An open hash table with the hashes in it: a look-up touches one place of the table, and then the element.
template<class Elements, class Key>
class KeyIndex {
    using Element = typename Elements::value_type;
    using KeyType = typename Key::Type;

  public:
    explicit KeyIndex( Elements const& elements ) : elements_( elements ) {}

    /// The lowest position with that key, or the number of elements. Constant time on average.
    U32 first( KeyType const& key ) const {
        Slot const* const slot = find( key );
        return slot ? slot->position : static_cast<U32>( elements_.size() );
    }

    /// Takes the element at a position in: it counts when no lower one has its key.
    void add( U32 position ) {
        KeyType const key = Key::of( elements_[ position ] );
        if( Slot* const slot = find( key ) ) {
            if( position < slot->position )
                slot->position = position;
            return;
        }
        makeRoom();
        insert( { hash( key ), position } );
        ++used_;
    }

    /// Makes place for one more key, so that the next add() fails in nothing.
    void makeRoom() {
        if( ( used_ + 1 ) * 2 > slots_.size() )
            grow();
    }

    /// Forgets the element at a position, which still has its key; the next higher one of that key counts.
    /// Linear.
    void remove( U32 position ) {
        KeyType const key = Key::of( elements_[ position ] );
        Slot* const slot = find( key );
        if( slot->position != position )
            return;
        for( U32 next = position + 1; next < elements_.size(); ++next ) {
            if( is( elements_[ next ], key ) ) {
                slot->position = next;
                return;
            }
        }
        erase( static_cast<std::size_t>( slot - slots_.data() ) );
    }

    void clear() {
        slots_.clear();
        used_ = 0;
    }

  private:
    static constexpr U32 none = ~U32();

    struct Slot {
        U32 hash = 0;
        U32 position = none;
    };

    static U32 hash( KeyType const& key ) { return static_cast<U32>( keyHash( key ) >> 32 ); }

    static bool is( Element const& element, KeyType const& key ) {
        if constexpr( requires { Key::is( element, key ); } )
            return Key::is( element, key );
        else
            return Key::of( element ) == key;
    }

    // The number of slots is a power of two, so that a mask keeps a number of a slot in range. A run of used
    // slots ends at an empty one; half of all are empty. A slot's place is by the upper bits of its hash,
    // which spread best: handles often go up in equal steps.
    std::size_t mask() const { return slots_.size() - 1; }
    std::size_t home( Slot slot ) const {
        return slot.hash >> std::countl_zero( static_cast<U32>( mask() ) );
    }
    std::size_t next( std::size_t i ) const { return ( i + 1 ) & mask(); }

    Slot const* find( KeyType const& key ) const {
        if( slots_.empty() )
            return nullptr;
        Slot const wanted{ hash( key ) };
        for( std::size_t i = home( wanted ); slots_[ i ].position != none; i = next( i ) ) {
            if( slots_[ i ].hash == wanted.hash && is( elements_[ slots_[ i ].position ], key ) )
                return &slots_[ i ];
        }
        return nullptr;
    }
    Slot* find( KeyType const& key ) { return const_cast<Slot*>( std::as_const( *this ).find( key ) ); }

    void insert( Slot slot ) {
        std::size_t i = home( slot );
        while( slots_[ i ].position != none )
            i = next( i );
        slots_[ i ] = slot;
    }

    void grow() {
        Slots former( slots_.empty() ? 8 : slots_.size() * 2 );
        former.swap( slots_ );
        for( Slot const slot : former ) {
            if( slot.position != none )
                insert( slot );
        }
    }

    /// Empties a slot and moves up what comes after it only because it was full.
    void erase( std::size_t hole ) {
        for( std::size_t i = next( hole ); slots_[ i ].position != none; i = next( i ) ) {
            bool const reachesHole = ( ( i - home( slots_[ i ] ) ) & mask() ) >= ( ( i - hole ) & mask() );
            if( reachesHole )
                slots_[ std::exchange( hole, i ) ] = slots_[ i ];
        }
        slots_[ hole ] = {};
        --used_;
    }

    using Slots = std::vector<Slot, Mirrow::Allocator<Slot, Element>>;

    Elements const& elements_;
    Slots slots_;
    std::size_t used_ = 0;
};

} // namespace Zel
