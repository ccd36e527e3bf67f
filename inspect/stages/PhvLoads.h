#pragma once

#include "inspect/model/Configuration.h"

#include <vector>

namespace Bfri {

/// What the fields of one direction take of the PHV in a stage.
struct PhvLoad {
    U32 fields = 0;
    std::uint64_t bytes = 0; ///< their widths, as the context file has them, not modulo 32 as in the model
};

/// An element of a context file's "phv_allocation".
struct PhvStage {
    PhvLoad ingress = {};
    PhvLoad egress = {};
};

/// From stage 0 to the last one with a field.
std::vector<PhvStage> phvStagesOf( Context::FileSurvey const& file );

} // namespace Bfri
