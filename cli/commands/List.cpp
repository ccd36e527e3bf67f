#include "cli/commands/Answers.h"
#include "cli/commands/Several.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

/// For people, with the configurations as the first column.
RowList withConfs( RecordKind const& kind, std::vector<Row> const& rows ) {
    RowList list = listForPeople( kind.kind, rows );
    list.header.insert( list.header.begin(), { "CONF", "" } );
    for( std::size_t i = 0; i < rows.size(); ++i )
        list.rows[ i ].insert( list.rows[ i ].begin(), rows[ i ].front() );
    return list;
}

List valuesIn( std::vector<Row>& rows ) {
    return List( std::move_iterator( rows.begin() ), std::move_iterator( rows.end() ) );
}

} // namespace

ExitStatus list( Configuration const& configuration, Request const& request, Streams const& io ) {
    RecordKind const& listing = *request.command->listing;
    std::vector<Row> rows = listing.rows( configuration.parser() );
    chooseRows( rows, request, request.choice, io.err );
    switch( request.format ) {
    case Format::text:
        printColumns( io.out, listForPeople( listing.kind, std::move( rows ) ), io.look );
        break;
    case Format::csv:
        printCsv( io, { listing.blank(), std::move( rows ) } );
        break;
    case Format::json:
        JsonAnswer( io.out ).member( listing.member, valuesIn( rows ) );
        break;
    }
    return ExitStatus::done;
}

ExitStatus listAll( Request const& request, Streams const& io ) {
    RecordKind const& listing = *request.command->listing;
    auto answers = answersOf( request, io, [ & ]( Configuration const& configuration ) {
        return listing.rows( configuration.parser() );
    } );
    chooseRows( answers.rows, request, request.choice, io.err );
    switch( request.format ) {
    case Format::text:
        printColumns( io.out, withConfs( listing, answers.rows ), io.look );
        break;
    case Format::csv:
        printCsv( io, { withConf( "", listing.blank() ), std::move( answers.rows ) } );
        break;
    case Format::json: {
        JsonAnswer json( io.out );
        json.member( listing.member, valuesIn( answers.rows ) );
        json.member( "failures", std::move( answers.failures ) );
        break;
    }
    }
    return answers.status;
}

} // namespace Bfri
