#pragma once

// The records that a word means: a name or its unique end, a handle, or 'ACTION of TABLE'.

#include "inspect/model/Names.h"
#include "inspect/page/Page.h"

#include <variant>

namespace Bfri {

/// A handle that is not any record's own.
struct OnlyReferredTo {
    U32 handle;
    std::set<String> referrers; ///< names
};

/// The pages for a word, at least one; or what else the word means. A missing or ambiguous name is a Meaning.
using PagesFound = std::variant<std::vector<Page>, SeveralRecords, OnlyReferredTo, Meaning>;

/// The page of a name; else pages for what has the word as its own handle, one for each name; else the page
/// of 'ACTION of TABLE'.
PagesFound pagesFor( Configuration const& configuration, String const& word );

/// The record that a word means, among the rows of a kind; or what else the word means.
using RecordFound = std::variant<Row const*, SeveralRecords, Meaning>;

/// Looks for the name; else for the handle; else, among actions, for 'ACTION of TABLE'; else for the unique
/// end of a name. Records that are the same in every field count as one.
RecordFound recordFor( BfResourceInfo::BfResourceParser const& parser, RecordKind const& kind,
                       std::vector<Row> const& rows, String const& word );

} // namespace Bfri
