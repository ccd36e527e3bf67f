#pragma once

// Which removed and added records are one record with a new name.

#include "inspect/diff/Programs.h"

#include <unordered_map>

namespace Bfri {

/// New names by old ones, of the tables or learn quantas of a program, or of merged records of one kind.
class Renames {
  public:
    void add( String const& from, String const& to ) { names_.emplace( from, to ); }
    /// The new name, or the old one if it has not changed.
    String const& of( String const& name ) const {
        auto const found = names_.find( name );
        return found == names_.end() ? name : found->second;
    }
    bool has( String const& name ) const { return names_.count( name ) > 0; }
    bool empty() const { return names_.empty(); }

  private:
    std::unordered_map<String, String> names_;
};

/// Tables of one type that agree in handle, size, stages and actions, or in three of these; tables other than
/// match tables also in how they are referenced and what they count. If the handle differs, all else and the
/// keys must agree, and no third table may agree as well.
Renames renamedTables( P4Program const& old, P4Program const& now );

/// Learn quantas with the same handle, and one other difference at most.
Renames renamedLearnQuantas( FileSurvey const& old, FileSurvey const& now );

/// Headers, hashes and PHV fields of all programs that differ in nothing but the name; hashes with the same
/// handle may differ in one other thing.
Renames renamedMerged( Kind kind, Configuration const& old, Configuration const& now );

} // namespace Bfri
