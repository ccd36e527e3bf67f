// Runs a fuzz target over the files given, or over those in the folders given; and, where the target has a
// mutator of its own, over some mutants of each. An empty corpus is a failure: it would prove nothing.

#include "fuzz/Target.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

#pragma weak LLVMFuzzerCustomMutator

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr unsigned mutantsOfEach = 32;

void run( Bytes const& bytes ) { LLVMFuzzerTestOneInput( bytes.data(), bytes.size() ); }

void replay( std::filesystem::path const& path ) {
    std::ifstream file( path, std::ios::binary );
    Bytes const bytes( std::istreambuf_iterator<char>( file ), {} );
    run( bytes );
    if( !LLVMFuzzerCustomMutator )
        return;
    for( unsigned seed = 0; seed < mutantsOfEach; ++seed ) {
        Bytes mutant = bytes;
        mutant.resize( std::max<std::size_t>( 4096, 2 * bytes.size() ) );
        mutant.resize( LLVMFuzzerCustomMutator( mutant.data(), bytes.size(), mutant.size(), seed ) );
        run( mutant );
    }
}

} // namespace

/// Changes one byte, another one at each call.
std::size_t LLVMFuzzerMutate( std::uint8_t* data, std::size_t size, std::size_t maxSize ) {
    static std::size_t calls = 0;
    ++calls;
    if( size == 0 && maxSize > 0 )
        data[ size++ ] = 0;
    if( size > 0 )
        data[ calls * 7919 % size ] ^= static_cast<std::uint8_t>( 1U << ( calls % 8 ) );
    return size;
}

int main( int argc, char** argv ) {
    unsigned count = 0;
    for( int i = 1; i < argc; ++i ) {
        if( std::filesystem::is_regular_file( argv[ i ] ) ) {
            replay( argv[ i ] );
            ++count;
            continue;
        }
        for( auto const& entry : std::filesystem::directory_iterator( argv[ i ] ) ) {
            replay( entry.path() );
            ++count;
        }
    }
    std::printf( "%u inputs replayed\n", count );
    return count > 0 ? 0 : 1;
}
