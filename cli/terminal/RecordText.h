#pragma once

// Records as people read them: which fields have a column, with which title and wording.

#include "inspect/model/RecordKinds.h"
#include "inspect/rows/Row.h"

#include <span>

namespace Bfri {

/// A column of a list, and the field that fills it.
struct Column {
    char const* title;
    char const* field;
};

/// The columns of a kind's list; the other fields are for machines.
std::span<Column const> columnsOf( Kind kind );

/// A record's row for people: what a table does not have is absent, not zero as in the record; a resource has
/// its type and direction in words; what belongs to several tables says so.
Row rowForPeople( Kind kind, Row row );

/// The rows in these columns; only the types of the blank row count.
RowList inColumns( std::span<Column const> columns, Row const& blank, std::vector<Row> const& rows );

/// The list of some records of a kind.
RowList listForPeople( Kind kind, std::vector<Row> rows );

} // namespace Bfri
