#include "inspect/load/Nesting.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <experimental/simd>

namespace Bfri {

namespace {

namespace simd = std::experimental;
using Characters = simd::native_simd<unsigned char>;
using Mask = Characters::mask_type;

/// As many characters as a number has bits.
constexpr std::ptrdiff_t blockSize = 64;
constexpr std::size_t parts = blockSize / Characters::size();

constexpr unsigned char byte( char c ) { return static_cast<unsigned char>( c ); }

/// Of brackets and braces the braces: they differ in one bit.
template<class Character>
Character braceOf( Character c ) {
    return c | byte( ' ' );
}

bool isOdd( Mask const& mask ) { return popcount( mask ) % 2 == 1; }

/// The first character's flag is the lowest bit.
std::uint64_t bitsOf( Mask const ( &masks )[ parts ] ) {
    constexpr bool lowFirst = std::endian::native == std::endian::little;
    constexpr std::uint64_t toTop = lowFirst ? 0x0102040810204080 : 0x8040201008040201;
    bool flags[ blockSize ];
    for( std::size_t i = 0; i < parts; ++i )
        masks[ i ].copy_to( flags + i * Characters::size(), simd::element_aligned );
    std::uint64_t bits = 0;
    for( int i = 0; i < blockSize; i += 8 ) {
        std::uint64_t eight;
        std::memcpy( &eight, flags + i, sizeof eight );
        bits |= ( eight * toTop >> 56 ) << i; // the product's highest byte has the eight flags
    }
    return bits;
}

/// Of each bit, whether it and those below are an odd number of ones: what stands in strings, by its quotes.
std::uint64_t oddUpTo( std::uint64_t bits ) {
    for( int step = 1; step < blockSize; step *= 2 )
        bits ^= bits << step;
    return bits;
}

} // namespace

/// The places in a block of quotes, and of brackets, braces, backslashes and bars.
struct Nesting::Marks {
    explicit Marks( char const* block ) {
        for( std::size_t i = 0; i < parts; ++i ) {
            auto const* const at = reinterpret_cast<unsigned char const*>( block ) + i * Characters::size();
            Characters const c( at, simd::element_aligned );
            quotes[ i ] = c == byte( '"' );
            others[ i ] =
                braceOf( c ) - byte( '{' ) <= byte( '}' - '{' ); // with what stands between: \ and |
            oddQuotes = oddQuotes ^ quotes[ i ];
            anyOther = anyOther || others[ i ];
        }
    }

    Mask quotes[ parts ];
    Mask others[ parts ];
    Mask oddQuotes{ false }; // of the parts together
    Mask anyOther{ false };
};

/// The place behind a backslash or the container's end, or behind the block.
char const* Nesting::skipBlock( char const* at, Marks const& marks ) {
    std::uint64_t const inStrings =
        oddUpTo( bitsOf( marks.quotes ) ) ^ ( inString_ ? ~std::uint64_t( 0 ) : 0 );
    for( std::uint64_t rest = bitsOf( marks.others ); rest != 0; rest &= rest - 1 ) {
        int const place = std::countr_zero( rest );
        char const c = at[ place ];
        inString_ = inStrings >> place & 1;
        escaped_ = inString_ && c == '\\';
        if( escaped_ )
            return at + place + 1;
        if( inString_ || c == '|' || c == '\\' )
            continue;
        depth_ += braceOf( byte( c ) ) == byte( '{' ) ? 1 : std::size_t( -1 );
        if( depth_ == 0 )
            return at + place + 1;
    }
    inString_ = inStrings >> ( blockSize - 1 );
    return at + blockSize;
}

/// Whole blocks, up to the one that ends behind a backslash or the container's end.
char const* Nesting::skipBlocks( char const* at, char const* end ) {
    Mask oddQuotes( false ); // of the blocks that have nothing else
    while( end - at >= blockSize && depth_ > 0 && !escaped_ ) {
        Marks const marks( at );
        oddQuotes = oddQuotes ^ marks.oddQuotes;
        at += blockSize;
        if( any_of( marks.anyOther ) ) {
            inString_ ^= isOdd( oddQuotes ^ marks.oddQuotes );
            oddQuotes = Mask( false );
            at = skipBlock( at - blockSize, marks );
        }
    }
    inString_ ^= isOdd( oddQuotes );
    return at;
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
        if( end - at >= blockSize && !escaped_ )
            at = skipBlocks( at, end );
        else
            skipOne( *at++ );
    }
    return at;
}

} // namespace Bfri
