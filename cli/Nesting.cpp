#include "cli/Nesting.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <experimental/simd>

namespace Bfri {

namespace {

namespace simd = std::experimental;
using Characters = simd::native_simd<unsigned char>;

/// As many characters as a mask has bits.
constexpr std::ptrdiff_t blockSize = 64;

constexpr unsigned char byte( char c ) { return static_cast<unsigned char>( c ); }

/// Of brackets and braces the braces: they differ in one bit.
template<class Character>
Character braceOf( Character c ) {
    return c | byte( ' ' );
}

/// The places in a block of quotes, and of brackets, braces, backslashes and bars.
struct Marks {
    std::uint64_t quotes = 0;
    std::uint64_t others = 0;
};

Marks marksIn( char const* block ) {
    Marks marks;
    for( std::size_t i = 0; i < blockSize; i += Characters::size() ) {
        Characters const c( reinterpret_cast<unsigned char const*>( block ) + i, simd::element_aligned );
        Characters const brace = braceOf( c );
        auto const others = brace - byte( '{' ) <= byte( '}' - '{' ); // with what stands between: \ and |
        marks.quotes |= std::uint64_t( ( c == byte( '"' ) ).__to_bitset().to_ulong() ) << i;
        marks.others |= std::uint64_t( others.__to_bitset().to_ulong() ) << i;
    }
    return marks;
}

/// Of each bit, whether it and those below are an odd number of ones: what stands in strings, by its quotes.
std::uint64_t oddUpTo( std::uint64_t bits ) {
    for( int step = 1; step < blockSize; step *= 2 )
        bits ^= bits << step;
    return bits;
}

} // namespace

/// False, and nothing done, for what only goes one by one: escapes, and the end of the container.
bool Nesting::skipBlock( char const* at ) {
    Marks const marks = marksIn( at );
    if( marks.others == 0 ) {
        inString_ ^= ( std::popcount( marks.quotes ) & 1 ) == 1;
        return true;
    }
    std::uint64_t const inStrings = oddUpTo( marks.quotes ) ^ ( inString_ ? ~std::uint64_t( 0 ) : 0 );
    std::size_t depth = depth_;
    for( std::uint64_t rest = marks.others; rest != 0; rest &= rest - 1 ) {
        auto const place = std::countr_zero( rest );
        if( at[ place ] == '\\' )
            return false;
        if( ( inStrings >> place & 1 ) || at[ place ] == '|' )
            continue;
        depth += braceOf( byte( at[ place ] ) ) == byte( '{' ) ? 1 : std::size_t( -1 );
        if( depth == 0 )
            return false;
    }
    depth_ = depth;
    inString_ = inStrings >> ( blockSize - 1 );
    return true;
}

void Nesting::skipOne( char c ) {
    if( escaped_ )
        escaped_ = false;
    else if( inString_ && c == '\\' )
        escaped_ = true;
    else if( c == '"' )
        inString_ = !inString_;
    else if( !inString_ && braceOf( byte( c ) ) == byte( '{' ) )
        ++depth_;
    else if( !inString_ && braceOf( byte( c ) ) == byte( '}' ) )
        --depth_;
}

char const* Nesting::skip( char const* at, char const* end ) {
    while( at != end && depth_ > 0 ) {
        if( end - at >= blockSize && !escaped_ && skipBlock( at ) ) {
            at += blockSize;
            continue;
        }
        char const* const stop = at + std::min( end - at, blockSize );
        while( at != stop && depth_ > 0 )
            skipOne( *at++ );
    }
    return at;
}

} // namespace Bfri
