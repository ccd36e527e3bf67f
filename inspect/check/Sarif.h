#pragma once

#include "inspect/check/Baseline.h"
#include "inspect/check/Checked.h"

namespace Bfri {

/// The findings of all configurations as a SARIF 2.1.0 log of one run, for code scanning: a rule for every
/// kind, a result for every finding with its place; a configuration that cannot be loaded is a notification.
/// With a baseline, each result says whether it is new; findings that are gone are results marked absent.
Row sarifOf( std::vector<Checked> const& checked, char const* version,
             std::vector<KnownFinding> const* gone );

} // namespace Bfri
