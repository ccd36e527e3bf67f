#pragma once

// The stage maps as text: what the grid and the other texts share is below.

#include "cli/terminal/TextFormat.h"
#include "inspect/budget/Budget.h"
#include "inspect/stages/StageMap.h"

#include <array>
#include <optional>

namespace Bfri {

/// What to show of the maps: a grid, the largest resources of a stage, or bars for all or for one stage.
struct StageView {
    StageMeasure by = StageMeasure::tables;
    std::optional<Stage> stage = {};
    bool listed = false;
    Rules const* budget = nullptr; ///< whose capacities to show as well
};

/// Every map, with its pipes and files.
void printStages( std::ostream& out, TerminalStyle const& look, std::vector<StageMap> const& maps,
                  StageView const& view );

/// A grid with stages across and types by direction down: how many resources start in each stage, and how
/// many continue in it; or the entries. Stages that do not fit on the terminal follow in further blocks.
void printGrid( std::ostream& out, TerminalStyle const& look, StageMap const& map,
                StageView const& view = {} );

/// One line per resource, with a bar over its stages; with a stage, only those in it.
void printBars( std::ostream& out, TerminalStyle const& look, StageMap const& map,
                std::optional<Stage> stage );

struct Symbols {
    char const* nothing;
    char const* taken;
    std::array<char const*, 9> levels; ///< from empty to full
};
Symbols const& symbolsOf( TerminalStyle const& look );

String toTheRight( String const& text, std::size_t columns );
String toTheLeft( String const& text, std::size_t columns );

/// A part of a whole in whole percent: "12%"; "0%" if the whole is 0.
String percentText( std::uint64_t part, std::uint64_t all );
/// The same of what a rule allows: "over" if that is nothing.
String percentText( Use const& use );

char const* directionOf( bool ingress );
String typeOf( StageGroup const& group );

} // namespace Bfri
