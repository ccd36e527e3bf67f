#include "zel/Sequence.h"

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Zel::U32;
using Random = std::independent_bits_engine<std::mt19937, 32, U32>;

struct Record {
    std::string name;
    U32 handle = 0;
    int serial = 0;
    friend bool operator==( Record const&, Record const& ) = default;
};

struct ByName {
    using Type = std::string_view;
    static Type of( Record const& record ) { return record.name; }
};
struct ByHandle {
    using Type = U32;
    static Type of( Record const& record ) { return record.handle; }
};

using Records = Zel::Sequence<Record, ByName, ByHandle>;

std::vector<Record> elements( Records const& records ) { return { records.begin(), records.end() }; }

TEST( Sequence, AnswersItsSizeForWhatItDoesNotHold ) {
    Records records;
    EXPECT_TRUE( records.empty() );
    EXPECT_EQ( records.first<ByName>( "a" ), 0U );
    EXPECT_EQ( records.first<ByHandle>( 0 ), 0U );
    records.push( { "b", 1, 0 } );
    EXPECT_EQ( records.first<ByName>( "a" ), 1U );
    EXPECT_EQ( records.first<ByHandle>( 0 ), 1U );
}

TEST( Sequence, FindsTheLowestMatchOfEachKey ) {
    Records records;
    records.push( { "x", 1, 0 } );
    records.push( { "y", 2, 1 } );
    records.push( { "x", 2, 2 } );
    records.push( { "", 1, 3 } );
    EXPECT_EQ( records.first<ByName>( "x" ), 0U );
    EXPECT_EQ( records.first<ByName>( "y" ), 1U );
    EXPECT_EQ( records.first<ByName>( "" ), 3U );
    EXPECT_EQ( records.first<ByHandle>( 1 ), 0U );
    EXPECT_EQ( records.first<ByHandle>( 2 ), 1U );
}

TEST( Sequence, ReplacingMovesTheLowestMatch ) {
    Records records;
    for( int i = 0; i < 4; ++i )
        records.push( { "x", 7, i } );
    records.is( 0, { "y", 8, 10 } );
    EXPECT_EQ( records.first<ByName>( "x" ), 1U );
    EXPECT_EQ( records.first<ByHandle>( 7 ), 1U );
    records.is( 1, { "y", 7, 11 } );
    EXPECT_EQ( records.first<ByName>( "x" ), 2U );
    EXPECT_EQ( records.first<ByHandle>( 7 ), 1U );
    records.is( 0, { "x", 7, 12 } );
    EXPECT_EQ( records.first<ByName>( "x" ), 0U );
    EXPECT_EQ( records.first<ByName>( "y" ), 1U );
    EXPECT_EQ( records.first<ByHandle>( 8 ), 4U );
    records.is( 3, { "z", 8, 13 } );
    EXPECT_EQ( records.first<ByName>( "z" ), 3U );
}

TEST( Sequence, ReplacingByAnEqualRecordChangesNoAnswer ) {
    Records records;
    records.push( { "x", 7, 0 } );
    records.push( { "x", 7, 1 } );
    records.is( 0, records.at( 0 ) );
    records.is( 1, records.at( 1 ) );
    EXPECT_EQ( records.first<ByName>( "x" ), 0U );
    EXPECT_EQ( elements( records ), ( std::vector<Record>{ { "x", 7, 0 }, { "x", 7, 1 } } ) );
}

TEST( Sequence, PushingOneOfItsOwnIsSafe ) {
    Records records;
    records.push( { "a name too long to stand inside the string itself", 7, 0 } );
    for( int i = 0; i < 50; ++i )
        records.push( records.at( 0 ) );
    EXPECT_EQ( records.size(), 51U );
    EXPECT_EQ( records.at( 50 ), records.at( 0 ) );
}

struct OutOfRangeRow {
    U32 size, index;
};

TEST( Sequence, AnIndexPastTheEndThrowsAndChangesNothing ) {
    for( auto const [ size, index ] :
         { OutOfRangeRow{ 0, 0 }, { 0, 1 }, { 3, 3 }, { 3, 4 }, { 3, 0xFFFFFFFF } } ) {
        SCOPED_TRACE( testing::Message() << size << " " << index );
        Records records;
        for( U32 i = 0; i < size; ++i )
            records.push( { "x", i, 0 } );
        auto const before = elements( records );
        try {
            records.is( index, { "new", 99, 1 } );
            ADD_FAILURE() << "replaced";
        } catch( Vessa::VectorOutOfRange const& error ) {
            EXPECT_EQ( error.index(), index );
            EXPECT_EQ( error.size(), size );
        }
        EXPECT_THROW( records.at( index ), Vessa::VectorOutOfRange );
        EXPECT_EQ( elements( records ), before );
        EXPECT_EQ( records.first<ByName>( "new" ), size );
        EXPECT_EQ( records.first<ByHandle>( 99 ), size );
        EXPECT_EQ( records.first<ByName>( "x" ), 0U );
    }
}

TEST( Sequence, TheLastIndexIsInRange ) {
    Records records;
    records.push( { "x", 1, 0 } );
    records.push( { "x", 1, 1 } );
    records.is( 1, { "y", 2, 2 } );
    EXPECT_EQ( records.at( 1 ), ( Record{ "y", 2, 2 } ) );
}

TEST( Sequence, PopReturnsTheLastAndThrowsWhenEmpty ) {
    Records records;
    EXPECT_THROW( records.pop(), Vessa::VectorEmpty );
    records.push( { "x", 1, 0 } );
    records.push( { "x", 1, 1 } );
    EXPECT_EQ( records.pop(), ( Record{ "x", 1, 1 } ) );
    EXPECT_EQ( records.first<ByName>( "x" ), 0U );
    EXPECT_EQ( records.pop(), ( Record{ "x", 1, 0 } ) );
    EXPECT_EQ( records.first<ByName>( "x" ), 0U );
    EXPECT_TRUE( records.empty() );
    EXPECT_THROW( records.pop(), Vessa::VectorEmpty );
}

TEST( Sequence, PopAllForgetsEverything ) {
    Records records;
    records.push( { "x", 1, 0 } );
    records.push( { "y", 2, 1 } );
    records.popAll();
    EXPECT_TRUE( records.empty() );
    records.push( { "y", 1, 2 } );
    EXPECT_EQ( records.first<ByName>( "y" ), 0U );
    EXPECT_EQ( records.first<ByHandle>( 1 ), 0U );
    EXPECT_EQ( records.first<ByName>( "x" ), 1U );
    EXPECT_EQ( records.first<ByHandle>( 2 ), 1U );
}

TEST( Sequence, NeedsNoKeys ) {
    Zel::Sequence<int> numbers;
    numbers.push( 1 );
    numbers.push( 2 );
    numbers.is( 0, 3 );
    EXPECT_EQ( numbers.at( 0 ), 3 );
    EXPECT_EQ( numbers.pop(), 2 );
    numbers.popAll();
    EXPECT_EQ( numbers.size(), 0U );
}

/// The sequence beside a plain vector, with so few names and handles that most records share theirs.
class Walk {
  public:
    explicit Walk( U32 seed ) : random_( seed ) {}

    void step() {
        U32 const dice = random_() % 1000;
        if( dice < 2 ) {
            records_.popAll();
            model_.clear();
        } else if( dice < 370 ) {
            model_.push_back( anyRecord() );
            records_.push( model_.back() );
        } else if( dice < 620 ) {
            pop();
        } else {
            replace();
        }
        expectSame();
    }

  private:
    Record anyRecord() {
        return { std::string( random_() % 5, 'n' ), static_cast<U32>( random_() % 4 ) << 28, ++serial_ };
    }

    void pop() {
        if( model_.empty() ) {
            ASSERT_THROW( records_.pop(), Vessa::VectorEmpty );
            return;
        }
        ASSERT_EQ( records_.pop(), model_.back() );
        model_.pop_back();
    }

    void replace() {
        U32 const index = static_cast<U32>( random_() % ( model_.size() + 2 ) );
        Record const record = anyRecord();
        if( index >= model_.size() ) {
            ASSERT_THROW( records_.is( index, record ), Vessa::VectorOutOfRange );
            return;
        }
        records_.is( index, record );
        model_[ index ] = record;
    }

    template<class Matches>
    U32 scan( Matches matches ) const {
        return static_cast<U32>( std::find_if( model_.begin(), model_.end(), matches ) - model_.begin() );
    }

    void expectSame() {
        ASSERT_EQ( elements( records_ ), model_ );
        for( std::string name; name.size() < 6; name += 'n' )
            ASSERT_EQ( records_.first<ByName>( name ),
                       scan( [ & ]( Record const& record ) { return record.name == name; } ) );
        for( U32 i = 0; i < 5; ++i )
            ASSERT_EQ( records_.first<ByHandle>( i << 28 ),
                       scan( [ & ]( Record const& record ) { return record.handle == i << 28; } ) );
    }

    Random random_;
    Records records_;
    std::vector<Record> model_;
    int serial_ = 0;
};

class SequenceWalk : public testing::TestWithParam<U32> {};

TEST_P( SequenceWalk, AnswersWhatAScanFromTheStartWould ) {
    Walk walk( GetParam() );
    for( int step = 0; step < 2000 && !HasFatalFailure(); ++step ) {
        SCOPED_TRACE( step );
        walk.step();
    }
}

INSTANTIATE_TEST_SUITE_P( Seeds, SequenceWalk, testing::Range( 1U, 9U ) );

} // namespace
