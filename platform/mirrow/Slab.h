#pragma once

#include "vessa/AllocationTracker.h"
#include "vessa/Export.h"

#include <cstddef>
#include <memory_resource>

namespace Mirrow {

/// The process-wide slabs: pooled blocks of a few sizes. Thread-safe; never destroyed, so that what was
/// allocated here can be given back at any time.
VESSA_EXPORT std::pmr::memory_resource& slab();

/// Allocator of a collection's nodes and arrays: draws from the slabs, counted under the type Tracked, which
/// is the collection's element type whatever the container makes of it.
template<class T, class Tracked = T>
struct Allocator {
    using value_type = T;
    template<class Other>
    struct rebind {
        using other = Allocator<Other, Tracked>;
    };

    Allocator() = default;
    template<class Other>
    Allocator( Allocator<Other, Tracked> const& ) noexcept {}

    T* allocate( std::size_t n ) {
        void* const block = slab().allocate( n * sizeof( T ), alignof( T ) );
        Vessa::allocationTracker<Tracked>().allocated( n * sizeof( T ) );
        return static_cast<T*>( block );
    }
    void deallocate( T* block, std::size_t n ) noexcept {
        Vessa::allocationTracker<Tracked>().released( n * sizeof( T ) );
        slab().deallocate( block, n * sizeof( T ), alignof( T ) );
    }

    friend bool operator==( Allocator const&, Allocator const& ) { return true; }
};

/// Base that gives the entity type T tracked allocation from the slabs. T must have a virtual destructor, so
/// that a release through a base knows T.
template<class T>
struct Allocated {
    static void* operator new( std::size_t bytes ) {
        void* const block = slab().allocate( bytes, alignof( T ) );
        Vessa::allocationTracker<T>().allocated( bytes );
        return block;
    }
    static void operator delete( void* block, std::size_t bytes ) noexcept {
        Vessa::allocationTracker<T>().released( bytes );
        slab().deallocate( block, bytes, alignof( T ) );
    }
};

} // namespace Mirrow
