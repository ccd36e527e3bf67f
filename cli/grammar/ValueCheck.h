#pragma once

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

/// The first value of a line that is not of its option's or argument's type. Names and handles are not looked
/// at: only the configuration tells them.
std::optional<UsageError> wrongValueIn( Program const& program, ParsedLine const& line );

} // namespace Bfri
