// The floor of every load: the bytes of the file, plain or inflated, and nothing done with them.

#include "bench/load/Measure.h"

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

namespace {

char buffer[ 65536 ];

std::size_t readPlain( String const& path ) {
    int const file = open( path.c_str(), O_RDONLY | O_CLOEXEC );
    std::size_t bytes = 0;
    while( auto const size = read( file, buffer, sizeof buffer ) ) {
        if( size < 0 )
            std::exit( 1 );
        bytes += static_cast<std::size_t>( size );
    }
    close( file );
    return bytes;
}

/// By pieces of 4 KiB, as RapidJSON's reader takes them from our stream; zlib reads the file by 64 KiB.
std::size_t readGzip( String const& path ) {
    gzFile const file = gzopen( path.c_str(), "rb" );
    gzbuffer( file, 65536 );
    std::size_t bytes = 0;
    while( auto const size = gzread( file, buffer, 4096 ) ) {
        if( size < 0 )
            std::exit( 1 );
        bytes += static_cast<std::size_t>( size );
    }
    gzclose( file );
    return bytes;
}

} // namespace

int main( int argc, char** argv ) {
    auto const load = []( Input const& input ) {
        return input.isGzip ? readGzip( input.contextFile ) : readPlain( input.contextFile );
    };
    return measure( argc, argv, load, []( std::size_t ) { return Answer(); } );
}
