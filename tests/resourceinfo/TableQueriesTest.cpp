#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "vessa/VectorException.h"

#include <functional>
#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::conditionOf;
using Support::ContextBuilder;
using Support::matchTable;

char const* const unknownTableQueriesName = "index != BfResourceInfoIndexInvalid";

BfTableInfo table( String name, U32 handle, U32 size ) {
    BfTableInfo result;
    result.name = std::move( name );
    result.handle = handle;
    result.size = size;
    return result;
}

class TableQueries : public testing::Test {
  protected:
    TableQueries() : info_( emptyInterface() ) {}

    void push( BfTableInfo const& record ) { info_->parser()->bfTablesPush( record ); }

    Zel::Ptr<BfResourceInfoIntf> info_;
};

TEST_F( TableQueries, EmptyModelHasNoTable ) {
    EXPECT_EQ( info_->bfTablesNum(), 0 );
    EXPECT_EQ( info_->bfTableIndex( "x" ), 0x0FFFFFFF );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfTableField( "x", tableSize ); } ), unknownTableQueriesName );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfTableString( "x", tableAdtName ); } ), unknownTableQueriesName );
    EXPECT_EQ( conditionOf( [ & ] { info_->bfTableByHandle( 0 ); } ), "0" );
    EXPECT_EQ( info_->bfTablesHitBitSmashSize(), 0 );
}

TEST_F( TableQueries, EachIdentifierNamesItsField ) {
    BfTableInfo record = table( "acl", 101, 102 );
    record.totalEntries = 99;
    record.hitBitSupported = true;
    record.idleTimePrecision = 104;
    record.hitBitSmashOffset = 105;
    record.hitBitSmashLast = 98;
    record.maxEntries = 106;
    record.maxPartitions = 107;
    record.maxPrios = 108;
    record.hasActionProfile = true;
    record.maxAdtEntries = 110;
    record.maxSelGroups = 111;
    record.maxSelEntries = 112;
    record.adtHandle = 113;
    record.selHandle = 114;
    push( record );
    U32 const expected[] = { 101, 102, 1, 104, 105, 106, 107, 108, 1, 110, 111, 112, 113, 114 };
    for( U32 value = 0; value < std::size( expected ); ++value )
        EXPECT_EQ( info_->bfTableField( "acl", static_cast<BfTableFieldId>( value ) ), expected[ value ] )
            << value;
}

TEST_F( TableQueries, FlagsAreAnsweredAsZeroOrOne ) {
    push( table( "acl", 1, 1 ) );
    EXPECT_EQ( info_->bfTableField( "acl", tableHitBitSupported ), 0 );
    EXPECT_EQ( info_->bfTableField( "acl", tableHasActionProfile ), 0 );
}

TEST_F( TableQueries, IdentifiersThatAreNoFieldAreFatal ) {
    push( table( "acl", 1, 1 ) );
    for( int const value : { 14, 15, 255 } ) {
        auto const field = static_cast<BfTableFieldId>( value );
        EXPECT_EQ( conditionOf( [ & ] { info_->bfTableField( "acl", field ); } ), "0" ) << value;
    }
    for( int const value : { 3, 4, 255 } ) {
        auto const field = static_cast<BfTableStringId>( value );
        EXPECT_EQ( conditionOf( [ & ] { info_->bfTableString( "acl", field ); } ), "0" ) << value;
    }
}

TEST_F( TableQueries, UnknownNameIsFatalBeforeTheIdentifierIsLookedAt ) {
    push( table( "acl", 1, 1 ) );
    for( char const* name : { "", "ac", "acl ", "ACL", "acl2" } ) {
        EXPECT_EQ( info_->bfTableIndex( name ), BfResourceInfoIndexInvalid ) << name;
        auto const noField = static_cast<BfTableFieldId>( 14 );
        auto const noString = static_cast<BfTableStringId>( 3 );
        EXPECT_EQ( conditionOf( [ & ] { info_->bfTableField( name, noField ); } ), unknownTableQueriesName );
        EXPECT_EQ( conditionOf( [ & ] { info_->bfTableString( name, noString ); } ),
                   unknownTableQueriesName );
    }
}

TEST_F( TableQueries, StringsAreCopiesOfTheTexts ) {
    BfTableInfo record = table( "acl", 1, 1 );
    record.adtName = "acl.adt";
    record.selName = "acl.sel";
    record.logicalPipe = "a";
    push( record );
    EXPECT_EQ( info_->bfTableString( "acl", tableAdtName ), "acl.adt" );
    EXPECT_EQ( info_->bfTableString( "acl", tableSelName ), "acl.sel" );
    EXPECT_EQ( info_->bfTableString( "acl", tableLogicalPipe ), "a" );
}

TEST_F( TableQueries, StringsOfATableWithoutReferencesAreEmpty ) {
    SwitchFolder const folder;
    auto const info =
        bfResourceInfoIntfFactory( folder.conf( ContextBuilder().table( matchTable( "acl" ) ) ) );
    EXPECT_EQ( info->bfTableString( "acl", tableAdtName ), "" );
    EXPECT_EQ( info->bfTableString( "acl", tableSelName ), "" );
    EXPECT_EQ( info->bfTableString( "acl", tableLogicalPipe ), "" );
}

TEST_F( TableQueries, MaximumPriorityIs255ForEveryTable ) {
    SwitchFolder const folder;
    auto const info = bfResourceInfoIntfFactory(
        folder.conf( ContextBuilder()
                         .table( matchTable( "acl" ).with( "/max_prios", "7" ) )
                         .table( matchTable( "lpm" ).matchType( "exact" ).size( 1 ) ) ) );
    EXPECT_EQ( info->bfTableField( "acl", tableMaxPrios ), 255 );
    EXPECT_EQ( info->bfTableField( "lpm", tableMaxPrios ), 255 );
}

TEST_F( TableQueries, IndexPastTheEndThrows ) {
    push( table( "acl", 1, 1 ) );
    for( U32 const index : { 1U, 0x0FFFFFFFU, 0xFFFFFFFFU } ) {
        for( auto const& query : { std::function<void()>( [ & ] { info_->bfTable( index ); } ),
                                   std::function<void()>( [ & ] { info_->bfTableName( index ); } ) } ) {
            try {
                query();
                ADD_FAILURE() << "expected an exception for " << index;
            } catch( Vessa::VectorOutOfRange const& exception ) {
                EXPECT_EQ( exception.index(), index );
                EXPECT_EQ( exception.size(), 1 );
                EXPECT_STREQ(
                    exception.what(),
                    ( "vector index " + std::to_string( index ) + " out of range, size 1" ).c_str() );
            }
        }
    }
    EXPECT_EQ( info_->bfTablesNum(), 1 );
    EXPECT_EQ( info_->bfTableName( 0 ), "acl" );
}

TEST_F( TableQueries, LowestIndexWins ) {
    push( table( "acl", 1, 10 ) );
    push( table( "nat", 1, 20 ) );
    push( table( "acl", 2, 30 ) );
    EXPECT_EQ( info_->bfTableIndex( "acl" ), 0 );
    EXPECT_EQ( info_->bfTableIndex( "nat" ), 1 );
    EXPECT_EQ( info_->bfTableField( "acl", tableSize ), 10 );
    EXPECT_EQ( info_->bfTableByHandle( 1 ).name, "acl" );
    EXPECT_EQ( info_->bfTableByHandle( 2 ).size, 30 );
    EXPECT_EQ( info_->bfTable( 2 ).size, 30 );
    EXPECT_EQ( info_->bfTableName( 2 ), "acl" );
}

TEST_F( TableQueries, UnknownHandleIsFatal ) {
    push( table( "acl", 1, 1 ) );
    for( U32 const handle : { 0U, 2U, 0x10000001U } )
        EXPECT_EQ( conditionOf( [ & ] { info_->bfTableByHandle( handle ); } ), "0" ) << handle;
}

TEST_F( TableQueries, ArgumentCountsUpToItsFirstNul ) {
    push( table( "acl", 1, 10 ) );
    push( table( "", 2, 20 ) );
    EXPECT_EQ( info_->bfTableIndex( String( "acl\0x", 5 ) ), 0 );
    EXPECT_EQ( info_->bfTableField( String( "acl\0x", 5 ), tableSize ), 10 );
    EXPECT_EQ( info_->bfTableString( String( "acl\0x", 5 ), tableAdtName ), "" );
    EXPECT_EQ( info_->bfTableIndex( String( "\0acl", 4 ) ), 1 );
    EXPECT_EQ( info_->bfTableIndex( String( "ac\0l", 4 ) ), BfResourceInfoIndexInvalid );
}

TEST_F( TableQueries, HitBitSpaceIsTheCounterAndNoSumOverTables ) {
    push( table( "acl", 1, 1000 ) );
    info_->parser()->hitBitSmashEntriesIs( 77 );
    EXPECT_EQ( info_->bfTablesHitBitSmashSize(), 77 );
}

TEST_F( TableQueries, FailuresNameSourceAndOperation ) {
    push( table( "acl", 1, 1 ) );
    auto const failure = Support::failureOf( [ & ] { info_->bfTableField( "x", tableSize ); } );
    EXPECT_EQ( failure.source, "BfResourceInfoIntf" );
    EXPECT_THAT( failure.function,
                 testing::HasSubstr( "BfResourceInfo::BfResourceInfoIntf::bfTableField(" ) );
}

TEST_F( TableQueries, AnswersComeFromTheModelThatTheInterfaceHoldsNow ) {
    push( table( "acl", 1, 1 ) );
    SwitchFolder const folder;
    info_->parserIs( folder.conf( ContextBuilder().table( matchTable( "nat" ).size( 7 ) ) ) );
    EXPECT_EQ( info_->bfTableIndex( "acl" ), BfResourceInfoIndexInvalid );
    EXPECT_EQ( info_->bfTableField( "nat", tableSize ), 7 );
}

} // namespace
} // namespace BfResourceInfo
