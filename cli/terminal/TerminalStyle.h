#pragma once

#include <cstddef>

namespace Bfri {

/// What the texts of an answer may make use of. Default-constructed: a pipe or a file, where nothing is cut,
/// coloured or drawn.
struct TerminalStyle {
    std::size_t columns = 0; ///< of the terminal that shows them; 0: no terminal, no limit
    bool color = false;
    bool utf8 = false;       ///< characters beyond ASCII may stand for lines and marks of our own
    bool manyColors = false; ///< 256 or more, where there are colours
};

/// That of the process's standard output: colours on a terminal without NO_COLOR, UTF-8 as the locale has it,
/// 256 colours as TERM and COLORTERM say.
TerminalStyle lookOfStandardOutput();

} // namespace Bfri
