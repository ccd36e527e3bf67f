#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "Program.h"

namespace bfgen {

struct SwitchLayout {
    std::filesystem::path folder;
    uint32_t pipelines;
    bool gzip;
    bool compact;
    bool runtimeConfig;
    uint64_t seed;
    uint32_t bulkPercent;
};

/// Writes a switch configuration with all that it names. The programs are asked for one by one, so that never
/// more than one is in memory. Throws std::runtime_error when a file can't be written.
void writeSwitch( SwitchLayout const& layout, std::function<Program( uint32_t pipeline )> const& programOf );

} // namespace bfgen
