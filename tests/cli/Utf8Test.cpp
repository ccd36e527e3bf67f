#include "inspect/rows/Utf8.h"

#include <gtest/gtest.h>

namespace {

using Vessa::String;

struct Row {
    String text;
    char const* json;
    char const* terminal;
    std::size_t width;
};

/// The bytes, since a test's name takes no others than plain letters well.
std::ostream& operator<<( std::ostream& os, Row const& row ) {
    for( char const c : row.text )
        os << std::hex << ( c & 0xFF ) << '.';
    return os;
}

class Texts : public testing::TestWithParam<Row> {};

TEST_P( Texts, AreSafeInJsonAndOnATerminal ) {
    auto const& [ text, json, terminal, columns ] = GetParam();
    EXPECT_EQ( Bfri::jsonQuoted( text ), json );
    EXPECT_EQ( Bfri::escapeForTerminal( text ), terminal );
    EXPECT_EQ( Bfri::width( Bfri::escapeForTerminal( text ) ), columns );
}

INSTANTIATE_TEST_SUITE_P(
    Valid, Texts,
    testing::Values( Row{ "", R"("")", "", 0 }, Row{ "ipv4.lpm", R"("ipv4.lpm")", "ipv4.lpm", 8 },
                     Row{ "\xC3\xA9", "\"\xC3\xA9\"", "\xC3\xA9", 1 },
                     Row{ "\xE2\x82\xAC", "\"\xE2\x82\xAC\"", "\xE2\x82\xAC", 1 },
                     Row{ "\xED\x9F\xBF\xEE\x80\x80", "\"\xED\x9F\xBF\xEE\x80\x80\"",
                          "\xED\x9F\xBF\xEE\x80\x80", 2 },
                     Row{ "\xF0\x9F\x98\x80", "\"\xF0\x9F\x98\x80\"", "\xF0\x9F\x98\x80", 1 },
                     Row{ "\xF4\x8F\xBF\xBF", "\"\xF4\x8F\xBF\xBF\"", "\xF4\x8F\xBF\xBF", 1 },
                     Row{ R"(a"b\c)", R"("a\"b\\c")", R"(a"b\c)", 5 } ) );

INSTANTIATE_TEST_SUITE_P( Control, Texts,
                          testing::Values( Row{ "a\nb\tc", R"("a\nb\u0009c")", R"(a\x0ab\x09c)", 11 },
                                           Row{ "\x1B[31m", R"("\u001b[31m")", R"(\x1b[31m)", 8 },
                                           Row{ "\x7F", "\"\x7F\"", R"(\x7f)", 4 },
                                           Row{ String( "a\0b", 3 ), R"("a\u0000b")", R"(a\x00b)", 6 },
                                           Row{ "\xC2\x9B", "\"\xC2\x9B\"", R"(\u009b)", 6 },
                                           Row{ "\xE2\x80\xAE", "\"\xE2\x80\xAE\"", R"(\u202e)", 6 } ) );

INSTANTIATE_TEST_SUITE_P(
    Invalid, Texts,
    testing::Values( Row{ "\x80", R"("\ufffd")", R"(\x80)", 4 },
                     Row{ "a\xFF", R"("a\ufffd")", R"(a\xff)", 5 },
                     Row{ "\xC3", R"("\ufffd")", R"(\xc3)", 4 },
                     Row{ "\xC3z", R"("\ufffdz")", R"(\xc3z)", 5 },
                     Row{ "\xE2\x82", R"("\ufffd\ufffd")", R"(\xe2\x82)", 8 },
                     Row{ "\xC0\xAF", R"("\ufffd\ufffd")", R"(\xc0\xaf)", 8 },
                     Row{ "\xE0\x9F\xBF", R"("\ufffd\ufffd\ufffd")", R"(\xe0\x9f\xbf)", 12 },
                     Row{ "\xF0\x8F\xBF\xBF", R"("\ufffd\ufffd\ufffd\ufffd")", R"(\xf0\x8f\xbf\xbf)", 16 },
                     Row{ "\xF4\x90\x80\x80", R"("\ufffd\ufffd\ufffd\ufffd")", R"(\xf4\x90\x80\x80)", 16 },
                     Row{ "\xF8\x88\x80\x80\x80", R"("\ufffd\ufffd\ufffd\ufffd\ufffd")",
                          R"(\xf8\x88\x80\x80\x80)", 20 } ) );

INSTANTIATE_TEST_SUITE_P( Surrogates, Texts,
                          testing::Values( Row{ "\xED\xA0\x80", R"("\ufffd")", R"(\ud800)", 6 },
                                           Row{ "\xED\xBF\xBF", R"("\ufffd")", R"(\udfff)", 6 },
                                           Row{ "\xED\xA0", R"("\ufffd\ufffd")", R"(\xed\xa0)", 8 } ) );

} // namespace
