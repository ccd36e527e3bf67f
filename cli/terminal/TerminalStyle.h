#pragma once

#include <cstddef>

namespace Bfri {

/// What the texts of an answer may use. By default a pipe or a file, for which nothing is cut, coloured or
/// drawn.
struct TerminalStyle {
    std::size_t columns = 0; ///< of the terminal that shows them; 0: no terminal, no limit
    bool color = false;
    bool utf8 = false;       ///< lines and marks of our own may use characters beyond ASCII
    bool manyColors = false; ///< 256 or more, if there are colours
};

/// The style of the process's standard output: colours on a terminal without NO_COLOR, UTF-8 by the locale,
/// 256 colours by TERM and COLORTERM.
TerminalStyle lookOfStandardOutput();

} // namespace Bfri
