#pragma once

// Everything about one name: its records, joined with what belongs to them and what they belong to.

#include "inspect/model/Omissions.h"
#include "inspect/model/RecordKinds.h"

#include <map>
#include <set>

namespace Bfri {

/// Why a part may have no row, where that is not just so.
enum class WhyNone {
    nothing,
    unknown,                ///< the model knows none
    onlyIndirectActionData, ///< the model knows only the tables of indirect action data
};

/// Records that belong to another one, or that it belongs to: one way of the links between tables and what
/// they have.
struct Part {
    Kind kind;
    bool areOwners = false; ///< tables that the record belongs to, all that the model knows: rows of handle,
                            ///< name, size, stageStart and stages
    std::vector<Row> rows = {};
    WhyNone whyNone = WhyNone::nothing;
};

struct Entry {
    Row record;
    bool placeable = false;            ///< may have a place of its own on the chip
    BfResource const* place = nullptr; ///< where it is; null when it is nowhere
    std::vector<Part> parts = {};
    Omissions omitted = {}; ///< tables that it belongs to and the model omits
};

/// The records of one kind, at least one.
struct Section {
    RecordKind const* kind;
    std::vector<Entry> entries;
    std::size_t moreRecords = 0; ///< further ones of the name; never actions
};

struct Page {
    String name;
    std::vector<Section> sections; ///< in the order of the recordKinds
};

/// The records of a name, or only those of them that have a handle; of a kind the first few, actions all. A
/// hardware resource has an entry of its own only when no other one says where it is. The configuration,
/// which was loaded with a survey, outlives the page.
Page pageOf( Configuration const& configuration, String const& name, std::optional<U32> handle = {} );

/// The members of a JSON object: the records of each kind with all fields, whatever their page, and their
/// parts.
Row rowOf( std::vector<Page> pages );

} // namespace Bfri
