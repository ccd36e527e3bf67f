#pragma once

#include "cli/terminal/Streams.h"
#include "inspect/rows/Row.h"

namespace Bfri {

/// A value in one line: absent and empty ones as "-", handles in hexadecimal, lists with spaces between.
String textOf( Value const& value );

/// A shown text with a mark in place of its front where it is longer: the end of a name says more.
String cutAtFront( String const& shownText, std::size_t most, TerminalStyle const& look );

/// The same with a mark in place of its end.
String cutAtEnd( String const& shownText, std::size_t most, TerminalStyle const& look );

/// The text in lines that the terminal has room for, broken between words.
String inLines( String const& text, TerminalStyle const& look );

/// Aligned columns under their names, numbers to the right. Absent and empty values show as "-". Where the
/// terminal is too narrow, columns that are absent in every row go first; then names lose their front, and,
/// for what is left of them to be readable, the columns before them give way to one of marks. Lines that
/// still are too long are cut. A terminal of fewer than the fewest columns has a block for each row instead,
/// a line a field, of which nothing is cut.
void printColumns( std::ostream& out, RowList const& list, TerminalStyle const& look = {},
                   std::size_t fewest = 40 );

/// A line a field: its name, and its value in a second column. A value that is a list of rows takes a line
/// for each of them.
void printFields( std::ostream& out, Row const& row );

/// The rows as CSV. On a terminal the texts are escaped as in other texts, in a file or a pipe they are
/// bytes.
void printCsv( Streams const& io, RowList const& list );

} // namespace Bfri
