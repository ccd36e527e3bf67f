#include "cli/commands/Answers.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"
#include "inspect/rows/CsvFormat.h"
#include "inspect/rows/JsonFormat.h"
#include "inspect/rows/Utf8.h"

namespace Bfri {

namespace {

RowList columnsOfList( RecordKind const& listing, std::vector<Row> rows ) {
    if( listing.shown ) {
        for( Row& row : rows )
            row = listing.shown( std::move( row ) );
    }
    return columnsOf( listing.columns, listing.blank(), rows );
}

} // namespace

ExitStatus list( Configuration const& configuration, Request const& request, Streams const& io ) {
    RecordKind const& listing = *request.command->listing;
    std::vector<Row> rows = listing.rows( configuration.parser() );
    bool const any = !rows.empty();
    choose( rows, request.choice );
    if( any && rows.empty() && request.choice.filter && request.choice.most > 0 )
        io.err << "bfri: no name matches '" << escapeForTerminal( request.option( "--filter" ) ) << "'\n";
    switch( request.format ) {
    case Format::text:
        printColumns( io.out, columnsOfList( listing, std::move( rows ) ), io.look );
        break;
    case Format::csv:
        printCsv( io.out, { listing.blank(), std::move( rows ) } );
        break;
    case Format::json:
        JsonAnswer( io.out ).member(
            listing.member, List( std::move_iterator( rows.begin() ), std::move_iterator( rows.end() ) ) );
        break;
    }
    return ExitStatus::done;
}

} // namespace Bfri
