#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// Help of the whole program.
void printHelp( std::ostream& out, Program const& program );
void printHelp( std::ostream& out, Program const& program, Command const& command );

/// The manual page, as input of man.
void printManual( std::ostream& out, Program const& program );

} // namespace Bfri
