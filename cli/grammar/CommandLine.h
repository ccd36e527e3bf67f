#pragma once

#include "cli/grammar/Commands.h"

#include <optional>

namespace Bfri {

/// The command that a command line is for; null when it names none that there is.
Command const* commandIn( int argc, char const* const* argv );

/// Understands a command line. Nothing when help or version was asked for, which are then printed to out.
/// What it does not understand is a Failure of status usage that names the word.
std::optional<Request> parseCommandLine( int argc, char const* const* argv, std::ostream& out );

} // namespace Bfri
