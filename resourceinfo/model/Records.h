#pragma once

// The plain records of the model: what one compiled program says of its tables and resources. Each owns its
// texts and refers to nothing else, so a copy is valid on its own, for as long as its holder keeps it.
// Records are equal if every field is.
// Handles carry the handle pipe bits of their context file. The quoted names are members of the context file.

#include "resourceinfo/model/Types.h"

#include <string_view>
#include <utility>
#include <vector>

/// What a stage table is, as numbers that callers compare with. There is no 11.
enum class BfResourceType : U32 {
    phase0Match = 0,          ///< "phase_0_match"
    ternaryMatch = 1,         ///< "ternary_match"
    hashMatch = 2,            ///< "hash_match"
    algorithmicTcamMatch = 3, ///< "algorithmic_tcam_match"
    matchWithNoKey = 4,       ///< "match_with_no_key"
    hashAction = 5,           ///< "hash_action"
    actionData = 6,           ///< "action_data"
    selection = 7,            ///< "selection"
    statistics = 8,           ///< "statistics"
    meter = 9,                ///< "meter", unless the table's "meter_type" is "red"
    stateful = 10,            ///< "stateful"
    wred = 12,                ///< "meter" with the table's "meter_type" "red"
};

/// The types with their texts in context files.
inline constexpr std::pair<BfResourceType, std::string_view> bfResourceTypeTexts[] = {
    { BfResourceType::phase0Match, "phase_0_match" },
    { BfResourceType::ternaryMatch, "ternary_match" },
    { BfResourceType::hashMatch, "hash_match" },
    { BfResourceType::algorithmicTcamMatch, "algorithmic_tcam_match" },
    { BfResourceType::matchWithNoKey, "match_with_no_key" },
    { BfResourceType::hashAction, "hash_action" },
    { BfResourceType::actionData, "action_data" },
    { BfResourceType::selection, "selection" },
    { BfResourceType::statistics, "statistics" },
    { BfResourceType::meter, "meter" },
    { BfResourceType::stateful, "stateful" },
    { BfResourceType::wred, "wred" },
};

/// One hardware resource: an element of "tables" that is placed, which means that it is no "condition" and
/// has a stage table.
struct BfResource {
    String name;          ///< "name"
    U32 handle = 0;       ///< "handle"
    U32 type = 0;         ///< a BfResourceType, from "stage_table_type" of the first stage table
    U32 size = 0;         ///< "size", in entries
    bool ingress = false; ///< "direction" is "ingress"
    U32 stages = 0;       ///< number of stage tables, over all units of a table with units
    U32 stageStart = 0;   ///< "stage_number" of the first stage table

    bool operator==( BfResource const& ) const = default;
};

/// One match table: an element of "tables" with "table_type" "match" that is resource-controllable and has no
/// static entries.
struct BfTableInfo {
    String name;          ///< "name"
    U32 handle = 0;       ///< "handle"
    U32 size = 0;         ///< "size", in entries
    U32 totalEntries = 0; ///< entries that the hit-bit range is sized for: "size", or the sum over all stage
                          ///< tables of an "algorithmic_tcam" or "chained_lpm" table
    bool hitBitSupported = false;  ///< a stage table has an "idletime_stage_table"
    U32 idleTimePrecision = 0;     ///< its "precision"; 1 without a stage table; 0 without hit bits
    U32 hitBitSmashOffset = 0;     ///< first slot in the shared hit-bit space; 0 without hit bits
    U32 hitBitSmashLast = 0;       ///< last slot in it; 0 without hit bits
    U32 maxEntries = 0;            ///< equal to size
    U32 maxPartitions = 0;         ///< "number_partitions"; 0 when absent
    U32 maxPrios = 0;              ///< always 255
    bool hasActionProfile = false; ///< the table has an "action_profile"
    U32 maxAdtEntries = 0;         ///< size of the indirect action-data table; 0 without one
    U32 maxSelGroups = 0;          ///< 2 with a selection table, else 0
    U32 maxSelEntries = 0;         ///< size of the selection table; 0 without one
    U32 adtHandle = 0;             ///< handle of the indirect action-data table; 0 without one
    U32 selHandle = 0;             ///< handle of the selection table; 0 without one
    String adtName;                ///< name of the indirect action-data table; empty without one
    String selName;                ///< name of the selection table; empty without one
    String logicalPipe;            ///< "logical_pipe", else "a" or "b" by the context file's name, else empty

    bool operator==( BfTableInfo const& ) const = default;
};

/// One statistics table: an element of "tables" with "table_type" "statistics". A direct one belongs to the
/// placed table that lists it in "statistics_table_refs", of several the one with the lowest handle; an
/// indirect one to the placed table whose actions name it in "indirect_resources", if there is just one.
struct BfTableCounterInfo {
    String name;            ///< "name"
    U32 handle = 0;         ///< of a direct counter the handle of its match table, else its own
    U32 ownHandle = 0;      ///< "handle"
    U32 size = 0;           ///< "size", in entries
    bool direct = false;    ///< "how_referenced" is not "indirect"
    bool bytes = false;     ///< "statistics_type" counts bytes
    bool packets = false;   ///< "statistics_type" counts packets
    String associatedTable; ///< name of the table that it belongs to; empty without one
    String logicalPipe;     ///< as of a match table

    bool operator==( BfTableCounterInfo const& ) const = default;
};

/// One meter table: an element of "tables" with "table_type" "meter". It belongs to a table as a counter
/// does, by "meter_table_refs".
struct BfTableMeterInfo {
    String name;              ///< "name"
    U32 handle = 0;           ///< of a direct meter the handle of its match table, else its own
    bool direct = false;      ///< "how_referenced" is "direct"
    bool pps = false;         ///< "meter_granularity" is "packets"
    bool hasPreColor = false; ///< there is a "pre_color_field_name"
    String associatedTable;   ///< name of the table that it belongs to; empty without one
    String logicalPipe;       ///< as of a match table

    bool operator==( BfTableMeterInfo const& ) const = default;
};

/// One WRED table: a meter table with "meter_type" "red".
struct BfTableWredInfo {
    String name;         ///< "name"
    U32 handle = 0;      ///< as of a meter
    bool direct = false; ///< "how_referenced" is "direct"
    String logicalPipe;  ///< as of a match table

    bool operator==( BfTableWredInfo const& ) const = default;
};

/// One stateful register table: an element of "tables" with "table_type" "stateful". It belongs to a table as
/// a counter does, by "stateful_table_refs".
struct BfRegisterInfo {
    String name;            ///< "name"
    U32 handle = 0;         ///< unless it is indirect, the handle of its match table, else its own
    bool indirect = false;  ///< "how_referenced" is "indirect"
    String dataType;        ///< "uint8_t", "uint16_t", "uint32_t", "uint64_t" or "*uint8"
    U32 width = 0;          ///< "alu_width", in bits
    bool dualWidth = false; ///< "dual_width_mode" is there and true

    bool operator==( BfRegisterInfo const& ) const = default;
};

/// One learn quanta: an element of "learn_quanta" that has an "lq_cfg_type".
struct BfLearnQuantaInfo {
    String name;    ///< "name"
    U32 handle = 0; ///< "handle"

    bool operator==( BfLearnQuantaInfo const& ) const = default;
};

/// One action of a match table of the model: an element of the table's "actions".
struct BfActionInfo {
    U32 handle = 0;   ///< the action's "handle"
    String name;      ///< the action's "name"
    String tableName; ///< "name" of the table whose "actions" hold it

    bool operator==( BfActionInfo const& ) const = default;
};

/// One dynamic hash calculation: an element of "dynamic_hash_calculations".
struct BfDynamicHashInfo {
    U32 tableHdl = 0;               ///< the calculation's "handle"
    U32 fieldListHdl = 0;           ///< "handle" of its field list
    U32 fieldCount = 0;             ///< number of fields, at least 1
    std::vector<String> fieldNames; ///< "name" of each field, in list order; fieldCount of them
};

/// Index key: a record's name as a NUL-terminated text.
template<class Record>
struct BfByName {
    using Type = std::string_view;
    static Type of( Record const& record ) { return record.name.c_str(); }
    /// Whether that is a record's key; need not look for the end of the record's name. A key has no NUL.
    static bool is( Record const& record, Type key ) {
        char const* const name = record.name.c_str();
        return record.name.size() >= key.size() && Type( name, key.size() ) == key &&
               name[ key.size() ] == '\0';
    }
};

/// Index key: a record's handle.
template<class Record>
struct BfByHandle {
    using Type = U32;
    static Type of( Record const& record ) { return record.handle; }
};
