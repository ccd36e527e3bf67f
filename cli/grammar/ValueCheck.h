#pragma once

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

/// The first value of a line whose type is wrong for its option or argument. Names and handles are not
/// checked, as only the configuration knows them.
std::optional<UsageError> wrongValueIn( Program const& program, ParsedLine const& line );

} // namespace Bfri
