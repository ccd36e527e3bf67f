#pragma once

// What differs between two models, as data: records of a kind are joined on their names, their fields
// compared.

#include "cli/Listings.h"

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
    std::vector<Change> fields = {};
    std::optional<Change> move = {}; ///< to another stage
    bool displaced = false;          ///< queries by name answer for another record of its name now
};

struct KindComparison {
    Listing const* kind;
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

struct Comparison {
    std::vector<Change> configuration = {}; ///< of the model itself, not of a record
    std::vector<KindComparison> kinds = {};
    /// Handles, each once, that are other numbers now but stand for the same.
    Tally renumbered = {};
    /// Hit-bit ranges of tables that start elsewhere now but are as long.
    Tally shifted = {};

    bool differs() const;
};

/// Of every kind, or of the only one that is asked for, then without the configuration. The models outlive
/// the comparison. Linear in their records.
Comparison compare( Model const& old, Model const& now, Listing const* only );

} // namespace Bfri
