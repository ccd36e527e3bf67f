#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// What the texts of a program say about a command.
struct CommandText {
    String description = {};
    std::vector<String> paragraphs = {};
    String examples = {}; ///< lines
};

CommandText textOf( Program const& program, Command const& command );

/// Help of the whole program.
void printHelp( std::ostream& out, Program const& program );
void printHelp( std::ostream& out, Program const& program, Command const& command );

/// The manual page, as input of man.
void printManual( std::ostream& out, Program const& program );

} // namespace Bfri
