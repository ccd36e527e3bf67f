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

/// The rules of the budget that an option names; nothing without the option. A mistake in the file is a
/// Failure of status notLoadable that says where it is.
std::optional<Rules> rulesOf( Request const& request );
Rules loadRules( String const& path );

/// What the configurations of a command line answer.
struct Answers {
    std::vector<Row> rows = {}; ///< if there are several, each starts with its configuration, as "conf"
    bool areSeveral = false;
    List failures = {};                   ///< of several, those without an answer, and why
    ExitStatus status = ExitStatus::done; ///< the worst
};

/// The command's rows for every configuration of a request, loaded one after the other. If there are several,
/// one that fails is reported, and does not keep the others from answering.
Answers answersOf( Request const& request, std::ostream& err );

/// Leaves the chosen rows, and says why there are none.
void chooseRows( std::vector<Row>& rows, Request const& request, std::ostream& err );

/// Prints rows as CSV, or as JSON in a member of that name.
void printForPrograms( Answers answers, char const* member, Request const& request, Streams const& io );

} // namespace Bfri
