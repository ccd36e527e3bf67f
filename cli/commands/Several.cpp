#include "cli/commands/Several.h"

#include "cli/commands/Loading.h"
#include "cli/terminal/Characters.h"

#include <fmt/ostream.h>

namespace Bfri {

namespace {

void tell( String const& conf, Failure const& failure, std::ostream& err ) {
    fmt::print( err, "bfri: {}: {}\n", escapeForTerminal( conf ), failure.what() );
    for( String const& name : failure.suggestions )
        fmt::print( err, "  {}\n", escapeForTerminal( name ) );
}

} // namespace

Row withConf( String const& conf, Row row ) {
    row.insert( row.begin(), { "conf", conf } );
    return row;
}

void chooseRows( std::vector<Row>& rows, Request const& request, RowSelection const& choice,
                 std::ostream& err ) {
    bool const any = !rows.empty();
    choose( rows, choice );
    if( !any || !rows.empty() || choice.most == 0 )
        return;
    if( choice.where )
        err << "bfri: no row matches '" << escapeForTerminal( request.option( "--where" ) ) << "'\n";
    else if( choice.filter )
        err << "bfri: no name matches '" << escapeForTerminal( request.option( "--filter" ) ) << "'\n";
}

SeveralAnswers answersOf( Request const& request, Streams const& io,
                          std::function<std::vector<Row>( Configuration const& )> const& rowsOf ) {
    SeveralAnswers answers;
    for( std::size_t i = 0; i < request.confs; ++i ) {
        String const& conf = request.words[ i ];
        try {
            auto const configuration = load( conf, *request.command, io.err );
            for( Row& row : rowsOf( configuration ) )
                answers.rows.push_back( withConf( conf, std::move( row ) ) );
        } catch( Failure const& failure ) {
            if( failure.status == ExitStatus::usage )
                throw;
            tell( conf, failure, io.err );
            answers.failures.push_back( withConf( conf, rowOf( failure ) ) );
            answers.status = std::max( answers.status, failure.status );
        }
    }
    return answers;
}

} // namespace Bfri
