#pragma once

// What the differences between two configurations mean to an agent.

#include "inspect/diff/Comparison.h"

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

/// The renamed records that are not reported by themselves: resources and placed tables whose table, counter
/// or the like is renamed, and actions whose table is renamed.
class FoldedRenames {
  public:
    /// The comparison must outlive this object.
    explicit FoldedRenames( Comparison const& comparison );

    bool has( RecordKind const& kind, ChangedRecord const& record ) const;
    /// Whether nothing else differs.
    bool hasAll( RecordKind const& kind, ChangedRecord const& record ) const {
        return record.renamed && !record.hasChanged() && !record.move && has( kind, record );
    }

  private:
    std::unordered_set<std::string_view> names_; ///< of all kinds except placed tables and actions
    std::unordered_set<std::string_view> resources_;
};

/// Which members of a table differ, or that the table is new or gone.
String textOf( UnreadTable const& table );

/// The placed tables that are new or gone, and not reported as resources.
KindComparison placedAlone( KindComparison placed, Comparison const& comparison );

/// The members of the JSON object of a comparison with its verdict.
Row rowOf( Comparison const& comparison, Verdict const& verdict );

} // namespace Bfri
