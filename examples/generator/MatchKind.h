#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "Program.h"

namespace bfgen {

/// The ways in which a chip matches.
enum class MatchKind : uint8_t {
    exact,
    ternary,
    algorithmicTcam,
    chainedLpm,
    algorithmicLpm,
    keyless,
    hashAction,
    portProperties
};

/// A run of neighbouring stages; none when the compiler found a table to be unused.
struct Placement {
    uint32_t first = 0;
    uint32_t count = 0;
};

struct IdleTime {
    uint32_t precision;
    /// Whether a table made of units describes its idle time a second time, beside the units.
    bool besideUnits = false;
};

/// Shares a table's entries out over the stages.
StageTables layOut( std::string_view type, uint32_t size, Placement placement );

/// A match table of that kind without name, keys and actions, laid out over the stages.
Table makeMatchTable( MatchKind kind, uint32_t size, Placement placement, std::optional<IdleTime> idleTime );

/// A table that serves match tables, with the stage-table type that goes with its details.
Table makeAttendant( Details details, uint32_t size, Placement placement );

bool supportsIdleTime( MatchKind kind );
/// Whether tables of this kind choose among actions that carry data, counters and the like.
bool supportsAttendants( MatchKind kind );

} // namespace bfgen
