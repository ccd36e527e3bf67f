// Any bytes as a text for the reader of context files, in buffers of several sizes. Verdict, place and
// document must be those of RapidJSON's own reader, without the members that no pass reads.

#include "fuzz/JsonMutator.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/MemberNames.h"
#include "resourceinfo/parser/context/PruningFilter.h"
#include "tests/support/ContextReading.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <string>

using namespace Context;
using Support::Surveying;

namespace {

bool nestsDeep( std::string const& text ) {
    auto const opens = []( char c ) { return c == '[' || c == '{'; };
    return std::count_if( text.begin(), text.end(), opens ) > static_cast<int>( Depth::maximum );
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    std::string const text( reinterpret_cast<char const*>( data ), size );
    if( nestsDeep( text ) )
        return 0; // there they differ
    Support::Reading const expected = Support::plainReading( text );
    for( std::size_t const bufferSize : { std::size_t{ 1 }, 2 + size % 61, std::size_t{ 4096 } } ) {
        for( Surveying const surveying : { Surveying::nothing, Surveying::notes, Surveying::digests } ) {
            Support::TextFile file( text );
            require( Support::contextReading( file, bufferSize, surveying ) == expected,
                     "not as the plain reader" );
        }
    }
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    // Mostly bytewise: it is the syntax that matters here.
    return seed % 8 == 0 ? JsonMutator( memberNames ).mutate( data, size, maxSize, seed / 8 )
                         : LLVMFuzzerMutate( data, size, maxSize );
}
