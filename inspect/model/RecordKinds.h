#pragma once

// The kinds of record that have a list command. A new one is a row of the table and its functions.

#include "cli/grammar/Commands.h"
#include "inspect/rows/Row.h"

namespace Bfri {

/// A field of the rows: the title of its column for people, and what it says, with its unit.
struct Column {
    char const* title; ///< null where only machines get the field
    char const* field;
    char const* meaning = ""; ///< for the help; every field of a listing has one
};

/// One kind of record: what the machines get of it, every field, and what people do.
struct RecordKind {
    char const* word; ///< the command
    char const* one;  ///< the kind of one record
    char const* description;
    char const* member; ///< of the JSON object
    Row ( *blank )();   ///< a row of which only the types count; every kind has a field "name"
    std::vector<Row> ( *rows )( BfResourceInfo::BfResourceParser const& parser );
    std::span<Column const> columns;
    Row ( *shown )( Row row ) = nullptr; ///< the row for people, where it is another one
    char const* note = "";               ///< for the help: which records there are, in lines
};

/// The rows in these columns; of the blank row only the types count.
RowList columnsOf( std::span<Column const> columns, Row const& blank, std::vector<Row> const& rows );

/// Every kind, in the order of the help.
std::span<RecordKind const> recordKinds();

} // namespace Bfri
