#include "zel/ValueType.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

using Zel::String;
using Zel::U32;

TEST( UnhashableType, NamesTheType ) {
    Zel::UnhashableType const error( "Test::Resource" );
    EXPECT_STREQ( error.what(), "unhashable type: Test::Resource" );
    EXPECT_THROW( throw error, std::exception );
}

TEST( QuotedStrep, QuotesAndEscapes ) {
    struct {
        String text;
        char const* quoted;
    } const rows[] = {
        { "", "''" },
        { "t", "'t'" },
        { "pipe.Ingress.acl $1 \"x\"", "'pipe.Ingress.acl $1 \"x\"'" },
        { "it's", "'it\\'s'" },
        { "a\\b", "'a\\\\b'" },
        { "\\'", "'\\\\\\''" },
        { "a\nb\tc\rd", "'a\\nb\\tc\\rd'" },
        { String( "\0", 1 ), "'\\x00'" },
        { "\x1b[0m", "'\\x1b[0m'" },
        { "\x1f\x20\x7e\x7f", "'\\x1f ~\\x7f'" },
        { "\xc3\xa4\xff", "'\xc3\xa4\xff'" },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.quoted );
        EXPECT_EQ( Zel::quotedStrep( row.text ), row.quoted );
    }
}

TEST( StrepAttribute, ReadsABareNumberOrANamedOne ) {
    struct {
        char const* strep;
        U32 value;
    } const rows[] = {
        { "0", 0 },
        { "3", 3 },
        { "007", 7 },
        { "4294967295", 0xFFFFFFFF },
        { "Value('Test::Mask', ** {'value': 3})", 3 },
        { "Value('Test::Mask', ** {'value': 4294967295})", 0xFFFFFFFF },
        { "Value('Test::Mask', ** {'size': 9, 'value': 5, 'values': 7})", 5 },
        // The same words inside of a text are escaped there.
        { "Value('Test::Mask', ** {'name': '\\'value\\': 9,', 'value': 5})", 5 },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.strep );
        EXPECT_EQ( Zel::strepAttribute( row.strep, "value" ), row.value );
    }
}

TEST( StrepAttribute, RefusesEverythingElseAndNamesIt ) {
    for( String const strep : { "",
                                " 3",
                                "3 ",
                                "+3",
                                "-1",
                                "3.0",
                                "0x3",
                                "4294967296",
                                "99999999999999999999",
                                "three",
                                "value",
                                "3, 4",
                                "Value('Test::Mask', ** {})",
                                "Value('Test::Mask', ** {'size': 3})",
                                "Value('Test::Mask', ** {'values': 3})",
                                "Value('Test::Mask', ** {'value': })",
                                "Value('Test::Mask', ** {'value': None})",
                                "Value('Test::Mask', ** {'value': '3'})",
                                "Value('Test::Mask', ** {'value': -3})",
                                "Value('Test::Mask', ** {'value': 3.5})",
                                "Value('Test::Mask', ** {'value': 4294967296})",
                                "Value('Test::Mask', ** {'value': 3" } ) {
        SCOPED_TRACE( strep );
        try {
            ADD_FAILURE() << "read " << Zel::strepAttribute( strep, "value" );
        } catch( std::invalid_argument const& error ) {
            EXPECT_EQ( error.what(), "no unsigned attribute 'value' in \"" + strep + "\"" );
        }
    }
}

} // namespace
