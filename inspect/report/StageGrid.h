#pragma once

// How many resources of each kind a program has in each stage, how many entries they have there, and how much
// of the capacities of a budget that is.

#include "inspect/budget/Budget.h"
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

/// How much of a capacity one kind uses in a stage.
struct CapacityShare {
    Use const* use = nullptr; ///< by everything that the capacity is for; null if there is none for the kind
    std::uint64_t used = 0;   ///< by the kind alone

    std::uint64_t available() const { return static_cast<std::uint64_t>( use->available ); }
};

/// How much of each capacity each program uses, in the order of the programs. The rules must outlive it.
std::vector<std::vector<Use>> capacityUsesOf( Chip const& chip, Rules const& rules );

/// Among the capacities for a cell's kind, direction and stage, the one that is used most; without a row, for
/// resources of all kinds.
CapacityShare capacityShareOf( std::vector<Use> const& uses, GridRow const* row, bool ingress,
                               Chip const& chip, std::size_t column );

} // namespace Bfri
