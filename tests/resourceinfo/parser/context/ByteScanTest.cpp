#include "resourceinfo/parser/context/ByteScan.h"

#include "resourceinfo/parser/context/DroppedScan.h"

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using ByteScan::noPlain;
using ByteScan::noSpace;

bool isSpace( char c ) { return std::string_view( " \n\r\t" ).find( c ) != std::string_view::npos; }
bool isPlain( char c ) { return c != '"' && c != '\\' && static_cast<unsigned char>( c ) >= 0x20; }

template<class Abi>
struct ByteScanTest : testing::Test {
    /// All searches over the whole text find what a look at each character finds.
    static void expectFound( std::string const& text ) {
        expectFoundBefore( text.data() + text.size(), text );
        // Where a NUL comes, and some more characters, the end need not be given.
        std::string const padded = text + std::string( 65, '\0' );
        char const* const begin = padded.data();
        char const* const space = std::find_if_not( begin, begin + padded.size(), isSpace );
        char const* const plain = std::find_if_not( begin, begin + padded.size(), isPlain );
        EXPECT_EQ( ByteScan::findSure<Abi>( begin, noSpace ) - begin, space - begin );
        EXPECT_EQ( ByteScan::findSure<Abi>( begin, noPlain ) - begin, plain - begin );
        std::string const string = '"' + padded;
        char const* const end = Context::PlainToken::afterString<Abi>( string.data() );
        EXPECT_EQ( end, *plain == '"' ? string.data() + ( plain - begin ) + 2 : nullptr );
    }

  private:
    static void expectFoundBefore( char const* end, std::string const& text ) {
        char const* const begin = text.data();
        EXPECT_EQ( ByteScan::find<Abi>( begin, end, noSpace ) - begin,
                   std::find_if_not( begin, end, isSpace ) - begin );
        EXPECT_EQ( ByteScan::find<Abi>( begin, end, noPlain ) - begin,
                   std::find_if_not( begin, end, isPlain ) - begin );
    }
};

using AllSteps = testing::Types<ByteScan::Native, ByteScan::Scalar>;
TYPED_TEST_SUITE( ByteScanTest, AllSteps, );

TYPED_TEST( ByteScanTest, StopsAtEveryCharacterThatItShouldWhereverItStands ) {
    for( std::size_t length = 1; length <= 40; ++length ) {
        for( int character = 0; character < 256; ++character ) {
            std::string spaces( length, ' ' );
            spaces[ length / 2 ] = static_cast<char>( character );
            this->expectFound( spaces );
            std::string letters( length, 'x' );
            letters[ length - 1 ] = static_cast<char>( character );
            this->expectFound( letters );
        }
    }
}

TYPED_TEST( ByteScanTest, FindsNothingInRunsOfAnyLength ) {
    for( std::size_t length = 0; length <= 100; ++length ) {
        this->expectFound( std::string( length, '\t' ) );
        this->expectFound( std::string( length, '\x7f' ) );
        this->expectFound( std::string( length, '\xff' ) );
    }
}

TYPED_TEST( ByteScanTest, AgreesWithALookAtEachCharacter ) {
    std::mt19937 random( 7 );
    std::string const spaces = "    \n\r\t\t";
    for( int i = 0; i < 20000; ++i ) {
        std::string text( random() % 70, ' ' );
        for( char& c : text )
            c = random() % 16 ? spaces[ random() % spaces.size() ] : static_cast<char>( random() );
        this->expectFound( text );
        for( char& c : text )
            c = random() % 16 ? 'a' : static_cast<char>( random() );
        this->expectFound( text );
    }
}

} // namespace
