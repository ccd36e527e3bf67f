#include "cli/ActionWord.h"
#include "cli/Answers.h"
#include "cli/JsonFormat.h"
#include "cli/Kinds.h"
#include "cli/LeftOut.h"
#include "cli/Names.h"
#include "cli/Page.h"
#include "cli/TextFormat.h"
#include "cli/Utf8.h"

#include <sstream>
#include <unordered_set>

namespace Bfri {

namespace {

std::vector<String> namesIn( Model const& model ) {
    std::vector<String> names;
    std::unordered_set<String> seen;
    for( NameOfKind& bearer : namesOfKinds( *model.parser() ) ) {
        if( seen.insert( bearer.name ).second )
            names.push_back( std::move( bearer.name ) );
    }
    return names;
}

/// A page, and the name that it is of.
struct Shown {
    String name;
    std::vector<Section> sections;
};

/// Of the actions of a name, those of one table.
std::vector<Section> onlyOfTable( std::vector<Section> page, ActionWord const& word ) {
    auto const tableOf = []( Entry const& action ) { return valueAs<String>( action.record, "tableName" ); };
    std::erase_if(
        page, []( Section const& section ) { return section.kind->word != std::string_view( "actions" ); } );
    std::vector<String> tables;
    for( Section const& actions : page )
        std::transform( actions.entries.begin(), actions.entries.end(), std::back_inserter( tables ),
                        tableOf );
    String const table = word.tableMeant( tables );
    for( Section& actions : page )
        std::erase_if( actions.entries, [ & ]( Entry const& action ) { return tableOf( action ) != table; } );
    return page;
}

Shown shownBy( Model const& model, String const& word ) {
    auto const names = namesIn( model );
    auto const action = actionWordOf( word );
    bool const isName = std::find( names.begin(), names.end(), word ) != names.end();
    Named const named{ "record named", "records", "names" };
    String const name = meantName( names, action && !isName ? action->name : word, named,
                                   [ & ] { return leftOutOfName( *model.parser(), word ); } );
    auto page = pageOf( *model.parser(), name );
    return { name, action && !isName ? onlyOfTable( std::move( page ), *action ) : std::move( page ) };
}

U32 number( std::size_t count ) { return static_cast<U32>( count ); }

// For machines: every field of each record, and its parts behind them.

Row memberOf( Entry entry ) {
    Row row = std::move( entry.record );
    if( entry.placeable )
        row.push_back( { "placed", entry.place != nullptr } );
    for( Part& part : entry.parts )
        row.push_back( { part.title, List( std::move_iterator( part.rows.begin() ),
                                           std::move_iterator( part.rows.end() ) ) } );
    return row;
}

void printJson( std::ostream& out, String const& name, std::vector<Section> sections ) {
    JsonAnswer answer( out );
    answer.member( "name", name );
    Row leftOut;
    for( Section& section : sections ) {
        List entries;
        for( Entry& entry : section.entries )
            entries.push_back( memberOf( std::move( entry ) ) );
        answer.member( section.kind->member, std::move( entries ) );
        if( section.leftOut > 0 )
            leftOut.push_back( { section.kind->member, number( section.leftOut ) } );
    }
    if( !leftOut.empty() )
        answer.member( "leftOut", std::move( leftOut ) );
}

// For people: what a record has, under headings.

constexpr Column actionColumns[] = {
    { "HANDLE", "handle" }, { "TABLE HANDLE", "tableHandle" }, { "OF TABLE", "tableName" } };

void printIndented( std::ostream& out, String const& indent, String const& lines ) {
    std::istringstream in( lines );
    for( String line; std::getline( in, line ); )
        out << indent << line << '\n';
}

bool isSaid( Field const& field ) {
    String const* const text = std::get_if<String>( &field.value.is );
    return !std::holds_alternative<std::monostate>( field.value.is ) && !( text && text->empty() );
}

String placeText( BfResource const* place ) {
    if( !place )
        return "no";
    String const stage = "stage " + std::to_string( place->stageStart );
    String const several = std::to_string( place->stages ) + " stage tables, the first in " + stage;
    return ( place->stages > 1 ? several : stage ) + ( place->ingress ? ", ingress" : ", egress" );
}

/// Names in their order, with their places in it.
List numbered( List const& names ) {
    List rows;
    for( Value const& name : names )
        rows.push_back( Row{ { "number", number( rows.size() + 1 ) }, { "name", name } } );
    return rows;
}

/// Where people see "ingress" or "egress", not a flag, it has another name.
std::string_view labelOf( Field const& field ) {
    return field.name == "ingress" && std::holds_alternative<String>( field.value.is ) ? "direction"
                                                                                       : field.name;
}

void printRecord( std::ostream& out, Listing const& kind, Entry const& entry ) {
    Row row;
    for( Field const& field : kind.shown ? kind.shown( entry.record ) : entry.record ) {
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
}

/// The columns of a list, but for the table that the page is about.
RowList columnsOf( Part const& part ) {
    std::vector<Column> columns;
    std::copy_if(
        part.columns.begin(), part.columns.end(), std::back_inserter( columns ),
        []( Column const& column ) { return column.title && std::string_view( column.title ) != "TABLE"; } );
    std::vector<Row> rows = part.rows;
    if( part.shown )
        std::transform( rows.begin(), rows.end(), rows.begin(), part.shown );
    return columnsOf( columns, {}, rows );
}

void printLines( std::ostream& out, Look look, String const& indent, Part const& part ) {
    if( look.columns > 0 )
        look.columns -= std::min( look.columns - 1, indent.size() );
    std::ostringstream lines;
    printColumns( lines, columnsOf( part ), look );
    printIndented( out, indent, lines.str() );
}

void printPart( std::ostream& out, Look const& look, Part const& part ) {
    if( part.rows.empty() && !part.ifNone )
        return;
    out << "\n  " << part.title << '\n';
    if( part.rows.empty() )
        out << "    " << part.ifNone << '\n';
    else
        printLines( out, look, "    ", part );
}

/// Actions say little, and many tables have one of a name: a line each.
void printActions( std::ostream& out, Look const& look, Section const& section ) {
    Part lines{ "", actionColumns, nullptr, {} };
    for( Entry const& entry : section.entries ) {
        auto const& tables = entry.parts.front().rows;
        Row row = entry.record;
        row.push_back( { "tableHandle", tables.empty() ? Value() : valueOf( tables.front(), "handle" ) } );
        lines.rows.push_back( std::move( row ) );
    }
    printLines( out, look, "  ", lines );
}

void printSection( std::ostream& out, Look const& look, Section const& section, String const& name ) {
    String const title = section.kind->one + ( " " + shown( name ) ) + '\n';
    if( std::string_view( section.kind->word ) == "actions" ) {
        out << title;
        return printActions( out, look, section );
    }
    for( Entry const& entry : section.entries ) {
        out << ( &entry == &section.entries.front() ? "" : "\n" ) << title;
        printRecord( out, *section.kind, entry );
        for( Part const& part : entry.parts )
            printPart( out, look, part );
    }
    if( section.leftOut > 0 )
        out << "\nand " << section.leftOut << " more "
            << ( section.leftOut == 1 ? section.kind->one : section.kind->word ) << " of this name; 'bfri "
            << section.kind->word << "' lists them all, with handles for 'bfri lookup'\n";
}

void printText( std::ostream& out, Look const& look, String const& name,
                std::vector<Section> const& sections ) {
    for( Section const& section : sections ) {
        out << ( &section == &sections.front() ? "" : "\n" );
        printSection( out, look, section, name );
    }
}

} // namespace

ExitStatus show( Model const& model, Request const& request, Streams const& io ) {
    auto [ name, sections ] = shownBy( model, request.words[ 1 ] );
    if( request.format == Format::json )
        printJson( io.out, name, std::move( sections ) );
    else
        printText( io.out, io.look, name, sections );
    return ExitStatus::done;
}

} // namespace Bfri
