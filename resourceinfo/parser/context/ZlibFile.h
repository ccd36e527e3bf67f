#pragma once

#include "resourceinfo/parser/context/InputFile.h"

struct gzFile_s; // zlib's open file

namespace Context {

/// A regular file, plain or gzip, through zlib's gzread.
class ZlibFile : public InputFile {
  public:
    ZlibFile();

    String open( String const& path ) override;
    std::uint64_t sizeOnDisk() override { return sizeOnDisk_; }
    int read( std::span<char> buffer ) override;
    bool rewind() override;
    bool isCompressed() override;
    String error() override;
    void close() override;

  private:
    std::unique_ptr<gzFile_s, int ( * )( gzFile_s* )> file_;
    std::uint64_t sizeOnDisk_ = 0;
};

} // namespace Context
