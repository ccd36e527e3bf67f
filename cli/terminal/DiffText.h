#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/diff/Verdict.h"

#include <ostream>

namespace Bfri {

/// A comparison for people: what differs, section by section, then totals and the verdict; one line if
/// nothing differs. What the library does not read takes one line, or with `unread` a section of its own.
void printDiff( std::ostream& out, TerminalStyle const& look, Comparison const& comparison,
                Verdict const& verdict, bool allUnread );

/// The same for a pull request, in GitHub's Markdown: the verdict, counts, and folded sections; at most
/// 60,000 bytes. Names can't become markup, whatever they hold.
void printMarkdown( std::ostream& out, Comparison const& comparison, Verdict const& verdict );

} // namespace Bfri
