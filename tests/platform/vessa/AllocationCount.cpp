#include "tests/platform/vessa/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> count = 0;
}

std::size_t allocationCount() { return count.load(); }

void* operator new( std::size_t bytes ) {
    ++count;
    if( void* const block = std::malloc( bytes ? bytes : 1 ) )
        return block;
    throw std::bad_alloc();
}

void operator delete( void* block ) noexcept { std::free( block ); }
void operator delete( void* block, std::size_t ) noexcept { std::free( block ); }
