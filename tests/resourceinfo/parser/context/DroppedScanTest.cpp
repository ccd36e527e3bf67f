// A dropped value on its own way through the buffer, beside the same value on the reader's ordinary way: the
// same errors at the same places, the same level of nesting, and as many characters taken.

#include "resourceinfo/parser/context/DroppedScan.h"

#include "tests/support/ContextReading.h"
#include "tests/support/NearlyJson.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace Context;

namespace {

using Support::TextFile;

/// Buffers so small that every token is cut somewhere, some that cut some tokens, one that holds all.
constexpr std::size_t bufferSizes[] = { 1, 2, 7, 16, 17, 40, 100, 4096 };

void expectSameReading( std::string const& text, std::size_t bufferSize ) {
    ASSERT_EQ( Support::droppedReading( text, bufferSize ), Support::ordinaryReading( text, bufferSize ) )
        << "buffer of " << bufferSize << "\n"
        << text;
}

/// The reading, which must not depend on the buffer.
Support::DroppedReading readingOf( std::string const& text ) {
    for( std::size_t const bufferSize : bufferSizes )
        expectSameReading( text, bufferSize );
    return Support::droppedReading( text, 4096 );
}

std::string repeated( std::string const& text, int times ) {
    std::string all;
    for( int i = 0; i < times; ++i )
        all += text;
    return all;
}

TEST( DroppedScan, TakesWholeValuesToTheirLastCharacter ) {
    for( std::string const text :
         { "0",
           "-0",
           "12",
           "-123456789012345678",
           "12345678901234567890",
           "1.5",
           "1e5",
           "true",
           "false",
           "null",
           "\"\"",
           "\"text\"",
           "\"\\u0041\\n\"",
           "[]",
           "{}",
           "[ ]",
           "{\n}",
           "[1,2 , 3]",
           R"({"a":1,"b":[{}],"":{"a":"a"}})",
           "{\n  \"a\": [\n    1,\n    2\n  ],\n  \"b\": {\n    \"c\": null\n  }\n}" } ) {
        Support::DroppedReading const whole{ rapidjson::kParseErrorNone, 0, text.size(), 0 };
        EXPECT_EQ( readingOf( text ), whole ) << text;
    }
}

TEST( DroppedScan, ErrorsAreWhereTheReaderHasThem ) {
    struct Row {
        char const* text;
        rapidjson::ParseErrorCode error;
        std::size_t offset;
    };
    for( auto const& [ text, error, offset ] : {
             Row{ "", rapidjson::kParseErrorDocumentEmpty, 0 },
             Row{ "[1 2]", rapidjson::kParseErrorArrayMissCommaOrSquareBracket, 3 },
             Row{ "[1,]", rapidjson::kParseErrorValueInvalid, 3 },
             Row{ "[1}", rapidjson::kParseErrorArrayMissCommaOrSquareBracket, 2 },
             Row{ "[01]", rapidjson::kParseErrorArrayMissCommaOrSquareBracket, 2 },
             Row{ "[-]", rapidjson::kParseErrorValueInvalid, 2 },
             Row{ "[1.]", rapidjson::kParseErrorNumberMissFraction, 3 },
             Row{ "[1e]", rapidjson::kParseErrorNumberMissExponent, 3 },
             Row{ "[1e400]", rapidjson::kParseErrorNumberTooBig, 1 },
             Row{ "[tru]", rapidjson::kParseErrorValueInvalid, 4 },
             Row{ R"({"a":1 "b":2})", rapidjson::kParseErrorObjectMissCommaOrCurlyBracket, 7 },
             Row{ R"({"a":1])", rapidjson::kParseErrorObjectMissCommaOrCurlyBracket, 6 },
             Row{ R"({"a":1,})", rapidjson::kParseErrorObjectMissName, 7 },
             Row{ R"({"a" 1})", rapidjson::kParseErrorObjectMissColon, 5 },
             Row{ R"({"a)", rapidjson::kParseErrorStringMissQuotationMark, 3 },
             Row{ R"({"a":"\q"})", rapidjson::kParseErrorStringEscapeInvalid, 6 },
             Row{ "{\"a\":\"\t\"}", rapidjson::kParseErrorStringEscapeInvalid, 6 },
             Row{ "[] x", rapidjson::kParseErrorDocumentRootNotSingular, 3 },
         } ) {
        auto const reading = readingOf( text );
        EXPECT_EQ( reading.error, error ) << text;
        EXPECT_EQ( reading.offset, offset ) << text;
    }
}

TEST( DroppedScan, NumbersOfAnyLengthAreRead ) {
    for( std::size_t digits = 1; digits < 330; ++digits ) {
        std::string const number( digits, '9' );
        rapidjson::ParseErrorCode const error =
            digits < 309 ? rapidjson::kParseErrorNone : rapidjson::kParseErrorNumberTooBig;
        for( std::string const& text : { "[" + number + "]", "[-" + number + "]" } )
            EXPECT_EQ( readingOf( text ).error, error ) << digits;
        EXPECT_EQ( readingOf( "[0" + number + "]" ).error,
                   rapidjson::kParseErrorArrayMissCommaOrSquareBracket );
    }
}

TEST( DroppedScan, LinesUnlikeThoseBeforeAreReadAllTheSame ) {
    std::string const line = "\n  { \"name\": 1, \"other\": 2 },";
    std::string const start = "[" + repeated( line, 3 );
    for( std::string const next :
         { "\n { \"name\": 1, \"other\": 2 }", "\n   { \"name\": 1, \"other\": 2 }",
           "\n  { \"nama\": 1, \"other\": 2 }", "\n  { \"name\":1, \"other\":2 }",
           "\n  { \"name\":  1, \"other\": 2 }", "\n  { \"name\" : 1, \"other\": 2 }",
           "\n  { \"name\": \n1, \"other\": 2 }", "\n  { \"name\": , \"other\": 2 }", "\n  { \"name\": }",
           "\n  { \"name\": ", "\n  { \"other\": 1, \"name\": 2 }", "\n  { \"name\": 1 }",
           "\n  [ \"name\": 1 ]", "\n  { }", "\n  ", "\n", "", "\n  }" } ) {
        for( char const* const end : { "\n]", "]", "\n}", "" } )
            readingOf( start + next + end );
    }
}

TEST( DroppedScan, LinesOfAnyWidthAreRead ) {
    for( std::size_t spaces = 0; spaces < 330; spaces += spaces < 130 ? 1 : 7 ) {
        std::string const indentation = "\n" + std::string( spaces, ' ' );
        std::string const name( spaces, 'n' );
        std::string const object = "{" + indentation + "\"" + name + "\": 1" + indentation + "}";
        std::string const text = "[" + repeated( indentation + object + ",", 3 ) + indentation + object + "]";
        EXPECT_EQ( readingOf( text ).taken, text.size() ) << spaces;
        EXPECT_EQ( readingOf( text.substr( 0, text.size() - 1 ) ).error,
                   rapidjson::kParseErrorArrayMissCommaOrSquareBracket );
    }
}

/// The end of a long name, which alone is in the buffer when the value is reached, is no name.
TEST( DroppedScan, NamesCutByTheBufferAreNotTakenForTheirEnds ) {
    for( std::size_t bufferSize = 8; bufferSize <= 40; ++bufferSize ) {
        for( std::size_t length = bufferSize; length < bufferSize + 20; length += 3 ) {
            std::string const member = '"' + std::string( length, 'n' ) + "\": 1";
            for( std::size_t cut = 0; cut < 25; ++cut )
                expectSameReading( "[{" + member + "},{" + member.substr( cut ) + "}]", bufferSize );
        }
    }
}

TEST( DroppedScan, LevelsAreCountedAndLimited ) {
    for( auto const& [ open, close ] : { std::pair( "[", "]" ), std::pair( "{\"a\":", "}" ) } ) {
        std::string const deepest = repeated( open, 1000 ) + "1" + repeated( close, 1000 );
        EXPECT_EQ( readingOf( deepest ).taken, deepest.size() );
        auto const reading = readingOf( repeated( open, 1001 ) + "1" + repeated( close, 1001 ) );
        EXPECT_EQ( reading.error, rapidjson::kParseErrorTermination );
        EXPECT_EQ( reading.offset, 1000 * std::string( open ).size() + 1 );
        EXPECT_EQ( readingOf( repeated( open, 500 ) + "1" + repeated( close, 499 ) ).level, 1 );
    }
}

TEST( DroppedScan, NulInTheFileEndsTheText ) {
    for( std::string const text : { "[1,2", "{\"a\"", "{\"a\":", "\"open", "[12", "[tru", "[\n " } )
        EXPECT_EQ( readingOf( text + std::string( "\0,3]", 4 ) ), readingOf( text ) ) << text;
}

/// Many texts; their number is given by the build.
class DroppedScanTexts : public testing::TestWithParam<unsigned> {};

TEST_P( DroppedScanTexts, AgreesWithTheOrdinaryWay ) {
    char const* const more = std::getenv( "BFRI_TEXTS" );
    unsigned const texts = more ? static_cast<unsigned>( std::stoul( more ) ) : BFRI_TEXTS;
    Support::NearlyJson writer( GetParam() );
    unsigned valid = 0;
    for( unsigned i = 0; i < texts && !HasFatalFailure(); ++i ) {
        std::string const text = writer.text();
        std::size_t const bufferSize = bufferSizes[ i % std::size( bufferSizes ) ];
        expectSameReading( text, bufferSize );
        valid += Support::droppedReading( text, 4096 ).error == rapidjson::kParseErrorNone;
        if( i % 8 < 2 ) {
            TextFile file( text );
            ASSERT_EQ( Support::contextReading( file, bufferSize ), Support::plainReading( text ) ) << text;
        }
    }
    EXPECT_GT( valid, texts / 4 );
    EXPECT_LT( valid, texts * 3 / 4 );
}

INSTANTIATE_TEST_SUITE_P( Seeds, DroppedScanTexts, testing::Range( 1U, 11U ) );

} // namespace
