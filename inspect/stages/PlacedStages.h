#pragma once

// The stages of hardware resources, and how many entries each has there. The model knows the first
// stage of each and the number of its stage tables; the survey of the context files knows the stages.

#include "inspect/model/Configuration.h"

#include <optional>
#include <vector>

namespace Bfri {

/// The number of a stage, as in the model: its lowest 32 bits, even if it is negative.
using Stage = std::uint64_t;

/// A resource in one stage.
struct PlacedStage {
    Stage stage;
    U32 tables = 0;            ///< its stage tables there
    U32 stated = 0;            ///< of these, the ones whose size the context file states
    std::uint64_t entries = 0; ///< the sum of the stated sizes
};

/// The stages of a table: ascending, each once; nothing if a stage table has no such number.
std::optional<std::vector<PlacedStage>> stagesOf( Context::SurveyedTable const& table );

/// The stages of each resource of a configuration that was loaded with a survey, by position in
/// `bfResources`.
std::vector<std::optional<std::vector<PlacedStage>>> placedStages( Configuration const& configuration );

} // namespace Bfri
