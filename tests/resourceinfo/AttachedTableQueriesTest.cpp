#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/RecordKinds.h"
#include "tests/support/Assertions.h"

#include <functional>
#include <gmock/gmock.h>

// Fields of counters, meters and WRED tables, and their match tables; RecordQueriesTest tests what these
// kinds share with all others.

namespace BfResourceInfo {
namespace {

using Support::conditionOf;
using Support::ContextBuilder;
using Support::failureOf;
using Support::matchTable;

// It changes nothing, but is no constant operation.
static_assert( std::is_same_v<decltype( &BfResourceInfoIntf::bfAssociatedTable ),
                              String ( BfResourceInfoIntf::* )( String const& )> );

char const* const unknownAttachedName = "index != BfResourceInfoIndexInvalid";

/// A record with every field of its own value, the flags as given.
BfTableCounterInfo counter( String name, bool direct, bool bytes, bool packets ) {
    return { std::move( name ), 0xF0000001, 2, 3, direct, bytes, packets, "acl", "a" };
}

BfTableMeterInfo meter( String name, bool direct, bool pps, bool hasPreColor ) {
    return { std::move( name ), 0xF0000001, direct, pps, hasPreColor, "acl", "a" };
}

class AttachedTableQueries : public testing::Test {
  protected:
    BfResourceParser& parser() { return *info_->parser(); }

    Zel::Ptr<BfResourceInfoIntf> info_ = emptyInterface();
};

TEST_F( AttachedTableQueries, EachIdentifierNamesItsFieldOfACounter ) {
    parser().bfCountersPush( counter( "direct", true, false, false ) );
    parser().bfCountersPush( counter( "bytes", false, true, false ) );
    parser().bfCountersPush( counter( "packets", false, false, true ) );
    struct Row {
        char const* name;
        U32 direct, bytes, packets;
    };
    for( auto const& [ name, direct, bytes, packets ] :
         { Row{ "direct", 1, 0, 0 }, Row{ "bytes", 0, 1, 0 }, Row{ "packets", 0, 0, 1 } } ) {
        EXPECT_EQ( info_->bfTableCounterField( name, counterHandle ), 0xF0000001 ) << name;
        EXPECT_EQ( info_->bfTableCounterField( name, counterSize ), 3 ) << name;
        EXPECT_EQ( info_->bfTableCounterField( name, counterDirect ), direct ) << name;
        EXPECT_EQ( info_->bfTableCounterField( name, counterBytes ), bytes ) << name;
        EXPECT_EQ( info_->bfTableCounterField( name, counterPackets ), packets ) << name;
    }
}

TEST_F( AttachedTableQueries, EachIdentifierNamesItsFieldOfAMeter ) {
    parser().bfMetersPush( meter( "direct", true, false, false ) );
    parser().bfMetersPush( meter( "pps", false, true, false ) );
    parser().bfMetersPush( meter( "preColor", false, false, true ) );
    struct Row {
        char const* name;
        U32 direct, pps, preColor;
    };
    for( auto const& [ name, direct, pps, preColor ] :
         { Row{ "direct", 1, 0, 0 }, Row{ "pps", 0, 1, 0 }, Row{ "preColor", 0, 0, 1 } } ) {
        EXPECT_EQ( info_->bfTableMeterField( name, meterHandle ), 0xF0000001 ) << name;
        EXPECT_EQ( info_->bfTableMeterField( name, meterDirect ), direct ) << name;
        EXPECT_EQ( info_->bfTableMeterField( name, meterPps ), pps ) << name;
        EXPECT_EQ( info_->bfTableMeterField( name, meterHasPreColor ), preColor ) << name;
    }
}

TEST_F( AttachedTableQueries, EachIdentifierNamesItsFieldOfAWredTable ) {
    parser().bfWredsPush( { "direct", 0xF0000001, true, "a" } );
    parser().bfWredsPush( { "indirect", 2, false, "a" } );
    EXPECT_EQ( info_->bfTableWredField( "direct", wredHandle ), 0xF0000001 );
    EXPECT_EQ( info_->bfTableWredField( "direct", wredDirect ), 1 );
    EXPECT_EQ( info_->bfTableWredField( "indirect", wredHandle ), 2 );
    EXPECT_EQ( info_->bfTableWredField( "indirect", wredDirect ), 0 );
}

TEST_F( AttachedTableQueries, CounterOfPacketsAndBytesCountsBoth ) {
    SwitchFolder const folder;
    auto const info = bfResourceInfoIntfFactory( folder.conf( ContextBuilder().table(
        Support::statisticsTable( "both" ).with( "/statistics_type", "\"packets_and_bytes\"" ) ) ) );
    EXPECT_EQ( info->bfTableCounterField( "both", counterBytes ), 1 );
    EXPECT_EQ( info->bfTableCounterField( "both", counterPackets ), 1 );
}

TEST_F( AttachedTableQueries, AssociatedTableIsTheMetersBeforeTheCounters ) {
    BfTableCounterInfo shared = counter( "shared", false, true, true );
    shared.associatedTable = "table of the counter";
    BfTableMeterInfo sharedMeter = meter( "shared", false, true, true );
    sharedMeter.associatedTable = "table of the meter";
    parser().bfCountersPush( counter( "counter", false, true, true ) );
    parser().bfCountersPush( shared );
    parser().bfMetersPush( meter( "meter", false, true, true ) );
    parser().bfMetersPush( sharedMeter );
    EXPECT_EQ( info_->bfAssociatedTable( "meter" ), "acl" );
    EXPECT_EQ( info_->bfAssociatedTable( "counter" ), "acl" );
    EXPECT_EQ( info_->bfAssociatedTable( "shared" ), "table of the meter" );
    parser().bfMetersPop();
    EXPECT_EQ( info_->bfAssociatedTable( "shared" ), "table of the counter" );
}

TEST_F( AttachedTableQueries, AssociatedTableOfTheFirstOfANameCounts ) {
    for( char const* table : { "first", "second" } ) {
        BfTableMeterInfo record = meter( "meter", false, true, true );
        record.associatedTable = table;
        parser().bfMetersPush( record );
    }
    EXPECT_EQ( info_->bfAssociatedTable( "meter" ), "first" );
    EXPECT_EQ( info_->bfAssociatedTable( String( "meter\0x", 7 ) ), "first" );
}

TEST_F( AttachedTableQueries, AssociatedTableThatNoneOrSeveralUseIsEmpty ) {
    BfTableMeterInfo alone = meter( "alone", false, true, true );
    alone.associatedTable = "";
    parser().bfMetersPush( alone );
    parser().bfCountersPush( counter( "alone", false, true, true ) );
    EXPECT_EQ( info_->bfAssociatedTable( "alone" ), "" ) << "the counter is not asked";
}

TEST_F( AttachedTableQueries, AssociatedTableIsReadFromTheContextFile ) {
    SwitchFolder const folder;
    auto const info = bfResourceInfoIntfFactory(
        folder.conf( ContextBuilder()
                         .table( matchTable( "acl" ).statistics( "acl.counter" ) )
                         .table( matchTable( "police" ).action( "drop", { "police.meter" } ) )
                         .table( Support::statisticsTable( "acl.counter" ).referenced( "direct" ) )
                         .table( Support::meterTable( "police.meter" ) ) ) );
    EXPECT_EQ( info->bfAssociatedTable( "acl.counter" ), "acl" );
    EXPECT_EQ( info->bfAssociatedTable( "police.meter" ), "police" );
    EXPECT_EQ( conditionOf( [ & ] { info->bfAssociatedTable( "acl" ); } ), "false && \"check table name\"" );
}

TEST_F( AttachedTableQueries, AssociatedTableLooksAtMetersAndCountersAlone ) {
    BfTableInfo table;
    table.name = "x";
    parser().bfTablesPush( table );
    parser().bfWredsPush( { "x", 1, true, "a" } );
    parser().bfRegisterInfosPush( { "x", 1, true, "uint8_t", 8, false } );
    parser().bfResourcesPush( { "x", 1, 1, 1, true, 1, 1 } );
    auto const failure = failureOf( [ & ] { info_->bfAssociatedTable( "x" ); } );
    EXPECT_EQ( failure.condition, "false && \"check table name\"" );
    EXPECT_EQ( failure.message, "no meter or counter x" );
    EXPECT_EQ( failure.source, "BfResourceInfoIntf" );
    EXPECT_THAT( failure.function,
                 testing::HasSubstr( "BfResourceInfo::BfResourceInfoIntf::bfAssociatedTable(" ) );
}

template<class Kind>
class AttachedField : public testing::Test {
  protected:
    AttachedField() {
        typename Kind::Record record{};
        record.name = "acl";
        record.handle = 7;
        std::invoke( Kind::push, *info_->parser(), record );
        record.handle = 8;
        std::invoke( Kind::push, *info_->parser(), record );
    }

    U32 field( String const& name, U32 identifier ) {
        return std::invoke( fieldQuery<Kind>, *info_, name, static_cast<Identifier<Kind>>( identifier ) );
    }

    static constexpr U32 identifiers = std::tuple_size_v<decltype( identified<Kind> )>;
    Zel::Ptr<BfResourceInfoIntf> info_ = emptyInterface();
};

using AttachedKinds = testing::Types<Counters, Meters, Wreds>;
TYPED_TEST_SUITE( AttachedField, AttachedKinds );

TYPED_TEST( AttachedField, IsThatOfTheFirstRecordOfTheName ) {
    EXPECT_EQ( this->field( "acl", 0 ), 7 );
    EXPECT_EQ( this->field( String( "acl\0x", 5 ), 0 ), 7 );
}

TYPED_TEST( AttachedField, IdentifiersThatAreNoFieldAreFatal ) {
    for( U32 const identifier : { this->identifiers, this->identifiers + 1, 255U } ) {
        auto const failure = failureOf( [ & ] { this->field( "acl", identifier ); } );
        EXPECT_EQ( failure.condition, "0" ) << identifier;
        EXPECT_EQ( failure.message, "no field " + std::to_string( identifier ) );
    }
}

TYPED_TEST( AttachedField, UnknownNameIsFatalBeforeTheIdentifierIsLookedAt ) {
    for( char const* name : { "", "ac", "acl ", "ACL", "acl2" } ) {
        EXPECT_EQ( conditionOf( [ & ] { this->field( name, 0 ); } ), unknownAttachedName ) << name;
        EXPECT_EQ( conditionOf( [ & ] { this->field( name, 255 ); } ), unknownAttachedName ) << name;
    }
}

TYPED_TEST( AttachedField, FailuresNameSourceAndOperation ) {
    auto const failure = failureOf( [ & ] { this->field( "x", 0 ); } );
    EXPECT_EQ( failure.source, "BfResourceInfoIntf" );
    EXPECT_THAT( failure.function, testing::HasSubstr( "BfResourceInfo::BfResourceInfoIntf::" +
                                                       String( TypeParam::operation ) + "Field(" ) );
    EXPECT_THAT( failure.message, testing::EndsWith( " x" ) );
}

} // namespace
} // namespace BfResourceInfo
