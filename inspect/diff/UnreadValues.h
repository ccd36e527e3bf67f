#pragma once

// What differs between two programs in values that the library does not read: from the survey's digests.

#include "inspect/diff/FieldComparer.h"

#include <map>

namespace Bfri {

using NamesOfKinds = std::map<Kind, std::unordered_set<String>>;

/// The differences between two programs that are reported already.
struct ToldDifferences {
    ComparedPrograms const& programs;
    // Headers, hashes, PHV fields and learn quantas:
    NamesOfKinds const& touched; ///< that differ in the model
    NamesOfKinds const& changed; ///< that differ in more than the handle
    bool isAnyTable = false;     ///< whether any table is reported
};

/// Adds unread differences. A part of a table counts if it differs in what no pass reads, or if it differs
/// though nothing is reported of the table.
void addUnread( ToldDifferences const& told, Unread& unread );

} // namespace Bfri
