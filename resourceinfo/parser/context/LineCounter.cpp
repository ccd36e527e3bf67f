#include "resourceinfo/parser/context/LineCounter.h"

#include "resourceinfo/parser/context/ByteScan.h"

#include <algorithm>

namespace Context {

namespace {

/// Counts in steps of many characters, each place of a step by itself: std::count adds in numbers of 64 bits,
/// which takes as long as half a load.
std::size_t lineEndsIn( std::string_view text ) {
    using Characters = ByteScan::simd::simd<unsigned char, ByteScan::Native>;
    constexpr std::size_t step = Characters::size();
    constexpr std::size_t mostSteps = 255; // that a place can count
    std::size_t lineEnds = 0;
    while( text.size() >= step ) {
        std::size_t const steps = std::min( text.size() / step, mostSteps );
        Characters counts = 0;
        for( std::size_t i = 0; i < steps; ++i ) {
            auto const bytes = reinterpret_cast<unsigned char const*>( text.data() + i * step );
            where( Characters( bytes, ByteScan::simd::element_aligned ) == ByteScan::byte( '\n' ), counts ) +=
                1;
        }
        for( std::size_t place = 0; place < step; ++place )
            lineEnds += counts[ place ];
        text.remove_prefix( steps * step );
    }
    return lineEnds + static_cast<std::size_t>( std::count( text.begin(), text.end(), '\n' ) );
}

} // namespace

void LineCounter::countTo( std::string_view taken ) {
    std::string_view const next = taken.substr( counted_ );
    auto const lines = lineEndsIn( next );
    if( lines > 0 )
        lineStart_ = before_ + counted_ + next.rfind( '\n' ) + 1;
    line_ += static_cast<U32>( lines );
    counted_ = taken.size();
}

} // namespace Context
