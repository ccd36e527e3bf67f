#pragma once

#include "inspect/model/Kinds.h"

namespace Bfri {

/// The help texts of a kind's list command.
struct ListText {
    char const* description; ///< one line
    char const* note = "";   ///< which records are listed: lines with a blank one at the end; or nothing
};

ListText const& listTextOf( Kind kind );

} // namespace Bfri
