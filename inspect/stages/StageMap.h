#pragma once

// Which stages the hardware resources are in, how many are in each, and how many entries they have there. The
// model knows the first stage of each resource and the number of its stage tables; the survey of the context
// files knows the stages.

#include "inspect/model/Configuration.h"
#include "inspect/rows/Row.h"

#include <optional>

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

/// A resource with its stages: ascending, and at least one.
struct Placed {
    BfResource const* resource;
    std::vector<PlacedStage> stages;

    /// What it has in a stage; null if it is not there.
    PlacedStage const* in( Stage stage ) const;
    bool isIn( Stage stage ) const { return in( stage ) != nullptr; }
};

/// What some resources have in a stage.
struct StageLoad {
    std::uint32_t starting = 0; ///< resources that start in it
    std::uint32_t spanning = 0; ///< resources in it, whether they start there or earlier
    std::uint32_t tables = 0;   ///< their stage tables in it
    std::uint32_t stated = 0;   ///< of these, the ones whose size the context file states
    std::uint64_t entries = 0;  ///< the sum of the stated sizes

    /// Adds a resource in the stage; it may start there.
    void add( PlacedStage const& placed, bool starts );
};

/// What a stage is measured by: the resources in it, or the entries stated for it.
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

/// The stages of one context file, or of all if the handles do not tell the files apart.
struct StageMap {
    std::vector<BfResourceInfo::ZelContextFile const*> files;
    std::vector<Stage> stages; ///< ascending
    std::vector<StageLoad> loads;
    std::vector<StageGroup> groups;      ///< ingress first, then by type
    std::vector<BfResource const*> lost; ///< not on the map, as the context files do not state their stages

    std::size_t size() const; ///< number of resources on the map
};

/// The maps ordered by lowest pipe, of a configuration that was loaded with a survey and must outlive them.
std::vector<StageMap> stageMapsOf( Configuration const& configuration );

/// A map for each context file, in the order of the configuration, which was loaded with a survey and must
/// outlive the maps.
std::vector<StageMap> stageMapsByProgram( Configuration const& configuration );

/// All stages up to the highest; among numbers that are impossibly high, only those that are used.
std::vector<Stage> allStagesUpTo( std::vector<Stage> taken );

/// The JSON object of a map: files, stages with their loads, resources; with `stage`, only that stage and
/// what is in it.
Row rowOf( StageMap const& map, std::optional<Stage> stage );

} // namespace Bfri
