#pragma once

// What the differences between two configurations mean to an agent.

#include "inspect/diff/Comparison.h"

#include <set>
#include <span>
#include <unordered_set>

namespace Bfri {

/// Who notices: nobody, an agent that keeps handles, one that looks everything up by name.
enum class NoticeLevel { info, handle, breaking };

/// "info", "handle", "breaking".
char const* wordOf( NoticeLevel level );

/// A kind of notice.
struct NoticeKind {
    char const* code;  ///< "BD101"; stays the same for good, as does the title
    char const* title; ///< "removed-record"
    NoticeLevel level;
    char const* counted; ///< after a number of records: "removed"
    char const* meaning; ///< sentences, one line
    char const* advice;
};

/// Every kind, by ascending code.
std::span<NoticeKind const> noticeKinds();

/// One difference, and the record that it is about.
struct Notice {
    NoticeKind const* kind;
    String what;                 ///< "table", "action", "pipe", "member", "configuration"
    String name;                 ///< the old name, if there is one; for a pipe its number
    std::optional<String> table; ///< of an action
    String text;                 ///< what differs, without the name: "size 1024 -> 512"
    Value from = {};             ///< absent if there was nothing, or nothing to compare
    Value to = {};
    List pipes = {}; ///< that are concerned; none for merged records
};

struct Verdict {
    bool differs = false;      ///< any value, read by the library or not
    bool modelDiffers = false; ///< any value that the library reads
    bool byName = true;        ///< an agent that looks everything up by name at start-up notices nothing
    bool byHandle = true;      ///< an agent that keeps numbers notices nothing
    std::vector<Notice> notices = {}; ///< breaking ones, then those about handles, then the others
};

Verdict verdictOf( Comparison const& comparison );

/// What is not reported by itself, since it is told with other records: renamed resources and placed tables
/// whose table, counter or the like is renamed, actions whose table is renamed, and placed tables that are
/// new or gone as resources.
class Folded {
  public:
    /// The comparison must outlive this object.
    explicit Folded( Comparison const& comparison );

    bool has( RecordKind const& kind, ChangedRecord const& record ) const;
    /// Whether nothing else differs.
    bool hasAll( RecordKind const& kind, ChangedRecord const& record ) const {
        return record.renamed && !record.hasChanged() && !record.move && has( kind, record );
    }
    /// For a record that is new or gone.
    bool has( RecordKind const& kind, Row const& row, bool isNew ) const {
        return kind.kind == Kind::handles && alone_.count( { isNew, valueAs<String>( row, "name" ) } ) > 0;
    }

  private:
    std::unordered_set<std::string_view> names_; ///< of all kinds except placed tables and actions
    std::unordered_set<std::string_view> resources_;
    std::set<std::pair<bool, std::string_view>> alone_; ///< resources, whether they are new
};

/// The mask of a list of pipes; 0 if it is absent.
U32 maskOf( Value const& pipes );

/// The pipes that run another program. What differs there is told as those pipes alone, since nearly
/// everything does.
U32 replacedPipes( Comparison const& comparison );

/// Whether there are pipes, and all are among others.
inline bool isWithin( U32 pipes, U32 others ) { return pipes != 0 && ( pipes & ~others ) == 0; }

/// The numbers that are the handle of another record now, and what differs in values that the library does
/// not read: on pipes that do not run another program.
std::vector<ReusedHandle> reusedHandles( Comparison const& comparison );
Unread unreadValues( Comparison const& comparison );

/// Which members of a table differ, or that the table is new or gone.
String textOf( UnreadTable const& table );

// What differs, in words. Names are bytes, as everywhere.

/// Lists in brackets, a handle with the name of its record, absent and empty values as "-".
String lineOf( Value const& value );

/// "1024 -> 512".
String fromTo( Value const& from, Value const& to );

/// Changes in words; fields that change alike are together: "size, totalEntries 512 -> 1024".
String lineOf( std::vector<Change> const& changes );

/// "0-1 3": consecutive pipes as the first and the last.
String pipesText( U32 mask );

/// The members of the JSON object of a comparison with its verdict.
Row rowOf( Comparison const& comparison, Verdict const& verdict );

} // namespace Bfri
