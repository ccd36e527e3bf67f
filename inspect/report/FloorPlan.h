#pragma once

// The floor plan of a program: each stage a column, each resource in it a block as high as its share of the
// entries. Layout alone: all numbers are pixels of a plan that is drawn in its natural size.

#include "inspect/report/Chip.h"

namespace Bfri {

/// What is drawn of a column: a resource, a ghost, or the small ones together.
struct PlanBlock {
    ChipResource const* resource = nullptr; ///< of a ghost the old one; null of several
    Ghost const* ghost = nullptr;
    std::size_t several = 0;      ///< how many, of those that are drawn as one
    std::optional<U32> type = {}; ///< of several: theirs, when it is one
    std::uint64_t entries = 0;
    int top = 0;
    int height = 0;
};

struct PlanColumn {
    std::uint64_t entries = 0; ///< ghosts included
    std::vector<PlanBlock> blocks;
};

/// Joins two blocks of what is the same resource.
struct PlanBand {
    std::size_t from, to; ///< columns, from left to right
    PlanBlock const* left;
    PlanBlock const* right;
    bool isMove; ///< of a ghost and where it is now
};

struct FloorPlan {
    int height = 0;                  ///< 0 of a plan without blocks
    std::vector<PlanColumn> columns; ///< one a stage of the chip
    std::vector<PlanBand> bands;     ///< they refer to the blocks
};

/// The least height of a block that is one resource.
inline constexpr int leastBlock = 15;

/// Of one direction. The chip outlives it.
FloorPlan floorPlanOf( Chip const& chip, ChipProgram const& program, bool ingress );

/// Heights that add up to `height`: each value's share, but none below its minimum. The minima fit.
std::vector<int> heightsOf( std::vector<std::uint64_t> const& values, std::vector<int> const& minima,
                            int height );

} // namespace Bfri
