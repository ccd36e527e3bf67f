#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace bfgen {

struct Options {
    std::string folder;
    std::string example;
    uint64_t seed = 1;
    uint32_t pipelines = 1;
    uint32_t stages = 12;
    std::size_t tables = 100;
    std::optional<uint32_t> bulkPercent;
    bool gzip = false;
    bool compact = false;
    bool runtimeConfig = true;
    bool flexibleHeaders = true;
};

/// Reads the command line; an exit status instead when there is nothing to do, or when it's wrong.
std::optional<int> readOptions( int argc, char** argv, Options& options );

} // namespace bfgen
