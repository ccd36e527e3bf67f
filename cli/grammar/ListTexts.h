#pragma once

#include "inspect/model/Kinds.h"

namespace Bfri {

/// What the help says of the list of a kind of record.
struct ListText {
    char const* description; ///< one line
    char const* note = "";   ///< which records there are: lines, and a blank one; or nothing
};

ListText const& listTextOf( Kind kind );

} // namespace Bfri
