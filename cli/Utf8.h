#pragma once

// Names come from files and may hold any bytes; here is how each output takes them.

#include "vessa/Types.h"

#include <string_view>

namespace Bfri {

using Vessa::String;

/// A text as a JSON string, quotes included. Always valid UTF-8, and nothing is lost: a byte XX that is no
/// part of valid UTF-8 becomes the lone surrogate \udcXX, an encoded surrogate its own escape.
String jsonQuoted( std::string_view text );

/// A text for a terminal: what could move the cursor, change the order of what is read, or is no valid UTF-8
/// shows as \xXX or \uXXXX.
String shown( std::string_view text );

/// The columns that a shown text takes: its number of characters.
std::size_t width( std::string_view shownText );

} // namespace Bfri
