#pragma once

#include "cli/grammar/Commands.h"
#include "inspect/budget/Rules.h"
#include "inspect/load/Load.h"

namespace Bfri {

/// A configuration cannot be loaded.
class LoadFailure : public Failure {
  public:
    LoadFailure( String const& message, Fault what )
        : Failure( ExitStatus::notLoadable, message ), fault( std::move( what ) ) {}

    Fault fault;
};

/// Loads a configuration for a command. Throws LoadFailure if it cannot be loaded, unless the command wants
/// bad context data to end the process. Lines that the library traces meanwhile, and notes about files that
/// are not read, go to err.
Configuration load( String const& path, Command const& command, std::ostream& err,
                    Survey survey = Survey::facts );

/// The rules of a budget. Throws Failure with status notLoadable if the file has a mistake, and says where.
Rules loadRules( String const& path );

} // namespace Bfri
