// The reader over our stream, with the filter, beside the reader over a text in memory, without: the same
// document but for the members that nobody asks for, and the same errors at the same places.

#include "resourceinfo/parser/context/MemberNames.h"
#include "tests/support/ContextReading.h"
#include "tests/support/NearlyJson.h"

#include <gtest/gtest.h>

using namespace Context;

namespace {

using namespace std::string_literals;
using Support::Reading;
using Support::Surveying;

Reading readingOf( std::string const& text, std::size_t bufferSize = 4096,
                   Surveying surveying = Surveying::nothing ) {
    Support::TextFile file( text );
    return Support::contextReading( file, bufferSize, surveying );
}

/// With a survey as without one.
void expectSameReading( std::string const& text, std::size_t bufferSize ) {
    Reading const expected = Support::plainReading( text );
    for( Surveying const surveying : { Surveying::nothing, Surveying::notes, Surveying::digests } )
        EXPECT_EQ( readingOf( text, bufferSize, surveying ), expected )
            << "buffer of " << bufferSize << ", survey " << static_cast<int>( surveying ) << "\n"
            << text;
}

/// Buffers so small that every token is cut somewhere, one that fits a step of the processor, one that holds
/// all.
constexpr std::size_t bufferSizes[] = { 1, 2, 7, 16, 17, 40, 4096 };

TEST( ContextReader, KeepsWhatIsAskedForAndDropsTheRest ) {
    EXPECT_EQ( readingOf( R"({ "tables": [ { "name": "t", "comment": { "name": "c" }, "size": 4 } ],
                                     "symbols": [ 1, { "tables": 2 } ], "handle": null })" )
                   .document,
               R"({"tables":[{"name":"t","size":4}],"handle":null})" );
}

// clang-format off
std::string const texts[] = {
    ""s, " "s, "\"\""s, R"({"":1})"s, "null"s, "[]"s, "{}"s, " [ ] "s, "0"s, "-0"s, "1e5"s, "1E400"s, "-1e-400"s, "00"s, "-"s,
    "1."s, ".5"s, "4294967295"s, "4294967296"s, "-2147483649"s, "18446744073709551616"s,
    R"("a\u0041\ud83d\ude00\n\"")"s, R"("\ud83d")"s, R"("\x")"s, R"("\u12g4")"s, "\"a\tb\""s, "\"open"s,
    "\"\xff\xfe\""s, "tru"s, "nul"s, "falsE"s, "truefalse"s, "1 2"s, "{} x"s, "\0"s, "[1\0 2]"s,
    R"({"x":1E400})"s, R"({"x":"\ud83d"})"s, R"({"x":"\q"})"s, R"({"x":[1,]})"s, R"({"x":{"y":}})"s,
    R"({"x" 1})"s, R"({"x":1 "y":2})"s, R"({"x":tru})"s, R"({"x":nulL,"size":1})"s, R"({"x":01})"s,
    R"({"x":"open)"s, R"({"x":[[[{"y":[]}]]],"name":"n"})"s, R"({"x")"s, R"({"x":)"s, R"({,})"s,
    R"({"name":1,"name":2,"x":3,"name":[]})"s, R"({"na\u006de":1,"na\u006dex":2})"s,
    R"({"name\u0000":1,"":2,"name":3})"s, "{\"x\":\"a\x01\"}"s, R"({"x":-})"s, R"({"x":1.5e+})"s,
    R"({"static_entries":[]})"s, R"({"static_entries":[1,{"name":[2]},[3]],"name":4})"s, R"({"static_entries":[1,}]})"s,
    R"({"static_entries":7,"units":[1,2]})"s, R"([{"static_entries":{}},[[1,2]]])"s, R"([{"static_entries":7},[[1,2]]])"s,
    R"({"static_entries":{"units":[1,2]},"x":[3,4]})"s, R"({"static_entries":[[1,2]],"static_entries":[{"static_entries":[3]}]})"s,
    R"({"static_entries":{"static_entries":[1,2]},"units":[[3],[4]]})"s,
    R"({"x":[1 2]})"s, R"([{"x":1},{"size":{"x":2,"units":[{"y":0},3]}}])"s,
};
// clang-format on

TEST( ContextReader, ReadsEveryKindOfTextAsThePlainReaderDoes ) {
    for( std::string const& text : texts ) {
        for( std::size_t const bufferSize : bufferSizes )
            expectSameReading( text, bufferSize );
    }
}

TEST( ContextReader, AgreesWithThePlainReaderOnNumbers ) {
    for( char const* const number :
         { "1e1", "1E+0000000000000001", "1e-00000000000000000001", "5e-324", "1e-325", "1e308", "1e309",
           "-0", "0.1e100", "123456789012345678901234567890e-20", "0.000000000000000000001e30",
           "1e-999999999", "1e", "1e+", "1.e1", "01" } )
        expectSameReading( std::string( R"({"name":)" ) + number + "}", 7 );
}

TEST( ContextReader, AgreesWithThePlainReaderOnTextsThatAreNearlyJson ) {
    Support::NearlyJson writer( 11 );
    for( unsigned i = 0; i < 1400; ++i )
        expectSameReading( writer.text(), bufferSizes[ i % std::size( bufferSizes ) ] );
}

TEST( ContextReader, CountsTheLevelsOfWhatItDrops ) {
    for( std::string const name : { "x", "tables" } ) {
        auto const nested = [ & ]( std::size_t levels ) {
            return "{\"" + name + "\":" + std::string( levels, '[' ) + std::string( levels, ']' ) + "}";
        };
        EXPECT_EQ( readingOf( nested( 999 ) ).error, rapidjson::kParseErrorNone );
        Reading const tooDeep = readingOf( nested( 1000 ) );
        EXPECT_EQ( tooDeep.error, rapidjson::kParseErrorTermination );
        EXPECT_EQ( tooDeep.offset, name.size() + 4 + 1000 );
    }
}

TEST( MemberNames, AreFoundAndNothingElseIs ) {
    for( std::string_view const name : memberNames ) {
        std::string other( name );
        EXPECT_TRUE( isMemberName( name ) ) << name;
        EXPECT_FALSE( isMemberName( other + "s_" ) );
        EXPECT_FALSE( isMemberName( other + '\0' ) );
        other[ other.size() / 3 ] = '~';
        EXPECT_FALSE( isMemberName( other ) );
    }
    EXPECT_FALSE( isMemberName( "" ) );
}

} // namespace
