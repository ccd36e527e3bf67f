#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/RecordKinds.h"
#include "tests/support/Assertions.h"

#include <functional>
#include <gmock/gmock.h>

// What the queries of all kinds of record have in common. Match tables differ in one query, the record at an
// index: see TableQueriesTest.

namespace BfResourceInfo {
namespace {

using Support::conditionOf;
using Support::failureOf;

char const* const unknownRecordQueriesName = "index != BfResourceInfoIndexInvalid";

template<class Kind>
class RecordQueries : public testing::Test {
  protected:
    using Record = typename Kind::Record;

    static Record named( String name, U32 handle = 0 ) {
        Record record{};
        record.name = std::move( name );
        record.handle = handle;
        return record;
    }
    void push( Record record ) { std::invoke( Kind::push, *info_->parser(), std::move( record ) ); }

    U32 num() { return std::invoke( Kind::num, *info_ ); }
    U32 index( String const& name ) { return std::invoke( Kind::index, *info_, name ); }
    Record record( U32 index ) { return std::invoke( Kind::record, *info_, index ); }

    Zel::Ptr<BfResourceInfoIntf> info_ = emptyInterface();
};

using Kinds = testing::Types<Resources, Counters, Meters, Wreds, Registers, LearnQuantas, Actions>;
TYPED_TEST_SUITE( RecordQueries, Kinds );

TYPED_TEST( RecordQueries, EmptyModelHasNoRecord ) {
    EXPECT_EQ( this->num(), 0 );
    for( char const* name : { "", "x" } )
        EXPECT_EQ( this->index( name ), 0x0FFFFFFF ) << name;
    EXPECT_EQ( conditionOf( [ & ] { this->record( 0 ); } ), TypeParam::bound );
}

TYPED_TEST( RecordQueries, RecordsAreCountedAndCopiedInTheirOrder ) {
    this->push( this->named( "b", 1 ) );
    this->push( this->named( "a", 2 ) );
    EXPECT_EQ( this->num(), 2 );
    EXPECT_TRUE( same( this->record( 0 ), this->named( "b", 1 ) ) );
    EXPECT_TRUE( same( this->record( 1 ), this->named( "a", 2 ) ) );
}

TYPED_TEST( RecordQueries, KindsAreCountedApart ) {
    this->push( this->named( "x" ) );
    std::map<String, U32> const counts{ { Resources::operation, this->info_->bfResourcesNum() },
                                        { Tables::operation, this->info_->bfTablesNum() },
                                        { Counters::operation, this->info_->bfTableCountersNum() },
                                        { Meters::operation, this->info_->bfTableMetersNum() },
                                        { Wreds::operation, this->info_->bfTableWredNum() },
                                        { Registers::operation, this->info_->bfRegistersNum() },
                                        { LearnQuantas::operation, this->info_->bfLearnQuantasNum() },
                                        { Actions::operation, this->info_->bfActionsNum() } };
    for( auto const& [ kind, count ] : counts )
        EXPECT_EQ( count, kind == TypeParam::operation ? 1 : 0 ) << kind;
}

TYPED_TEST( RecordQueries, LowestIndexWins ) {
    for( char const* name : { "acl", "nat", "acl" } )
        this->push( this->named( name ) );
    EXPECT_EQ( this->index( "acl" ), 0 );
    EXPECT_EQ( this->index( "nat" ), 1 );
}

TYPED_TEST( RecordQueries, NamesAreComparedByteForByte ) {
    this->push( this->named( "acl" ) );
    for( char const* name : { "", "ac", "acl ", "ACL", "acl2", "missing" } )
        EXPECT_EQ( this->index( name ), BfResourceInfoIndexInvalid ) << name;
}

TYPED_TEST( RecordQueries, ArgumentCountsUpToItsFirstNul ) {
    this->push( this->named( "acl" ) );
    this->push( this->named( "" ) );
    EXPECT_EQ( this->index( String( "acl\0x", 5 ) ), 0 );
    EXPECT_EQ( this->index( String( "\0acl", 4 ) ), 1 );
    EXPECT_EQ( this->index( String( "ac\0l", 4 ) ), BfResourceInfoIndexInvalid );
}

TYPED_TEST( RecordQueries, IndexNotFoundIsCaughtByNameAndOthersByTheCount ) {
    this->push( this->named( "acl" ) );
    EXPECT_EQ( conditionOf( [ & ] { this->record( this->index( "missing" ) ); } ), unknownRecordQueriesName );
    for( U32 const index : { this->num(), 2U, 0x0FFFFFFEU, 0x10000000U, 0xFFFFFFFFU } )
        EXPECT_EQ( conditionOf( [ & ] { this->record( index ); } ), TypeParam::bound ) << index;
}

TYPED_TEST( RecordQueries, FailuresNameSourceAndOperation ) {
    for( U32 const index : { 0U, BfResourceInfoIndexInvalid } ) {
        auto const failure = failureOf( [ & ] { this->record( index ); } );
        EXPECT_EQ( failure.source, "BfResourceInfoIntf" );
        EXPECT_THAT( failure.function, testing::HasSubstr( " BfResourceInfo::BfResourceInfoIntf::" +
                                                           String( TypeParam::operation ) + "(" ) );
        EXPECT_EQ( failure.message, "" );
        EXPECT_EQ( failure.position, "" );
        EXPECT_GT( failure.line, 0 );
    }
}

TYPED_TEST( RecordQueries, CopiesOutliveTheModelAndNoReferenceStays ) {
    this->push( this->named( "a name of some length, on the heap", 7 ) );
    auto const parser = this->info_->parser();
    U32 const before = parser->references();
    auto const copy = this->record( 0 );
    failureOf( [ & ] { this->record( 1 ); } );
    EXPECT_EQ( parser->references(), before );
    this->info_ = nullptr;
    EXPECT_TRUE( same( copy, this->named( "a name of some length, on the heap", 7 ) ) );
}

} // namespace
} // namespace BfResourceInfo
