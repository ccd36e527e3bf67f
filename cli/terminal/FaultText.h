#pragma once

#include "inspect/load/Fault.h"

namespace Bfri {

/// What cannot be used and all that is known about it, a line each; without the last line end.
String faultText( Fault const& fault );

/// Where a fault is in its file: "at /tables/0, member "name", table 0"; empty when that is not known.
String placeText( Fault const& fault );

} // namespace Bfri
