#pragma once

// What the fuzz targets share.

#include "resourceinfo/BfResourceInfoIntf.h"
#include "zel/Assert.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size );

/// A folder of this process for the files that the library reads; gone with the process.
class FuzzFolder {
  public:
    FuzzFolder()
        : path_( std::filesystem::temp_directory_path() / ( "bfri-fuzz-" + std::to_string( getpid() ) ) ) {
        std::filesystem::create_directories( path_ );
    }
    FuzzFolder( FuzzFolder const& ) = delete;
    FuzzFolder& operator=( FuzzFolder const& ) = delete;
    ~FuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all( path_, ignored );
    }

    String write( char const* name, void const* data, std::size_t size ) const {
        auto const file = path_ / name;
        std::ofstream( file, std::ios::binary )
            .write( static_cast<char const*>( data ), static_cast<std::streamsize>( size ) );
        return file.string();
    }

  private:
    std::filesystem::path path_;
};

/// Loads a configuration; bad data ends in an assertion error and leaves no entity behind, all else is a
/// finding.
inline void loadWithoutRemains( String const& switchConf ) {
    Zel::assertionHandlerIs( Zel::throwAssertionError );
    try {
        BfResourceInfo::bfResourceInfoIntfFactory( switchConf );
    } catch( Zel::AssertionError const& ) {
    }
    if( Vessa::allocationTracker<BfResourceInfo::BfResourceInfoIntf>().live() != 0 ||
        Vessa::allocationTracker<BfResourceInfo::BfResourceParser>().live() != 0 ||
        Vessa::allocationTracker<BfTableInfo>().live() != 0 ) {
        std::fputs( "something outlived the interface\n", stderr );
        std::abort();
    }
}
