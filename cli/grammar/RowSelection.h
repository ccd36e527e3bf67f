#pragma once

// Which rows of a list are wanted, and in which order.

#include "cli/grammar/Pattern.h"
#include "cli/grammar/Where.h"
#include "inspect/rows/Row.h"

#include <limits>
#include <optional>

namespace Bfri {

/// By the field of this name: numbers by value, texts by their bytes, false first, what is absent before all.
struct Order {
    String field;
    bool descending = false;
};

/// Default-constructed it is every row as it comes.
struct RowSelection {
    std::optional<Pattern> filter; ///< of the field "name"
    std::optional<Order> order;
    std::size_t most =
        std::numeric_limits<std::size_t>::max(); ///< rows, of those that filter and condition leave
    std::optional<Where> where = {};
};

/// Leaves the chosen rows. Rows that the order does not tell apart stay as they came.
void choose( std::vector<Row>& rows, RowSelection const& choice );

} // namespace Bfri
