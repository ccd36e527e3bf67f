#pragma once

// Which rows of a list are wanted, and in which order.

#include "cli/grammar/Pattern.h"
#include "cli/grammar/Where.h"
#include "inspect/rows/Row.h"

#include <limits>
#include <optional>

namespace Bfri {

/// By the field with this name: numbers by value, texts by their bytes, false first, absent values before
/// all.
struct Order {
    String field;
    bool descending = false;
};

/// By default, all rows in their order.
struct RowSelection {
    std::optional<Pattern> filter; ///< for the field "name"
    std::optional<Order> order;
    std::size_t most =
        std::numeric_limits<std::size_t>::max(); ///< rows that remain, after filter and condition
    std::optional<Where> where = {};
};

/// Keeps the selected rows, in order. Rows that the order does not tell apart stay as they were.
void choose( std::vector<Row>& rows, RowSelection const& choice );

} // namespace Bfri
