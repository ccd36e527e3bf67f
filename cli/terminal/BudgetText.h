#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/budget/Budget.h"

namespace Bfri {

/// A budget for people: the outcome, what can't be judged, then the uses, the worst first. Only the first few
/// uses within the budget are shown.
void print( String const& conf, Rules const& rules, Budget const& budget, Streams const& io );

/// A mistake in a file of rules: "budget.toml:3:1: ...".
String mistakeText( RulesMistake const& mistake );

} // namespace Bfri
