#include "zel/KeyIndex.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Zel::keyHash;

/// How many of these hashes come more than once, in their upper halves, which an index looks at.
std::size_t repetitions( std::vector<std::uint64_t> hashes ) {
    for( std::uint64_t& hash : hashes )
        hash >>= 32;
    std::sort( hashes.begin(), hashes.end() );
    return static_cast<std::size_t>( hashes.end() - std::unique( hashes.begin(), hashes.end() ) );
}

TEST( KeyHash, TellsNamesOfTablesApart ) {
    // Of 300,000 random numbers of 32 bits, 10 come again.
    std::vector<std::uint64_t> hashes;
    for( unsigned table = 0; table < 300000; ++table )
        hashes.push_back( keyHash( "pipe.SwitchIngress.block" + std::to_string( table % 17 ) + ".table_" +
                                   std::to_string( table ) ) );
    EXPECT_LT( repetitions( hashes ), 40 );
}

TEST( KeyHash, TellsShortTextsApart ) {
    std::vector<std::uint64_t> hashes{ keyHash( "" ) };
    for( char a = ' '; a < 127; ++a ) {
        hashes.push_back( keyHash( std::string{ a } ) );
        for( char b = ' '; b < 127; ++b ) {
            hashes.push_back( keyHash( std::string{ a, b } ) );
            hashes.push_back( keyHash( std::string{ '\0', a, b } ) );
            hashes.push_back( keyHash( std::string{ a, b, 'x', 'x', 'x', 'x', 'x', 'x', 'x' } ) );
        }
    }
    EXPECT_LT( repetitions( hashes ), 4 );
}

TEST( KeyHash, TakesEveryCharacterOfTextsOfEveryLength ) {
    for( std::size_t size = 1; size <= 100; ++size ) {
        std::string const text( size, 'n' );
        std::vector<std::uint64_t> hashes{ keyHash( text ), keyHash( text + 'n' ),
                                           keyHash( text.substr( 1 ) ) };
        for( std::size_t i = 0; i < size; ++i ) {
            std::string other = text;
            other[ i ] = 'm';
            hashes.push_back( keyHash( other ) );
        }
        EXPECT_EQ( repetitions( hashes ), 0 ) << size;
    }
}

TEST( KeyHash, SpreadsNumbersInEqualSteps ) {
    for( std::uint64_t const step : { 1U, 2U, 16U, 4096U, 1U << 24 } ) {
        std::vector<std::uint64_t> slots( 1024 );
        for( std::uint64_t i = 0; i < 1024; ++i )
            ++slots[ keyHash( i * step ) >> 54 ];
        EXPECT_LE( *std::max_element( slots.begin(), slots.end() ), 8 ) << step;
    }
}

/// An element with a key of its own way to compare.
struct Word {
    std::string text;
};
struct ByText {
    using Type = std::string_view;
    static inline int comparisons = 0;
    static Type of( Word const& word ) { return word.text; }
    static bool is( Word const& word, Type key ) {
        ++comparisons;
        return word.text == key;
    }
};

TEST( KeyIndex, ComparesInTheWayOfTheKey ) {
    std::vector<Word> words{ { "a" }, { "b" }, { "a" } };
    Zel::KeyIndex<std::vector<Word>, ByText> index( words );
    for( Zel::U32 i = 0; i < words.size(); ++i )
        index.add( i );
    ByText::comparisons = 0;
    EXPECT_EQ( index.first( "a" ), 0 );
    EXPECT_EQ( index.first( "b" ), 1 );
    EXPECT_EQ( index.first( "c" ), 3 );
    EXPECT_GE( ByText::comparisons, 2 );
    index.remove( 0 );
    words[ 0 ].text = "c";
    EXPECT_EQ( index.first( "a" ), 2 );
}

} // namespace
