#pragma once

#include "cli/terminal/Streams.h"
#include "inspect/budget/Budget.h"

namespace Bfri {

/// A budget for people: the outcome, what can't be judged, then the uses, the worst first. Of what is within
/// the budget only the first few are shown.
void print( String const& conf, Rules const& rules, Budget const& budget, Streams const& io );

/// What is wrong with a file of rules: "budget.toml:3:1: ...".
String mistakeText( RulesMistake const& mistake );

} // namespace Bfri
