#pragma once

// The kinds of record, in one table. A new kind takes a member of the enumeration, a row and its functions.
// Code that shows records uses this table, and asks for a kind by its member, never by a word.

#include "inspect/model/Relations.h"
#include "inspect/rows/Row.h"

#include <span>

namespace Bfri {

/// A field of a kind's rows.
struct FieldInfo {
    char const* name;
    char const* meaning; ///< what it says, with its unit
};

/// One kind of record.
struct RecordKind {
    Kind kind;
    char const* one;    ///< what one record is called, in one word: "table"
    char const* many;   ///< what several are called: "tables"
    char const* noun;   ///< the same in a sentence: "match table"
    char const* nouns;  ///< "match tables"
    char const* member; ///< of a JSON object that holds records of the kind
    Row ( *blank )();   ///< a row of which only the types count; every kind has a field "name"
    std::vector<Row> ( *rows )(
        BfResourceInfo::BfResourceParser const& parser ); ///< every field of every record
    std::span<FieldInfo const> fields;
    bool ofTables = false; ///< its records are match tables, or belong to them
    bool isCounted = true; ///< in the counts of a configuration, so that each record counts once
    Attachment const* attachment = nullptr; ///< how placed tables refer to its records; null if they do not
};

/// Every kind, in the order in which people see them.
std::span<RecordKind const> recordKinds();

RecordKind const& kindOf( Kind kind );

/// The kind that a word names, singular or plural ("table", "tables"); null for none.
RecordKind const* kindOf( std::string_view word );

} // namespace Bfri
