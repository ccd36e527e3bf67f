#pragma once

// Texts as the characters that people see, and the columns that these take on a terminal.

#include "vessa/Types.h"

#include <string_view>
#include <vector>

namespace Bfri {

using Vessa::String;

/// A text escaped for a terminal: what could move the cursor or change the reading order, and invalid UTF-8,
/// become \xXX or \uXXXX.
String escapeForTerminal( std::string_view text );

/// The columns that an escaped text takes: two for wide characters, none for combining marks.
std::size_t width( std::string_view shownText );

/// As many whole characters from the start of an escaped text as fit into that many columns; a mark stays
/// with its character.
String firstColumns( std::string_view shownText, std::size_t columns );

/// The same from the end.
String lastColumns( std::string_view shownText, std::size_t columns );

/// What a typed word may mean, the word itself first: with a terminal's escapes turned back into bytes, and
/// with accents composed or decomposed. Each once.
std::vector<String> readingsOf( String const& word );

} // namespace Bfri
