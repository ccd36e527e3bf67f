#pragma once

// Code that all fuzz targets share.

#include "resourceinfo/model/Types.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>

extern "C" {
int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size );

/// Some targets change inputs in their own way, in a buffer of `maxSize` bytes; returns the new size.
std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed );

/// libFuzzer's way; in the ordinary build that of Replay.cpp.
std::size_t LLVMFuzzerMutate( std::uint8_t* data, std::size_t size, std::size_t maxSize );
}

/// Ends the process, which makes the input a finding, unless the condition holds.
void require( bool condition, char const* what );

/// A folder of this process for the files that the library reads, in the folder for temporary files; gone
/// with the process.
class FuzzFolder {
  public:
    FuzzFolder();
    FuzzFolder( FuzzFolder const& ) = delete;
    FuzzFolder& operator=( FuzzFolder const& ) = delete;
    ~FuzzFolder();

    /// Writes a file and returns its path.
    String write( char const* name, void const* data, std::size_t size ) const;

  private:
    std::filesystem::path path_;
};
