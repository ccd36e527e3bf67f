#pragma once

#include "inspect/rows/Row.h"

#include <ostream>

namespace Bfri {

/// A header line, and one line per row. A field that holds a comma, a quote or a line end is quoted, its
/// quotes doubled. Lists are separated by spaces, absent values are empty, texts are written byte for byte,
/// or as `spelling` makes them.
void printCsv( std::ostream& out, RowList const& list, String ( *spelling )( std::string_view ) = nullptr );

} // namespace Bfri
