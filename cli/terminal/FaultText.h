#pragma once

#include "inspect/load/Fault.h"

namespace Bfri {

/// What cannot be used and everything known about it, one per line; without the last line end.
String faultText( Fault const& fault );

/// The same for a report: everything has a line, the excerpt, too, and every line ends.
String faultLines( Fault const& fault );

/// Where a fault is in its file: "at /tables/0, member "name", table 0"; empty if that is not known.
String placeText( Fault const& fault );

} // namespace Bfri
