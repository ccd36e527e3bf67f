#pragma once

// The stages that hardware resources take. The model knows the first stage of each and the number of its
// stage tables; the stages themselves stand in the context files alone.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace Bfri {

/// The number of a stage.
using Stage = std::uint64_t;

/// What the context files of a model say of them.
class PlacedStages {
  public:
    /// Reads the files once more.
    explicit PlacedStages( BfResourceInfo::BfResourceParser const& parser );

    /// The stages of a resource, ascending, each once; nothing when no table of the files is that resource. A
    /// table is just one resource, so that several of a handle are told apart by their order.
    std::optional<std::vector<Stage>> take( BfResource const& resource );

  private:
    struct Table {
        String name;
        std::vector<Stage> stages; // of its stage tables, in their order
    };
    std::unordered_map<U32, std::vector<Table>> byHandle_;
};

} // namespace Bfri
