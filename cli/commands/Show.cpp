#include "cli/commands/Answers.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/ActionWord.h"
#include "inspect/model/HandleUses.h"
#include "inspect/model/Kinds.h"
#include "inspect/model/Names.h"
#include "inspect/model/Omissions.h"
#include "inspect/model/Relations.h"
#include "inspect/page/Page.h"
#include "inspect/rows/JsonFormat.h"
#include "inspect/rows/Utf8.h"

#include <map>
#include <set>
#include <sstream>
#include <unordered_set>

namespace Bfri {

namespace {

std::vector<String> namesIn( Configuration const& configuration ) {
    std::vector<String> names;
    std::unordered_set<String> seen;
    for( NameOfKind& bearer : namesOfKinds( configuration.parser() ) ) {
        if( seen.insert( bearer.name ).second )
            names.push_back( std::move( bearer.name ) );
    }
    return names;
}

/// What bears a name, or what of it has a handle or is an action of one table.
struct Page {
    String name;
    std::vector<Section> sections;
};

Page pageNamed( Configuration const& configuration, String const& name ) {
    return { name, pageOf( configuration, name ) };
}

/// A page for each name of what has the handle as its own; none where nothing has it.
std::vector<Page> pagesOfHandle( Configuration const& configuration, U32 handle ) {
    std::set<String> owners;
    std::set<String> others;
    eachHandleUse( configuration.parser(), [ & ]( HandleUse const& bearer ) {
        if( bearer.handle == handle )
            ( bearer.owner == bearer.name ? owners : others ).emplace( bearer.name );
    } );
    if( owners.empty() && !others.empty() ) {
        String const known = sentencesOf( OmittedTables( configuration ).withHandle( handle ) );
        throw Failure( ExitStatus::no,
                       "nothing has the handle " + textOf( Hex( handle ) ) + " as its own; " +
                           ( known.empty() ? known : known + "; " ) + "these refer to it:",
                       { others.begin(), others.end() } );
    }
    std::vector<Page> pages;
    pages.reserve( owners.size() );
    for( String const& name : owners )
        pages.push_back( { name, pageOf( configuration, name, handle ) } );
    return pages;
}

/// The actions of a table that 'ACTION of TABLE' means.
std::vector<Page> pagesOfActions( Configuration const& configuration, String const& word ) {
    auto const& actions = configuration.parser().bfActions();
    std::map<String, std::set<std::pair<String, U32>>> asked; // by name: tables and handles
    for( U32 const place : actionsMeant( configuration.parser(), word ) )
        asked[ actions.at( place ).name ].emplace( actions.at( place ).tableName,
                                                   actions.at( place ).handle );
    std::vector<Page> pages;
    for( auto const& entry : asked ) {
        Page& page = pages.emplace_back( pageNamed( configuration, entry.first ) );
        std::erase_if( page.sections, []( Section const& section ) {
            return section.kind->word != std::string_view( "actions" );
        } );
        std::erase_if( page.sections.front().entries, [ & ]( Entry const& action ) {
            return entry.second.count( { valueAs<String>( action.record, "tableName" ),
                                         valueAs<Hex>( action.record, "handle" ).value } ) == 0;
        } );
    }
    return pages;
}

/// The one page of a name, as a rule.
std::vector<Page> pagesFor( Configuration const& configuration, String const& word ) {
    auto const names = namesIn( configuration );
    auto const handle = handleIn( word );
    std::vector<Page> pages;
    if( std::find( names.begin(), names.end(), word ) == names.end() )
        pages = handle ? pagesOfHandle( configuration, *handle ) : pagesOfActions( configuration, word );
    if( pages.empty() )
        pages.push_back(
            pageNamed( configuration, meantName( names, word, { "record named", "records", "names" }, [ & ] {
                           String why = whyMissing( configuration, word );
                           if( why.empty() )
                               refuseTableOf( configuration.parser(), word );
                           return why;
                       } ) ) );
    return pages;
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
    if( !entry.leftOutTables.empty() )
        row.push_back( { "leftOutTables", valuesOf( entry.leftOutTables ) } );
    return row;
}

/// Records of a kind stand together, whatever their names.
void printJson( std::ostream& out, std::vector<Page> pages ) {
    JsonAnswer answer( out );
    answer.member( "name", pages.size() == 1 ? Value( pages.front().name ) : Value() );
    Row leftOut;
    for( RecordKind const& kind : recordKinds() ) {
        List entries;
        std::size_t more = 0;
        for( Page& page : pages ) {
            for( Section& section : page.sections ) {
                if( section.kind != &kind )
                    continue;
                for( Entry& entry : section.entries )
                    entries.push_back( memberOf( std::move( entry ) ) );
                more += section.leftOut;
            }
        }
        if( !entries.empty() )
            answer.member( kind.member, std::move( entries ) );
        if( more > 0 )
            leftOut.push_back( { kind.member, number( more ) } );
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

/// What an indent leaves of a terminal.
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
        rows.push_back( Row{ { "number", number( rows.size() + 1 ) }, { "name", name } } );
    return rows;
}

/// Where people see "ingress" or "egress", not a flag, it has another name.
std::string_view labelOf( Field const& field ) {
    return field.name == "ingress" && std::holds_alternative<String>( field.value.is ) ? "direction"
                                                                                       : field.name;
}

void printRecord( std::ostream& out, TerminalStyle const& look, RecordKind const& kind, Entry const& entry ) {
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
    for( Omission const& table : entry.leftOutTables ) {
        out << '\n';
        printIndented( out, "  ", inLines( sentenceOf( table ), within( look, "  " ) ) );
    }
}

/// The columns of a list, but for the table that the page is about.
RowList columnsOf( Part const& part ) {
    std::vector<Column> columns;
    std::copy_if(
        part.columns.begin(), part.columns.end(), std::back_inserter( columns ),
        []( Column const& column ) { return column.title && std::string_view( column.title ) != "TABLE"; } );
    if( !part.shown )
        return columnsOf( columns, {}, part.rows );
    std::vector<Row> rows;
    rows.reserve( part.rows.size() );
    std::transform( part.rows.begin(), part.rows.end(), std::back_inserter( rows ), part.shown );
    return columnsOf( columns, {}, rows );
}

void printLines( std::ostream& out, TerminalStyle const& look, String const& indent, Part const& part ) {
    std::ostringstream lines;
    printColumns( lines, columnsOf( part ), within( look, indent ) );
    printIndented( out, indent, lines.str() );
}

bool areSame( std::vector<Row> const& a, std::vector<Row> const& b ) { return !( a < b ) && !( b < a ); }

/// After the same part of the entry before, if there is one: several of a name may have many of their file.
void printPart( std::ostream& out, TerminalStyle const& look, Part const& part, Part const* before ) {
    if( part.rows.empty() && !part.ifNone )
        return;
    out << "\n  " << part.title << '\n';
    if( part.rows.empty() )
        out << "    " << part.ifNone << '\n';
    else if( before && part.rows.size() > 1 && areSame( part.rows, before->rows ) )
        out << "    the same " << part.rows.size() << " as above\n";
    else
        printLines( out, look, "    ", part );
}

/// Actions say little, and many tables have one of a name: a line each.
void printActions( std::ostream& out, TerminalStyle const& look, Section const& section ) {
    Part lines{ "", actionColumns, nullptr, {} };
    for( Entry const& entry : section.entries ) {
        auto const& tables = entry.parts.front().rows;
        Row row = entry.record;
        row.push_back( { "tableHandle", tables.empty() ? Value() : valueOf( tables.front(), "handle" ) } );
        lines.rows.push_back( std::move( row ) );
    }
    printLines( out, look, "  ", lines );
}

void printSection( std::ostream& out, TerminalStyle const& look, Section const& section,
                   String const& name ) {
    String const title = section.kind->one + ( " " + textOf( name ) ) + '\n';
    if( std::string_view( section.kind->word ) == "actions" ) {
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
    if( section.leftOut > 0 )
        out << "\nand " << section.leftOut << " more "
            << ( section.leftOut == 1 ? section.kind->one : section.kind->word ) << " of this name; 'bfri "
            << section.kind->word << "' lists them all, with handles for 'bfri show'\n";
}

void printText( std::ostream& out, TerminalStyle const& look, std::vector<Page> const& pages ) {
    bool isFirst = true;
    for( Page const& page : pages ) {
        for( Section const& section : page.sections ) {
            out << ( std::exchange( isFirst, false ) ? "" : "\n" );
            printSection( out, look, section, page.name );
        }
    }
}

} // namespace

ExitStatus show( Configuration const& configuration, Request const& request, Streams const& io ) {
    auto pages = pagesFor( configuration, request.words[ 1 ] );
    if( request.format == Format::json )
        printJson( io.out, std::move( pages ) );
    else
        printText( io.out, io.look, pages );
    return ExitStatus::done;
}

} // namespace Bfri
