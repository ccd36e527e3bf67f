#include "fuzz/Target.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

void require( bool condition, char const* what ) {
    if( condition )
        return;
    std::fprintf( stderr, "finding: %s\n", what );
    std::abort();
}

FuzzFolder::FuzzFolder()
    : path_( std::filesystem::temp_directory_path() / ( "bfri-fuzz-" + std::to_string( getpid() ) ) ) {
    std::filesystem::create_directories( path_ );
}

FuzzFolder::~FuzzFolder() {
    std::error_code ignored;
    std::filesystem::remove_all( path_, ignored );
}

String FuzzFolder::write( char const* name, void const* data, std::size_t size ) const {
    auto const file = path_ / name;
    std::ofstream stream( file, std::ios::binary );
    stream.write( static_cast<char const*>( data ), static_cast<std::streamsize>( size ) );
    stream.close();
    require( !stream.fail(), "cannot write the file to be read" );
    return file.string();
}
