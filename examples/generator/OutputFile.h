#pragma once

#include <array>
#include <cstddef>
#include <filesystem>

#include <zlib.h>

namespace bfgen {

/// A file being written, plain or gzip, in the shape that RapidJSON's writers expect of an output stream.
/// Every failure throws std::runtime_error with the file's name and the reason.
/// A file that was not closed is removed: a cut-off file never looks like a whole one.
class OutputFile {
  public:
    using Ch = char;

    OutputFile( std::filesystem::path path, bool gzip );
    OutputFile( OutputFile const& ) = delete;
    OutputFile& operator=( OutputFile const& ) = delete;
    ~OutputFile();

    void Put( char c ) {
        if( used_ == buffer_.size() ) {
            drain();
        }
        buffer_[ used_++ ] = c;
    }

    /// The writers call it after the root value; close() does the work.
    void Flush() {}

    /// Writes what is left and reports whatever went wrong up to the very end.
    void close();

  private:
    void drain();
    [[noreturn]] void fail();

    std::filesystem::path path_;
    gzFile file_;
    std::size_t used_ = 0;
    std::array<char, 65536> buffer_{};
};

} // namespace bfgen
