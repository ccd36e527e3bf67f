#include "vessa/AllocationTracker.h"
#include "tests/platform/Threads.h"

#include <gtest/gtest.h>

namespace {

using Vessa::AllocationTracker;
using Vessa::allocationTracker;

struct First {};
struct Second {};
struct Shared {};

TEST( AllocationTracker, CountsWhatIsMadeAndWhatIsLeft ) {
    AllocationTracker tracker;
    tracker.allocated( 24 );
    tracker.allocated( 8 );
    EXPECT_EQ( tracker.made(), 2U );
    EXPECT_EQ( tracker.live(), 2U );
    EXPECT_EQ( tracker.liveBytes(), 32U );
    tracker.released( 24 );
    EXPECT_EQ( tracker.made(), 2U );
    EXPECT_EQ( tracker.live(), 1U );
    EXPECT_EQ( tracker.liveBytes(), 8U );
}

TEST( AllocationTracker, IsOneAType ) {
    EXPECT_EQ( &allocationTracker<First>(), &AllocationTracker::forType( typeid( First ) ) );
    EXPECT_NE( &allocationTracker<First>(), &allocationTracker<Second>() );
    allocationTracker<First>().allocated( 16 );
    EXPECT_EQ( allocationTracker<First>().live(), 1U );
    EXPECT_EQ( allocationTracker<Second>().made(), 0U );
    allocationTracker<First>().released( 16 );
    EXPECT_EQ( allocationTracker<First>().live(), 0U );
}

TEST( AllocationTracker, IsExactWithManyThreads ) {
    AllocationTracker& tracker = allocationTracker<Shared>();
    auto const made = tracker.made();
    auto const bytes = tracker.liveBytes();
    auto const steps = repeatInThreads( []( std::size_t ) {
        AllocationTracker::forType( typeid( Shared ) ).allocated( 3 );
        allocationTracker<Shared>().released( 2 );
    } );
    EXPECT_EQ( tracker.made() - made, steps );
    EXPECT_EQ( tracker.live(), 0U );
    EXPECT_EQ( tracker.liveBytes() - bytes, steps );
}

} // namespace
