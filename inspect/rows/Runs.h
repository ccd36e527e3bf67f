#pragma once

#include <algorithm>
#include <span>

namespace Bfri {

/// Hands the runs of neighbours with equal keys to `step`, each as a span.
template<class Elements, class KeyOf, class Step>
void eachRun( Elements const& elements, KeyOf const& keyOf, Step const& step ) {
    for( auto first = elements.begin(); first != elements.end(); ) {
        auto const last = std::find_if(
            first, elements.end(), [ & ]( auto const& one ) { return keyOf( one ) != keyOf( *first ); } );
        step( std::span( first, last ) );
        first = last;
    }
}

} // namespace Bfri
