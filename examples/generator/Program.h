#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bfgen {

/// How a table or an action uses another table: an entry of its own for each match entry, or one chosen by
/// index.
enum class How : uint8_t { direct, indirect };

/// The part of a table that stands in one stage.
struct StageTable {
    uint32_t stage;
    std::string_view type;
    uint32_t size;
    std::optional<uint32_t> idlePrecision;
};

using StageTables = std::vector<StageTable>;

struct Reference {
    std::string name;
    uint32_t handle;
    How how;
};

/// Three forms: left out, present and empty, filled.
using References = std::optional<std::vector<Reference>>;

struct Field {
    std::string name;
    uint32_t bits;
};

struct Action {
    std::string name;
    uint32_t handle;
    std::optional<std::vector<std::string>> indirectResources;
};

struct Match {
    std::string_view type;
    std::vector<Field> keys = {};
    /// A table made of several smaller ones that are searched one after the other; most tables have none.
    std::vector<StageTables> units = {};
    bool stageTablesBesideUnits = false;
    std::optional<uint32_t> partitions = {};
    bool resourceControllable = true;
    std::optional<uint32_t> staticEntries = {};
    std::optional<std::string> actionProfile = {};
    References actionData = {};
    References selection = {};
    References statistics = {};
    References meters = {};
    References stateful = {};
    std::vector<Action> actions = {};
};

struct Condition {
    std::string text;
};

struct ActionData {};

struct Selection {
    uint32_t groups;
};

struct Statistics {
    std::string_view counts;
};

struct Meter {
    std::string_view type;
    std::string_view granularity;
    std::optional<std::string> preColorField;
};

struct Stateful {
    uint32_t aluWidth;
    std::optional<bool> dualWidth;
};

using Details = std::variant<Match, Condition, ActionData, Selection, Statistics, Meter, Stateful>;

/// One element of a context file's list of tables.
struct Table {
    std::string name;
    bool ingress;
    uint32_t size;
    Details details;
    How how = How::direct;
    StageTables stageTables = {};
    std::optional<std::string> logicalPipe = {};
    uint32_t handle = 0;
};

/// "pipe_a" to "pipe_d".
std::string pipelineName( uint32_t pipeline );

/// Whether some stage holds a part of the table.
bool isPlaced( Table const& table );

/// A packet field, or a validity bit of a header, in a container over a range of stages.
struct PhvRecord {
    std::string field;
    uint32_t bytes;
    bool isPov;
    bool ingress;
    uint32_t container;
    uint32_t firstStage;
    uint32_t lastStage;
};

struct LearnQuanta {
    std::string name;
    uint32_t handle;
    std::optional<std::string> configType;
    std::vector<Field> fields;
};

struct Header {
    std::string name;
    std::vector<Field> fields;
};

struct HashCalculation {
    std::string name;
    uint32_t handle;
    uint32_t fieldListHandle;
    std::vector<Field> fields;
};

/// Everything one context file tells, short of the bulk that is made up while writing.
struct Program {
    std::string name;
    char pipeline;
    uint32_t stages;
    std::deque<Table> tables; // references to tables stay valid while others are added
    std::vector<LearnQuanta> learnQuanta;
    std::vector<PhvRecord> phvRecords;
    std::optional<std::vector<Header>> headers;
    std::vector<HashCalculation> hashCalculations;
};

} // namespace bfgen
