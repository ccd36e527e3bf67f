#pragma once

#include "cli/Commands.h"
#include "cli/Failure.h"

namespace Bfri {

/// The whole program but for the process around it. Every failure ends in a message on err and a status; one
/// that is met behind the command line is, where JSON was asked for, also a JSON object on out.
ExitStatus run( int argc, char const* const* argv, Streams const& io );

} // namespace Bfri
