#pragma once

// Everything about one name: its records, with what belongs to them and what they belong to.

#include "inspect/model/Omissions.h"
#include "inspect/model/RecordKinds.h"

#include <map>
#include <set>

namespace Bfri {

/// Why a part may have no rows.
enum class WhyNone {
    nothing,                ///< no reason to tell
    unknown,                ///< the model knows none
    onlyIndirectActionData, ///< the model knows only the tables of indirect action data
};

/// Records that belong to another one, or that it belongs to: one direction of the links between tables and
/// what they have.
struct Part {
    Kind kind;
    bool areOwners = false; ///< the tables that the record belongs to, as far as the model knows: rows of
                            ///< handle, name, size, stageStart and stages
    std::vector<Row> rows = {};
    WhyNone whyNone = WhyNone::nothing;
};

struct Entry {
    Row record;
    bool placeable = false;            ///< may have its own place on the chip
    BfResource const* place = nullptr; ///< its place; null if it is not placed
    std::vector<Part> parts = {};
    Omissions omitted = {}; ///< tables that it belongs to, and that the model omits
};

/// The records of one kind, at least one.
struct Section {
    RecordKind const* kind;
    std::vector<Entry> entries;
    std::size_t moreRecords = 0; ///< that are not among the entries; actions are all there
};

struct Page {
    String name;
    std::vector<Section> sections; ///< in the order of the recordKinds
};

/// The records with a name, or only those that also have a handle: the first few of each kind, but all
/// actions. A hardware resource has its own entry only if no other entry says where it is. The configuration,
/// which was loaded with a survey, must outlive the page.
Page pageOf( Configuration const& configuration, String const& name, std::optional<U32> handle = {} );

/// The members of a JSON object: the records of each kind on any of the pages, with all fields and parts.
Row rowOf( std::vector<Page> pages );

} // namespace Bfri
