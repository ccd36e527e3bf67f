#pragma once

// What a word asks for: by a name or the unique end of one, a handle, or 'ACTION of TABLE'.

#include "inspect/model/Names.h"
#include "inspect/page/Page.h"

#include <variant>

namespace Bfri {

/// A word that means several records, and what to type for each.
struct SeveralRecords {
    RecordKind const* kind;
    std::size_t count;
    std::vector<String> words;
    bool tellApart = true; ///< each of the words means one of them
};

/// A handle that is no record's own.
struct OnlyReferredTo {
    U32 handle;
    std::set<String> referrers; ///< names
};

/// The pages that a word asks for, at least one; or what else it means. A name that is missing or ambiguous
/// is a Meaning.
using PagesFound = std::variant<std::vector<Page>, SeveralRecords, OnlyReferredTo, Meaning>;

/// The page of a name; else of what has a handle as its own, a page for each name; else of the actions of a
/// table.
PagesFound pagesFor( Configuration const& configuration, String const& word );

/// The record that a word means among the rows of a kind, one of those; or what else it means.
using RecordFound = std::variant<Row const*, SeveralRecords, Meaning>;

/// By name; else by handle; of actions else by 'ACTION of TABLE'; else by the unique end of a name. Records
/// that are the same in every field count as one.
RecordFound recordFor( BfResourceInfo::BfResourceParser const& parser, RecordKind const& kind,
                       std::vector<Row> const& rows, String const& word );

} // namespace Bfri
