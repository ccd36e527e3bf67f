#include "tests/platform/Threads.h"
#include "zel/Ptr.h"

#include <array>
#include <atomic>

#include <gtest/gtest.h>

namespace {

using Zel::PointerMode;
using Zel::Ptr;

/// Each thread writes a slot of its own, without a lock; the destructor reads them all.
class Board : public Zel::PtrInterface {
  public:
    explicit Board( std::atomic<int>& destroyedWithSum ) : destroyedWithSum_( destroyedWithSum ) {}
    ~Board() override {
        int sum = 0;
        for( int const slot : slots )
            sum += slot;
        destroyedWithSum_ += sum;
    }

    std::array<int, threadCount> slots = {};

  private:
    std::atomic<int>& destroyedWithSum_;
};

class PtrThreads : public testing::Test {
  protected:
    void SetUp() override { Zel::pointerModeIs( PointerMode::atomic ); }
    void TearDown() override { Zel::pointerModeIs( PointerMode::plain ); }

    std::atomic<int> destroyedWithSum_ = 0;
};

// A lost update leaves the wrong count, or destroys the entity too early or never.
TEST_F( PtrThreads, CountIsExactAfterManyThreadsTookAndDropped ) {
    Ptr<Board> const board( new Board( destroyedWithSum_ ) );
    std::array<Ptr<Board>, threadCount> kept;
    repeatInThreads( [ & ]( std::size_t i ) {
        Ptr<Board> const copy( board );
        kept[ i ] = copy;
    } );
    EXPECT_EQ( board->references(), 1U + threadCount );
    for( Ptr<Board>& reference : kept )
        reference = nullptr;
    EXPECT_EQ( board->references(), 1U );
    EXPECT_EQ( destroyedWithSum_, 0 );
}

// Whichever thread drops last destroys, and sees what the others wrote before they dropped.
TEST_F( PtrThreads, TheLastDropDestroysOnceAndSeesAllWrites ) {
    for( int round = 0; round < 200; ++round ) {
        SCOPED_TRACE( round );
        destroyedWithSum_ = 0;
        std::array<Ptr<Board>, threadCount> held;
        held.fill( new Board( destroyedWithSum_ ) );
        inThreads( [ & ]( std::size_t i ) {
            held[ i ]->slots[ i ] = 1;
            held[ i ] = nullptr;
        } );
        ASSERT_EQ( destroyedWithSum_, static_cast<int>( threadCount ) );
    }
}

} // namespace
