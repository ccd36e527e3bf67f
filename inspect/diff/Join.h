#pragma once

// Which record of one configuration is which of another's, when both are of the same kind and program.

#include "inspect/diff/Renames.h"
#include "inspect/rows/Row.h"

namespace Bfri {

/// What a record is known by: its name, and an action by its table's, too.
struct Identity {
    explicit Identity( Row const& row );

    String const& name;
    String const* table; ///< null but for actions
};

/// Texts of the model hold no NUL, so that no two identities have one key.
String keyOf( String const& name, String const* table );

/// Rows of one kind, and which of them are joined.
struct RowsOfProgram {
    std::vector<Row> const& rows;
    P4Programs::Positions const& positions;
};

/// The rows by their positions. All are in the order of the rows that they are of; the pairs in that of the
/// old.
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

/// By what records are known by. Where several have a name, the first is the first. Tables with a new name
/// are the same, and so are their actions; of actions with other names of one table, those of one handle.
/// Linear in the rows.
Join joinRecords( RowsOfProgram const& old, RowsOfProgram const& now, Renames const& renames,
                  bool pairActions );

} // namespace Bfri
