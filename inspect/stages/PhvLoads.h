#pragma once

#include "inspect/model/Configuration.h"

#include <vector>

namespace Bfri {

/// How much of the PHV the fields of one direction use in a stage.
struct PhvLoad {
    U32 fields = 0;
    std::uint64_t bytes = 0; ///< their widths as in the context file, not modulo 32 as in the model
};

/// An element of a context file's "phv_allocation".
struct PhvStage {
    PhvLoad ingress = {};
    PhvLoad egress = {};
};

/// The loads from stage 0 to the last one with a field.
std::vector<PhvStage> phvStagesOf( Context::FileSurvey const& file );

} // namespace Bfri
