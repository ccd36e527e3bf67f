#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

namespace Vessa {

/// A file that is open for reading, or why there is none.
struct OpenFile {
    /// The caller's to close; -1 when there is no file.
    int descriptor = -1;
    /// What the system says, or "Not a regular file"; empty when the file is open.
    String reason = {};
    /// Its bytes when it was opened; what the system says of a folder.
    U64 size = 0;
};

/// Opens a regular file for reading, without ever waiting; a program started later does not inherit it. A
/// folder opens too: its first read says what it is. Others are refused: a pipe would wait for its writer, a
/// device may have no end. Thread-safe.
VESSA_EXPORT OpenFile openRegularFile( String const& path );

} // namespace Vessa
