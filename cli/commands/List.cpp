#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"

namespace Bfri {

std::vector<Row> recordRows( Configuration const& configuration, Request const& request ) {
    return request.command->listing->rows( configuration.parser() );
}

void printRecords( Answers&& answers, Request const& request, Streams const& io ) {
    RecordKind const& kind = *request.command->listing;
    if( request.format != Format::text )
        return printForPrograms( std::move( answers ), kind.member, request, io );
    std::vector<Row> confs;
    for( Row const& row : answers.rows )
        confs.push_back( answers.areSeveral ? Row{ row.front() } : Row() );
    RowList list = listForPeople( kind.kind, std::move( answers.rows ) );
    if( answers.areSeveral ) { // their configurations as the first column
        list.header.insert( list.header.begin(), { "CONF", "" } );
        for( std::size_t i = 0; i < confs.size(); ++i )
            list.rows[ i ].insert( list.rows[ i ].begin(), confs[ i ].front() );
    }
    printColumns( io.out, list, io.look );
}

} // namespace Bfri
