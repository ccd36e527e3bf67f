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

/// The members of a failure's JSON object; of a LoadFailure with its parts.
Row rowOf( Failure const& failure );

/// The rules of a budget; a mistake in the file is a Failure of status notLoadable that says where it is.
Rules loadRules( String const& path );

} // namespace Bfri
