#pragma once

// What differs between two programs in values that the library does not read: from the survey's digests.

#include "inspect/diff/FieldComparer.h"

#include <map>

namespace Bfri {

using NamesOfKinds = std::map<Kind, std::unordered_set<String>>;

/// What is told of two programs without this.
struct ToldDifferences {
    ComparedPrograms const& programs;
    // Of headers, hashes, PHV fields and learn quantas.
    NamesOfKinds const& touched; ///< of which the model says something else
    NamesOfKinds const& changed; ///< of which it says more than another handle
    bool isAnyTable = false;     ///< whether anything is told of tables
};

/// Adds them. A part of a table counts that differs in what no pass reads; or that differs though nothing is
/// told of the table.
void addUnread( ToldDifferences const& told, Unread& unread );

} // namespace Bfri
