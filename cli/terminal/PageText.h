#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/page/Page.h"

#include <ostream>

namespace Bfri {

/// The pages, with a heading for each part of a record.
void printPages( std::ostream& out, TerminalStyle const& look, std::vector<Page> const& pages );

/// Where a record is on the chip; "no" for null.
String placeText( BfResource const* place );

} // namespace Bfri
