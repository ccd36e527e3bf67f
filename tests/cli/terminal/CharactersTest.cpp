#include "cli/terminal/Characters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Vessa::String;

struct ShownText {
    String text;
    char const* terminal;
    std::size_t width;
};

/// The bytes, since a test's name takes no others than plain letters well.
std::ostream& operator<<( std::ostream& os, ShownText const& row ) {
    for( char const c : row.text )
        os << std::hex << ( c & 0xFF ) << '.';
    return os;
}

class Texts : public testing::TestWithParam<ShownText> {};

TEST_P( Texts, AreSafeOnATerminal ) {
    auto const& [ text, terminal, columns ] = GetParam();
    EXPECT_EQ( Bfri::escapeForTerminal( text ), terminal );
    EXPECT_EQ( Bfri::width( Bfri::escapeForTerminal( text ) ), columns );
}

INSTANTIATE_TEST_SUITE_P(
    Valid, Texts,
    testing::Values( ShownText{ "", "", 0 }, ShownText{ "ipv4.lpm", "ipv4.lpm", 8 },
                     ShownText{ "\xC3\xA9", "\xC3\xA9", 1 }, ShownText{ "\xE2\x82\xAC", "\xE2\x82\xAC", 1 },
                     ShownText{ "\xED\x9F\xBF\xEE\x80\x80", "\xED\x9F\xBF\xEE\x80\x80", 2 },
                     ShownText{ "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80", 2 },
                     ShownText{ "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF", 1 },
                     ShownText{ R"(a"b\c)", R"(a"b\c)", 5 } ) );

INSTANTIATE_TEST_SUITE_P(
    Control, Texts,
    testing::Values( ShownText{ "a\nb\tc", R"(a\x0ab\x09c)", 11 }, ShownText{ "\x1B[31m", R"(\x1b[31m)", 8 },
                     ShownText{ "\x7F", R"(\x7f)", 4 }, ShownText{ String( "a\0b", 3 ), R"(a\x00b)", 6 },
                     ShownText{ "\xC2\x9B", R"(\u009b)", 6 }, ShownText{ "\xE2\x80\xAE", R"(\u202e)", 6 } ) );

INSTANTIATE_TEST_SUITE_P(
    Invalid, Texts,
    testing::Values( ShownText{ "\x80", R"(\x80)", 4 }, ShownText{ "a\xFF", R"(a\xff)", 5 },
                     ShownText{ "\xC3", R"(\xc3)", 4 }, ShownText{ "\xC3z", R"(\xc3z)", 5 },
                     ShownText{ "\xE2\x82", R"(\xe2\x82)", 8 }, ShownText{ "\xC0\xAF", R"(\xc0\xaf)", 8 },
                     ShownText{ "\xE0\x9F\xBF", R"(\xe0\x9f\xbf)", 12 },
                     ShownText{ "\xF0\x8F\xBF\xBF", R"(\xf0\x8f\xbf\xbf)", 16 },
                     ShownText{ "\xF4\x90\x80\x80", R"(\xf4\x90\x80\x80)", 16 },
                     ShownText{ "\xF8\x88\x80\x80\x80", R"(\xf8\x88\x80\x80\x80)", 20 } ) );

INSTANTIATE_TEST_SUITE_P( Surrogates, Texts,
                          testing::Values( ShownText{ "\xED\xA0\x80", R"(\ud800)", 6 },
                                           ShownText{ "\xED\xBF\xBF", R"(\udfff)", 6 },
                                           ShownText{ "\xED\xA0", R"(\xed\xa0)", 8 } ) );

TEST( Width, IsTwoOfWideCharactersAndNothingOfMarks ) {
    EXPECT_EQ( Bfri::width( "\u8868acl" ), 5U );
    EXPECT_EQ( Bfri::width( "e\u0301" ), 1U );
    EXPECT_EQ( Bfri::width( "a\u200bb" ), 2U );
}

TEST( FirstColumns, NeitherSplitACharacterNorItsMarks ) {
    EXPECT_EQ( Bfri::firstColumns( "abc", 2 ), "ab" );
    EXPECT_EQ( Bfri::firstColumns( "abc", 9 ), "abc" );
    EXPECT_EQ( Bfri::firstColumns( "\u8868\u8868", 3 ), "\u8868" );
    EXPECT_EQ( Bfri::firstColumns( "e\u0301x", 1 ), "e\u0301" );
}

TEST( LastColumns, NeitherSplitACharacterNorItsMarks ) {
    EXPECT_EQ( Bfri::lastColumns( "abc", 2 ), "bc" );
    EXPECT_EQ( Bfri::lastColumns( "abc", 9 ), "abc" );
    EXPECT_EQ( Bfri::lastColumns( "\u8868\u8868", 3 ), "\u8868" );
    EXPECT_EQ( Bfri::lastColumns( "xe\u0301", 1 ), "e\u0301" );
}

TEST( Readings, OfAWordAreItselfAndWhatATerminalShowsSo ) {
    using testing::ElementsAre;
    EXPECT_THAT( Bfri::readingsOf( "acl" ), ElementsAre( "acl" ) );
    EXPECT_THAT( Bfri::readingsOf( "a\\x1bb\\u202e" ), ElementsAre( "a\\x1bb\\u202e", "a\x1b"
                                                                                      "b\u202e" ) );
    EXPECT_THAT( Bfri::readingsOf( "a\\x1" ), ElementsAre( "a\\x1" ) );
    EXPECT_THAT( Bfri::readingsOf( "\\u00zz\\" ), ElementsAre( "\\u00zz\\" ) );
}

/// What a text shows is read back as the text.
TEST( Readings, TurnEveryEscapeBack ) {
    for( String const text :
         { "\x80", "a\xff", "\x1b[31m", "\x7f", "\xC2\x9B", "\xED\xA0\x80", "\xE2\x80\xAE" } )
        EXPECT_EQ( Bfri::readingsOf( Bfri::escapeForTerminal( text ) ).at( 1 ), text );
}

TEST( Readings, HaveAccentsComposedAndDecomposed ) {
    using testing::ElementsAre;
    EXPECT_THAT( Bfri::readingsOf( "re\u0301" ), ElementsAre( "re\u0301", "r\u00e9" ) );
    EXPECT_THAT( Bfri::readingsOf( "r\u00e9" ), ElementsAre( "r\u00e9", "re\u0301" ) );
    EXPECT_THAT( Bfri::readingsOf( "r\xe9" ), ElementsAre( "r\xe9" ) );
}

} // namespace
