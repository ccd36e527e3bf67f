#pragma once

#include "cli/Comparison.h"

namespace Bfri {

/// A comparison that differs, for people: section by section what differs, then totals and the verdict.
void printDiff( std::ostream& out, Look const& look, Comparison const& comparison );

} // namespace Bfri
