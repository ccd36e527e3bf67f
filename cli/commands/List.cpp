#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

ExitStatus list( Configuration const& configuration, Request const& request, Streams const& io ) {
    RecordKind const& listing = *request.command->listing;
    std::vector<Row> rows = listing.rows( configuration.parser() );
    bool const any = !rows.empty();
    choose( rows, request.choice );
    if( any && rows.empty() && request.choice.filter && request.choice.most > 0 )
        io.err << "bfri: no name matches '" << escapeForTerminal( request.option( "--filter" ) ) << "'\n";
    switch( request.format ) {
    case Format::text:
        printColumns( io.out, listForPeople( listing.kind, std::move( rows ) ), io.look );
        break;
    case Format::csv:
        printCsv( io, { listing.blank(), std::move( rows ) } );
        break;
    case Format::json:
        JsonAnswer( io.out ).member(
            listing.member, List( std::move_iterator( rows.begin() ), std::move_iterator( rows.end() ) ) );
        break;
    }
    return ExitStatus::done;
}

} // namespace Bfri
