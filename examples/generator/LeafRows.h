#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "MatchKind.h"
#include "Program.h"

namespace bfgen {

struct MatchRow {
    bool ingress;
    std::string_view name;
    MatchKind kind;
    uint32_t size;
    Placement placement;
    std::vector<Field> keys;
    std::vector<std::string_view> actions;
    std::optional<IdleTime> idleTime = {};
    std::optional<uint32_t> staticEntries = {};
};

struct AttendantRow {
    bool ingress;
    std::string_view name;
    Details details;
    How how;
    uint32_t size;
    Placement placement;
};

/// A match table uses an attendant; the action, when one is named, chooses the entry.
struct UseRow {
    std::string_view owner;
    std::string_view attendant;
    std::string_view action = {};
};

struct LearnQuantaRow {
    std::string_view name;
    std::optional<std::string> configType;
    std::vector<Field> fields;
};

struct HashRow {
    std::string_view name;
    std::vector<Field> fields;
};

/// What a leaf switch's program consists of; table names are without pipeline and control.
struct LeafRows {
    std::vector<MatchRow> matches;
    std::vector<AttendantRow> attendants;
    std::vector<UseRow> uses;
    std::vector<LearnQuantaRow> learnQuanta;
    std::vector<HashRow> hashes;
    std::vector<Header> headers;
    std::vector<PhvRecord> phvRecords;
};

/// Pipeline a: bridging, routing, access lists and queues for the racks.
LeafRows routingRows();

/// Pipeline b: the tenants' overlay.
LeafRows overlayRows();

} // namespace bfgen
