#include "tests/resourceinfo/parser/context/Memory.h"

#include "mirrow/Slab.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <malloc.h>
#include <memory_resource>
#include <new>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

std::size_t liveBlocks = 0;
std::size_t liveBytes = 0;
std::size_t peakBytes = 0;
std::size_t untilLack = never;
bool lackLasts = false;
bool lackStruck = false;

/// Whether this allocation is one that fails.
bool fails() {
    if( untilLack == never )
        return false;
    if( untilLack > 0 ) {
        --untilLack;
        return false;
    }
    if( !lackLasts )
        untilLack = never;
    lackStruck = true;
    return true;
}

void* counted( void* block ) {
    if( !block )
        throw std::bad_alloc();
    ++liveBlocks;
    liveBytes += malloc_usable_size( block );
    peakBytes = std::max( peakBytes, liveBytes );
    return block;
}

void release( void* block ) {
    if( !block )
        return;
    --liveBlocks;
    liveBytes -= malloc_usable_size( block );
    std::free( block );
}

} // namespace

void* operator new( std::size_t bytes ) {
    return counted( fails() ? nullptr : std::malloc( bytes ? bytes : 1 ) );
}
void* operator new( std::size_t bytes, std::align_val_t alignment ) {
    auto const step = static_cast<std::size_t>( alignment );
    return counted( fails() ? nullptr : std::aligned_alloc( step, ( bytes + step - 1 ) / step * step ) );
}
void operator delete( void* block ) noexcept { release( block ); }
void operator delete( void* block, std::size_t ) noexcept { release( block ); }
void operator delete( void* block, std::align_val_t ) noexcept { release( block ); }
void operator delete( void* block, std::size_t, std::align_val_t ) noexcept { release( block ); }

/// In place of the library's: the slabs of this program hand everything on, so that nothing that is drawn
/// from them goes unseen.
std::pmr::memory_resource& Mirrow::slab() { return *std::pmr::new_delete_resource(); }

namespace Memory {

std::size_t blocks() { return liveBlocks; }
std::size_t bytes() { return liveBytes; }
std::size_t peak() { return peakBytes; }
void peakIsNow() { peakBytes = liveBytes; }

Lack::Lack( std::size_t others, bool lasting ) {
    untilLack = others;
    lackLasts = lasting;
    lackStruck = false;
}

Lack::~Lack() { untilLack = never; }

bool Lack::struck() const { return lackStruck; }

} // namespace Memory
