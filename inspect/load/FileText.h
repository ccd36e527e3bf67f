#pragma once

#include "vessa/Types.h"

#include <memory>
#include <vector>

struct gzFile_s; // zlib's open file

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// The characters of a file that could not be loaded, plain or gzip, to show what is where. Also a stream for
/// RapidJSON's reader, with a NUL at its end. If reading fails, the text ends there.
class FileText {
  public:
    using Ch = char;

    explicit FileText( String const& path );

    Ch Peek() { return begin_ != end_ || fill() ? buffer_[ begin_ ] : '\0'; }
    Ch Take();
    std::size_t Tell() const { return before_ + begin_; }
    bool atEnd() { return begin_ == end_ && !fill(); }
    /// The line of the next character, from 1.
    U32 line() const { return line_; }

    // The writing half of a stream; never called, since nothing is parsed in place.
    void Put( Ch ) {}
    void Flush() {}
    Ch* PutBegin() { return nullptr; }
    std::size_t PutEnd( Ch* ) { return 0; }

  private:
    bool fill();

    std::unique_ptr<gzFile_s, int ( * )( gzFile_s* )> file_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // of what is not taken yet, in the buffer
    std::size_t end_ = 0;
    std::size_t before_ = 0; // characters before the buffer
    U32 line_ = 1;
};

} // namespace Bfri
