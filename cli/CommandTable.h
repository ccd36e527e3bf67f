#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// bfri, with its command table. An option or a command is one row there; the parser, completion, the help
/// and the manual page read it.
Program const& program();

} // namespace Bfri
