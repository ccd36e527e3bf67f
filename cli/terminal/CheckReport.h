#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/check/Baseline.h"
#include "inspect/check/Checked.h"

namespace Bfri {

/// Which lines to print.
struct ReportView {
    bool summary = false;     ///< a line for each kind of finding
    bool all = false;         ///< every finding has a line; else the first of each kind, up to a limit
    bool hasBaseline = false; ///< known findings have no lines
};

/// The lines of one configuration.
void print( Checked const& checked, ReportView const& view, Streams const& io );

/// The findings of a baseline that are gone.
void printGone( std::vector<KnownFinding> const& gone, bool all, std::ostream& out );

} // namespace Bfri
