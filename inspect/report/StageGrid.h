#pragma once

// How many resources of each kind a program has in each stage, and how many entries they have there.

#include "inspect/report/Chip.h"

namespace Bfri {

struct GridCell {
    U32 resources = 0;
    U32 starting = 0; ///< those whose first stage it is
    std::uint64_t entries = 0;

    GridCell& operator+=( GridCell const& other );
};

/// The resources of one type, or of several for a sum.
struct GridRow {
    U32 type = 0;
    std::size_t resources = 0;
    std::vector<GridCell> cells; ///< one per stage of the chip
    std::vector<GridCell> was;   ///< the same for the older chip; empty without one

    GridCell sum() const; ///< of all stages
};

/// One direction of a program.
struct StageGrid {
    std::vector<GridRow> rows; ///< in the order of types
    GridRow all;

    bool isEmpty() const { return rows.empty(); }
    std::uint64_t mostEntries() const; ///< in a stage, older chip included
    U32 mostResources() const;         ///< of one kind in a stage
};

StageGrid stageGridOf( Chip const& chip, ChipProgram const& program, bool ingress );

} // namespace Bfri
