#pragma once

#include "cli/grammar/Commands.h"
#include "inspect/load/Load.h"

namespace Bfri {

/// A configuration cannot be loaded.
class LoadFailure : public Failure {
  public:
    LoadFailure( String const& message, Fault what )
        : Failure( ExitStatus::notLoadable, message ), fault( std::move( what ) ) {}

    Fault fault;
};

/// Loads a configuration for a command; what cannot be loaded is a LoadFailure, unless bad context data shall
/// end the process. What the library traces meanwhile goes to err, and so do notes about files that are not
/// read.
Configuration load( String const& path, Command const& command, std::ostream& err,
                    Survey survey = Survey::facts );

} // namespace Bfri
