#include "bench/load/Measure.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>

#include <malloc.h>

namespace {

double secondsOf( clockid_t clock ) {
    timespec time{};
    clock_gettime( clock, &time );
    return static_cast<double>( time.tv_sec ) + static_cast<double>( time.tv_nsec ) * 1e-9;
}

/// Bytes of a line of the process's status: "VmRSS:" or "VmHWM:".
std::size_t statusBytes( String const& name ) {
    std::ifstream status( "/proc/self/status" );
    String word;
    while( status >> word && word != name )
        ;
    std::size_t kilobytes = 0;
    status >> kilobytes;
    return kilobytes * 1024;
}

std::size_t heapInUse() {
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace

Input inputOf( int argc, char** argv ) {
    if( argc != 3 ) {
        std::cerr << "usage: " << argv[ 0 ] << " SWITCH_CONF CONTEXT_FILE\n";
        std::exit( 2 );
    }
    String const contextFile = argv[ 2 ];
    if( !std::ifstream( contextFile ) ) {
        std::cerr << argv[ 0 ] << ": can't open " << contextFile << '\n';
        std::exit( 2 );
    }
    return { argv[ 1 ], contextFile, contextFile.ends_with( ".gz" ) };
}

Measurement::Measurement()
    : resident_( statusBytes( "VmRSS:" ) ),
      inUse_( heapInUse() ),
      wall_( secondsOf( CLOCK_MONOTONIC ) ),
      processor_( secondsOf( CLOCK_PROCESS_CPUTIME_ID ) ) {}

void Measurement::end() {
    wall_ = secondsOf( CLOCK_MONOTONIC ) - wall_;
    processor_ = secondsOf( CLOCK_PROCESS_CPUTIME_ID ) - processor_;
    peak_ = statusBytes( "VmHWM:" ) - resident_;
    model_ = heapInUse() - inUse_;
}

void Measurement::print( Answer const& answer ) const {
    std::cout << "{ \"wall\": " << wall_ << ", \"processor\": " << processor_ << ", \"peak\": " << peak_
              << ", \"model\": " << model_ << ", \"answer\": {";
    char const* separator = " ";
    for( auto const& [ name, number ] : answer ) {
        std::cout << separator << '"' << name << "\": " << number;
        separator = ", ";
    }
    std::cout << " } }\n";
}
