#pragma once

#include "cli/Look.h"
#include "cli/Row.h"

#include <ostream>

namespace Bfri {

/// A value in one line: absent and empty ones as "-", handles in hexadecimal, lists with spaces between.
String textOf( Value const& value );

/// Aligned columns under their names, numbers to the right. Absent and empty values show as "-". Lines are
/// cut to the terminal's columns.
void printColumns( std::ostream& out, RowList const& list, Look const& look = {} );

/// A line a field: its name, and its value in a second column. A value that is a list of rows takes a line
/// for each of them.
void printFields( std::ostream& out, Row const& row );

} // namespace Bfri
