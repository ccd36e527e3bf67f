#include "vessa/Queue.h"
#include "tests/platform/vessa/AllocationCount.h"
#include "vessa/Types.h"

#include <deque>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Vessa::U32;
using Random = std::independent_bits_engine<std::mt19937, 32, U32>;
using Queue = Vessa::Queue<U32>;

Queue queueOf( std::initializer_list<U32> values ) {
    Queue queue;
    for( U32 const value : values )
        queue.enq( value );
    return queue;
}

std::vector<U32> elements( Queue const& queue ) { return { queue.begin(), queue.end() }; }

TEST( Queue, StartsEmptyAndAnswersZero ) {
    Queue queue;
    EXPECT_TRUE( queue.empty() );
    EXPECT_EQ( queue.size(), 0U );
    EXPECT_EQ( queue.front(), 0U );
    EXPECT_EQ( queue.back(), 0U );
    EXPECT_EQ( queue.deq(), 0U );
    EXPECT_TRUE( queue.empty() );
    EXPECT_EQ( queue.begin(), queue.end() );
}

TEST( Queue, GivesBackInTheOrderOfArrival ) {
    Queue queue = queueOf( { 7, 9 } );
    EXPECT_EQ( queue.front(), 7U );
    EXPECT_EQ( queue.back(), 9U );
    EXPECT_EQ( queue.deq(), 7U );
    EXPECT_EQ( queue.front(), 9U );
    EXPECT_EQ( queue.deq(), 9U );
    EXPECT_EQ( queue.deq(), 0U );
    queue.enq( 11 );
    EXPECT_EQ( elements( queue ), std::vector<U32>{ 11 } );
}

TEST( Queue, OwnsNoMemoryWhileItWasNeverFilled ) {
    std::size_t const before = allocationCount();
    {
        Queue queue;
        Queue copy( queue );
        Queue assigned;
        assigned = copy;
        Queue moved( std::move( copy ) );
        EXPECT_EQ( queue.deq() + queue.front() + queue.back(), 0U );
        EXPECT_TRUE( queue == moved && queue == assigned );
        queue.clear();
    }
    EXPECT_EQ( allocationCount(), before );
}

TEST( Queue, ACopyOfADrainedOrClearedQueueOwnsNoMemory ) {
    Queue drained = queueOf( { 1, 2, 3 } );
    while( !drained.empty() )
        drained.deq();
    Queue cleared = queueOf( { 1, 2, 3 } );
    cleared.clear();
    std::size_t const before = allocationCount();
    Queue const copies[] = { drained, cleared };
    EXPECT_EQ( allocationCount(), before );
    EXPECT_TRUE( copies[ 0 ].empty() && copies[ 1 ].empty() );
}

TEST( Queue, TheAllocationCountSeesAFilledQueue ) {
    std::size_t const before = allocationCount();
    Queue const queue = queueOf( { 1 } );
    EXPECT_GT( allocationCount(), before );
}

TEST( Queue, CopiesShareNothing ) {
    Queue source = queueOf( { 1, 2, 3 } );
    source.deq();
    Queue copy( source );
    Queue assigned = queueOf( { 8 } );
    assigned = source;
    source.enq( 4 );
    source.deq();
    copy.enq( 5 );
    EXPECT_EQ( elements( source ), ( std::vector<U32>{ 3, 4 } ) );
    EXPECT_EQ( elements( copy ), ( std::vector<U32>{ 2, 3, 5 } ) );
    EXPECT_EQ( elements( assigned ), ( std::vector<U32>{ 2, 3 } ) );
}

TEST( Queue, SurvivesSelfAssignment ) {
    Queue queue = queueOf( { 1, 2, 3 } );
    Queue& same = queue;
    queue = same;
    EXPECT_EQ( elements( queue ), ( std::vector<U32>{ 1, 2, 3 } ) );
    queue = std::move( same );
    EXPECT_EQ( elements( queue ), ( std::vector<U32>{ 1, 2, 3 } ) );
}

// A consumed front must not remain in the source.
TEST( Queue, IsEmptyAndUsableAfterAMove ) {
    Queue source = queueOf( { 1, 2, 3, 4, 5 } );
    source.deq();
    Queue const moved( std::move( source ) );
    EXPECT_EQ( elements( moved ), ( std::vector<U32>{ 2, 3, 4, 5 } ) );
    EXPECT_TRUE( source.empty() ); // NOLINT(bugprone-use-after-move): that state is what is tested
    EXPECT_EQ( source.deq(), 0U );
    source.enq( 6 );
    EXPECT_EQ( elements( source ), std::vector<U32>{ 6 } );

    Queue target = queueOf( { 9, 9 } );
    target = std::move( source );
    EXPECT_EQ( elements( target ), std::vector<U32>{ 6 } );
    EXPECT_TRUE( source.empty() ); // NOLINT(bugprone-use-after-move)
}

TEST( Queue, EqualityLooksAtTheElementsAndTheirOrderOnly ) {
    Queue consumed = queueOf( { 9, 1, 2 } );
    consumed.deq();
    struct {
        Queue a, b;
        bool equal;
    } const rows[] = {
        { {}, {}, true },
        { queueOf( { 1, 2 } ), queueOf( { 1, 2 } ), true },
        { queueOf( { 1, 2 } ), consumed, true },
        { queueOf( { 1, 2 } ), queueOf( { 2, 1 } ), false },
        { queueOf( { 1, 2 } ), queueOf( { 1 } ), false },
        { queueOf( { 1 } ), queueOf( { 1, 2 } ), false },
        { {}, queueOf( { 0 } ), false },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( &row - rows );
        EXPECT_EQ( row.a == row.b, row.equal );
        EXPECT_EQ( row.a != row.b, !row.equal );
    }
}

void expectSame( Queue const& queue, std::deque<U32> const& model ) {
    ASSERT_EQ( queue.size(), model.size() );
    ASSERT_EQ( queue.empty(), model.empty() );
    ASSERT_EQ( queue.front(), model.empty() ? 0 : model.front() );
    ASSERT_EQ( queue.back(), model.empty() ? 0 : model.back() );
    ASSERT_TRUE( std::equal( queue.begin(), queue.end(), model.begin(), model.end() ) );
}

void takeOne( Queue& queue, std::deque<U32>& model ) {
    U32 const expected = model.empty() ? 0 : model.front();
    if( !model.empty() )
        model.pop_front();
    ASSERT_EQ( queue.deq(), expected );
}

class QueueWalk : public testing::TestWithParam<U32> {};

TEST_P( QueueWalk, BehavesAsADeque ) {
    Random random( GetParam() );
    Queue queue;
    std::deque<U32> model;
    for( int step = 0; step < 3000; ++step ) {
        SCOPED_TRACE( step );
        U32 const dice = random() % 100;
        // The first half of the walk grows the queue, the second one drains it.
        if( dice == 0 ) {
            queue.clear();
            model.clear();
        } else if( dice == 1 ) {
            queue = Queue( queue );
        } else if( dice < ( step < 1500 ? 65U : 35U ) ) {
            U32 const value = random();
            queue.enq( value );
            model.push_back( value );
        } else {
            takeOne( queue, model );
        }
        expectSame( queue, model );
        if( HasFatalFailure() )
            return;
    }
}

INSTANTIATE_TEST_SUITE_P( Seeds, QueueWalk, testing::Range( 1U, 9U ) );

} // namespace
