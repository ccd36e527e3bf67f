#pragma once

#include "cli/terminal/TerminalStyle.h"
#include "inspect/rows/Row.h"

namespace Bfri {

/// A value in one line: absent and empty ones as "-", handles in hexadecimal, lists separated by spaces.
String textOf( Value const& value );

/// "1 table", "2 tables"; what several are called has an s unless it is given.
String countText( std::size_t number, std::string_view one, std::string_view several = {} );

/// An escaped text; if it is too long, a mark replaces its start, as the end of a name says more.
String cutAtFront( String const& shownText, std::size_t most, TerminalStyle const& look );

/// The same with the mark at the end.
String cutAtEnd( String const& shownText, std::size_t most, TerminalStyle const& look );

/// The text in lines that fit on the terminal, broken between words.
String inLines( String const& text, TerminalStyle const& look );

/// A list to which rows of values are added, in the order of its titles.
struct TextList : RowList {
    TextList( std::initializer_list<char const*> titles );
    void add( std::initializer_list<Value> values );
};

/// Aligned columns under their names, numbers to the right. Absent and empty values show as "-". If the
/// terminal is too narrow, columns that are absent in every row are dropped first; then names lose their
/// start, and to keep the rest readable, the columns before them are replaced by a column of marks. Lines
/// that are still too long are cut. On a terminal with fewer than the fewest columns, each row is an uncut
/// block with one line per field.
void printColumns( std::ostream& out, RowList const& list, TerminalStyle const& look = {},
                   std::size_t fewest = 40 );

/// One line per field: its name, and its value in a second column. A value that is a list of rows takes one
/// line for each row.
void printFields( std::ostream& out, Row const& row );

/// The rows as CSV. On a terminal, texts are escaped as everywhere; in a file or a pipe they are raw bytes.
void printCsv( Streams const& io, RowList const& list );

} // namespace Bfri
