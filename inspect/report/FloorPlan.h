#pragma once

// The floor plan of a program: each stage is a column, each resource in it a block as high as its share of
// the entries. Only the layout: all numbers are pixels of a plan drawn in its natural size.

#include "inspect/report/Chip.h"

namespace Bfri {

/// A block of a column: a resource, a ghost, or several small ones together.
struct PlanBlock {
    ChipResource const* resource = nullptr; ///< for a ghost the old one; null for several
    Ghost const* ghost = nullptr;
    std::size_t several = 0;      ///< how many, if they are drawn as one
    std::optional<U32> type = {}; ///< of several, if they have the same
    std::uint64_t entries = 0;
    int top = 0;
    int height = 0;
};

struct PlanColumn {
    std::uint64_t entries = 0; ///< ghosts included
    std::vector<PlanBlock> blocks;
};

/// Joins two blocks of one resource.
struct PlanBand {
    std::size_t from, to; ///< columns, from left to right
    PlanBlock const* left;
    PlanBlock const* right;
    bool isMove; ///< from a ghost to where it is now
};

struct FloorPlan {
    int height = 0;                  ///< 0 for a plan without blocks
    std::vector<PlanColumn> columns; ///< one per stage of the chip
    std::vector<PlanBand> bands;     ///< they refer to the blocks
};

/// The least height of a block for one resource.
inline constexpr int leastBlock = 15;

/// The floor plan of one direction. The chip must outlive it.
FloorPlan floorPlanOf( Chip const& chip, ChipProgram const& program, bool ingress );

/// Heights that add up to `height`: each value's share, but none below its minimum. The minima fit.
std::vector<int> heightsOf( std::vector<std::uint64_t> const& values, std::vector<int> const& minima,
                            int height );

} // namespace Bfri
