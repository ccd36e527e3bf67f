#include "cli/Run.h"

#include <csignal>
#include <iostream>

int main( int argc, char** argv ) {
    std::signal( SIGPIPE, SIG_IGN ); // a reader that went away is an error of the write, with a message
    std::ios::sync_with_stdio( false );
    return static_cast<int>( Bfri::run( argc, argv, { std::cout, std::cerr } ) );
}
