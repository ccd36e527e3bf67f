#pragma once

#include "cli/Failure.h"
#include "cli/grammar/Commands.h"

namespace Bfri {

/// The whole program but for the process around it. Every failure ends in a message on err and a status; one
/// that is met behind the command line is, where JSON was asked for, also a JSON object on out.
ExitStatus run( int argc, char const* const* argv, Streams const& io );

} // namespace Bfri
