#pragma once

#include "vessa/Types.h"

#include <string_view>
#include <vector>

namespace Ostler {

using Vessa::String;
using Vessa::U32;

/// A JSON value that knows its place in the text.
struct JsonValue {
    enum class Kind { null, boolean, number, string, array, object };

    struct Member;

    Kind kind = Kind::null;
    std::size_t offset = 0;       ///< of its first byte in the text
    bool isUnsigned32 = false;    ///< a number that is an unsigned 32-bit integer
    U32 number = 0;               ///< its value then
    String text;                  ///< of a string, to its first NUL
    std::vector<JsonValue> items; ///< of an array
    std::vector<Member> members;  ///< of an object, in their order

    /// The first member of that name, null when there is none.
    JsonValue const* member( std::string_view name ) const;
};

struct JsonValue::Member {
    String name;
    JsonValue value;
};

/// Something wrong with a text, at a byte of it.
struct JsonError {
    std::size_t offset;
    String reason;
    String expected = {}; ///< the same in parts, where it is about a value
    String found = {};
};

/// Parses a whole text; throws JsonError on a syntax error and on more than 100 levels of nesting.
JsonValue parseJson( std::string_view text );

} // namespace Ostler
