#pragma once

#include "vessa/Types.h"

#include <cstddef>
#include <ostream>

namespace Bfri {

using Vessa::String;

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

/// The streams of a process: only the answer goes to out.
struct Streams {
    std::ostream& out;
    std::ostream& err;
    TerminalStyle look = {}; ///< of texts on out
    int in = 0; ///< descriptor of standard input, so that arrived data can be read without waiting for more
};

/// The colours of a terminal's text, as its own numbers.
enum class Paint { red = 31, green = 32, yellow = 33 };

/// The text in that colour if the look has colours, else as it is.
String painted( TerminalStyle const& look, Paint paint, String const& text );

inline constexpr unsigned hottest = 6;

/// The text on the background of a heat map, from pale yellow to red; 0 is none. Only if the terminal has
/// 256 colours.
String onHeat( TerminalStyle const& look, unsigned heat, String const& text );

} // namespace Bfri
