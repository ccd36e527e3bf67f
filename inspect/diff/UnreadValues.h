#pragma once

// What differs between two programs in values that the library does not read: from the survey's digests.

#include "inspect/diff/FieldComparer.h"

#include <set>

namespace Bfri {

/// What is told of two programs without this.
struct ToldDifferences {
    ComparedPrograms const& programs;
    std::set<Kind> const& kinds; ///< of which anything is told: of headers, hashes, PHV fields, learn quantas
    bool isAnyTable = false;     ///< anything of tables
};

/// Adds them. A part of a table counts that differs in what no pass reads; or that differs though nothing is
/// told of the table.
void addUnread( ToldDifferences const& told, Unread& unread );

} // namespace Bfri
