#include "resourceinfo/parser/context/PruningFilter.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Memory.h"
#include "tests/support/Assertions.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Strings without end, and files that grow without end when they are unpacked: memory stays that of the model
// and of the longest string allowed.

namespace BfResourceInfo {
namespace {

using Context::PruningFilter;

constexpr std::size_t longest = 16 << 20;
constexpr std::size_t megabyte = 1 << 20;

/// A valid file without anything in it, in pieces that something is put between.
String const start = R"({"tables":[],"learn_quanta":[],"phv_allocation":[],"dynamic_hash_calculations":[],)"
                     "\n ";

class LongTokens : public testing::Test {
  protected:
    String contextFile() const { return folder_.path( "context.json" ); }
    /// Writes the file, compressed, and forgets the text.
    String conf( String const& text ) const {
        folder_.writeGzip( "context.json", text );
        return folder_.conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    }
    /// The same, not compressed.
    String plainConf( String const& text ) const {
        folder_.write( "context.json", text );
        return folder_.conf( Support::DeviceBuilder().pipeline( "context.json", { 0 } ) );
    }
    /// Where the file fails to be JSON, and why; the memory that its load takes at most.
    void expectFailure( String const& conf, String const& problem, std::size_t memory ) const {
        std::size_t const before = Memory::bytes();
        Memory::peakIsNow();
        auto const failure = Support::failureOf( [ & ] { bfResourceInfoIntfFactory( conf ); } );
        EXPECT_LT( Memory::peak() - before, memory );
        EXPECT_EQ( failure.condition, "IsObject()" );
        EXPECT_EQ( failure.position, "context file " + contextFile() + ": " + problem );
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

/// Values of more than 128 MiB, once they are read.
String zeros() {
    String text = "[";
    for( std::size_t i = 0; i < 9 * megabyte; ++i )
        text += "0,";
    return text + "0]}";
}

TEST_F( LongTokens, ValuesWithoutEndAreRefusedWhereTheyAreKept ) {
    expectLoad( conf( start + R"("comment":)" + zeros() ), megabyte );
    String const bad = conf( start + R"("name":)" + zeros() );
    std::uintmax_t const bound = 128 * megabyte + 64 * std::filesystem::file_size( contextFile() );
    std::size_t const before = Memory::bytes();
    Memory::peakIsNow();
    auto const failure = Support::failureOf( [ & ] { bfResourceInfoIntfFactory( bad ); } );
    EXPECT_THAT( failure.position, testing::EndsWith( ": More than " + std::to_string( bound / megabyte ) +
                                                      " MiB of values in members that are read." ) );
    EXPECT_LT( Memory::peak() - before, 512 * megabyte );
}

TEST_F( LongTokens, TheSameValuesAreKeptOfAFileThatIsNotPacked ) {
    expectLoad( plainConf( start + R"("name":)" + zeros() ), 512 * megabyte );
}

TEST( KeptValues, GrowWithTheFileOnItsDisk ) {
    static_assert( PruningFilter::mostKeptOf( 0 ) == std::size_t{ 128 } << 20 );
    static_assert( PruningFilter::mostKeptOf( 1000 ) == PruningFilter::mostKeptOf( 0 ) + 64000 );
    static_assert( PruningFilter::mostKeptOf( std::uint64_t{ 1 } << 40 ) > std::size_t{ 1 } << 46 );
}

/// How many values an array takes before the filter refuses one.
template<class Add>
int taken( std::size_t mostKept, Add add ) {
    Context::JsonDocument document;
    PruningFilter filter( document, mostKept );
    int count = 0;
    auto fill = [ & ]( Context::JsonDocument& ) {
        filter.StartArray();
        while( count < 1000 && add( filter ) )
            ++count;
        return filter.EndArray( static_cast<unsigned>( count ) );
    };
    document.Populate( fill );
    return count;
}

TEST( KeptValues, EndAtTheBound ) {
    constexpr std::size_t value = sizeof( Context::JsonValue );
    auto const null = []( PruningFilter& filter ) { return filter.Null(); };
    auto const text = []( PruningFilter& filter ) { return filter.String( "0123456789", 10, true ); };
    EXPECT_EQ( taken( 11 * value, null ), 10 ) << "the array is one";
    EXPECT_EQ( taken( 12 * value - 1, null ), 10 );
    EXPECT_EQ( taken( 12 * value, null ), 11 );
    EXPECT_EQ( taken( value + 3 * ( value + 10 ), text ), 3 );
    EXPECT_EQ( taken( value + 3 * ( value + 10 ) - 1, text ), 2 );
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
