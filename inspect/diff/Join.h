#pragma once

// Which record of one model is which of another's, when both are of the same kind.

#include "inspect/rows/Row.h"

namespace Bfri {

/// The rows by their places. All are in the order of the rows that they are of; the pairs in that of the old.
struct Join {
    struct Pair {
        std::size_t old;
        std::size_t now;
        /// The old one was the first of its name, which queries by name answer for, and the new one is not.
        bool displaced;
    };
    std::vector<Pair> both;
    std::vector<std::size_t> removed;
    std::vector<std::size_t> added;
};

/// What a record is known by: its name, and an action by its table's, too.
struct Identity {
    explicit Identity( Row const& row );

    String const& name;
    String const* table; ///< null but for actions
};

/// By what records are known by. Where several have a name, as tables of two pipelines may, those of the same
/// pipeline are the same, and in it the first is the first. Linear in the rows.
Join joinRows( std::vector<Row> const& old, std::vector<Row> const& now );

} // namespace Bfri
