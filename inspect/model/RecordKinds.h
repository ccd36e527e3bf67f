#pragma once

// The kinds of record, and the collections that a model keeps them in, each in one table. Code that shows
// records uses these tables, and asks for a kind by its member, never by a word.

#include "inspect/model/Records.h"

#include <optional>
#include <span>

namespace Bfri {

/// In the order in which people see them.
enum class Kind {
    tables,
    resources,
    counters,
    meters,
    wreds,
    registers,
    learnQuantas,
    actions,
    headers,
    hashes,
    phvFields,
    handles, ///< placed tables by handle: the resources once more, with what they reference
};

/// How placed tables refer to a kind of record that belongs to tables.
struct Attachment {
    Kind kind;
    BfResourceType type;
    Vessa::Queue<U32> const& ( BfZelResource::*references )() const; ///< where tables list its handle
};

/// Those of counters, meters, WRED tables and registers.
std::span<Attachment const> attachments();

/// A field of a kind's rows.
struct FieldInfo {
    char const* name;
    char const* meaning; ///< what it says, with its unit
};

/// What is known of the records of a type; all functions are linear.
struct RecordType {
    std::size_t ( *size )( BfResourceParser const& parser );
    std::vector<Row> ( *rows )( BfResourceParser const& parser ); ///< every field of every record
    Row ( *blank )();                     ///< a row of which only the types count; it has a field "name"
    std::vector<FieldInfo> ( *fields )(); ///< in the order of the rows
};

/// One kind of record.
struct RecordKind : RecordType {
    Kind kind;
    char const* one;       ///< what one record is called, in one word: "table"
    char const* many;      ///< what several are called: "tables"
    char const* noun;      ///< the same in a sentence: "match table"
    char const* nouns;     ///< "match tables"
    char const* member;    ///< of a JSON object that holds records of the kind
    bool ofTables = false; ///< its records are match tables, or belong to them
    bool isCounted = true; ///< in the counts of a configuration, so that each record counts once
    Attachment const* attachment = nullptr; ///< null if placed tables do not refer to its records
};

/// Every kind, in the order in which people see them.
std::span<RecordKind const> recordKinds();

RecordKind const& kindOf( Kind kind );

/// The kind that a word names, singular or plural ("table", "tables"); null for none.
RecordKind const* kindOf( std::string_view word );

/// A collection of a model.
struct Collection {
    char const* member;       ///< its name in a JSON object
    char const* title;        ///< what it holds: "match tables"
    std::optional<Kind> kind; ///< of the records in it; nothing for the relations by name
    std::size_t ( *size )( BfResourceParser const& parser );
    /// Everything in it: a list of records, or an object by name, in byte order of the names if the model
    /// keeps it in a hash map.
    Value ( *content )( BfResourceParser const& parser );
};

/// Every collection, in the order of a dump.
std::span<Collection const> collections();

} // namespace Bfri
