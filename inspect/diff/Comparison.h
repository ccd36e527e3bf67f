#pragma once

// What differs between two models, as data: records of a kind are joined on their names, their fields
// compared.

#include "inspect/model/Configuration.h"
#include "inspect/model/HandleOwners.h"
#include "inspect/model/RecordKinds.h"

#include <optional>

namespace Bfri {

/// A value that is another one now. That of a handle says what the handle stands for, too.
struct Change {
    std::string_view field;
    Value from;
    Value to;
};

/// A record that both models have, and that differs.
struct ChangedRecord {
    Row row = {}; ///< as it was
    Row now = {};
    std::vector<Change> fields = {};
    std::optional<Change> move = {}; ///< of all its stages by one distance: of the first
    bool displaced = false;          ///< queries by name answer for another record of its name now
};

struct KindComparison {
    RecordKind const* kind;
    std::vector<Row> removed = {};
    std::vector<Row> added = {};
    std::vector<ChangedRecord> changed = {};
    std::size_t same = 0; ///< records that differ in nothing, or in nothing but what is folded

    bool differs() const { return !removed.empty() || !added.empty() || !changed.empty(); }
};

/// Differences without a meaning of their own, so many that they are counted only.
struct Tally {
    std::size_t differing = 0;
    std::size_t all = 0;
};

/// A handle that is another number now, and a record that has it as its own; of a table that is only
/// referenced the kind is that of handles.
struct Renumbering {
    Kind kind;
    String name;
    std::optional<String> table; ///< of an action
    U32 from;
    U32 to;

    String label() const { return table ? name + " of " + *table : name; }
};

struct Handles {
    Tally tally = {};                         ///< old numbers, each once, and those that are others now
    std::vector<Renumbering> renumbered = {}; ///< ascending by the old number
    std::size_t reused = 0;                   ///< of the old numbers that are others now: have new owners
    std::vector<SharedHandle> shared = {};    ///< that stand for more than before
    bool keepMeanings = false;                ///< each new number stands for what the old one stood for
    /// Whether numbers tell records apart; not so in several context files without a run-time configuration,
    /// where nothing is known to be shared.
    bool areUnique = true;
};

struct Comparison {
    std::vector<Change> configuration = {}; ///< of the model itself, not of a record
    std::vector<KindComparison> kinds = {};
    Handles handles = {};
    /// Hit-bit ranges of tables that start elsewhere now but are as long.
    Tally shifted = {};

    bool differs() const;
};

/// Of every kind, or of the only one that is asked for, then without the configuration. The models outlive
/// the comparison. Linear in their records. With resources, the context files are read once more.
Comparison compare( Configuration const& old, Configuration const& now, RecordKind const* only );

/// The members of a JSON object, verdict included.
Row rowOf( Comparison const& comparison );

} // namespace Bfri
