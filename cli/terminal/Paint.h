#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "vessa/Types.h"

namespace Bfri {

using Vessa::String;

/// The colours of a terminal's text, as its own numbers.
enum class Paint { red = 31, green = 32, yellow = 33 };

/// The text in that colour where the look has colours, else as it is.
inline String painted( TerminalStyle const& look, Paint paint, String const& text ) {
    if( !look.color )
        return text;
    return "\033[" + std::to_string( static_cast<int>( paint ) ) + "m" + text + "\033[0m";
}

} // namespace Bfri
