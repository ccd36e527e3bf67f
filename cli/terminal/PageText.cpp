#include "cli/terminal/PageText.h"
#include "cli/terminal/Characters.h"

#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"

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

void printIndented( std::ostream& out, String const& indent, String const& lines ) {
    std::istringstream in( lines );
    for( String line; std::getline( in, line ); )
        out << indent << line << '\n';
}

/// The part of a terminal that an indent leaves.
TerminalStyle within( TerminalStyle look, std::string_view indent ) {
    if( look.columns > 0 )
        look.columns -= std::min( look.columns - 1, indent.size() );
    return look;
}

bool isSaid( Field const& field ) {
    String const* const text = std::get_if<String>( &field.value.is );
    return !std::holds_alternative<std::monostate>( field.value.is ) && !( text && text->empty() );
}

/// Names in their order, with their places in it.
List numbered( List const& names ) {
    List rows;
    for( Value const& name : names )
        rows.push_back( Row{ { "number", static_cast<U32>( rows.size() + 1 ) }, { "name", name } } );
    return rows;
}

/// Where people see "ingress" or "egress", not a flag, it has another name.
std::string_view labelOf( Field const& field ) {
    return field.name == "ingress" && std::holds_alternative<String>( field.value.is ) ? "direction"
                                                                                       : field.name;
}

void printRecord( std::ostream& out, TerminalStyle const& look, RecordKind const& kind, Entry const& entry ) {
    Row row;
    for( Field const& field : rowForPeople( kind.kind, entry.record ) ) {
        List const* const list = std::get_if<List>( &field.value.is );
        bool const heading = field.name == "name";
        bool const saidAlready = field.name == "typeName"; // people see it as the type
        if( !heading && !saidAlready && isSaid( field ) )
            row.push_back( { labelOf( field ), list ? Value( numbered( *list ) ) : field.value } );
    }
    if( entry.placeable )
        row.push_back( { "placed", placeText( entry.place ) } );
    std::ostringstream lines;
    printFields( lines, row );
    printIndented( out, "  ", lines.str() );
    for( Omission const& table : entry.omitted ) {
        out << '\n';
        printIndented( out, "  ", inLines( escapeForTerminal( sentenceOf( table ) ), within( look, "  " ) ) );
    }
}

char const* reasonOf( WhyNone why ) {
    switch( why ) {
    case WhyNone::nothing:
        break;
    case WhyNone::unknown:
        return "none that the model knows";
    case WhyNone::onlyIndirectActionData:
        return "none that the model knows: it keeps only the tables of indirect action data";
    }
    return "";
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

void printLines( std::ostream& out, TerminalStyle const& look, String const& indent, RowList const& list ) {
    std::ostringstream lines;
    printColumns( lines, list, within( look, indent ) );
    printIndented( out, indent, lines.str() );
}

bool areSame( std::vector<Row> const& a, std::vector<Row> const& b ) { return !( a < b ) && !( b < a ); }

/// After the same part of the entry before, if there is one: several of a name may have many of their file.
void printPart( std::ostream& out, TerminalStyle const& look, Part const& part, Part const* before ) {
    if( part.rows.empty() && part.whyNone == WhyNone::nothing )
        return;
    out << "\n  " << kindOf( part.kind ).many << '\n';
    if( part.rows.empty() )
        out << "    " << reasonOf( part.whyNone ) << '\n';
    else if( before && part.rows.size() > 1 && areSame( part.rows, before->rows ) )
        out << "    the same " << part.rows.size() << " as above\n";
    else
        printLines( out, look, "    ", linesOf( part ) );
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
    printLines( out, look, "  ", inColumns( actionLineColumns, {}, rows ) );
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
        out << "\nand " << section.moreRecords << " more "
            << ( section.moreRecords == 1 ? section.kind->one : section.kind->many )
            << " of this name; 'bfri " << section.kind->many
            << "' lists them all, with handles for 'bfri show'\n";
}

} // namespace

String placeText( BfResource const* place ) {
    if( !place )
        return "no";
    String const stage = "stage " + std::to_string( place->stageStart );
    String const several = std::to_string( place->stages ) + " stage tables, the first in " + stage;
    return ( place->stages > 1 ? several : stage ) + ( place->ingress ? ", ingress" : ", egress" );
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

} // namespace Bfri
