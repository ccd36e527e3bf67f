#pragma once

// What the commands do: one file each, of its name. The command table says what they take.

#include "cli/grammar/Commands.h"

namespace Bfri {

ExitStatus annotate( Model const& model, Request const& request, Streams const& io );
ExitStatus check( Request const& request, Streams const& io );
ExitStatus complete( Request const& request, Streams const& io );
ExitStatus diff( Request const& request, Streams const& io );
ExitStatus dump( Model const& model, Request const& request, Streams const& io );
ExitStatus field( Model const& model, Request const& request, Streams const& io );
ExitStatus help( Request const& request, Streams const& io );
ExitStatus list( Model const& model, Request const& request, Streams const& io );
ExitStatus lookup( Model const& model, Request const& request, Streams const& io );
ExitStatus manual( Request const& request, Streams const& io );
ExitStatus names( Model const& model, Request const& request, Streams const& io );
ExitStatus normalize( Request const& request, Streams const& io );
ExitStatus show( Model const& model, Request const& request, Streams const& io );
ExitStatus stages( Model const& model, Request const& request, Streams const& io );
ExitStatus summary( Model const& model, Request const& request, Streams const& io );
ExitStatus table( Model const& model, Request const& request, Streams const& io );

} // namespace Bfri
