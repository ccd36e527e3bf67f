#pragma once

// What an agent that programs by name would notice of the differences between two models.

#include "inspect/diff/Comparison.h"

namespace Bfri {

/// Of one record, to that agent; of several of one record the last counts.
enum class Effect { none, shrunk, changed, removed };

/// "shrunk", "changed", "removed".
char const* textOf( Effect effect );

Effect effectOfRemoval( RecordKind const& kind );
/// Handles, stages and hit-bit slots are asked for when they are needed, and what grows still holds what it
/// held. All else that queries answer is noticed.
Effect effectOf( RecordKind const& kind, ChangedRecord const& record );

/// A record of the old model that is noticed; part of the comparison.
struct Notice {
    RecordKind const* kind;
    Row const* row;
    ChangedRecord const* change; ///< from what to what; null of one that is removed
    Effect effect;
};

std::vector<Notice> noticesOf( Comparison const& comparison );

/// Without notices, and no handle stands for more than before: names and sizes are compatible.
bool isCompatible( Comparison const& comparison );

} // namespace Bfri
