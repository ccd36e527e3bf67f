#include "resourceinfo/model/BfHeaderInfo.h"
#include "resourceinfo/model/BfPipeMask.h"
#include "resourceinfo/model/BfZelResource.h"
#include "tests/support/Assertions.h"

#include <gtest/gtest.h>
#include <locale>
#include <sstream>

/// Complete here so that one can be passed: the operations refuse it.
class Zel::PbMessage {};

namespace BfResourceInfo {
namespace {

using Support::failureOf;

template<class Value>
String streamed( Value const& value ) {
    std::ostringstream os;
    os << value;
    return os.str();
}

/// One of the three queues of a resource.
struct QueueOperations {
    char const* name;
    Vessa::Queue<U32> const& ( BfZelResource::*all )() const;
    void ( BfZelResource::*enq )( U32 );
    U32 ( BfZelResource::*deq )();
    U32 ( BfZelResource::*front )() const;
    U32 ( BfZelResource::*back )() const;
    void ( BfZelResource::*delAll )();
};

#define QUEUE( queue )                                                                                       \
    QueueOperations {                                                                                        \
#queue, &BfZelResource::queue, &BfZelResource::queue##Enq, &BfZelResource::queue##Deq,               \
            &BfZelResource::queue##Front, &BfZelResource::queue##Back, &BfZelResource::queue##DelAll         \
    }

class ResourceQueues : public testing::TestWithParam<QueueOperations> {};

TEST_P( ResourceQueues, FirstInIsFirstOut ) {
    auto const& q = GetParam();
    BfZelResource resource;
    ( resource.*q.enq )( 7 );
    ( resource.*q.enq )( 9 );
    EXPECT_EQ( ( resource.*q.front )(), 7 );
    EXPECT_EQ( ( resource.*q.back )(), 9 );
    EXPECT_EQ( ( resource.*q.deq )(), 7 );
    EXPECT_EQ( ( resource.*q.deq )(), 9 );
    EXPECT_EQ( ( resource.*q.deq )(), 0 );
    EXPECT_TRUE( ( resource.*q.all )().empty() );
}

TEST_P( ResourceQueues, EmptyQueueAnswersZeroAndStaysEmpty ) {
    auto const& q = GetParam();
    BfZelResource resource;
    EXPECT_EQ( ( resource.*q.deq )(), 0 );
    EXPECT_EQ( ( resource.*q.front )(), 0 );
    EXPECT_EQ( ( resource.*q.back )(), 0 );
    EXPECT_TRUE( ( resource.*q.all )().empty() );
    EXPECT_FALSE( resource );
}

TEST_P( ResourceQueues, DelAllEmptiesThisQueueAlone ) {
    auto const& q = GetParam();
    BfZelResource resource;
    resource.statReferencesEnq( 1 );
    resource.meterReferencesEnq( 2 );
    resource.statefulReferencesEnq( 3 );
    ( resource.*q.delAll )();
    EXPECT_EQ( resource.statReferences().size() + resource.meterReferences().size() +
                   resource.statefulReferences().size(),
               2 );
    EXPECT_TRUE( ( resource.*q.all )().empty() );
}

TEST_P( ResourceQueues, OneHandleMakesTheResourceTrue ) {
    BfZelResource resource;
    ( resource.*GetParam().enq )( 0 );
    EXPECT_TRUE( resource );
}

TEST_P( ResourceQueues, OrderOfHandlesCountsForEquality ) {
    auto const& q = GetParam();
    BfZelResource a;
    BfZelResource b;
    for( U32 const handle : { 1U, 2U } )
        ( a.*q.enq )( handle );
    for( U32 const handle : { 2U, 1U } )
        ( b.*q.enq )( handle );
    EXPECT_FALSE( a.isEq( b ) );
    EXPECT_FALSE( a == b );
    ( b.*q.deq )();
    ( b.*q.enq )( 2 );
    EXPECT_TRUE( a.isEq( b ) );
}

TEST_P( ResourceQueues, CopiesShareNothing ) {
    auto const& q = GetParam();
    BfZelResource source;
    ( source.*q.enq )( 1 );
    ( source.*q.enq )( 2 );
    BfZelResource copy = source;
    BfZelResource assigned;
    assigned = source;
    ( source.*q.deq )();
    ( source.*q.enq )( 3 );
    EXPECT_EQ( ( copy.*q.front )(), 1 );
    EXPECT_EQ( ( copy.*q.back )(), 2 );
    EXPECT_TRUE( copy.isEq( assigned ) );
    EXPECT_FALSE( copy.isEq( source ) );
}

TEST_P( ResourceQueues, LongQueuesKeepTheirOrder ) {
    auto const& q = GetParam();
    BfZelResource resource;
    U32 expected = 0;
    for( U32 i = 0; i < 5000; ++i ) {
        ( resource.*q.enq )( i );
        if( i % 3 != 0 ) {
            ASSERT_EQ( ( resource.*q.deq )(), expected );
            ++expected;
        }
    }
    while( !( resource.*q.all )().empty() ) {
        ASSERT_EQ( ( resource.*q.deq )(), expected );
        ++expected;
    }
    EXPECT_EQ( expected, 5000 );
}

INSTANTIATE_TEST_SUITE_P( Queues, ResourceQueues,
                          testing::Values( QUEUE( statReferences ), QUEUE( meterReferences ),
                                           QUEUE( statefulReferences ) ),
                          []( auto const& row ) { return String( row.param.name ); } );

TEST( ZelResource, DefaultIsFalseAndZero ) {
    BfZelResource const resource;
    EXPECT_FALSE( resource );
    EXPECT_EQ( resource.handle, 0 );
    EXPECT_EQ( resource.name, "" );
    EXPECT_EQ( resource.size, 0 );
    EXPECT_EQ( resource.stageStart, 0 );
}

TEST( ZelResource, AnyFieldMakesItTrueAndUnequal ) {
    BfZelResource handle, name, size, stageStart;
    handle.handle = 1;
    name.name = "t";
    size.size = 1;
    stageStart.stageStart = 1;
    for( BfZelResource const& resource : { handle, name, size, stageStart } ) {
        EXPECT_TRUE( resource ) << resource;
        EXPECT_FALSE( resource.isEq( BfZelResource() ) ) << resource;
        EXPECT_TRUE( resource.isEq( BfZelResource( resource ) ) ) << resource;
        EXPECT_FALSE( resource == BfZelResource() ) << resource;
        EXPECT_TRUE( resource == BfZelResource( resource ) ) << resource;
    }
}

TEST( ZelResource, StageStartIsEightBitsWide ) {
    static_assert( sizeof( BfZelResource::stageStart ) == 1 );
    BfZelResource resource;
    resource.stageStart = static_cast<U8>( 260 );
    EXPECT_EQ( resource.stageStart, 4 );
}

TEST( ZelResource, StringFormNeverShowsTheQueues ) {
    BfZelResource resource;
    resource.handle = 5;
    resource.name = "t";
    resource.size = 1024;
    resource.stageStart = 2;
    String const expected =
        "Value('BfResourceInfo::BfZelResource', ** {'handle': 5, 'name': 't', 'size': 1024, 'stageStart': 2, "
        "'statReferences': None, 'meterReferences': None, 'statefulReferences': None})";
    EXPECT_EQ( valueToStrep( resource ), expected );
    resource.statReferencesEnq( 1 );
    resource.meterReferencesEnq( 2 );
    resource.statefulReferencesEnq( 3 );
    EXPECT_EQ( valueToStrep( resource ), expected );
    EXPECT_EQ( streamed( resource ), expected );
}

TEST( ZelResource, StringFormIsTheSameInEveryLocale ) {
    struct Grouping : std::numpunct<char> {
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const former = std::locale::global( std::locale( std::locale::classic(), new Grouping ) );
    BfZelResource resource;
    resource.handle = 33554433;
    String const strep = valueToStrep( resource );
    std::locale::global( former );
    EXPECT_EQ( strep, valueToStrep( resource ) );
    EXPECT_NE( strep.find( "'handle': 33554433," ), String::npos );
}

TEST( ZelResource, StringFormQuotesTheName ) {
    BfZelResource resource;
    resource.name = "it's \\ a\nname";
    EXPECT_NE( valueToStrep( resource ).find( R"('name': 'it\'s \\ a\nname')" ), String::npos )
        << valueToStrep( resource );
}

TEST( ZelResource, CannotBeMadeFromAStringForm ) {
    auto const failure = failureOf( [] { BfZelResource resource{ String( "x" ) }; } );
    EXPECT_EQ( failure.source, "BfResourceParser" );
    EXPECT_EQ( failure.message, "No String constructor for BfZelResource - has collection" );
}

TEST( ZelResource, IsNotHashable ) { EXPECT_THROW( BfZelResource().hash(), Zel::UnhashableType ); }

TEST( PipeMask, IsItsNumber ) {
    EXPECT_EQ( BfPipeMask().value(), 0 );
    EXPECT_EQ( streamed( BfPipeMask( 3 ) ), "3" );
    EXPECT_EQ( valueToStrep( BfPipeMask( 3 ) ), "3" );
    EXPECT_EQ( BfPipeMask( 3 ).hash(), 3 );
    EXPECT_EQ( valueToStrep( BfPipeMask( 0xFFFFFFFF ) ), "4294967295" );
}

TEST( PipeMask, ComparesAsItsNumber ) {
    EXPECT_TRUE( BfPipeMask( 3 ).isEq( BfPipeMask( 3 ) ) );
    EXPECT_FALSE( BfPipeMask( 3 ).isEq( BfPipeMask( 1 ) ) );
    EXPECT_TRUE( BfPipeMask( 3 ) == BfPipeMask( 3 ) );
    EXPECT_FALSE( BfPipeMask( 3 ) == BfPipeMask( 1 ) );
    EXPECT_TRUE( BfPipeMask( 0x7FFFFFFF ) < BfPipeMask( 0x80000000 ) );
    EXPECT_FALSE( BfPipeMask( 2 ) < BfPipeMask( 2 ) );
}

TEST( PipeMask, ReadsItsStringForms ) {
    EXPECT_EQ( BfPipeMask( String( "3" ) ).value(), 3 );
    EXPECT_EQ( BfPipeMask( String( "Value('BfResourceInfo::BfPipeMask', ** {'value': 12})" ) ).value(), 12 );
    EXPECT_EQ( BfPipeMask( valueToStrep( BfPipeMask( 0xFFFFFFFF ) ) ).value(), 0xFFFFFFFF );
    for( char const* bad : { "", "x", "-1", "4294967296", "{'size': 3}" } )
        EXPECT_THROW( BfPipeMask( String( bad ) ), std::invalid_argument ) << bad;
}

TEST( PipeMask, TakesNoPartInMessages ) {
    Zel::PbMessage message;
    auto const written = failureOf( [ & ] { BfPipeMask().writePbMessage( message ); } );
    EXPECT_EQ( written.message, "Only value types support witePbMessage" );
    auto const constructed = failureOf( [ & ] { BfPipeMask::constructFromPbMessage( message ); } );
    EXPECT_EQ( constructed.message, "Only value types support constructFromPbMessage" );
}

TEST( HeaderInfo, HoldsSixteenBits ) {
    static_assert( sizeof( BfHeaderInfo ) == 2 );
    EXPECT_EQ( BfHeaderInfo().size(), 0 );
    EXPECT_EQ( BfHeaderInfo( static_cast<U16>( 65536 + 14 ) ).size(), 14 );
    EXPECT_EQ( BfHeaderInfo( String( "65550" ) ).size(), 14 );
}

TEST( HeaderInfo, ReadsItsStringForms ) {
    EXPECT_EQ( BfHeaderInfo( String( "40" ) ).size(), 40 );
    EXPECT_EQ( BfHeaderInfo( String( "Value('BfHeaderInfo', ** {'size': 40})" ) ).size(), 40 );
    EXPECT_THROW( BfHeaderInfo( String( "size" ) ), std::invalid_argument );
}

TEST( HeaderInfo, ShowsAndComparesItsSize ) {
    EXPECT_EQ( valueToStrep( BfHeaderInfo( 40 ) ), "40" );
    EXPECT_EQ( streamed( BfHeaderInfo( 65535 ) ), "65535" );
    EXPECT_TRUE( BfHeaderInfo( 40 ).isEq( BfHeaderInfo( 40 ) ) );
    EXPECT_FALSE( BfHeaderInfo( 40 ).isEq( BfHeaderInfo( 41 ) ) );
    EXPECT_TRUE( BfHeaderInfo( 40 ) == BfHeaderInfo( 40 ) );
    EXPECT_FALSE( BfHeaderInfo( 40 ) == BfHeaderInfo( 41 ) );
}

TEST( HeaderInfo, IsNotHashable ) { EXPECT_THROW( BfHeaderInfo().hash(), Zel::UnhashableType ); }

} // namespace
} // namespace BfResourceInfo
