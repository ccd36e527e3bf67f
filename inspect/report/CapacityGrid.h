#pragma once

// How much of the capacities of a budget the cells of a stage grid use.

#include "inspect/budget/Budget.h"
#include "inspect/report/StageGrid.h"

namespace Bfri {

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
