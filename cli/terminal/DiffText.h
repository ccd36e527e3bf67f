#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/diff/Comparison.h"

namespace Bfri {

/// A comparison that differs, for people: section by section what differs, then totals and the verdict.
void printDiff( std::ostream& out, TerminalStyle const& look, Comparison const& comparison );

} // namespace Bfri
