#pragma once

#include "resourceinfo/model/Types.h"

#include <cstdint>
#include <memory>
#include <span>

namespace Context {

/// A context file as it is read: a row of characters, whatever they are packed in. Tests stand between reader
/// and file here. One object reads one file.
class InputFile {
  public:
    virtual ~InputFile() = default;

    /// Opens the file at a path, before all else. Says why it cannot be opened; nothing when it is open.
    virtual String open( String const& path ) = 0;
    /// The bytes that the open file takes on its disk: of a packed file fewer than its characters.
    virtual std::uint64_t sizeOnDisk() = 0;
    /// Takes the next characters, at most so many as fit. How many: 0 at the end, negative after a failure.
    virtual int read( std::span<char> buffer ) = 0;
    /// Goes back to the first character; false when that cannot be.
    virtual bool rewind() = 0;
    /// Whether the characters are packed in the file. Known once some were read.
    virtual bool isCompressed() = 0;
    /// What went wrong since it is open, what is missing at its end too; empty when nothing did.
    virtual String error() = 0;
    /// Gives back what the open file takes. The destructor does so as well.
    virtual void close() = 0;
};

/// For a regular file, plain or gzip alike, by the inflater that the library is configured with: an IsalFile
/// or a ZlibFile. Other kinds cannot be opened: a pipe would wait for its writer. Where memory ends,
/// operations throw std::bad_alloc.
std::unique_ptr<InputFile> gzipFile();

} // namespace Context
