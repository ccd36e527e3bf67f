#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/page/Page.h"

#include <ostream>

namespace Bfri {

/// What records have, under headings.
void printPages( std::ostream& out, TerminalStyle const& look, std::vector<Page> const& pages );

/// Where a record is on the chip; "no" of null.
String placeText( BfResource const* place );

} // namespace Bfri
