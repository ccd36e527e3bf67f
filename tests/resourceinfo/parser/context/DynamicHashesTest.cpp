#include "resourceinfo/parser/context/DynamicHashes.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using testing::ElementsAre;

char const* const notOneList = "fieldList.Size() == 1";
char const* const noFields = "fieldCount > 0";

class DynamicHashes : public testing::Test {
  protected:
    void run( ContextBuilder const& context, U32 handlePipeBits = 0 ) {
        ParsedJson const d( context.text() );
        parseDynamicHashCalculations( parser_.get(), d.json(), { BfPipeMask( 1 ), handlePipeBits } );
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

/// A calculation "lag" of known handles.
ContextBuilder lagHash() {
    return ContextBuilder()
        .dynamicHash( "lag", { "hdr.ip.src", "hdr.ip$12.dst[3]", "a" } )
        .with( "/dynamic_hash_calculations/0/handle", "7" )
        .with( "/dynamic_hash_calculations/0/field_lists/0/handle", "9" );
}

TEST_F( DynamicHashes, EveryFieldIsReadAndTheNamesAreKeptAsWritten ) {
    run( lagHash() );
    ASSERT_EQ( parser_->bfDynamicHashInfo().size(), 1 );
    BfDynamicHashInfo const lag = parser_->bfDynamicHashInfo( "lag" );
    EXPECT_EQ( lag.tableHdl, 7 );
    EXPECT_EQ( lag.fieldListHdl, 9 );
    EXPECT_EQ( lag.fieldCount, 3 );
    EXPECT_THAT( lag.fieldNames, ElementsAre( "hdr.ip.src", "hdr.ip$12.dst[3]", "a" ) );
}

TEST_F( DynamicHashes, FieldsMayRepeat ) {
    run( ContextBuilder().dynamicHash( "lag", { "b", "a", "b" } ) );
    EXPECT_EQ( parser_->bfDynamicHashInfo( "lag" ).fieldCount, 3 );
    EXPECT_THAT( parser_->bfDynamicHashInfo( "lag" ).fieldNames, ElementsAre( "b", "a", "b" ) );
}

TEST_F( DynamicHashes, BothHandlesCarryThePipeBits ) {
    run( lagHash(), 0x20000000 );
    EXPECT_EQ( parser_->bfDynamicHashInfo( "lag" ).tableHdl, 0x20000007 );
    EXPECT_EQ( parser_->bfDynamicHashInfo( "lag" ).fieldListHdl, 0x20000009 );
}

TEST_F( DynamicHashes, LaterOneOfANameReplacesTheEarlierWhole ) {
    run( lagHash().dynamicHash( "ecmp", { "x" } ).dynamicHash( "lag", { "y" } ) );
    EXPECT_EQ( parser_->bfDynamicHashInfo().size(), 2 );
    BfDynamicHashInfo const lag = parser_->bfDynamicHashInfo( "lag" );
    EXPECT_EQ( lag.tableHdl, Support::handleOf( "lag" ) );
    EXPECT_EQ( lag.fieldListHdl, 1 );
    EXPECT_EQ( lag.fieldCount, 1 );
    EXPECT_THAT( lag.fieldNames, ElementsAre( "y" ) );
    run( lagHash() );
    EXPECT_EQ( parser_->bfDynamicHashInfo( "lag" ).fieldCount, 3 );
    EXPECT_THAT( parser_->bfDynamicHashInfo( "ecmp" ).fieldNames, ElementsAre( "x" ) );
}

TEST_F( DynamicHashes, ListOfNoFieldsAndAnyOtherNumberOfListsAreFatal ) {
    auto const twoLists = lagHash().with( "/dynamic_hash_calculations/0/field_lists/-",
                                          R"({ "handle": 1, "fields": [ { "name": "a" } ] })" );
    auto const noList = lagHash().with( "/dynamic_hash_calculations/0/field_lists", "[]" );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( twoLists ); } ), notOneList );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( noList ); } ), notOneList );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( ContextBuilder().dynamicHash( "lag", {} ) ); } ),
               noFields );
    EXPECT_TRUE( parser_->bfDynamicHashInfo().empty() );
}

TEST_F( DynamicHashes, OneThatFailsLeavesTheEarlierOfItsName ) {
    run( lagHash() );
    auto const bad = ContextBuilder()
                         .dynamicHash( "lag", { "x", "y" } )
                         .with( "/dynamic_hash_calculations/0/field_lists/0/fields/1/name", "null" );
    EXPECT_EQ( Support::conditionOf( [ & ] { run( bad ); } ), noString );
    EXPECT_EQ( parser_->bfDynamicHashInfo( "lag" ).tableHdl, 7 );
}

TEST_F( DynamicHashes, TextsEndAtTheirFirstNul ) {
    run( lagHash()
             .with( "/dynamic_hash_calculations/0/name", R"("l\u0000x")" )
             .with( "/dynamic_hash_calculations/0/field_lists/0/fields/0/name", R"("f\u0000x")" ) );
    EXPECT_EQ( parser_->bfDynamicHashInfo( "l" ).fieldNames.at( 0 ), "f" );
}

TEST_F( DynamicHashes, NoneIsNoError ) {
    run( ContextBuilder() );
    EXPECT_TRUE( parser_->bfDynamicHashInfo().empty() );
}

TEST_F( DynamicHashes, OnlyThePassIsTracedBeforeItsListIsRead ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    run( lagHash() );
    EXPECT_EQ(
        Support::conditionOf( [ & ] { run( ContextBuilder().without( "/dynamic_hash_calculations" ) ); } ),
        noMember );
    ASSERT_THAT( trace.texts(),
                 ElementsAre( "Parsing dynamic_hash_calculations", "Parsing dynamic_hash_calculations" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 6 );
}

TEST( DynamicHashFaults, InTheirOrder ) {
    auto const two = lagHash().dynamicHash( "ecmp", { "x" } );
    expectFaults( two.tree(),
                  {
                      { "", "[]", noObject },
                      { "/dynamic_hash_calculations", removed, noMember },
                      { "/dynamic_hash_calculations", "null", noArray },
                      { "/dynamic_hash_calculations", "{}", noArray },
                      { "/dynamic_hash_calculations/0", "null", noObject },
                      { "/dynamic_hash_calculations/0", "[]", noObject },
                      { "/dynamic_hash_calculations/0/name", removed, noMember },
                      { "/dynamic_hash_calculations/0/name", "null", noString },
                      { "/dynamic_hash_calculations/0/name", "7", noString },
                      { "/dynamic_hash_calculations/0/handle", removed, noMember },
                      { "/dynamic_hash_calculations/0/handle", "null", noUnsigned },
                      { "/dynamic_hash_calculations/0/handle", "-1", noUnsigned },
                      { "/dynamic_hash_calculations/0/handle", "4294967296", noUnsigned },
                      { "/dynamic_hash_calculations/0/field_lists", removed, noMember },
                      { "/dynamic_hash_calculations/0/field_lists", "null", noArray },
                      { "/dynamic_hash_calculations/0/field_lists", "{}", noArray },
                      { "/dynamic_hash_calculations/0/field_lists", "[]", notOneList },
                      { "/dynamic_hash_calculations/0/field_lists", "[ null, null ]", notOneList },
                      { "/dynamic_hash_calculations/0/field_lists/0", "null", noObject },
                      { "/dynamic_hash_calculations/0/field_lists/0", "[]", noObject },
                      { "/dynamic_hash_calculations/0/field_lists/0/handle", removed, noMember },
                      { "/dynamic_hash_calculations/0/field_lists/0/handle", "\"1\"", noUnsigned },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields", removed, noMember },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields", "null", noArray },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields", "{}", noArray },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields", "[]", noFields },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields/0", "null", noObject },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields/0", "\"a\"", noObject },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields/0/name", removed, noMember },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields/0/name", "null", noString },
                      { "/dynamic_hash_calculations/0/field_lists/0/fields/1/name", "1", noString },
                      { "/dynamic_hash_calculations/1/handle", "1.0", noUnsigned },
                  },
                  []( Json d ) {
                      auto const parser = emptyParser();
                      parseDynamicHashCalculations( parser.get(), d, {} );
                  } );
}

} // namespace
} // namespace BfResourceInfo
