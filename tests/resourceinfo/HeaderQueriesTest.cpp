#include "tests/resourceinfo/Fixtures.h"

#include <gtest/gtest.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;

// They let nothing out. The queries of hashes are constant operations, the query of headers is not.
template<class... Names>
using Query = U32 ( BfResourceInfoIntf::* )( Names... ) noexcept;
template<class... Names>
using ConstantQuery = U32 ( BfResourceInfoIntf::* )( Names... ) const noexcept;
using Name = String const&;
using Asked = BfResourceInfoIntf;
static_assert( std::is_same_v<decltype( &Asked::bfHeaderSize ), Query<Name>> );
static_assert( std::is_same_v<decltype( &Asked::bfDynHashTableHdl ), ConstantQuery<Name>> );
static_assert( std::is_same_v<decltype( &Asked::bfDynHashFieldListHdl ), ConstantQuery<Name>> );
static_assert( std::is_same_v<decltype( &Asked::bfDynHashFieldCount ), ConstantQuery<Name>> );
static_assert( std::is_same_v<decltype( &Asked::bfDynHashFieldId ), ConstantQuery<Name, Name>> );

class HeaderQueries : public testing::Test {
  protected:
    BfResourceParser& parser() { return *info_->parser(); }

    Zel::Ptr<BfResourceInfoIntf> info_ = emptyInterface();
};

TEST_F( HeaderQueries, SizeOfAnUnknownHeaderIsZero ) {
    EXPECT_EQ( info_->bfHeaderSize( "ipv6" ), 0 );
    parser().bfHeadersIs( "ipv6", BfHeaderInfo( 40 ) );
    EXPECT_EQ( info_->bfHeaderSize( "ipv6" ), 40 );
    for( char const* name : { "", "ipv", "ipv6 ", "IPV6" } )
        EXPECT_EQ( info_->bfHeaderSize( name ), 0 ) << name;
}

TEST_F( HeaderQueries, SizeHasSixteenBits ) {
    parser().bfHeadersIs( "none", BfHeaderInfo( 0 ) );
    parser().bfHeadersIs( "all", BfHeaderInfo( 65535 ) );
    EXPECT_EQ( info_->bfHeaderSize( "none" ), 0 );
    EXPECT_EQ( info_->bfHeaderSize( "all" ), 65535 );
}

TEST_F( HeaderQueries, EveryByteOfAHeadersNameCounts ) {
    String const withNul( "eth\0x", 5 );
    parser().bfHeadersIs( withNul, BfHeaderInfo( 14 ) );
    EXPECT_EQ( info_->bfHeaderSize( withNul ), 14 );
    EXPECT_EQ( info_->bfHeaderSize( "eth" ), 0 );
}

TEST_F( HeaderQueries, SizeIsReadFromTheContextFile ) {
    SwitchFolder const folder;
    auto const info =
        bfResourceInfoIntfFactory( folder.conf( ContextBuilder().flexibleHeader( "ipv6", 320 ) ) );
    EXPECT_EQ( info->bfHeaderSize( "ipv6" ), 40 );
}

TEST_F( HeaderQueries, UnknownHashIsNotFound ) {
    EXPECT_EQ( info_->bfDynHashTableHdl( "lag" ), 0x0FFFFFFF );
    EXPECT_EQ( info_->bfDynHashFieldListHdl( "lag" ), 0x0FFFFFFF );
    EXPECT_EQ( info_->bfDynHashFieldCount( "lag" ), 0x0FFFFFFF );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "src" ), 0x0FFFFFFF );
}

TEST_F( HeaderQueries, HashAnswersItsHandlesAndItsNumberOfFields ) {
    parser().bfDynamicHashInfoIs( "lag", { 0xF0000001, 2, 3, { "src", "dst", "proto" } } );
    parser().bfDynamicHashInfoIs( "ecmp", { 4, 5, 1, { "src" } } );
    EXPECT_EQ( info_->bfDynHashTableHdl( "lag" ), 0xF0000001 );
    EXPECT_EQ( info_->bfDynHashFieldListHdl( "lag" ), 2 );
    EXPECT_EQ( info_->bfDynHashFieldCount( "lag" ), 3 );
    EXPECT_EQ( info_->bfDynHashTableHdl( "ecmp" ), 4 );
    EXPECT_EQ( info_->bfDynHashFieldListHdl( "ecmp" ), 5 );
    EXPECT_EQ( info_->bfDynHashFieldCount( "ecmp" ), 1 );
}

TEST_F( HeaderQueries, FieldIsItsPositionInTheList ) {
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 3, { "src", "dst", "proto" } } );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "src" ), 0 );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "dst" ), 1 );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "proto" ), 2 );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "vlan" ), 0x0FFFFFFF );
    EXPECT_EQ( info_->bfDynHashFieldId( "ecmp", "src" ), 0x0FFFFFFF );
}

TEST_F( HeaderQueries, FirstOfTheFieldsOfANameCounts ) {
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 4, { "vlan", "src", "dst", "src" } } );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "src" ), 1 );
}

TEST_F( HeaderQueries, FieldNamesAreComparedAsTheyStand ) {
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 1, { "hdr.ip[0].src" } } );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "hdr.ip[0].src" ), 0 );
    for( char const* name : { "hdr_ip_0__src", "HDR.ip[0].src", "hdr.ip[0].sr", "hdr.ip[0].src ", "" } )
        EXPECT_EQ( info_->bfDynHashFieldId( "lag", name ), BfResourceInfoIndexInvalid ) << name;
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", String( "hdr.ip[0].src\0", 14 ) ),
               BfResourceInfoIndexInvalid );
}

TEST_F( HeaderQueries, EmptyFieldListHasNoField ) {
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 0, {} } );
    EXPECT_EQ( info_->bfDynHashFieldCount( "lag" ), 0 );
    for( char const* name : { "", "src" } )
        EXPECT_EQ( info_->bfDynHashFieldId( "lag", name ), 0x0FFFFFFF ) << name;
}

TEST_F( HeaderQueries, FieldsBehindTheirNumberAreNotLookedAt ) {
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 0, { "src" } } );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "src" ), 0x0FFFFFFF );
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 1, { "src", "dst" } } );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "src" ), 0 );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "dst" ), 0x0FFFFFFF );
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 3, { "src" } } );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "dst" ), 0x0FFFFFFF );
}

TEST_F( HeaderQueries, EveryByteOfAHashesNameCounts ) {
    String const withNul( "lag\0x", 5 );
    parser().bfDynamicHashInfoIs( withNul, { 1, 2, 1, { "src" } } );
    EXPECT_EQ( info_->bfDynHashTableHdl( withNul ), 1 );
    EXPECT_EQ( info_->bfDynHashTableHdl( "lag" ), BfResourceInfoIndexInvalid );
    EXPECT_EQ( info_->bfDynHashFieldId( "lag", "src" ), BfResourceInfoIndexInvalid );
}

TEST_F( HeaderQueries, HashIsReadFromTheContextFile ) {
    SwitchFolder const folder;
    auto const info = bfResourceInfoIntfFactory(
        folder.conf( ContextBuilder().dynamicHash( "lag", { "ip.src", "ip.dst", "ip.proto" } ) ) );
    EXPECT_EQ( info->bfDynHashTableHdl( "lag" ), Support::handleOf( "lag" ) );
    EXPECT_EQ( info->bfDynHashFieldCount( "lag" ), 3 );
    EXPECT_EQ( info->bfDynHashFieldId( "lag", "ip.proto" ), 2 );
}

TEST_F( HeaderQueries, QueriesLeaveNoReferenceBehind ) {
    parser().bfDynamicHashInfoIs( "lag", { 1, 2, 1, { "src" } } );
    U32 const before = parser().references();
    info_->bfHeaderSize( "eth" );
    info_->bfDynHashTableHdl( "lag" );
    info_->bfDynHashFieldListHdl( "lag" );
    info_->bfDynHashFieldCount( "lag" );
    info_->bfDynHashFieldId( "lag", "src" );
    EXPECT_EQ( parser().references(), before );
}

} // namespace
} // namespace BfResourceInfo
