#pragma once

#include "cli/grammar/Failure.h"
#include "cli/terminal/TerminalStyle.h"

namespace Bfri {

/// The whole program except the process around it. Every failure ends in a message on err and a status; with
/// --json on the line, also in a JSON object on out.
ExitStatus run( int argc, char const* const* argv, Streams const& io );

} // namespace Bfri
