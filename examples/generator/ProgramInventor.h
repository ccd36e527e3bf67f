#pragma once

#include <cstddef>
#include <cstdint>

#include "Program.h"

namespace bfgen {

struct Invention {
    uint64_t seed;
    uint32_t stages;
    std::size_t tables;
    bool flexibleHeaders;
};

/// A program that holds every kind of table, as random as the seed allows.
Program inventProgram( Invention const& invention, uint32_t pipelineIndex );

} // namespace bfgen
