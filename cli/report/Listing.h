#pragma once

// A list that the script can sort and search: one table, or many rows folded by control path.

#include "cli/report/Parts.h"

#include <functional>

namespace Bfri {

struct ListColumn {
    char const* title;
    U32 width = 0; ///< in pixels; 0: the remaining width
    Literal css = "";
};

struct ListRow {
    std::size_t number; ///< of what it shows; the default order of rows
    std::string_view name;
    std::uint64_t weight;
};

struct Listing {
    Literal id;
    Literal prefix; ///< of the ids of rows: "l"
    std::vector<ListColumn> columns;
    std::vector<ListRow> rows;
    /// Which numbers belong to which pipes, for the script.
    OwnText ranges;
    /// Writes the cells of a row; in full, the name has its path.
    std::function<void( ListRow const&, bool inFull )> writeCells;
};

void writeListing( Html& html, Listing const& listing );

/// A cell of stages, with a bar that shows where they are.
void writeStageCell( Html& html, Chip const& chip, ChipResource const* resource );
/// A number, with a bar for its share of the largest.
void writeWeightCell( Html& html, std::uint64_t number, std::uint64_t most );
void writeNumberCell( Html& html, std::uint64_t number ); ///< "–" for 0

} // namespace Bfri
