#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "vessa/Types.h"

namespace Bfri {

using Vessa::String;

/// The colours of a terminal's text, as its own numbers.
enum class Paint { red = 31, green = 32, yellow = 33 };

/// The text in that colour if the look has colours, else as it is.
inline String painted( TerminalStyle const& look, Paint paint, String const& text ) {
    if( !look.color )
        return text;
    return "\033[" + std::to_string( static_cast<int>( paint ) ) + "m" + text + "\033[0m";
}

inline constexpr unsigned hottest = 6;

/// The text on the background of a heat map, from pale yellow to red; 0 is none. Only if the terminal has
/// 256 colours.
inline String onHeat( TerminalStyle const& look, unsigned heat, String const& text ) {
    static constexpr unsigned char backgrounds[ hottest ] = { 230, 229, 222, 215, 208, 202 };
    if( !look.color || !look.manyColors || heat == 0 )
        return text;
    return "\033[38;5;16;48;5;" + std::to_string( backgrounds[ heat - 1 ] ) + "m" + text + "\033[0m";
}

} // namespace Bfri
