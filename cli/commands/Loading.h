#pragma once

#include "cli/commands/Answers.h"
#include "inspect/budget/Rules.h"
#include "inspect/load/Load.h"

namespace Bfri {

/// Loads a configuration for a command. Throws Failure with its fault if it cannot be loaded, unless the
/// command wants bad context data to end the process. Lines that the library traces meanwhile, and notes
/// about files that are not read, go to err.
Configuration load( String const& path, Command const& command, std::ostream& err,
                    Survey survey = Survey::facts );

/// The members of a failure's JSON object; of a fault its parts, too.
Row rowOf( Failure const& failure );

/// Prints the message of a failure after a start, and below it the names that may have been meant.
void print( std::ostream& err, Failure const& failure, String const& start = "" );

/// The rules of the budget that an option names; nothing without the option. A mistake in the file is a
/// Failure of status notLoadable that says where it is.
std::optional<Rules> rulesOf( Request const& request );
Rules loadRules( String const& path );

/// The chosen ones of the command's rows for every configuration of a request, loaded one after the other. If
/// there are several, one that fails is reported, and does not keep the others from answering.
Answers answersOf( Request const& request, std::ostream& err );

/// Prints rows as CSV, or as JSON in a member of that name.
void printForPrograms( Answers&& answers, char const* member, Request const& request, Streams const& io );

} // namespace Bfri
