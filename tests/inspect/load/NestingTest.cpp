#include "inspect/load/Nesting.h"
#include "vessa/Types.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

using Bfri::Nesting;
using Vessa::String;

/// The place behind a container's end, from behind its first bracket on; none where it stays open.
std::size_t endByHand( String const& text ) {
    std::size_t depth = 1;
    bool inString = false;
    for( std::size_t i = 0; i < text.size(); ++i ) {
        char const c = text[ i ];
        if( inString && c == '\\' )
            ++i;
        else if( c == '"' )
            inString = !inString;
        else if( !inString && ( c == '[' || c == '{' ) )
            ++depth;
        else if( !inString && ( c == ']' || c == '}' ) && --depth == 0 )
            return i + 1;
    }
    return String::npos;
}

class RandomNesting : public testing::Test {
  protected:
    std::size_t below( std::size_t bound ) { return random_() % bound; }

    /// Mostly one filler between few characters that count, so that blocks with and without them come.
    String anyText() {
        static constexpr char marks[] = { '"', '\\', '[', ']', '{', '}', '|', '\0', '\xdb', '\xff' };
        std::size_t const between = 1 + below( 100 );
        String text( below( 600 ), 'x' );
        for( char& c : text ) {
            if( below( between ) == 0 )
                c = marks[ below( std::size( marks ) ) ];
        }
        return text;
    }
    /// The same as endByHand, in pieces of any length.
    std::size_t endInPieces( String const& text ) {
        Nesting nesting;
        std::size_t taken = 0;
        while( taken < text.size() && nesting.isOpen() ) {
            std::size_t const piece = std::min( 1 + below( 300 ), text.size() - taken );
            char const* const from = text.data() + taken;
            taken += static_cast<std::size_t>( nesting.skip( from, from + piece ) - from );
        }
        return nesting.isOpen() ? String::npos : taken;
    }

  private:
    std::mt19937 random_;
};

TEST_F( RandomNesting, EndsWhereAWalkByHandDoes ) {
    std::size_t closed = 0;
    for( int i = 0; i < 20'000; ++i ) {
        String const text = anyText();
        std::size_t const expected = endByHand( text );
        ASSERT_EQ( endInPieces( text ), expected ) << testing::PrintToString( text );
        closed += expected != String::npos;
    }
    EXPECT_GT( closed, 5'000U ); // else the texts say little
}

} // namespace
