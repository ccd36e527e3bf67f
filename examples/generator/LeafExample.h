#pragma once

#include <cstdint>

#include "Program.h"

namespace bfgen {

inline constexpr uint32_t leafPipelines = 2;

/// A leaf switch of a data centre: pipeline a routes for the racks, pipeline b carries the tenants' overlay.
Program makeLeafProgram( uint32_t pipeline );

} // namespace bfgen
