#pragma once

#include "inspect/load/Fault.h"

namespace Bfri {

/// Reads the file of a fault again and adds what is there: the value that was found, and its line; for a
/// problem with line and column, the excerpt. If the file does not have that place any more, nothing is
/// added. Linear in the file; keeps little of it.
void addEvidence( Fault& fault );

} // namespace Bfri
