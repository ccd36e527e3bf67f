#pragma once

// Names come from files and may hold any bytes. This splits them into characters.

#include "vessa/Types.h"

#include <string_view>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// The first character of a text.
struct Character {
    enum class Kind { regular, surrogate, strayByte };
    Kind kind;
    U32 code; ///< code point; for a stray byte, the byte
    std::size_t length;
};

/// The first character of a text, which must not be empty. A byte outside valid UTF-8 is a character by
/// itself.
Character firstCharacter( std::string_view text );

/// The text with characters replaced by their escapes. `escapeOf` gives the escape of a character, or an
/// empty text for none; it is not called for printable ASCII other than quotes, backslashes, '&', '<', '>'.
String escaped( std::string_view text, String ( *escapeOf )( Character const& ) );

/// Whether it is a control character beyond ASCII, or changes the writing direction: invisible itself, it
/// changes what is seen.
bool isHidden( Character const& character );

/// Whether a text is valid UTF-8 without control and hidden characters.
bool isShowable( std::string_view text );

/// A text as a JSON string, quotes included. Always valid UTF-8: stray bytes and encoded surrogates become
/// U+FFFD, the replacement character.
String jsonQuoted( std::string_view text );

/// In quotes, for a sentence; quotes and backslashes in it are escaped by a backslash.
String quoted( std::string_view name );

} // namespace Bfri
