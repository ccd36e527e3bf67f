#pragma once

#include "inspect/model/RecordKinds.h"

namespace Bfri {

/// The help texts of a kind's list command.
struct ListText {
    char const* description; ///< one line
    char const* note = "";   ///< which records are listed: lines with a blank one at the end; or nothing
};

/// What the help says of --where.
inline constexpr char const* whereText =
    "--where compares fields with values: =, !=, <, <=, >, >= and ~= (a regular expression, for text), "
    "joined "
    "with and, or, not and parentheses: 'size>=4096 and not (name~=^l3 or direct=yes)'. A value with a space "
    "is "
    "in single or double quotes. Fields that are true or false take = and != only. A list matches if one "
    "element does; with !=, if no element equals the value. Without a value, a field equals nothing.";

ListText const& listTextOf( Kind kind );

} // namespace Bfri
