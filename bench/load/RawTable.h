#pragma once

#include "bench/load/Model.h"

#include <string_view>

// An element of "tables", as it is met from its front to its end. The texts are the document's.

struct RawReference {
    U32 handle = 0;
    std::string_view name;
    std::string_view howReferenced;
};

struct RawStageTable {
    std::string_view type;
    U32 stageNumber = 0;
    U32 size = 0;
    bool hasIdleTime = false;
    U32 precision = 0;
};

struct RawAction {
    U32 handle = 0;
    std::string_view name;
    std::vector<std::string_view> indirectResources;
};

struct RawTable {
    std::string_view name;
    std::string_view type;
    U32 handle = 0;
    U32 size = 0;
    std::string_view direction;
    std::string_view logicalPipe;
    std::string_view howReferenced;
    bool isControllable = false;
    bool hasStaticEntries = false;
    bool hasActionProfile = false;
    std::string_view statisticsType;
    std::string_view meterType;
    std::string_view meterGranularity;
    bool hasPreColor = false;
    U32 aluWidth = 0;
    bool dualWidth = false;
    std::string_view matchType;
    U32 partitions = 0;
    bool hasUnits = false;
    std::vector<RawStageTable> stageTables;     // its own, or those of its match attributes
    std::vector<RawStageTable> unitStageTables; // of all units
    std::vector<RawAction> actions;
    std::vector<RawReference> actionData;
    std::vector<RawReference> selection;
    std::vector<RawReference> statistics;
    std::vector<RawReference> meters;
    std::vector<RawReference> registers;
};

/// Puts the records of the tables into the model. `path` is the file's: the logical pipe may follow from it.
void addTables( std::vector<RawTable> const& tables, String const& path, Model& model );
