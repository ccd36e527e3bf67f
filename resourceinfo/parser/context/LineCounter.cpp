#include "resourceinfo/parser/context/LineCounter.h"

#include <algorithm>

namespace Context {

void LineCounter::countTo( std::string_view taken ) {
    std::string_view const next = taken.substr( counted_ );
    auto const lines = std::count( next.begin(), next.end(), '\n' );
    if( lines > 0 )
        lineStart_ = before_ + counted_ + next.rfind( '\n' ) + 1;
    line_ += static_cast<U32>( lines );
    counted_ = taken.size();
}

} // namespace Context
