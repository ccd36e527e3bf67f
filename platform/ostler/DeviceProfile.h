#pragma once

#include "vessa/Types.h"

#include <optional>
#include <vector>

namespace Ostler {

using Vessa::S32;
using Vessa::String;
using Vessa::U32;
using Vessa::U8;

/// One P4 pipeline of a device: a compiled program and the pipes that run it.
struct Pipeline {
    String contextFile;         ///< "context_file", resolved
    S32 numPipesInScope = 0;    ///< how many entries of the list are used
    std::vector<U32> pipeScope; ///< "pipes": pipe numbers
};

/// One switching chip.
struct Device {
    std::optional<String> runtimeConfig; ///< "runtime_config", resolved; absent when the file has none
    U8 numPipelines = 0;
    std::vector<Pipeline> pipelines; ///< "pipelines"; numPipelines of them
};

/// What a switch configuration says, resolved and checked.
struct DeviceProfile {
    U8 numDevices = 0;
    std::vector<Device> devices; ///< "devices"; numDevices of them
};

} // namespace Ostler
