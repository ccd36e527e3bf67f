#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// Help of the whole program.
void printHelp( std::ostream& out, Program const& program );
void printHelp( std::ostream& out, Program const& program, Command const& command );

/// The manual page, as input of man.
void printManual( std::ostream& out, Program const& program );

// What the help and the manual page say about a command after its options.

std::vector<String> paragraphsOf( Command const& command );

/// The fields of the rows that a list command prints, with their meaning; empty for other commands.
String fieldTable( Command const& command );

/// Command lines.
std::vector<String> examplesOf( Program const& program, Command const& command );

} // namespace Bfri
