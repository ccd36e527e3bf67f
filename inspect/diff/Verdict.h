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

/// The kind of that code or title, capital letters or not; null for none.
NoticeKind const* noticeKindOf( String const& word );

/// The codes, else the titles, that someone who wrote a word may have meant; nearest first.
std::vector<String> noticesLike( String const& word );

/// One difference, and whose.
struct Notice {
    NoticeKind const* kind;
    String what;                 ///< "table", "action", "pipe", "member", "configuration"
    String name;                 ///< as it was, where it was there; of a pipe its number
    std::optional<String> table; ///< of an action
    String text;                 ///< what differs, without the name: "size 1024 -> 512"
    Value from = {};             ///< absent where there was nothing, or nothing to compare
    Value to = {};
    List pipes = {}; ///< on which it is so; none of merged records
};

struct Verdict {
    bool differs = false;      ///< any value, read by the library or not
    bool modelDiffers = false; ///< a value that the library reads
    bool byName = true;        ///< an agent that looks everything up by name at start-up notices nothing
    bool byHandle = true;      ///< an agent that keeps numbers notices nothing
    std::vector<Notice> notices = {}; ///< breaking ones first, then those of handles, then the others
};

Verdict verdictOf( Comparison const& comparison );

/// The renamed records of which nothing is said by themselves: resources and placed tables whose table,
/// counter or the like is renamed, and actions whose table is.
class FoldedRenames {
  public:
    /// The comparison outlives this.
    explicit FoldedRenames( Comparison const& comparison );

    bool has( RecordKind const& kind, ChangedRecord const& record ) const;

  private:
    std::unordered_set<std::string_view> names_; ///< but for placed tables and actions
    std::unordered_set<std::string_view> resources_;
};

/// The members of a table that differ, or that it is new or gone.
String textOf( UnreadTable const& table );

/// The placed tables that are new or gone and of which nothing is said as resources.
KindComparison placedAlone( KindComparison placed, Comparison const& comparison );

/// The members of JSON objects: of a verdict, and of a comparison with its verdict.
Row rowOf( Verdict const& verdict );
Row rowOf( Comparison const& comparison, Verdict const& verdict );

} // namespace Bfri
