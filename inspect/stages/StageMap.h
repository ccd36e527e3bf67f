#pragma once

// Which stages the hardware resources take, and how many take each.

#include "inspect/rows/Row.h"
#include "inspect/stages/PlacedStages.h"

namespace Bfri {

/// A resource in its stages, which are ascending, and at least one.
struct Placed {
    BfResource const* resource;
    std::vector<PlacedStage> stages;

    /// What it has in a stage; null where it is not.
    PlacedStage const* in( Stage stage ) const;
    bool isIn( Stage stage ) const { return in( stage ) != nullptr; }
};

/// What some resources are to a stage.
struct StageLoad {
    std::uint32_t starting = 0; ///< those that start in it
    std::uint32_t spanning = 0; ///< those that are in it, started there or in an earlier one
    std::uint32_t tables = 0;   ///< their stage tables in it
    std::uint32_t stated = 0;   ///< of these, the ones whose size the context file states
    std::uint64_t entries = 0;  ///< the sum of the stated sizes

    /// Adds a resource that is in the stage, and perhaps starts there.
    void add( PlacedStage const& placed, bool starts );
};

/// What a stage is measured by: the resources that are in it, or the entries that are stated for it.
enum class StageMeasure { tables, entries };

inline std::uint64_t amountOf( StageLoad const& load, StageMeasure by ) {
    return by == StageMeasure::entries ? load.entries : load.spanning;
}

/// The resources of one direction and type, by their stages and then by name; a load for each stage of the
/// map.
struct StageGroup {
    bool ingress;
    U32 type;
    std::vector<Placed> resources;
    std::vector<StageLoad> loads;
};

/// The stages of one context file, or of all when the handles do not tell the files apart.
struct StageMap {
    std::vector<BfResourceInfo::ZelContextFile const*> files;
    std::vector<Stage> stages; ///< ascending
    std::vector<StageLoad> loads;
    std::vector<StageGroup> groups;      ///< ingress first, then by type
    std::vector<BfResource const*> lost; ///< not on the map: the context files do not tell their stages

    std::size_t size() const; ///< number of resources on the map
};

/// By the lowest pipe, of a configuration that was loaded with a survey and outlives the maps.
std::vector<StageMap> stageMapsOf( Configuration const& configuration );

/// A map for each context file, in the order of the configuration, which was loaded with a survey and
/// outlives the maps.
std::vector<StageMap> stageMapsByProgram( Configuration const& configuration );

/// The JSON object of a map: files, stages with their loads, resources; of one stage only that and what is in
/// it.
Row rowOf( StageMap const& map, std::optional<Stage> stage );

} // namespace Bfri
