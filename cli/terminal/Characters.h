#pragma once

// Texts by the characters that people see, and by the columns that a terminal gives them.

#include "vessa/Types.h"

#include <string_view>
#include <vector>

namespace Bfri {

using Vessa::String;

/// A text for a terminal: what could move the cursor, change the order of what is read, or is no valid UTF-8
/// shows as \xXX or \uXXXX.
String escapeForTerminal( std::string_view text );

/// The columns that a shown text takes: wide characters two, marks on another character none.
std::size_t width( std::string_view shownText );

/// As many whole characters of the front of a shown text as fit into that many columns; a mark stays with its
/// character.
String firstColumns( std::string_view shownText, std::size_t columns );

/// The same of the end.
String lastColumns( std::string_view shownText, std::size_t columns );

/// What a typed word may stand for, the word itself first: with the escapes that a terminal shows for some
/// bytes turned back, and with accents composed or decomposed. Each once.
std::vector<String> readingsOf( String const& word );

} // namespace Bfri
