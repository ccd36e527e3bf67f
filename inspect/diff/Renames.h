#pragma once

// Which removed record is which added one under another name.

#include "inspect/diff/Programs.h"

#include <unordered_map>

namespace Bfri {

/// New names by the old ones, of what is in one program, or of merged records of one kind.
class Renames {
  public:
    void add( String const& from, String const& to ) { names_.emplace( from, to ); }
    /// The new name; the old one where it has not changed.
    String const& of( String const& name ) const {
        auto const found = names_.find( name );
        return found == names_.end() ? name : found->second;
    }
    bool has( String const& name ) const { return names_.count( name ) > 0; }
    bool empty() const { return names_.empty(); }

  private:
    std::unordered_map<String, String> names_;
};

/// Tables of one type that agree in handle, size, stages and actions (what is no match table: in how it is
/// referenced and what it counts), or in three of these. Where the handle differs, all else and the keys
/// agree, and no third table does.
Renames renamedTables( P4Program const& old, P4Program const& now );

/// Learn quantas of one handle, with one other difference at most.
Renames renamedLearnQuantas( FileSurvey const& old, FileSurvey const& now );

/// Headers, hashes and PHV fields of all programs: those that differ in nothing else, hashes of one handle in
/// one thing at most.
Renames renamedMerged( Kind kind, Configuration const& old, Configuration const& now );

} // namespace Bfri
