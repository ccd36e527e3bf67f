#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/stages/StageMap.h"

#include <optional>
#include <ostream>

namespace Bfri {

/// Every map, with its pipes and files: as a grid, or as bars where a stage is asked for or a list.
void printStages( std::ostream& out, TerminalStyle const& look, std::vector<StageMap> const& maps,
                  std::optional<Stage> stage, bool listed );

/// The stages across, types by direction down: how many resources start in each, and how many go on in it.
/// Stages that the terminal has no room for follow in further blocks.
void printGrid( std::ostream& out, TerminalStyle const& look, StageMap const& map );

/// A line a resource, with a bar over its stages; of one stage only those that are in it.
void printBars( std::ostream& out, TerminalStyle const& look, StageMap const& map,
                std::optional<Stage> stage );

} // namespace Bfri
