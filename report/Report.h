#pragma once

// The report on a configuration, or on the difference between two: one HTML page that needs nothing else.

#include "vessa/Types.h"

namespace Bfri {

using Vessa::String;

struct Chip;
struct Comparison;
struct Rules;

/// The page of a chip, with the comparison if it is compared with an older one, and with the capacities of a
/// budget. Null means none. The same input gives the same bytes.
String htmlReport( Chip const& chip, Comparison const* comparison, Rules const* rules );

/// The floor plans of a chip as a picture.
String svgFloorPlans( Chip const& chip );

} // namespace Bfri
