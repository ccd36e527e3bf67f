#include "cli/Program.h"

#include <csignal>
#include <iostream>

int main( int argc, char** argv ) {
    // A reader that went away ends it in silence, whatever the parent ignores.
    std::signal( SIGPIPE, SIG_DFL );
    std::ios::sync_with_stdio( false );
    return static_cast<int>(
        Bfri::run( argc, argv, { std::cout, std::cerr, Bfri::lookOfStandardOutput() } ) );
}
