#include "mirrow/Slab.h"
#include "tests/platform/Threads.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <set>
#include <stdexcept>
#include <sys/resource.h>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Vessa::allocationTracker;

TEST( Slab, IsOneInTheProcess ) { EXPECT_EQ( &Mirrow::slab(), &Mirrow::slab() ); }

TEST( Slab, GivesAlignedBlocksThatDoNotOverlap ) {
    struct Block {
        char* begin;
        std::size_t bytes, alignment;
    };
    std::vector<Block> blocks;
    for( std::size_t const units : { 1U, 1U, 1U, 3U, 3U, 3U, 13U, 13U, 100U, 7000U } )
        for( std::size_t const alignment : { 1U, 2U, 8U, 16U, 32U, 64U } ) {
            std::size_t const bytes = units * alignment;
            char* const begin = static_cast<char*>( Mirrow::slab().allocate( bytes, alignment ) );
            EXPECT_EQ( reinterpret_cast<std::uintptr_t>( begin ) % alignment, 0U );
            std::memset( begin, static_cast<int>( blocks.size() ), bytes );
            blocks.push_back( { begin, bytes, alignment } );
        }
    for( std::size_t i = 0; i < blocks.size(); ++i ) {
        auto const& [ begin, bytes, alignment ] = blocks[ i ];
        EXPECT_EQ( static_cast<std::size_t>( std::count( begin, begin + bytes, static_cast<char>( i ) ) ),
                   bytes );
        Mirrow::slab().deallocate( begin, bytes, alignment );
    }
}

// Slabs that are not locked hand the same block out twice.
TEST( Slab, ServesManyThreadsAtOnce ) {
    std::atomic<int> overwritten = 0;
    repeatInThreads( [ &overwritten ]( std::size_t owner ) {
        std::array<std::size_t*, 8> blocks;
        for( std::size_t*& block : blocks ) {
            block =
                static_cast<std::size_t*>( Mirrow::slab().allocate( sizeof *block, alignof( std::size_t ) ) );
            *block = owner;
        }
        for( std::size_t* const block : blocks ) {
            overwritten += *block != owner;
            Mirrow::slab().deallocate( block, sizeof *block, alignof( std::size_t ) );
        }
    } );
    EXPECT_EQ( overwritten, 0 );
}

TEST( Slab, TakesBackWhatAnotherThreadWasGiven ) {
    std::array<void*, threadCount> blocks;
    inThreads( [ &blocks ]( std::size_t i ) { blocks[ i ] = Mirrow::slab().allocate( 32, 8 ); } );
    EXPECT_EQ( ( std::set<void*>( blocks.begin(), blocks.end() ).size() ), threadCount );
    inThreads(
        [ &blocks ]( std::size_t i ) { Mirrow::slab().deallocate( blocks[ threadCount - 1 - i ], 32, 8 ); } );
}

#ifndef BFRI_SANITIZED
// Takes all memory that there is, gives it back, and takes it again.
TEST( SlabDeathTest, WithoutMemoryThrowsAndGoesOnWhenThereIsSome ) {
    auto const takeAll = [] {
        std::size_t count = 0;
        void* last = nullptr;
        try {
            for( ;; ++count ) {
                void* const block = Mirrow::slab().allocate( 48, 8 );
                last = new( block ) void*( last );
            }
        } catch( std::bad_alloc const& ) {
        }
        while( last ) {
            void* const next = *static_cast<void**>( last );
            Mirrow::slab().deallocate( std::exchange( last, next ), 48, 8 );
        }
        return count;
    };
    auto const takeAllTwice = [ & ] {
        rlimit const limit = { 512U << 20U, 512U << 20U };
        setrlimit( RLIMIT_AS, &limit );
        std::size_t const count = takeAll();
        std::_Exit( count > 100000 && takeAll() == count ? 0 : 1 );
    };
    EXPECT_EXIT( takeAllTwice(), testing::ExitedWithCode( 0 ), "" );
}
#endif

struct Element {
    double number;
};

TEST( Allocator, CountsUnderTheElementTypeWhateverTheContainerMakesOfIt ) {
    using Nodes = Mirrow::Allocator<Element>::rebind<std::pair<void*, Element>>::other;
    auto const& tracker = allocationTracker<Element>();
    ASSERT_EQ( tracker.live(), 0U );
    auto const* const block = Nodes().allocate( 3 );
    EXPECT_EQ( tracker.live(), 1U );
    EXPECT_EQ( tracker.liveBytes(), 3 * sizeof( std::pair<void*, Element> ) );
    Nodes().deallocate( const_cast<std::pair<void*, Element>*>( block ), 3 );
    EXPECT_EQ( tracker.live(), 0U );
    EXPECT_EQ( tracker.liveBytes(), 0U );
}

TEST( Allocator, IsInterchangeable ) {
    EXPECT_TRUE( Mirrow::Allocator<Element>() == Mirrow::Allocator<Element>() );
}

struct Shape : Mirrow::Allocated<Shape> {
    explicit Shape( bool fails = false ) {
        if( fails )
            throw std::runtime_error( "no shape" );
    }
    virtual ~Shape() = default;
};

struct LargeShape : Shape {
    char text[ 500 ] = {};
};

TEST( Allocated, CountsAnEntityFromCreationToDestruction ) {
    auto const& tracker = allocationTracker<Shape>();
    {
        auto const shape = std::make_unique<Shape>();
        EXPECT_EQ( tracker.live(), 1U );
        EXPECT_EQ( tracker.liveBytes(), sizeof( Shape ) );
    }
    EXPECT_EQ( tracker.live(), 0U );
    EXPECT_EQ( tracker.liveBytes(), 0U );
}

TEST( Allocated, ReleasesTheWholeOfADerivedEntityThroughItsBase ) {
    auto const& tracker = allocationTracker<Shape>();
    {
        std::unique_ptr<Shape> const shape = std::make_unique<LargeShape>();
        EXPECT_EQ( tracker.liveBytes(), sizeof( LargeShape ) );
    }
    EXPECT_EQ( tracker.live(), 0U );
    EXPECT_EQ( tracker.liveBytes(), 0U );
}

TEST( Allocated, GivesTheStorageBackWhenTheConstructorThrows ) {
    auto const& tracker = allocationTracker<Shape>();
    auto const made = tracker.made();
    EXPECT_THROW( std::make_unique<Shape>( true ), std::runtime_error );
    EXPECT_EQ( tracker.made(), made + 1 );
    EXPECT_EQ( tracker.live(), 0U );
    EXPECT_EQ( tracker.liveBytes(), 0U );
}

struct alignas( 64 ) WideShape : Mirrow::Allocated<WideShape> {
    virtual ~WideShape() = default;
};

TEST( Allocated, KeepsTheAlignmentOfItsType ) {
    std::vector<std::unique_ptr<WideShape>> shapes( 20 );
    for( auto& shape : shapes ) {
        shape = std::make_unique<WideShape>();
        EXPECT_EQ( reinterpret_cast<std::uintptr_t>( shape.get() ) % 64, 0U );
    }
}

} // namespace
