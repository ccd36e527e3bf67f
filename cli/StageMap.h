#pragma once

// Which stages the hardware resources take. The model knows of each one its first stage and how many stage
// tables it has; these are taken for stages in a row.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace Bfri {

/// The number of a stage, and room behind the largest one.
using Stage = std::uint64_t;

/// The stages of a resource: first and last.
struct Span {
    explicit Span( BfResource const& resource )
        : first( resource.stageStart ),
          last( std::min<Stage>( first + std::max( resource.stages, U32( 1 ) ) - 1,
                                 std::numeric_limits<U32>::max() ) ) {}
    bool has( Stage stage ) const { return first <= stage && stage <= last; }

    Stage first;
    Stage last;
};

/// What some resources are to a stage.
struct StageLoad {
    std::uint32_t starting = 0; ///< those that start in it
    std::uint32_t spanning = 0; ///< those that are in it, started there or before
    std::uint64_t entries = 0;  ///< the sizes of those that start in it
};

/// The resources of one direction and type, by their stages and then by name; a load for each stage of the
/// map.
struct StageGroup {
    bool ingress;
    U32 type;
    std::vector<BfResource const*> resources;
    std::vector<StageLoad> loads;
};

/// The stages of one context file, or of all when the handles do not tell the files apart.
struct StageMap {
    std::vector<BfResourceInfo::ZelContextFile const*> files;
    std::vector<Stage> stages; ///< ascending
    std::vector<StageLoad> loads;
    std::vector<StageGroup> groups; ///< ingress first, then by type

    std::size_t size() const; ///< number of resources
};

/// By the lowest pipe. The parser outlives the maps.
std::vector<StageMap> stageMapsOf( BfResourceInfo::BfResourceParser const& parser );

} // namespace Bfri
