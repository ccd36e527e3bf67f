#pragma once

// What differs between two configurations, as data. The records of a kind are joined by name within the pipes
// that they serve; those that the library merges (headers, hashes, PHV fields) by name alone.

#include "inspect/model/Configuration.h"
#include "inspect/model/RecordKinds.h"

#include <optional>

namespace Bfri {

/// What identifies a record: its name, and for an action also the name of its table. Both must outlive it.
struct Identity {
    explicit Identity( Row const& row );
    explicit Identity( String const& ofRecord, String const* ofTable = nullptr )
        : name( ofRecord ), table( ofTable ) {}

    String const& name;
    String const* table; ///< null except for actions

    /// "permit of acl".
    String label() const { return table ? name + " of " + *table : name; }
};

/// A value that has changed. A handle that refers to a record comes with that record's name.
struct Change {
    std::string_view field;
    Value from;
    Value to;
};

/// The rows of records are those of their kind, followed by "pipes": the pipes on which the record differs.
/// Merged records have no "pipes". Resources also have "stageNumbers", and "stageSizes": a row of "stage" and
/// "size" for each stage; absent if the file does not state them.

/// A record of both configurations that differs.
struct ChangedRecord {
    Row row = {}; ///< as it was
    Row now = {};
    std::vector<Change> fields = {};
    std::optional<Change> move = {}; ///< of its first stage, when all its stages shift by the same distance
    bool displaced = false;          ///< queries by name answered for it, and now answer for another one
    bool renamed = false;            ///< its name has changed, or for an action the name of its table

    /// Whether it differs in more than its name and its stages.
    bool hasChanged() const { return !fields.empty() || displaced; }
};

/// Why the model does not have a record, though its context file has the table or the learn quanta.
struct OmissionReason {
    String text = {};                 ///< "it has 8 static entries"
    std::vector<String> members = {}; ///< of the file, that are the reason: "static_entries"
};

/// A record that one configuration leaves out.
struct OmittedRecord {
    Row row = {}; ///< of the other configuration
    OmissionReason reason = {};
};

struct KindComparison {
    RecordKind const* kind;
    std::vector<Row> removed = {};
    std::vector<Row> added = {};
    std::vector<OmittedRecord> leftOut = {};  ///< in the new configuration; not among the removed
    std::vector<OmittedRecord> cameBack = {}; ///< left out in the old one; not among the added
    std::vector<ChangedRecord> changed = {};  ///< also renamed and moved records
    bool reordered = false;                   ///< records in both configurations are in another order
    std::size_t same = 0; ///< records that differ in nothing, or only in what is folded: handles, hit bits

    /// Whether records came or went, or are in another order.
    bool hasOtherRecords() const {
        return reordered || !removed.empty() || !added.empty() || !leftOut.empty() || !cameBack.empty();
    }
    bool differs() const { return hasOtherRecords() || !changed.empty(); }
};

/// Differences that mean little one by one, and are so many that they are only counted.
struct Tally {
    std::size_t differing = 0;
    std::size_t all = 0;
};

/// The record that has a handle.
struct HandleOwner {
    Kind kind = Kind::tables;
    String name = {};
    std::optional<String> table = {}; ///< of an action

    String label() const { return Identity( name, table ? &*table : nullptr ).label(); }
    bool operator==( HandleOwner const& ) const = default;
};

/// A record in both configurations whose handle is now another number.
struct Renumbering : HandleOwner {
    U32 from = 0;
    U32 to = 0;
    U32 pipes = 0; ///< mask
};

/// A number that was the handle of one record, and is now the handle of another one.
struct ReusedHandle {
    U32 handle = 0;
    HandleOwner from = {};
    HandleOwner to = {};
    U32 pipes = 0; ///< mask
};

struct Handles {
    Tally tally = {};                         ///< of the handles of records in both
    std::vector<Renumbering> renumbered = {}; ///< ascending by the old number
    std::vector<ReusedHandle> reused = {};    ///< ascending by number
};

/// A name or a handle that several records of one context file share now, and did not share before.
/// The owner is the first record with the name; of those with the handle, one that took it.
struct NewDuplicate : HandleOwner {
    std::optional<U32> handle = {}; ///< that records with different names share; none for a name
    std::vector<String> names = {}; ///< that share the handle
    std::vector<U32> handles = {};  ///< of the records that share the name
    U32 pipes = 0;                  ///< mask
};

/// A pipe whose program has changed.
struct PipeComparison {
    /// Replaced: by a program that other pipes ran, or one that is more like such a program than like the
    /// pipe's former one.
    enum class Is { edited, replaced, removed, added };

    U32 pipe = 0;
    Is is = Is::edited;
    std::optional<String> from = {}; ///< context files; none if the pipe has no program
    std::optional<String> to = {};
};

/// Parts of a table that the library never reads, and that differ.
struct UnreadTable {
    /// Tables that the model has nothing of may be added and removed.
    enum class Is { changed, added, removed };

    String name = {}; ///< in the new configuration, if it is there
    Is is = Is::changed;
    std::vector<String> members = {}; ///< "memory", "match_attributes/key_fields", "actions/permit"
    U32 pipes = 0;                    ///< mask
};

/// The same for a top-level member of a context file.
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
    std::vector<Change> configuration = {}; ///< of the model itself, not of records
    std::vector<KindComparison> kinds = {}; ///< in the order of the recordKinds
    Handles handles = {};
    std::vector<NewDuplicate> duplicates = {};
    Tally shifted = {}; ///< hit-bit ranges that start elsewhere now but are as long
    Unread unread = {};
    std::size_t programs = 0; ///< the larger number of context files

    /// Whether any value differs, read by the library or not.
    bool differs() const;
    /// Whether any value that the library reads differs.
    bool modelDiffers() const;
};

struct ComparisonScope {
    RecordKind const* only = nullptr; ///< only this kind: no pipes, configuration or unread members
    bool renames = true;              ///< pairs removed and added records that agree in nearly everything
};

/// Compares two configurations that were loaded with a survey, best with digests: without digests, what the
/// library does not read is not compared. The configurations must outlive the comparison. Linear in their
/// size, except for sorting.
Comparison compare( Configuration const& old, Configuration const& now, ComparisonScope const& scope = {} );

} // namespace Bfri
