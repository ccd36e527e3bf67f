#include "cli/commands/Loading.h"

#include "cli/terminal/BudgetText.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/FaultText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/check/Checked.h"
#include "inspect/load/FaultDetails.h"
#include "inspect/rows/JsonFormat.h"

#include <fmt/ostream.h>

namespace Bfri {

namespace {

/// The parts are those of `bfri check`, which reads the file again for some of them.
Row faultRow( Fault fault ) {
    String const place = placeText( fault );
    addEvidence( fault );
    String const error = sentenceOf( fault ) + ( place.empty() ? "" : " (" + place + ")" ) +
                         ( fault.found.empty() || !fault.problem.empty() ? "" : ", found " + fault.found );
    return { { "error", error }, { "suggestions", List() }, { "failure", rowOf( fault ) } };
}

/// Leaves the chosen rows, and says why there are none.
void chooseRows( std::vector<Row>& rows, Request const& request, std::ostream& err ) {
    bool const any = !rows.empty();
    choose( rows, request.choice );
    if( !any || !rows.empty() || request.choice.most == 0 )
        return;
    if( request.choice.where )
        err << "bfri: no row matches '" << escapeForTerminal( request.option( "--where" ) ) << "'\n";
    else if( request.choice.filter )
        err << "bfri: no name matches '" << escapeForTerminal( request.option( "--filter" ) ) << "'\n";
}

} // namespace

Row rowOf( Failure const& failure ) {
    if( failure.fault )
        return faultRow( *failure.fault );
    char const* const space = failure.suggestions.empty() ? "" : " ";
    return {
        { "error", fmt::format( "{}{}{}", failure.what(), space, fmt::join( failure.suggestions, ", " ) ) },
        { "suggestions", listOf( failure.suggestions, []( String const& name ) { return name; } ) } };
}

void print( std::ostream& err, Failure const& failure, String const& start ) {
    fmt::print( err, "bfri: {}{}\n", start, failure.what() );
    for( String const& name : failure.suggestions )
        fmt::print( err, "  {}\n", escapeForTerminal( name ) );
}

Configuration load( String const& path, Command const& command, std::ostream& err, Survey survey ) {
    auto result = command.abortsOnBadData ? loadOrAbort( path ) : loadConfiguration( path, survey, err );
    if( auto const* const fault = std::get_if<Fault>( &result ) ) {
        bool const hasMore = fault->pointer || fault->line; // as check reads the file again
        String const more = hasMore ? "\n'bfri check " + escapeForTerminal( path ) + "' says more" : "";
        throw Failure( ExitStatus::notLoadable, faultText( *fault ) + more, {}, *fault );
    }
    auto const& configuration = std::get<Configuration>( result );
    for( String const& file : unreadContextFiles( configuration ) )
        err << "bfri: " << escapeForTerminal( file ) << " is not read: a later pipeline has the same pipes\n";
    return std::get<Configuration>( std::move( result ) );
}

Rules loadRules( String const& path ) {
    auto rules = readRules( path );
    if( auto const* const mistake = std::get_if<RulesMistake>( &rules ) )
        throw Failure( ExitStatus::notLoadable, mistakeText( *mistake ) );
    return std::get<Rules>( std::move( rules ) );
}

std::optional<Rules> rulesOf( Request const& request ) {
    return request.has( "--budget" ) ? std::optional( loadRules( request.option( "--budget" ) ) )
                                     : std::nullopt;
}

Answers answersOf( Request const& request, std::ostream& err ) {
    Answers answers{ .areSeveral = request.confs > 1 };
    for( String const& conf : std::span( request.words ).first( request.confs ) ) {
        try {
            for( Row& row : request.command->rows( load( conf, *request.command, err ), request ) )
                answers.rows.push_back( withConf( std::move( row ), conf, answers.areSeveral ) );
        } catch( Failure const& failure ) {
            if( !answers.areSeveral || failure.status == ExitStatus::usage )
                throw;
            print( err, failure, escapeForTerminal( conf ) + ": " );
            answers.failures.push_back( withConf( rowOf( failure ), conf ) );
            answers.status = std::max( answers.status, failure.status );
        }
    }
    chooseRows( answers.rows, request, err );
    return answers;
}

void printForPrograms( Answers&& answers, char const* member, Request const& request, Streams const& io ) {
    if( request.format == Format::csv ) {
        printCsv(
            io, { withConf( request.command->blank(), "", answers.areSeveral ), std::move( answers.rows ) } );
        return;
    }
    JsonAnswer json( io.out );
    json.member( member, List( std::move_iterator( answers.rows.begin() ),
                               std::move_iterator( answers.rows.end() ) ) );
    if( answers.areSeveral )
        json.member( "failures", std::move( answers.failures ) );
}

} // namespace Bfri
