#pragma once

#include "cli/terminal/TerminalStyle.h"

#include <ostream>

namespace Bfri {

/// Where a process talks: only the answer goes to out.
struct Streams {
    std::ostream& out;
    std::ostream& err;
    TerminalStyle look = {}; ///< of texts on out
    int in = 0; ///< standard input's descriptor: what has arrived can be read without waiting for more
};

} // namespace Bfri
