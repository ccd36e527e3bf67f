#pragma once

// The commands, each in the file of its name. The command table says what they take.

#include "cli/grammar/Commands.h"

namespace Bfri {

ExitStatus annotate( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus budget( Request const& request, Streams const& io );
ExitStatus check( Request const& request, Streams const& io );
ExitStatus complete( Request const& request, Streams const& io );
ExitStatus diff( Request const& request, Streams const& io );
ExitStatus dump( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus field( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus fieldOfAll( Request const& request, Streams const& io );
ExitStatus help( Request const& request, Streams const& io );
ExitStatus list( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus listAll( Request const& request, Streams const& io );
ExitStatus lookup( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus manual( Request const& request, Streams const& io );
ExitStatus names( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus namesOfAll( Request const& request, Streams const& io );
ExitStatus normalize( Request const& request, Streams const& io );
ExitStatus report( Request const& request, Streams const& io );
ExitStatus schema( Request const& request, Streams const& io );
ExitStatus show( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus stages( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus summary( Configuration const& configuration, Request const& request, Streams const& io );
ExitStatus summaryOfAll( Request const& request, Streams const& io );
ExitStatus table( Configuration const& configuration, Request const& request, Streams const& io );

} // namespace Bfri
