#pragma once

// Names come from files and may hold any bytes; here is how each output takes them.

#include "vessa/Types.h"

#include <string_view>

namespace Bfri {

using Vessa::String;

/// A text as a JSON string, quotes included. Always valid UTF-8: a byte that is no part of it, and an encoded
/// surrogate, become U+FFFD, the replacement character.
String jsonQuoted( std::string_view text );

/// A text for a terminal: what could move the cursor, change the order of what is read, or is no valid UTF-8
/// shows as \xXX or \uXXXX.
String escapeForTerminal( std::string_view text );

} // namespace Bfri
