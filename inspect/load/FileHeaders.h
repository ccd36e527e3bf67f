#pragma once

// The flexible headers of a context file as they stand there.

#include "inspect/load/FirstMembers.h"

namespace Bfri {

/// A flexible header, with the bits of all its fields. What has another type counts as nothing: the library
/// judges that.
struct HeaderBits {
    String name = {};
    std::uint64_t bits = 0;
};

/// Takes the header that comes.
HeaderBits headerBits( FirstMembers& text );

/// Those of a context file, in its order.
std::vector<HeaderBits> headersOf( String const& contextFile );

} // namespace Bfri
