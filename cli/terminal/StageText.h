#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/budget/Budget.h"
#include "inspect/stages/StageMap.h"

#include <optional>
#include <ostream>

namespace Bfri {

/// What is wanted of the maps: a grid, the largest resources of a stage, or bars of all or of a stage.
struct StageView {
    StageMeasure by = StageMeasure::tables;
    std::optional<Stage> stage = {};
    bool listed = false;
    Rules const* budget = nullptr; ///< whose capacities are shown, too
};

/// Every map, with its pipes and files.
void printStages( std::ostream& out, TerminalStyle const& look, std::vector<StageMap> const& maps,
                  StageView const& view );

/// The stages across, types by direction down: how many resources start in each, and how many go on in it; or
/// the entries in each. Stages that the terminal has no room for follow in further blocks.
void printGrid( std::ostream& out, TerminalStyle const& look, StageMap const& map,
                StageView const& view = {} );

/// A line a resource, with a bar over its stages; of one stage only those that are in it.
void printBars( std::ostream& out, TerminalStyle const& look, StageMap const& map,
                std::optional<Stage> stage );

} // namespace Bfri
