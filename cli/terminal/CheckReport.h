#pragma once

#include "cli/terminal/Streams.h"
#include "inspect/check/Checked.h"

namespace Bfri {

/// The lines of one configuration. Of many findings of one kind a terminal gets the first few.
void print( Checked const& checked, Streams const& io );

} // namespace Bfri
