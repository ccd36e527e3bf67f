#include "zel/ByteEnum.h"

#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

namespace {

Zel::TypeId colorType() {
    static Zel::TypeModule const& module =
        Zel::typeModuleIs( "ByteEnumTest", { { "Paint::Color",
                                               Zel::TypeKind::enumeration,
                                               { "red", "green", "greenish", "dark_blue2" },
                                               nullptr,
                                               0 } } );
    return module.typeId( 0 );
}

} // namespace

// The order of the numbers is neither that of the names nor their length's.
namespace Paint {

enum Color : Zel::U8 { red, green, greenish, dark_blue2 };

ZEL_BYTE_ENUM( VESSA_EXPORT, Color )
ZEL_BYTE_ENUM_DEFINE( Color, colorType() )

} // namespace Paint

namespace {

using Paint::Color;
using Zel::Result;
using Zel::String;

struct {
    Color value;
    char const* name;
} const rows[] = {
    { Paint::red, "red" },
    { Paint::green, "green" },
    { Paint::greenish, "greenish" },
    { Paint::dark_blue2, "dark_blue2" },
};

TEST( ByteEnum, IsOneByte ) { EXPECT_EQ( sizeof( Color ), 1U ); }

TEST( ByteEnum, IsFoundByNumberAndByName ) {
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.name );
        EXPECT_EQ( Paint::ColorInstance( Zel::U32{ row.value } ), row.value );
        EXPECT_EQ( Paint::ColorInstance( row.name ), row.value );
    }
}

TEST( ByteEnum, IsWrittenAsItsName ) {
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.name );
        EXPECT_EQ( stringValue( row.value ), row.name );
        EXPECT_EQ( valueToStrep( row.value ), row.name );
        std::ostringstream os;
        EXPECT_EQ( &( os << row.value ), &os );
        EXPECT_EQ( os.str(), row.name );
    }
}

TEST( ByteEnum, AValueWithoutANameIsWrittenAsItsNumber ) {
    std::ostringstream os;
    os << static_cast<Color>( 4 ) << " " << static_cast<Color>( 255 );
    EXPECT_EQ( os.str(), "4 255" );
    EXPECT_EQ( stringValue( static_cast<Color>( 4 ) ), "4" );
}

TEST( ByteEnum, AnUnknownNumberThrowsAndNamesIt ) {
    for( Zel::U32 const number : { 4U, 255U, 256U, 257U, 0xFFFFFFFFU } ) {
        SCOPED_TRACE( number );
        try {
            Paint::ColorInstance( number );
            ADD_FAILURE() << "found";
        } catch( std::out_of_range const& error ) {
            EXPECT_EQ( error.what(), "Paint::Color has no value " + std::to_string( number ) );
        }
    }
}

TEST( ByteEnum, AnUnknownNameThrowsAndNamesIt ) {
    for( char const* const name : { "", "Red", "RED", "re", "redd", "red ", " red", "0", "Paint::red" } ) {
        SCOPED_TRACE( name );
        try {
            Paint::ColorInstance( String( name ) );
            ADD_FAILURE() << "found";
        } catch( std::invalid_argument const& error ) {
            EXPECT_EQ( error.what(), "Paint::Color has no enumerator \"" + String( name ) + "\"" );
        }
    }
    EXPECT_THROW( Paint::ColorInstance( String( "red\0", 4 ) ), std::invalid_argument );
}

TEST( ByteEnum, ReadingTakesOneNameFromTheFront ) {
    struct {
        std::string_view text;
        Color value;
        std::string_view rest;
    } const good[] = {
        { "red", Paint::red, "" },
        { "green, red", Paint::green, ", red" },
        { "greenish}", Paint::greenish, "}" },
        { "dark_blue2-green", Paint::dark_blue2, "-green" },
        { std::string_view( "red\0green", 9 ), Paint::red, std::string_view( "\0green", 6 ) },
    };
    for( auto const& row : good ) {
        SCOPED_TRACE( row.text );
        std::string_view range = row.text;
        Color value = static_cast<Color>( 77 );
        EXPECT_EQ( sequenceToValue( range, &value ), Result::done );
        EXPECT_EQ( value, row.value );
        EXPECT_EQ( range, row.rest );
        EXPECT_EQ( range.data(), row.text.data() + ( row.text.size() - row.rest.size() ) );
    }
}

TEST( ByteEnum, AFailedReadingChangesNothing ) {
    for( std::string_view const text :
         { "", " red", "gree", "greenishly", "red2", "Red", "1", ",red", "\xff" } ) {
        SCOPED_TRACE( text );
        std::string_view range = text;
        Color value = static_cast<Color>( 77 );
        EXPECT_EQ( sequenceToValue( range, &value ), Result::failed );
        EXPECT_EQ( value, static_cast<Color>( 77 ) );
        EXPECT_EQ( range.data(), text.data() );
        EXPECT_EQ( range.size(), text.size() );
    }
}

} // namespace
