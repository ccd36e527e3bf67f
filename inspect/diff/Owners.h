#pragma once

// Whose the handles of a program are, and which names and handles come more than once.

#include "inspect/diff/Renames.h"

#include <map>

namespace Bfri {

/// New names of renamed actions, by keyOf() their old names and tables.
using ActionRenames = std::unordered_map<String, String>;

/// What records are looked up by, in one program. Tables, actions and learn quantas have numbers of their
/// own.
class ProgramOwners {
  public:
    /// Of all kinds of record or only one. The program outlives this.
    ProgramOwners( P4Program const& program, RecordKind const* only );

    struct Owner {
        HandleOwner is;
        std::optional<U32> handle;
    };
    /// What is in one space of names and handles.
    struct Space {
        std::vector<Owner> owners = {};
        std::map<U32, std::vector<Owner const*>> byHandle = {};
        void index();
    };
    Space tables;
    Space actions;
    Space learnQuantas;

  private:
    void addTable( SurveyedTable const& table, RecordKind const* only );
};

/// Adds the numbers that stand for another record in a newer program.
void addReused( ProgramOwners const& old, ProgramOwners const& now, Renames const& renames,
                Renames const& quantaRenames, ActionRenames const& actionRenames, U32 pipes,
                std::vector<ReusedHandle>& reused );

/// Adds the names and handles that came once and come more than once now, by the rules of findings BF201 to
/// BF205 of a check.
void addDuplicates( ProgramOwners const& old, ProgramOwners const& now, Renames const& renames, U32 pipes,
                    std::vector<NewDuplicate>& duplicates );

} // namespace Bfri
