#include "resourceinfo/model/FieldIds.h"

#include <gtest/gtest.h>
#include <sstream>

namespace BfResourceInfo {
namespace {

/// The numbers are part of the interface: the names in their order.
template<class E>
struct Enumeration;

template<>
struct Enumeration<BfResourceFieldId> {
    static std::vector<String> names() {
        return { "resourceHandle",  "resourceType",   "resourceSize",
                 "resourceIngress", "resourceStages", "resourceStageStart" };
    }
    static BfResourceFieldId of( U32 value ) { return BfResourceFieldIdInstance( value ); }
    static BfResourceFieldId of( String const& name ) { return BfResourceFieldIdInstance( name ); }
};

template<>
struct Enumeration<BfTableFieldId> {
    static std::vector<String> names() {
        return { "tableHandle",
                 "tableSize",
                 "tableHitBitSupported",
                 "tableIdleTimePrecision",
                 "tableHitBitSmashOffset",
                 "tableMaxEntries",
                 "tableMaxPartitions",
                 "tableMaxPrios",
                 "tableHasActionProfile",
                 "tableMaxAdtEntries",
                 "tableMaxSelGroups",
                 "tableMaxSelEntries",
                 "tableAdtHandle",
                 "tableSelHandle" };
    }
    static BfTableFieldId of( U32 value ) { return BfTableFieldIdInstance( value ); }
    static BfTableFieldId of( String const& name ) { return BfTableFieldIdInstance( name ); }
};

template<>
struct Enumeration<BfTableStringId> {
    static std::vector<String> names() { return { "tableAdtName", "tableSelName", "tableLogicalPipe" }; }
    static BfTableStringId of( U32 value ) { return BfTableStringIdInstance( value ); }
    static BfTableStringId of( String const& name ) { return BfTableStringIdInstance( name ); }
};

template<>
struct Enumeration<BfCounterFieldId> {
    static std::vector<String> names() {
        return { "counterHandle", "counterSize", "counterDirect", "counterBytes", "counterPackets" };
    }
    static BfCounterFieldId of( U32 value ) { return BfCounterFieldIdInstance( value ); }
    static BfCounterFieldId of( String const& name ) { return BfCounterFieldIdInstance( name ); }
};

template<>
struct Enumeration<BfMeterFieldId> {
    static std::vector<String> names() {
        return { "meterHandle", "meterDirect", "meterPps", "meterHasPreColor" };
    }
    static BfMeterFieldId of( U32 value ) { return BfMeterFieldIdInstance( value ); }
    static BfMeterFieldId of( String const& name ) { return BfMeterFieldIdInstance( name ); }
};

template<>
struct Enumeration<BfWredFieldId> {
    static std::vector<String> names() { return { "wredHandle", "wredDirect" }; }
    static BfWredFieldId of( U32 value ) { return BfWredFieldIdInstance( value ); }
    static BfWredFieldId of( String const& name ) { return BfWredFieldIdInstance( name ); }
};

template<class E>
class FieldIds : public testing::Test {
  protected:
    std::vector<String> const names_ = Enumeration<E>::names();
    U32 const count_ = static_cast<U32>( names_.size() );
};

using Enumerations = testing::Types<BfResourceFieldId, BfTableFieldId, BfTableStringId, BfCounterFieldId,
                                    BfMeterFieldId, BfWredFieldId>;
TYPED_TEST_SUITE( FieldIds, Enumerations );

TYPED_TEST( FieldIds, AreStoredInOneByte ) { EXPECT_EQ( sizeof( TypeParam ), 1 ); }

TYPED_TEST( FieldIds, NumbersAndNamesBelongTogether ) {
    for( U32 value = 0; value < this->count_; ++value ) {
        auto const field = Enumeration<TypeParam>::of( value );
        EXPECT_EQ( static_cast<U32>( field ), value );
        EXPECT_EQ( stringValue( field ), this->names_[ value ] );
        EXPECT_EQ( valueToStrep( field ), this->names_[ value ] );
        EXPECT_EQ( Enumeration<TypeParam>::of( this->names_[ value ] ), field );
        std::ostringstream os;
        os << field;
        EXPECT_EQ( os.str(), this->names_[ value ] );
    }
}

TYPED_TEST( FieldIds, NumbersWithoutAFieldThrow ) {
    for( U32 const value : { this->count_, 255U, 256U, 0xFFFFFFFFU } )
        EXPECT_THROW( Enumeration<TypeParam>::of( value ), std::out_of_range ) << value;
}

TYPED_TEST( FieldIds, NamesWithoutAFieldThrow ) {
    for( char const* name : { "", "Handle", "tablehandle", "resourceHandle ", "0" } )
        EXPECT_THROW( Enumeration<TypeParam>::of( String( name ) ), std::invalid_argument ) << name;
}

TYPED_TEST( FieldIds, ValueWithoutANameShowsItsNumber ) {
    EXPECT_EQ( stringValue( static_cast<TypeParam>( 200 ) ), "200" );
}

TYPED_TEST( FieldIds, NameIsReadFromTheFrontOfARange ) {
    String const text = this->names_.back() + ", more";
    std::string_view range = text;
    auto field = static_cast<TypeParam>( 0 );
    EXPECT_EQ( sequenceToValue( range, &field ), Zel::Result::done );
    EXPECT_EQ( static_cast<U32>( field ), this->count_ - 1 );
    EXPECT_EQ( range, ", more" );
}

TYPED_TEST( FieldIds, RangeWithoutANameChangesNothing ) {
    for( String const& text : { String(), String( " " ), String( "nothing" ), this->names_[ 0 ] + "x" } ) {
        std::string_view range = text;
        auto field = static_cast<TypeParam>( 77 );
        EXPECT_EQ( sequenceToValue( range, &field ), Zel::Result::failed ) << text;
        EXPECT_EQ( static_cast<U32>( field ), 77 );
        EXPECT_EQ( range, text );
    }
}

TEST( FieldIdNumbers, AreThoseThatCallersPass ) {
    EXPECT_EQ( stringValue( resourceStageStart ), "resourceStageStart" );
    EXPECT_EQ( BfTableFieldIdInstance( 13 ), tableSelHandle );
    EXPECT_EQ( BfTableStringIdInstance( "tableLogicalPipe" ), 2 );
    EXPECT_EQ( resourceHandle, 0 );
    EXPECT_EQ( resourceType, 1 );
}

} // namespace
} // namespace BfResourceInfo
