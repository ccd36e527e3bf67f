#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Memory.h"
#include "tests/support/Assertions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Strings without end, and files that grow without end when they are unpacked: memory stays that of the model
// and of the longest string allowed.

namespace BfResourceInfo {
namespace {

constexpr std::size_t longest = 16 << 20;
constexpr std::size_t megabyte = 1 << 20;

/// A valid file without anything in it, in pieces that something is put between.
String const start = R"({"tables":[],"learn_quanta":[],"phv_allocation":[],"dynamic_hash_calculations":[],)"
                     "\n ";

class LongTokens : public testing::Test {
  protected:
    /// Writes the file, compressed, and forgets the text.
    String conf( String const& text ) const {
        folder_.writeGzip( "context.json", text );
        return folder_.conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    }
    /// Where the file fails to be JSON, and why; the memory that its load takes at most.
    void expectFailure( String const& conf, String const& problem, std::size_t memory ) const {
        std::size_t const before = Memory::bytes();
        Memory::peakIsNow();
        auto const failure = Support::failureOf( [ & ] { bfResourceInfoIntfFactory( conf ); } );
        EXPECT_LT( Memory::peak() - before, memory );
        EXPECT_EQ( failure.condition, "IsObject()" );
        EXPECT_EQ( failure.position, "context file " + folder_.path( "context.json" ) + ": " + problem );
    }
    void expectTooLong( String const& text, char const* place, std::size_t memory ) const {
        expectFailure( conf( text ),
                       String( place ) +
                           ": Expected a string or number of at most 16 MiB, found a longer one.",
                       memory );
    }
    void expectLoad( String const& conf, std::size_t memory ) const {
        Support::ThrowingAssertions const scope;
        std::size_t const before = Memory::bytes();
        Memory::peakIsNow();
        EXPECT_EQ( bfResourceInfoIntfFactory( conf )->bfTablesNum(), 0 );
        EXPECT_LT( Memory::peak() - before, memory );
    }

  private:
    SwitchFolder folder_;
};

String letters( std::size_t count ) { return String( count, 'x' ); }

TEST_F( LongTokens, LongestStringsAreReadWhetherTheyAreKeptOrNot ) {
    expectLoad( conf( start + R"("name":")" + letters( longest - 2 ) + R"(\u0041\n"})" ), 48 * megabyte );
    expectLoad( conf( start + R"("comment":")" + letters( longest - 2 ) + R"(\u0041\n"})" ), megabyte );
}

TEST_F( LongTokens, LongerStringsEndTheReadingWhereTheyStart ) {
    expectTooLong( start + R"("name":")" + letters( longest - 1 ) + R"(\u00e9"})", "line 2, column 9",
                   48 * megabyte );
    expectTooLong( start + R"("comment":[ [ ")" + letters( longest - 1 ) + R"(\n\n"]]})", "line 2, column 16",
                   megabyte );
}

TEST_F( LongTokens, LongerNamesEndTheReadingWhereTheyStart ) {
    expectTooLong( start + '"' + letters( longest + 1 ) + R"(":1})", "line 2, column 2", 48 * megabyte );
    expectTooLong( start + R"("comment":{ ")" + letters( longest + 1 ) + R"(":1}})", "line 2, column 14",
                   megabyte );
}

TEST_F( LongTokens, LongerNumbersEndTheReadingWhereTheyStart ) {
    for( char const* const number : { "0.", "1e-", "1.5e-1" } )
        expectTooLong( start + R"("comment":)" + number + String( longest, '0' ) + "}", "line 2, column 12",
                       megabyte );
}

TEST_F( LongTokens, ExponentsOfAnyLengthAreRead ) {
    for( char const* const member : { "name", "comment" } ) {
        for( char const* const number : { "0.0000000001e-2147483639", "1e-99999999999999999999",
                                          "-1.5e-2147483648", "0e0000000000000000001" } )
            expectLoad( conf( start + '"' + member + "\":" + number + '}' ), megabyte );
        expectFailure( conf( start + '"' + member + "\":1e99999999999999999999}" ),
                       member == String( "name" )
                           ? "line 2, column 9: Number too big to be stored in double."
                           : "line 2, column 12: Number too big to be stored in double.",
                       megabyte );
    }
}

TEST_F( LongTokens, ValuesWithoutEndAreRefusedWhereTheyAreKept ) {
    String zeros = "[";
    for( std::size_t i = 0; i < 9 * megabyte; ++i )
        zeros += "0,";
    zeros += "0]}";
    expectLoad( conf( start + R"("comment":)" + zeros ), megabyte );
    Support::ThrowingAssertions const scope;
    std::size_t const before = Memory::bytes();
    Memory::peakIsNow();
    auto const failure =
        Support::failureOf( [ & ] { bfResourceInfoIntfFactory( conf( start + R"("name":)" + zeros ) ); } );
    EXPECT_THAT( failure.position,
                 testing::EndsWith( ": More than 128 MiB of values in members that are read." ) );
    EXPECT_LT( Memory::peak() - before, 512 * megabyte );
}

TEST_F( LongTokens, StringsThatAreLongTogetherAreNotLong ) {
    String text = start + R"("comment":[)";
    for( int i = 0; i < 17; ++i )
        text += '"' + letters( megabyte ) + "\",";
    expectLoad( conf( text + "1]}" ), megabyte );
}

TEST_F( LongTokens, WhiteSpaceWithoutEndTakesNoMemory ) {
    expectLoad( conf( start + String( 8 * megabyte, ' ' ) + R"("comment":1})" ), megabyte );
    expectFailure( conf( start + String( 8 * megabyte, '\n' ) + "}" ),
                   "line 8388610, column 1: Missing a name for object member.", megabyte );
}

TEST_F( LongTokens, NestingWithoutEndTakesWhatItsLimitAllows ) {
    for( char const* member : { "name", "note" } ) {
        String const front = start + '"' + member + "\":";
        expectFailure( conf( front + String( 8 * megabyte, '[' ) ),
                       "line 2, column 1009: More than 1000 levels of nesting.", megabyte );
        String objects = front;
        for( std::size_t i = 0; i < megabyte; ++i )
            objects += R"({"a":)";
        expectFailure( conf( objects ), "line 2, column 5005: More than 1000 levels of nesting.", megabyte );
    }
}

} // namespace
} // namespace BfResourceInfo
