#pragma once

#include "inspect/load/Fault.h"

namespace Bfri {

/// Reads the file of a fault again and adds what stands there: the value that was found, and its line; of a
/// problem with a line and a column the excerpt. A file that has no such place any more adds nothing. Linear
/// in the file, of which little is kept.
void addEvidence( Fault& fault );

} // namespace Bfri
