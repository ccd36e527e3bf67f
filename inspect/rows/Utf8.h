#pragma once

// Names come from files and may hold any bytes; here is what they are.

#include "vessa/Types.h"

#include <string_view>

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// What a text begins with.
struct Character {
    enum class Kind { regular, surrogate, strayByte };
    Kind kind;
    U32 code; ///< code point; of a stray byte the byte
    std::size_t length;
};

/// The first character of a text that is not empty. A byte that is no part of valid UTF-8 is one of its own.
Character firstCharacter( std::string_view text );

/// The text with every character for which there is an escape replaced by it; an empty one stands for none.
/// Printable ASCII other than quotes and backslashes never has one: `escapeOf` is not asked.
String escaped( std::string_view text, String ( *escapeOf )( Character const& ) );

/// Whether it is a control character beyond ASCII, or changes the writing direction: nobody sees it, and it
/// changes what is seen.
bool isHidden( Character const& character );

/// Whether a text is valid UTF-8 without control and hidden characters.
bool isShowable( std::string_view text );

/// A text as a JSON string, quotes included. Always valid UTF-8: a byte that is no part of it, and an encoded
/// surrogate, become U+FFFD, the replacement character.
String jsonQuoted( std::string_view text );

/// In quotes for a sentence; quotes and backslashes in it have a backslash in front.
String quoted( std::string_view name );

} // namespace Bfri
