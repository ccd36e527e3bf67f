#include "cli/commands/Answers.h"
#include "cli/commands/Several.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/Names.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

/// A row a name, in the order of their bytes.
std::vector<Row> rowsOf( Configuration const& configuration, RecordKind const* only ) {
    std::map<String, List> kinds;
    for( auto const& [ name, kind ] : namesOfKinds( configuration.parser() ) ) {
        if( !only || kind == only )
            kinds[ name ].emplace_back( kind->one );
    }
    std::vector<Row> rows;
    rows.reserve( kinds.size() );
    for( auto const& [ name, ofName ] : kinds )
        rows.push_back( { { "name", name }, { "kinds", ofName } } );
    return rows;
}

} // namespace

namespace {

std::vector<Row> rowsFor( Configuration const& configuration, Request const& request ) {
    return rowsOf( configuration, request.has( "--kind" ) ? kindOf( request.option( "--kind" ) ) : nullptr );
}

Row blankName() { return { { "name", "" }, { "kinds", List() } }; }

/// Prints the chosen rows; with several configurations, names have theirs in front, after a tab.
void printNames( std::vector<Row> rows, Row const& header, List* failures, Request const& request,
                 Streams const& io ) {
    chooseRows( rows, request, selectionOf( request, blankName() ), io.err );
    switch( request.format ) {
    case Format::text:
        for( Row const& row : rows )
            io.out << ( failures ? escapeForTerminal( valueAs<String>( row, "conf" ) ) + '\t' : "" )
                   << escapeForTerminal( valueAs<String>( row, "name" ) ) << '\n';
        break;
    case Format::csv:
        printCsv( io, { header, std::move( rows ) } );
        break;
    case Format::json: {
        JsonAnswer json( io.out );
        json.member( "names", listOf( rows, []( Row const& row ) { return row; } ) );
        if( failures )
            json.member( "failures", std::move( *failures ) );
        break;
    }
    }
}

} // namespace

ExitStatus names( Configuration const& configuration, Request const& request, Streams const& io ) {
    printNames( rowsFor( configuration, request ), blankName(), nullptr, request, io );
    return ExitStatus::done;
}

ExitStatus namesOfAll( Request const& request, Streams const& io ) {
    auto answers = answersOf( request, io, [ & ]( Configuration const& configuration ) {
        return rowsFor( configuration, request );
    } );
    printNames( std::move( answers.rows ), withConf( "", blankName() ), &answers.failures, request, io );
    return answers.status;
}

} // namespace Bfri
