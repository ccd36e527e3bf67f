#pragma once

// Pairs the records of two configurations, within one kind and program.

#include "inspect/diff/Renames.h"
#include "inspect/rows/Row.h"

namespace Bfri {

/// What identifies a record: its name, and for an action also the name of its table.
struct Identity {
    explicit Identity( Row const& row );

    String const& name;
    String const* table; ///< null except for actions
};

/// Texts of the model hold no NUL, so no two identities have the same key.
String keyOf( String const& name, String const* table );

/// Rows of one kind, and the positions of those that are joined.
struct RowsOfProgram {
    std::vector<Row> const& rows;
    P4Programs::Positions const& positions;
};

/// Rows by their positions, each list in the order of its rows; pairs in the order of the old ones.
struct Join {
    struct Pair {
        std::size_t old;
        std::size_t now;
        bool isRenamed = false;
    };
    std::vector<Pair> both;
    std::vector<std::size_t> removed;
    std::vector<std::size_t> added;
    bool isReordered = false;
};

/// Joins rows by identity. Duplicate names pair up in order. Renamed tables count as the same, and so do
/// their actions; actions of one table with different names pair by handle. Linear in the rows.
Join joinRecords( RowsOfProgram const& old, RowsOfProgram const& now, Renames const& renames,
                  bool pairActions );

} // namespace Bfri
