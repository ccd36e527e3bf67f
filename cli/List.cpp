#include "cli/Answers.h"
#include "cli/CsvFormat.h"
#include "cli/JsonFormat.h"
#include "cli/Listings.h"
#include "cli/TextFormat.h"

namespace Bfri {

namespace {

Row cellsOf( Listing const& listing, Row row ) {
    Row const shown = listing.shown ? listing.shown( std::move( row ) ) : std::move( row );
    Row cells;
    for( Column const& column : listing.columns )
        cells.push_back( { column.title, valueOf( shown, column.field ) } );
    return cells;
}

RowList columnsOf( Listing const& listing, std::vector<Row> rows ) {
    for( Row& row : rows )
        row = cellsOf( listing, std::move( row ) );
    return { cellsOf( listing, listing.blank() ), std::move( rows ) };
}

} // namespace

ExitStatus list( Model const& model, Request const& request, Streams const& io ) {
    Listing const& listing = *request.command->listing;
    std::vector<Row> rows = listing.rows( *model.parser() );
    choose( rows, request.choice );
    switch( request.format ) {
    case Format::text:
        printColumns( io.out, columnsOf( listing, std::move( rows ) ), io.look );
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
