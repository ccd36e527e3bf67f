#include "tests/resourceinfo/Fixtures.h"

#include <gtest/gtest.h>
#include <random>
#include <regex>

namespace BfResourceInfo {
namespace {

class FieldNames : public testing::Test {
  protected:
    String normalized( String const& name ) const { return parser_->normalizeFieldName( name ); }

    /// What normalisation is, by two regular expressions.
    static String expected( String const& name ) {
        static std::regex const numbered( "\\$(\\d+)" );
        static std::regex const separators( "[.\\[\\]]" );
        return std::regex_replace( std::regex_replace( name, numbered, "_1_" ), separators, "_" );
    }

    Zel::Ptr<BfResourceParser const> parser_ = emptyParser();
};

struct FieldNameRow {
    char const* name;
    char const* normalized;
};

FieldNameRow const rows[] = {
    { "", "" },
    { "ttl", "ttl" },
    { "hdr.ipv4.ttl", "hdr_ipv4_ttl" },
    { "meta.arr[3].f", "meta_arr_3__f" },
    { "a[0][1]", "a_0__1_" },
    { "...", "___" },
    { "ig_md.tmp$0", "ig_md_tmp_1_" },
    { "a$12.b$7", "a_1__b_1_" },
    { "$3x", "_1_x" },
    { "$1$2", "_1__1_" },
    { "$$5", "$_1_" },
    { "x$", "x$" },
    { "$", "$" },
    { "a$b", "a$b" },
    { "a$.1", "a$_1" },
    { "a$[1]", "a$_1_" },
    { "$-1", "$-1" },
    { "$00000000000000000000000000007", "_1_" },
    { "$9/$0:", "_1_/_1_:" },
    { "a\\$1(d+)$&", "a\\_1_(d+)$&" },
    { "sp ace\tand\nline", "sp ace\tand\nline" },
};

TEST_F( FieldNames, RowsAreNormalized ) {
    for( auto const& [ name, text ] : rows ) {
        EXPECT_EQ( normalized( name ), text );
        EXPECT_EQ( expected( name ), text );
    }
}

TEST_F( FieldNames, EveryCharacterIsChangedAsTheExpressionsSay ) {
    for( int c = 0; c < 256; ++c ) {
        String const one( 1, static_cast<char>( c ) );
        for( String const& name : { one, "$" + one, "$1" + one, one + "$1" } )
            EXPECT_EQ( normalized( name ), expected( name ) ) << c;
    }
}

TEST_F( FieldNames, RandomNamesAreNormalizedAsTheExpressionsSay ) {
    std::mt19937 random( 20240607 );
    auto const below = [ & ]( std::size_t bound ) {
        return std::uniform_int_distribution<std::size_t>( 0, bound - 1 )( random );
    };
    String const frequent = "$$$$$$$$0123456789.[]ax_";
    for( int i = 0; i < 5000; ++i ) {
        String name;
        for( std::size_t length = below( 25 ); length > 0; --length )
            name +=
                below( 4 ) == 0 ? static_cast<char>( below( 256 ) ) : frequent[ below( frequent.size() ) ];
        ASSERT_EQ( normalized( name ), expected( name ) )
            << "name " << i << ": " << testing::PrintToString( name );
    }
}

TEST_F( FieldNames, NormalizedNameStaysAsItIs ) {
    for( auto const& [ name, text ] : rows )
        EXPECT_EQ( normalized( text ), text ) << name;
}

} // namespace
} // namespace BfResourceInfo
