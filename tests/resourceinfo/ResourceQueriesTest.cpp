#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::conditionOf;
using Support::failureOf;
using testing::HasSubstr;

char const* const unknownResourceQueriesName = "index != BfResourceInfoIndexInvalid";

class ResourceQueries : public testing::Test {
  protected:
    ResourceQueries() : info_( emptyInterface() ) {}

    void push( BfResource const& resource ) { info_->parser()->bfResourcesPush( resource ); }

    Zel::Ptr<BfResourceInfoIntf> info_;
};

TEST_F( ResourceQueries, EmptyModelHasNoResource ) {
    EXPECT_EQ( info_->bfResourcesNum(), 0 );
    EXPECT_EQ( info_->bfResourceIndex( "x" ), 0x0FFFFFFF );
    EXPECT_EQ( info_->bfResourceIndex( "" ), 0x0FFFFFFF );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfResource( 0 ); } ), "index < bfResourcesNum()" );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceField( "x", resourceSize ); } ),
               unknownResourceQueriesName );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceStageStart( "x" ); } ), unknownResourceQueriesName );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceByHandle( 0 ); } ), "0" );
}

TEST_F( ResourceQueries, NotFoundIsTwentyEightOneBits ) {
    EXPECT_EQ( BfResourceInfoIndexInvalid, 268435455 );
}

TEST_F( ResourceQueries, RecordIsTheWholeRecord ) {
    push( { "acl", 0x20000001, 12, 3, true, 5, 7 } );
    BfResource const resource = info_->bfResource( 0 );
    EXPECT_EQ( resource.name, "acl" );
    EXPECT_EQ( resource.handle, 0x20000001 );
    EXPECT_EQ( resource.type, 12 );
    EXPECT_EQ( resource.size, 3 );
    EXPECT_TRUE( resource.ingress );
    EXPECT_EQ( resource.stages, 5 );
    EXPECT_EQ( resource.stageStart, 7 );
}

TEST_F( ResourceQueries, EachIdentifierNamesItsField ) {
    push( { "acl", 11, 12, 13, true, 15, 16 } );
    push( { "egress_acl", 0xFFFFFFFF, 2, 0, false, 0, 0 } );
    struct Row {
        BfResourceFieldId field;
        U32 ingress;
        U32 egress;
    };
    for( auto const& [ field, ingress, egress ] :
         { Row{ resourceHandle, 11, 0xFFFFFFFF }, Row{ resourceType, 12, 2 }, Row{ resourceSize, 13, 0 },
           Row{ resourceIngress, 1, 0 }, Row{ resourceStages, 15, 0 } } ) {
        EXPECT_EQ( info_->bfResourceField( "acl", field ), ingress ) << field;
        EXPECT_EQ( info_->bfResourceField( "egress_acl", field ), egress ) << field;
    }
}

TEST_F( ResourceQueries, StageStartHasItsOwnQuery ) {
    push( { "acl", 1, 1, 1, true, 1, 7 } );
    EXPECT_EQ( info_->bfResourceStageStart( "acl" ), 7 );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceField( "acl", resourceStageStart ); } ),
               "0 && \"Unsupported field\"" );
}

TEST_F( ResourceQueries, StageStartIsSigned ) {
    push( { "acl", 1, 1, 1, true, 1, 0xFFFFFFFF } );
    EXPECT_EQ( info_->bfResourceStageStart( "acl" ), -1 );
}

TEST_F( ResourceQueries, IdentifiersThatAreNoFieldAreFatal ) {
    push( { "acl", 1, 1, 1, true, 1, 1 } );
    for( int const value : { 6, 7, 255 } ) {
        auto const field = static_cast<BfResourceFieldId>( value );
        EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceField( "acl", field ); } ),
                   "0 && \"Unsupported field\"" )
            << value;
    }
}

TEST_F( ResourceQueries, UnknownNameIsFatalBeforeTheIdentifierIsLookedAt ) {
    push( { "acl", 1, 1, 1, true, 1, 1 } );
    for( char const* name : { "", "ac", "acl ", "ACL", "acl2" } ) {
        EXPECT_EQ( info_->bfResourceIndex( name ), BfResourceInfoIndexInvalid ) << name;
        EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceField( name, resourceSize ); } ),
                   unknownResourceQueriesName );
        EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceField( name, resourceStageStart ); } ),
                   unknownResourceQueriesName );
        EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceStageStart( name ); } ),
                   unknownResourceQueriesName );
    }
}

TEST_F( ResourceQueries, IndexNotFoundIsCaughtByNameAndOthersByTheCount ) {
    push( { "acl", 1, 1, 1, true, 1, 1 } );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfResource( BfResourceInfoIndexInvalid ); } ),
               unknownResourceQueriesName );
    for( U32 const index : { 1U, 2U, 0x0FFFFFFEU, 0x10000000U, 0xFFFFFFFFU } )
        EXPECT_EQ( conditionOf( [ & ] { info_->bfResource( index ); } ), "index < bfResourcesNum()" )
            << index;
}

TEST_F( ResourceQueries, LowestIndexWins ) {
    push( { "acl", 1, 0, 10, true, 0, 1 } );
    push( { "nat", 1, 0, 20, true, 0, 2 } );
    push( { "acl", 2, 0, 30, true, 0, 3 } );
    EXPECT_EQ( info_->bfResourceIndex( "acl" ), 0 );
    EXPECT_EQ( info_->bfResourceIndex( "nat" ), 1 );
    EXPECT_EQ( info_->bfResourceField( "acl", resourceSize ), 10 );
    EXPECT_EQ( info_->bfResourceStageStart( "acl" ), 1 );
    EXPECT_EQ( info_->bfResourceByHandle( 1 ).name, "acl" );
    EXPECT_EQ( info_->bfResourceByHandle( 2 ).size, 30 );
    EXPECT_EQ( info_->bfResource( 2 ).size, 30 );
}

TEST_F( ResourceQueries, UnknownHandleIsFatal ) {
    push( { "acl", 1, 0, 10, true, 0, 1 } );
    for( U32 const handle : { 0U, 2U, 0x10000001U } )
        EXPECT_EQ( conditionOf( [ & ] { info_->bfResourceByHandle( handle ); } ), "0" ) << handle;
}

TEST_F( ResourceQueries, ArgumentCountsUpToItsFirstNul ) {
    push( { "acl", 1, 0, 10, true, 0, 1 } );
    push( { "", 2, 0, 20, true, 0, 1 } );
    EXPECT_EQ( info_->bfResourceIndex( String( "acl\0x", 5 ) ), 0 );
    EXPECT_EQ( info_->bfResourceField( String( "acl\0x", 5 ), resourceSize ), 10 );
    EXPECT_EQ( info_->bfResourceStageStart( String( "acl\0", 4 ) ), 1 );
    EXPECT_EQ( info_->bfResourceIndex( String( "\0acl", 4 ) ), 1 );
    EXPECT_EQ( info_->bfResourceIndex( String( "ac\0l", 4 ) ), BfResourceInfoIndexInvalid );
}

TEST_F( ResourceQueries, FailuresNameSourceAndOperation ) {
    auto const failure = failureOf( [ & ] { info_->bfResourceStageStart( "x" ); } );
    EXPECT_EQ( failure.source, "BfResourceInfoIntf" );
    EXPECT_THAT( failure.function, HasSubstr( "BfResourceInfo::BfResourceInfoIntf::bfResourceStageStart(" ) );
    EXPECT_EQ( failure.message, "no resource x" );
    EXPECT_EQ( failure.position, "" );
    EXPECT_GT( failure.line, 0 );
}

TEST_F( ResourceQueries, QueriesLeaveNoReferenceBehind ) {
    push( { "acl", 1, 0, 10, true, 0, 1 } );
    U32 const before = info_->parser()->references();
    info_->bfResource( 0 );
    info_->bfResourceField( "acl", resourceSize );
    failureOf( [ & ] { info_->bfResourceField( "x", resourceSize ); } );
    failureOf( [ & ] { info_->bfResourceByHandle( 9 ); } );
    EXPECT_EQ( info_->parser()->references(), before );
}

} // namespace
} // namespace BfResourceInfo
