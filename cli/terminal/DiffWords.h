#pragma once

// The lines of a comparison, for a terminal and for a pull request.

#include "inspect/diff/Verdict.h"

namespace Bfri {

/// One line: its mark, whether an agent that looks up by name notices, and the texts, unescaped.
struct DiffLine {
    char mark; ///< '-', '+' or '~'
    bool isNoticed;
    String label;
    String text;
};

struct DiffSection {
    String title;
    std::vector<DiffLine> lines;
};

/// What differs, section by section, without what has its own line elsewhere, such as handles. Of pipes that
/// run another program, that is all.
std::vector<DiffSection> sectionsOf( Comparison const& comparison, Verdict const& verdict );

/// The unread values that differ, table by table.
DiffSection unreadSection( Comparison const& comparison );

/// One row of counts per kind: "KIND", "ADDED", and so on. A record that is renamed only since its table is
/// counts as the same.
RowList totalsOf( Comparison const& comparison );

/// Whether it is about a new duplicate, which has a line of its own.
bool isDuplicate( Notice const& notice );

/// "2 tables removed, 1 action renamed": the notices of a level, or nothing.
String countsOf( Verdict const& verdict, NoticeLevel level );

/// The two sentences of the verdict.
String byNameSentence( Verdict const& verdict );
String byHandleSentence( Verdict const& verdict );

/// "3 tables and 1 section", and the names of the first.
String unreadCounts( Unread const& unread );
String unreadNames( Unread const& unread );

/// The text for a comparison without lines: that nothing differs, or only what the library does not read.
/// Empty if there are lines.
String sameness( Comparison const& comparison );

/// "handles of records that both have: 3 of 11 renumbered"; empty if none is.
String renumberedLine( Handles const& handles );
/// "table t 0x00000001 -> 0x00000002".
String lineOf( Renumbering const& handle );
/// "0x00000001 table t -> table u".
String lineOf( ReusedHandle const& handle );
/// "hit-bit ranges: 1 of 2 shifted, and each is as long as before"; empty if none is.
String shiftedLine( Comparison const& comparison );

} // namespace Bfri
