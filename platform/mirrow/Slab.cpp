#include "mirrow/Slab.h"

#include <array>
#include <mutex>
#include <utility>

#if defined( __SANITIZE_ADDRESS__ ) || defined( __SANITIZE_THREAD__ )
#define MIRROW_SANITIZED
#elif defined( __has_feature )
#if __has_feature( address_sanitizer ) || __has_feature( thread_sanitizer )
#define MIRROW_SANITIZED
#endif
#endif

namespace Mirrow {

#ifdef MIRROW_SANITIZED

// Blocks of their own, so that the sanitizer sees each one's life.
std::pmr::memory_resource& slab() { return *std::pmr::new_delete_resource(); }

#else

namespace {

/// A list of free blocks for each size, filled a chunk at a time; large blocks go past them. The pools of
/// libstdc++ 12 would do, but crash when they cannot get memory, where these throw and stay as they were.
class Slabs final : public std::pmr::memory_resource {
    static constexpr std::size_t unit = alignof( std::max_align_t );
    static constexpr std::size_t largest = 32 * unit;
    static constexpr std::size_t chunk = 16 * largest;

    struct Block {
        Block* next;
    };

    static bool fits( std::size_t bytes, std::size_t alignment ) {
        return bytes <= largest && alignment <= unit;
    }
    static std::size_t unitsOf( std::size_t bytes ) { return bytes == 0 ? 1 : ( bytes + unit - 1 ) / unit; }

    void* do_allocate( std::size_t bytes, std::size_t alignment ) override {
        if( !fits( bytes, alignment ) )
            return ::operator new( bytes, std::align_val_t( alignment ) );
        std::lock_guard const lock( mutex_ );
        Block*& free = free_[ unitsOf( bytes ) ];
        if( !free )
            free = newBlocks( unitsOf( bytes ) * unit );
        return std::exchange( free, free->next );
    }
    void do_deallocate( void* block, std::size_t bytes, std::size_t alignment ) override {
        if( !fits( bytes, alignment ) )
            return ::operator delete( block, std::align_val_t( alignment ) );
        std::lock_guard const lock( mutex_ );
        Block*& free = free_[ unitsOf( bytes ) ];
        free = new( block ) Block{ free };
    }
    bool do_is_equal( memory_resource const& other ) const noexcept override { return this == &other; }

    /// A chunk's blocks, linked in the order of their addresses: what is allocated together lies together.
    static Block* newBlocks( std::size_t size ) {
        char* const begin = static_cast<char*>( ::operator new( chunk ) );
        Block* first = nullptr;
        for( std::size_t i = chunk / size; i-- > 0; )
            first = new( begin + i * size ) Block{ first };
        return first;
    }

    std::mutex mutex_;
    std::array<Block*, largest / unit + 1> free_ = {}; // by units of a block's size
};

} // namespace

std::pmr::memory_resource& slab() {
    static auto& slabs = *new Slabs;
    return slabs;
}

#endif

} // namespace Mirrow
