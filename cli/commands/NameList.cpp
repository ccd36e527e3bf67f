#include "cli/commands/Answers.h"
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

ExitStatus names( Configuration const& configuration, Request const& request, Streams const& io ) {
    std::vector<Row> rows =
        rowsOf( configuration, request.has( "--kind" ) ? kindOf( request.option( "--kind" ) ) : nullptr );
    switch( request.format ) {
    case Format::text:
        for( Row const& row : rows )
            io.out << escapeForTerminal( valueAs<String>( row, "name" ) ) << '\n';
        break;
    case Format::csv:
        printCsv( io, { { { "name", {} }, { "kinds", {} } }, std::move( rows ) } );
        break;
    case Format::json:
        JsonAnswer( io.out ).member( "names", listOf( rows, []( Row const& row ) { return row; } ) );
        break;
    }
    return ExitStatus::done;
}

} // namespace Bfri
