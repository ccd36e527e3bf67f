#pragma once

#include <cstddef>
#include <experimental/simd>

// Searches through characters in steps of as many as the processor compares at once: with SSE2 or NEON 16.
// Scalar is the way of one after the other, for any processor, and for the rest of a range.

namespace ByteScan {

namespace simd = std::experimental;
using Native = simd::simd_abi::native<unsigned char>;
using Scalar = simd::simd_abi::scalar;

/// The first place in a range whose character `isFound` says true of, or the end. `isFound` takes simd values
/// and gives their mask.
template<class Abi, class IsFound>
char const* find( char const* begin, char const* end, IsFound isFound ) {
    using Characters = simd::simd<unsigned char, Abi>;
    auto constexpr step = static_cast<std::ptrdiff_t>( Characters::size() );
    for( ; end - begin >= step; begin += step ) {
        auto const bytes = reinterpret_cast<unsigned char const*>( begin );
        auto const found = isFound( Characters( bytes, simd::element_aligned ) );
        if( any_of( found ) )
            return begin + find_first_set( found );
    }
    if constexpr( step > 1 )
        return find<Scalar>( begin, end, isFound );
    return end;
}

/// The same where such a character comes for sure, and may be looked at with 63 more.
template<class Abi = Native, class IsFound>
char const* findSure( char const* begin, IsFound isFound ) {
    using Characters = simd::simd<unsigned char, Abi>;
    for( ;; begin += Characters::size() ) {
        auto const bytes = reinterpret_cast<unsigned char const*>( begin );
        auto const found = isFound( Characters( bytes, simd::element_aligned ) );
        if( any_of( found ) )
            return begin + find_first_set( found );
    }
}

constexpr unsigned char byte( char c ) { return static_cast<unsigned char>( c ); }

/// Characters that are no white space of JSON.
inline constexpr auto noSpace = []( auto c ) {
    return !( c == byte( ' ' ) || c == byte( '\n' ) || c == byte( '\r' ) || c == byte( '\t' ) );
};
/// Characters that end a run of plain ones in a JSON string: a quote, a backslash, a control character.
inline constexpr auto noPlain = []( auto c ) {
    return c == byte( '"' ) || c == byte( '\\' ) || c < byte( ' ' );
};

} // namespace ByteScan
