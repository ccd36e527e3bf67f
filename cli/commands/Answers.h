#pragma once

// The commands, each in the file of its name. The command table says what they take.

#include "cli/grammar/Commands.h"

namespace Bfri {

/// What the configurations of a command line answer.
struct Answers {
    std::vector<Row> rows = {}; ///< if there are several, each starts with its configuration, as "conf"
    bool areSeveral = false;
    List failures = {};                   ///< of several, those without an answer, and why
    ExitStatus status = ExitStatus::done; ///< the worst
};

ExitStatus annotate( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus budget( Request const& request, Streams const& io );
ExitStatus check( Request const& request, Streams const& io );
ExitStatus complete( Request const& request, Streams const& io );
ExitStatus diff( Request const& request, Streams const& io );
ExitStatus dump( Configuration const& configuration, Request const& request, Streams const& io );
std::vector<Row> fieldRows( Configuration const& configuration, Request const& request );
void printValues( Answers&& answers, Request const& request, Streams const& io );
ExitStatus help( Request const& request, Streams const& io );
ExitStatus lookup( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus manual( Request const& request, Streams const& io );
Row blankName();
std::vector<Row> nameRows( Configuration const& configuration, Request const& request );
void printNames( Answers&& answers, Request const& request, Streams const& io );
ExitStatus normalize( Request const& request, Streams const& io );
std::vector<Row> recordRows( Configuration const& configuration, Request const& request );
void printRecords( Answers&& answers, Request const& request, Streams const& io );
ExitStatus report( Request const& request, Streams const& io );
ExitStatus schema( Request const& request, Streams const& io );
ExitStatus show( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus stages( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus summary( Configuration const& configuration, Request const& request, Streams const& io );
std::vector<Row> summaryRows( Configuration const& configuration, Request const& request );
void printSummaries( Answers&& answers, Request const& request, Streams const& io );
ExitStatus table( Configuration const& configuration, Request const& request, Streams const& io );

} // namespace Bfri
