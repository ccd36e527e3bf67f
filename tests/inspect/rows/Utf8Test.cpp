#include "inspect/rows/Utf8.h"

#include <gtest/gtest.h>

namespace {

using Vessa::String;

struct Row {
    String text;
    char const* json;
};

/// The bytes, since a test's name takes no others than plain letters well.
std::ostream& operator<<( std::ostream& os, Row const& row ) {
    for( char const c : row.text )
        os << std::hex << ( c & 0xFF ) << '.';
    return os;
}

class Texts : public testing::TestWithParam<Row> {};

TEST_P( Texts, AreSafeInJson ) {
    auto const& [ text, json ] = GetParam();
    EXPECT_EQ( Bfri::jsonQuoted( text ), json );
}

INSTANTIATE_TEST_SUITE_P( Valid, Texts,
                          testing::Values( Row{ "", R"("")" }, Row{ "ipv4.lpm", R"("ipv4.lpm")" },
                                           Row{ "\xC3\xA9", "\"\xC3\xA9\"" },
                                           Row{ "\xE2\x82\xAC", "\"\xE2\x82\xAC\"" },
                                           Row{ "\xED\x9F\xBF\xEE\x80\x80", "\"\xED\x9F\xBF\xEE\x80\x80\"" },
                                           Row{ "\xF0\x9F\x98\x80", "\"\xF0\x9F\x98\x80\"" },
                                           Row{ "\xF4\x8F\xBF\xBF", "\"\xF4\x8F\xBF\xBF\"" },
                                           Row{ R"(a"b\c)", R"("a\"b\\c")" } ) );

INSTANTIATE_TEST_SUITE_P( Control, Texts,
                          testing::Values( Row{ "a\nb\tc", R"("a\nb\u0009c")" },
                                           Row{ "\x1B[31m", R"("\u001b[31m")" }, Row{ "\x7F", "\"\x7F\"" },
                                           Row{ String( "a\0b", 3 ), R"("a\u0000b")" },
                                           Row{ "\xC2\x9B", R"("\u009b")" },
                                           Row{ "\xE2\x80\xAE", R"("\u202e")" } ) );

INSTANTIATE_TEST_SUITE_P(
    Invalid, Texts,
    testing::Values( Row{ "\x80", R"("\ufffd")" }, Row{ "a\xFF", R"("a\ufffd")" },
                     Row{ "\xC3", R"("\ufffd")" }, Row{ "\xC3z", R"("\ufffdz")" },
                     Row{ "\xE2\x82", R"("\ufffd\ufffd")" }, Row{ "\xC0\xAF", R"("\ufffd\ufffd")" },
                     Row{ "\xE0\x9F\xBF", R"("\ufffd\ufffd\ufffd")" },
                     Row{ "\xF0\x8F\xBF\xBF", R"("\ufffd\ufffd\ufffd\ufffd")" },
                     Row{ "\xF4\x90\x80\x80", R"("\ufffd\ufffd\ufffd\ufffd")" },
                     Row{ "\xF8\x88\x80\x80\x80", R"("\ufffd\ufffd\ufffd\ufffd\ufffd")" } ) );

INSTANTIATE_TEST_SUITE_P( Surrogates, Texts,
                          testing::Values( Row{ "\xED\xA0\x80", R"("\ufffd")" },
                                           Row{ "\xED\xBF\xBF", R"("\ufffd")" },
                                           Row{ "\xED\xA0", R"("\ufffd\ufffd")" } ) );

} // namespace
