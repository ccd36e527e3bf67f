#pragma once

// The programs of two configurations: which runs on which pipe, which records belong to it, and what is found
// out about two that are compared.

#include "inspect/diff/Comparison.h"
#include "inspect/diff/Join.h"

namespace Bfri {

using Context::FileSurvey;
using Context::SurveyedTable;

/// The kind of a table's record; resources if the model has no record of it.
Kind kindOf( SurveyedTable const& table );

/// The placed tables, in the order of their rows, that are not yet a program's: by handle, position and name.
using UnclaimedHandles = std::unordered_map<U32, std::pair<std::size_t, String const*>>;

/// One context file, with its tables by name and by handle, and the positions of its records.
class P4Program {
  public:
    /// No program: one without a file.
    P4Program() = default;
    /// Takes its handles. The survey must outlive this object.
    P4Program( FileSurvey const& file, UnclaimedHandles& handles );

    FileSurvey const* file() const { return file_; }
    /// The first table with a name or a handle; null for none.
    SurveyedTable const* named( std::string_view name ) const;
    SurveyedTable const* withHandle( U32 handle ) const;
    /// How many table names another program also has.
    std::size_t namesSharedWith( P4Program const& other ) const;
    /// The positions of its records among all of a kind; none for kinds that the library merges.
    Positions const& recordsOf( Kind kind ) const { return records_[ static_cast<std::size_t>( kind ) ]; }

  private:
    void addRecords( SurveyedTable const& table, UnclaimedHandles& handles );
    Positions& recordsOf( Kind kind ) { return records_[ static_cast<std::size_t>( kind ) ]; }

    FileSurvey const* file_ = nullptr;
    std::unordered_map<std::string_view, SurveyedTable const*> byName_;
    std::unordered_map<U32, SurveyedTable const*> byHandle_;
    std::vector<Positions> records_ = std::vector<Positions>( recordKinds().size() );
};

inline P4Program const noProgram;

/// The programs of a configuration, which must outlive them, in the order of its context files.
std::vector<P4Program> programsOf( Configuration const& configuration );

/// New names by old ones.
class Renames {
  public:
    void add( String const& from, String const& to ) { names_.emplace( from, to ); }
    /// The new name, or the old one if it has not changed.
    String const& of( String const& name ) const {
        auto const found = names_.empty() ? names_.end() : names_.find( name );
        return found == names_.end() ? name : found->second;
    }
    bool empty() const { return names_.empty(); }

  private:
    std::unordered_map<String, String> names_;
};

/// Records that have names of their own, or are named after those.
struct ComparedNames {
    Renames renames = {};
    std::unordered_set<String> touched = {}; ///< old names of what differs in the model, folded or not
};

/// Two programs that run on the same pipes, one of which may be missing, and what is found out about them. Or
/// all programs together, without a file: for merged records.
struct ProgramPair {
    P4Program const* old = &noProgram;
    P4Program const* now = &noProgram;
    U32 pipes = 0; ///< mask
    bool isReplaced = false;
    bool findsRenames = false;
    bool isAnyTableTold = false;
    ComparedNames tables = {}; ///< with what belongs to them; or merged records of one kind
    ComparedNames learnQuantas = {};
    /// New names of actions, by their old names and their tables' old names.
    std::unordered_map<RecordKey, String const*, HashOfPair> actions = {};

    bool isMerged() const { return !old->file() && !now->file(); }
    ComparedNames& of( Kind kind ) { return kind == Kind::learnQuantas ? learnQuantas : tables; }
};

/// All pairs, ordered by lowest pipe. Programs without pipes pair up in order.
std::vector<ProgramPair> pairsOf( std::vector<P4Program> const& old, std::vector<P4Program> const& now );

/// The pipes whose programs differ, which only digests can tell.
std::vector<PipeComparison> pipesOf( std::vector<ProgramPair> const& pairs );

/// Tables of one type that agree in handle, size, stages and actions, or in three of these; tables other than
/// match tables also in how they are referenced and what they count. If the handle differs, all else and the
/// keys must agree, and no third table may agree as well.
Renames renamedTables( P4Program const& old, P4Program const& now );

/// Learn quantas with the same handle, and one other difference at most.
Renames renamedLearnQuantas( FileSurvey const& old, FileSurvey const& now );

/// Headers, hashes and PHV fields of all programs that differ in nothing but the name; hashes with the same
/// handle may differ in one other thing.
Renames renamedMerged( Kind kind, Configuration const& old, Configuration const& now );

/// Adds the handles that belong to another record in the new program, and the names and handles that were
/// unique and are not any more, by the rules of findings BF201 to BF205 of a check: of all kinds, or of one.
void addOwnerChanges( ProgramPair const& pair, RecordKind const* only, Comparison& comparison );

using NamesOfKinds = std::unordered_map<Kind, std::unordered_set<String>>;

/// Adds what differs in values that the library does not read, from the survey's digests. A part of a table
/// counts if it differs in what no pass reads, or if it differs though nothing is reported of the table. Of
/// merged records and learn quantas, `touched` differ in the model, and `changed` in more than the handle.
void addUnread( ProgramPair const& pair, NamesOfKinds const& touched, NamesOfKinds const& changed,
                Unread& unread );

} // namespace Bfri
