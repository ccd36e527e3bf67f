// The floor of a gzip load with the other library: ISA-L inflates one member by pieces of 4 KiB, and nothing
// is done with them.

#include "bench/load/Measure.h"

#include <fcntl.h>
#include <isa-l/igzip_lib.h>
#include <memory>
#include <unistd.h>

namespace {

unsigned char input[ 65536 ];
unsigned char output[ 4096 ];

std::size_t inflateFile( String const& path ) {
    int const file = open( path.c_str(), O_RDONLY | O_CLOEXEC );
    auto const state = std::make_unique<inflate_state>(); // zeros, which the inflater counts on
    isal_inflate_init( state.get() );
    state->crc_flag = ISAL_GZIP;
    std::size_t bytes = 0;
    while( state->block_state != ISAL_BLOCK_FINISH ) {
        if( state->avail_in == 0 ) {
            auto const size = read( file, input, sizeof input );
            if( size <= 0 )
                std::exit( 1 );
            state->next_in = input;
            state->avail_in = static_cast<std::uint32_t>( size );
        }
        state->next_out = output;
        state->avail_out = sizeof output;
        if( isal_inflate( state.get() ) != ISAL_DECOMP_OK )
            std::exit( 1 );
        bytes += sizeof output - state->avail_out;
    }
    close( file );
    return bytes;
}

} // namespace

int main( int argc, char** argv ) {
    auto const load = []( Input const& given ) { return inflateFile( given.contextFile ); };
    return measure( argc, argv, load, []( std::size_t ) { return Answer(); } );
}
