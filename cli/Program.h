#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// bfri, with its command table. An option or a command is one row there; the parser, completion, the help
/// and the manual page read it.
Program const& program();

/// The whole program except the process around it. Every failure ends in a message on err and a status; with
/// --json on the line, also in a JSON object on out.
ExitStatus run( int argc, char const* const* argv, Streams const& io );

} // namespace Bfri
