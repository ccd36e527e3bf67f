#pragma once

// The only place that puts mistakes in a command line into words.

#include "cli/grammar/ParsedLine.h"

namespace Bfri {

/// The message for a line that has an error, with what may have been meant: "no command 'tabels'; did you
/// mean 'tables'?". Control characters are escaped.
String usageMessage( Program const& program, ParsedLine const& line );

} // namespace Bfri
