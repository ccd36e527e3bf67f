#pragma once

// What the cells of a stage grid take of the capacities that a budget states.

#include "inspect/budget/Budget.h"
#include "inspect/report/StageGrid.h"

namespace Bfri {

/// What one kind takes of a capacity in a stage.
struct CapacityShare {
    Use const* use =
        nullptr;            ///< of the capacity by all that it is for; null where there is none for the kind
    std::uint64_t used = 0; ///< by the kind alone

    std::uint64_t available() const { return static_cast<std::uint64_t>( use->available ); }
};

/// What each program takes of each capacity, in the order of the programs. The rules outlive it.
std::vector<std::vector<Use>> capacityUsesOf( Chip const& chip, Rules const& rules );

/// Of the capacities for a cell's kind, direction and stage the one that is used most; by resources of all
/// kinds where no row is given.
CapacityShare capacityShareOf( std::vector<Use> const& uses, GridRow const* row, bool ingress,
                               Chip const& chip, std::size_t column );

} // namespace Bfri
