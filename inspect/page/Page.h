#pragma once

// Everything that bears one name, joined with what belongs to it.

#include "inspect/model/Omissions.h"
#include "inspect/model/RecordKinds.h"

namespace Bfri {

/// Records that belong to another one, or that it belongs to.
struct Part {
    char const* title; ///< for people and machines
    std::span<Column const> columns;
    Row ( *shown )( Row row ); ///< the rows for people, where they are others; else null
    std::vector<Row> rows;
    char const* ifNone = nullptr; ///< what people read where there is no row; null: nothing
};

struct Entry {
    Row record;
    bool placeable = false;            ///< may have a place of its own on the chip
    BfResource const* place = nullptr; ///< where it is; null when it is nowhere
    std::vector<Part> parts = {};
    Omissions leftOutTables = {}; ///< those it belongs to
};

/// The records of one kind, at least one.
struct Section {
    RecordKind const* kind;
    std::vector<Entry> entries;
    std::size_t leftOut = 0; ///< further ones of the name; never actions
};

/// Those of a name, or only those of them that have a handle. In the order of the recordKinds, of a kind the
/// first few; actions all. A hardware resource has an entry of its own only when no other one says where it
/// is. The configuration, which was loaded with a survey, outlives the page.
std::vector<Section> pageOf( Configuration const& configuration, String const& name,
                             std::optional<U32> handle = {} );

} // namespace Bfri
