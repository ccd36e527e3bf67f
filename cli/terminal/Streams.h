#pragma once

#include "cli/terminal/TerminalStyle.h"

#include <ostream>

namespace Bfri {

/// The streams of a process: only the answer goes to out.
struct Streams {
    std::ostream& out;
    std::ostream& err;
    TerminalStyle look = {}; ///< of texts on out
    int in = 0; ///< descriptor of standard input, so that arrived data can be read without waiting for more
};

} // namespace Bfri
