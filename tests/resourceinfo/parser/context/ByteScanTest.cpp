#include "resourceinfo/parser/context/ByteScan.h"

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

struct NativeSteps {
    static constexpr auto findNoSpace = ByteScan::findNoSpace<ByteScan::Native>;
    static constexpr auto findNoPlain = ByteScan::findNoPlain<ByteScan::Native>;
};
struct OneByOne {
    static constexpr auto findNoSpace = ByteScan::findNoSpace<ByteScan::Scalar>;
    static constexpr auto findNoPlain = ByteScan::findNoPlain<ByteScan::Scalar>;
};

bool isSpace( char c ) { return std::string_view( " \n\r\t" ).find( c ) != std::string_view::npos; }
bool isPlain( char c ) { return c != '"' && c != '\\' && static_cast<unsigned char>( c ) >= 0x20; }

template<class Steps>
struct ByteScanTest : testing::Test {
    /// Both searches over the whole text find what a look at each character finds.
    static void expectFound( std::string const& text ) {
        char const* const begin = text.data();
        char const* const end = begin + text.size();
        EXPECT_EQ( Steps::findNoSpace( begin, end ) - begin,
                   std::find_if_not( begin, end, isSpace ) - begin );
        EXPECT_EQ( Steps::findNoPlain( begin, end ) - begin,
                   std::find_if_not( begin, end, isPlain ) - begin );
    }
};

using AllSteps = testing::Types<NativeSteps, OneByOne>;
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
