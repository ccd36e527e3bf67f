#pragma once

// Which records have the handles of a program, and which names and handles occur more than once.

#include "inspect/diff/Renames.h"

#include <map>

namespace Bfri {

/// New names of renamed actions, by keyOf() their old names and tables.
using ActionRenames = std::unordered_map<String, String>;

/// The names and handles of one program's records. Tables, actions and learn quantas are numbered
/// separately.
class ProgramOwners {
  public:
    /// Takes all kinds of record, or only one. The program must outlive this object.
    ProgramOwners( P4Program const& program, RecordKind const* only );

    struct Owner {
        HandleOwner is;
        std::optional<U32> handle;
    };
    /// One space of names and handles.
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

/// Adds the numbers that are the handle of another record in the new program.
void addReused( ProgramOwners const& old, ProgramOwners const& now, Renames const& renames,
                Renames const& quantaRenames, ActionRenames const& actionRenames, U32 pipes,
                std::vector<ReusedHandle>& reused );

/// Adds the names and handles that were unique and are not any more, by the rules of findings BF201 to BF205
/// of a check.
void addDuplicates( ProgramOwners const& old, ProgramOwners const& now, Renames const& renames, U32 pipes,
                    std::vector<NewDuplicate>& duplicates );

} // namespace Bfri
