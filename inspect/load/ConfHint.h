#pragma once

#include "inspect/load/Fault.h"

namespace Bfri {

/// Whether a file starts as gzip does.
bool isGzip( String const& path );

/// Says of a switch configuration that cannot be read what it is instead, where that is plain to see: a
/// folder, a gzip file, a context file.
void addHint( Fault& fault );

} // namespace Bfri
