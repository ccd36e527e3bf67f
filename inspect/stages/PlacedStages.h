#pragma once

// The stages that hardware resources take. The model knows the first stage of each and the number of its
// stage tables; the survey of the context files knows the stages themselves.

#include "inspect/model/Configuration.h"

#include <optional>
#include <vector>

namespace Bfri {

/// The number of a stage, as the model has it: 32 bits, also of a negative one.
using Stage = std::uint64_t;

/// The stages of each resource of a configuration that was loaded with a survey, by position in
/// `bfResources`: ascending, each once; nothing where a stage table has no such number.
std::vector<std::optional<std::vector<Stage>>> placedStages( Configuration const& configuration );

} // namespace Bfri
