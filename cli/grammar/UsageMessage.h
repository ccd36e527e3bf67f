#pragma once

// The only place that puts mistakes in a command line into words.

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

/// What is wrong with a line that has an error, and what may have been meant: "no command 'tabels'; did you
/// mean 'tables'?". Control characters are escaped.
String usageMessage( Program const& program, ParsedLine const& line );

} // namespace Bfri
