#pragma once

// What differs between two configurations, as data. The records of a kind are joined by name within the pipes
// that they serve; those that the library merges (headers, hashes, PHV fields) by name alone.

#include "inspect/model/Configuration.h"
#include "inspect/model/RecordKinds.h"

#include <optional>

namespace Bfri {

/// A value that has changed. A handle that refers to a record comes with that record's name.
struct Change {
    std::string_view field;
    Value from;
    Value to;
};

/// Rows of records are those of their kind, with "pipes" at their end: those on which the record differs.
/// Merged records have none. Resources also have "stageNumbers", and "stageSizes": a row of "stage" and
/// "size" for each stage; absent where the file does not state them.

/// A record of both configurations that differs.
struct ChangedRecord {
    Row row = {}; ///< as it was
    Row now = {};
    std::vector<Change> fields = {};
    std::optional<Change> move = {}; ///< of its first stage, when all its stages shift by the same distance
    bool displaced = false;          ///< queries by name answered for it, and now answer for another one
    bool renamed = false;            ///< the name has changed, or that of an action's table

    /// Whether it differs in more than its name and its stages.
    bool hasChanged() const { return !fields.empty() || displaced; }
};

/// Why the model does not have a record, though its context file has the table or the learn quanta.
struct OmissionReason {
    String text = {};                 ///< "it has 8 static entries"
    std::vector<String> members = {}; ///< of the file, that make the difference: "static_entries"
};

/// A record that one configuration leaves out.
struct OmittedRecord {
    Row row = {}; ///< as the other configuration has it
    OmissionReason reason = {};
};

struct KindComparison {
    RecordKind const* kind;
    std::vector<Row> removed = {};
    std::vector<Row> added = {};
    std::vector<OmittedRecord> leftOut = {};  ///< now; they are not among the removed
    std::vector<OmittedRecord> cameBack = {}; ///< were left out; they are not among the added
    std::vector<ChangedRecord> changed = {};  ///< the renamed and the moved, too
    bool reordered = false;                   ///< those of both configurations come in another order
    std::size_t same = 0; ///< records that differ in nothing, or only in what is folded: handles, hit bits

    bool differs() const {
        return reordered || !removed.empty() || !added.empty() || !leftOut.empty() || !cameBack.empty() ||
               !changed.empty();
    }
};

/// Differences without a meaning of their own, so many that they are counted only.
struct Tally {
    std::size_t differing = 0;
    std::size_t all = 0;
};

/// Whose a handle is.
struct HandleOwner {
    Kind kind = Kind::tables;
    String name = {};
    std::optional<String> table = {}; ///< of an action

    String label() const { return table ? name + " of " + *table : name; }
    bool operator==( HandleOwner const& ) const = default;
};

/// A record of both configurations whose handle has another number now.
struct Renumbering : HandleOwner {
    U32 from = 0;
    U32 to = 0;
    U32 pipes = 0; ///< mask
};

/// A number that was the handle of one record, and is that of another one now.
struct ReusedHandle {
    U32 handle = 0;
    HandleOwner from = {};
    HandleOwner to = {};
    U32 pipes = 0; ///< mask
};

struct Handles {
    Tally tally = {};                         ///< old numbers of records in both, and those that changed
    std::vector<Renumbering> renumbered = {}; ///< ascending by the old number
    std::vector<ReusedHandle> reused = {};    ///< ascending by number
};

/// A name or a handle that several records of one context file have now, and had not before.
struct NewDuplicate {
    Kind kind = Kind::tables;
    String name = {};                 ///< of the first record
    std::optional<String> table = {}; ///< of an action
    std::optional<U32> handle = {};   ///< that several names share; none for a name
    std::vector<String> names = {};   ///< that share the handle
    std::vector<U32> handles = {};    ///< of those that share the name
    U32 pipes = 0;                    ///< mask
};

/// A pipe whose program has other values than before.
struct PipeComparison {
    /// Replaced: by a program that other pipes ran, or that is more like one of these than like its own.
    enum class Is { edited, replaced, removed, added };

    U32 pipe = 0;
    Is is = Is::edited;
    std::optional<String> from = {}; ///< context files; none where the pipe has no program
    std::optional<String> to = {};
};

/// What the library never reads of a table, and differs.
struct UnreadTable {
    enum class Is { changed, added, removed }; ///< a table of which the model has nothing may come and go

    String name = {}; ///< in the new configuration, where that has it
    Is is = Is::changed;
    std::vector<String> members = {}; ///< "memory", "match_attributes/key_fields", "actions/permit"
    U32 pipes = 0;                    ///< mask
};

/// The same of a top-level member of a context file.
struct UnreadMember {
    String name = {};
    U32 pipes = 0; ///< mask
};

struct Unread {
    std::vector<UnreadTable> tables = {};
    std::vector<UnreadMember> members = {};

    bool differs() const { return !tables.empty() || !members.empty(); }
};

struct Comparison {
    std::vector<PipeComparison> pipes = {}; ///< ascending
    std::vector<Change> configuration = {}; ///< of the model itself, not of a record
    std::vector<KindComparison> kinds = {}; ///< in the order of the recordKinds
    Handles handles = {};
    std::vector<NewDuplicate> duplicates = {};
    Tally shifted = {}; ///< hit-bit ranges that start elsewhere now but are as long
    Unread unread = {};
    std::size_t programs = 0; ///< context files of the configuration that has more

    /// Whether any value differs, read by the library or not.
    bool differs() const;
    /// Whether anything differs that the library reads.
    bool modelDiffers() const;
};

struct ComparisonScope {
    RecordKind const* only = nullptr; ///< one kind alone: no pipes, configuration and unread members
    bool renames = true;              ///< pairs removed and added records that agree in nearly everything
};

/// Compares two configurations that were loaded with a survey, best with digests: without them, what the
/// library does not read is not compared. They outlive the comparison. Linear in their size, but for sorting.
Comparison compare( Configuration const& old, Configuration const& now, ComparisonScope const& scope = {} );

} // namespace Bfri
