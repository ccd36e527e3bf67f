#include "cli/terminal/PageText.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"

#include <fmt/ostream.h>
#include <sstream>

namespace Bfri {

namespace {

constexpr Column ownerColumns[] = { { "HANDLE", "handle" },
                                    { "SIZE", "size" },
                                    { "FIRST STAGE", "stageStart" },
                                    { "STAGE TABLES", "stages" },
                                    { "NAME", "name" } };

constexpr Column actionLineColumns[] = {
    { "HANDLE", "handle" }, { "TABLE HANDLE", "tableHandle" }, { "OF TABLE", "tableName" } };

/// Prints with an indent, within the width of the terminal.
template<class Print>
void printIndented( std::ostream& out, TerminalStyle look, std::size_t indent, Print print ) {
    if( look.columns > 0 )
        look.columns -= std::min( look.columns - 1, indent );
    std::stringstream lines;
    print( lines, look );
    for( String line; std::getline( lines, line ); )
        out << String( indent, ' ' ) << line << '\n';
}

/// Names in their order, with their places in it.
List numbered( List const& names ) {
    List rows;
    for( Value const& name : names )
        rows.push_back( Row{ { "number", static_cast<U32>( rows.size() + 1 ) }, { "name", name } } );
    return rows;
}

void printRecord( std::ostream& out, TerminalStyle const& look, RecordKind const& kind, Entry const& entry ) {
    Row row;
    for( Field const& field : rowForPeople( kind.kind, entry.record ) ) {
        List const* const list = std::get_if<List>( &field.value.is );
        String const* const text = std::get_if<String>( &field.value.is );
        bool const isAbsent =
            std::holds_alternative<std::monostate>( field.value.is ) || ( text && text->empty() );
        bool const isElsewhere = field.name == "name" || field.name == "typeName"; // heading, type
        bool const isDirection = field.name == "ingress" && text;                  // in words
        if( !isElsewhere && !isAbsent )
            row.push_back(
                { isDirection ? "direction" : field.name, list ? Value( numbered( *list ) ) : field.value } );
    }
    if( entry.placeable )
        row.push_back( { "placed", placeText( entry.place ) } );
    printIndented( out, look, 2, [ & ]( std::ostream& lines, auto const& ) { printFields( lines, row ); } );
    for( Omission const& table : entry.omitted ) {
        out << '\n';
        printIndented( out, look, 2, [ & ]( std::ostream& lines, TerminalStyle const& room ) {
            lines << inLines( escapeForTerminal( sentenceOf( table ) ), room );
        } );
    }
}

/// The columns of a list, but for the table that the page is about.
RowList linesOf( Part const& part ) {
    if( part.areOwners )
        return inColumns( ownerColumns, {}, part.rows );
    auto const all = columnsOf( part.kind );
    std::vector<Column> columns;
    std::copy_if( all.begin(), all.end(), std::back_inserter( columns ),
                  []( Column const& column ) { return column.title != std::string_view( "TABLE" ); } );
    std::vector<Row> rows;
    for( Row const& row : part.rows )
        rows.push_back( rowForPeople( part.kind, row ) );
    return inColumns( columns, {}, rows );
}

void printLines( std::ostream& out, TerminalStyle const& look, std::size_t indent, RowList const& list ) {
    printIndented( out, look, indent, [ & ]( std::ostream& lines, TerminalStyle const& room ) {
        printColumns( lines, list, room );
    } );
}

bool areSame( std::vector<Row> const& a, std::vector<Row> const& b ) { return !( a < b ) && !( b < a ); }

/// After the same part of the entry before, if there is one: several of a name may have many of their file.
void printPart( std::ostream& out, TerminalStyle const& look, Part const& part, Part const* before ) {
    if( part.rows.empty() && part.whyNone == WhyNone::nothing )
        return;
    fmt::print( out, "\n  {}\n", kindOf( part.kind ).many );
    if( part.rows.empty() )
        fmt::print( out, "    none that the model knows{}\n",
                    part.whyNone == WhyNone::unknown ? ""
                                                     : ": it keeps only the tables of indirect action data" );
    else if( before && part.rows.size() > 1 && areSame( part.rows, before->rows ) )
        out << "    the same " << part.rows.size() << " as above\n";
    else
        printLines( out, look, 4, linesOf( part ) );
}

/// Actions say little, and many tables have one of a name: a line each.
void printActions( std::ostream& out, TerminalStyle const& look, Section const& section ) {
    std::vector<Row> rows;
    for( Entry const& entry : section.entries ) {
        auto const& tables = entry.parts.front().rows;
        Row row = entry.record;
        row.push_back( { "tableHandle", tables.empty() ? Value() : valueOf( tables.front(), "handle" ) } );
        rows.push_back( std::move( row ) );
    }
    printLines( out, look, 2, inColumns( actionLineColumns, {}, rows ) );
}

void printSection( std::ostream& out, TerminalStyle const& look, Section const& section,
                   String const& name ) {
    String const title = section.kind->one + ( " " + textOf( name ) ) + '\n';
    if( section.kind->kind == Kind::actions ) {
        out << title;
        return printActions( out, look, section );
    }
    Entry const* before = nullptr;
    for( Entry const& entry : section.entries ) {
        out << ( before ? "\n" : "" ) << title;
        printRecord( out, look, *section.kind, entry );
        for( std::size_t i = 0; i < entry.parts.size(); ++i ) // all of a kind have the same
            printPart( out, look, entry.parts[ i ], before ? &before->parts[ i ] : nullptr );
        before = &entry;
    }
    if( section.moreRecords > 0 )
        fmt::print( out,
                    "\nand {} more {} of this name; 'bfri {}' lists them all, with handles for 'bfri show'\n",
                    section.moreRecords, section.moreRecords == 1 ? section.kind->noun : section.kind->nouns,
                    section.kind->many );
}

} // namespace

String placeText( BfResource const* place ) {
    if( !place )
        return "no";
    char const* const direction = place->ingress ? "ingress" : "egress";
    return place->stages > 1 ? fmt::format( "{} stage tables, the first in stage {}, {}", place->stages,
                                            place->stageStart, direction )
                             : fmt::format( "stage {}, {}", place->stageStart, direction );
}

void printPages( std::ostream& out, TerminalStyle const& look, std::vector<Page> const& pages ) {
    bool isFirst = true;
    for( Page const& page : pages ) {
        for( Section const& section : page.sections ) {
            out << ( std::exchange( isFirst, false ) ? "" : "\n" );
            printSection( out, look, section, page.name );
        }
    }
}

namespace {

void printUnknown( std::ostream& err, String const& word, HandleAnswer const& answer, bool pipesInHandles ) {
    err << "bfri: nothing has the handle " << word;
    char const* before = pipesInHandles
                             ? "; with another pipe in the upper four bits: "
                             : "; without a pipe in the upper four bits, as there is no runtime_config: ";
    for( auto const& [ handle, name ] : answer.others )
        err << std::exchange( before, ", " ) << hexText( handle ) << " (" << escapeForTerminal( name ) << ")";
    if( !answer.omitted.empty() )
        err << "; " << escapeForTerminal( sentencesOf( answer.omitted ) );
    if( answer.without0x )
        err << "; did you mean " << hexText( *answer.without0x ) << "?";
    err << '\n';
}

} // namespace

void printHandles( std::ostream& out, TerminalStyle const& look, std::vector<HandleAnswer> const& answers ) {
    constexpr std::size_t fewest = 60; // more than other lists, as names of tables follow names
    TextList list{ "HANDLE", "KIND", "IN FIELD", "NAME", "TABLE" };
    list.rows = rowsOf( answers );
    for( Row& row : list.rows ) {
        if( valueAs<bool>( row, "severalTables" ) )
            row[ 4 ].value = "(several)";
        row.pop_back();
    }
    if( !list.rows.empty() )
        printColumns( out, list, look, fewest );
}

void printRemarks( std::ostream& err, String const& word, HandleAnswer const& answer, bool pipesInHandles ) {
    if( answer.uses.empty() )
        return printUnknown( err, word, answer, pipesInHandles );
    for( Omission const& omitted : answer.omitted )
        err << "bfri: " << word << ": " << escapeForTerminal( sentenceOf( omitted ) ) << '\n';
}

} // namespace Bfri
