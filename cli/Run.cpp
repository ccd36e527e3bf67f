#include "cli/Run.h"
#include "cli/terminal/Characters.h"

#include "cli/commands/Loading.h"
#include "cli/grammar/CommandLine.h"
#include "cli/grammar/WrongWord.h"
#include "cli/terminal/CheckReport.h"
#include "cli/terminal/FaultText.h"
#include "inspect/load/FaultDetails.h"
#include "inspect/rows/JsonFormat.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Bfri {

namespace {

void requireWritten( std::ostream& out ) {
    out.flush();
    if( out )
        return;
    String const reason = errno ? String( ": " ) + std::strerror( errno ) : "";
    throw Failure( ExitStatus::internal, "can't write to standard output" + reason );
}

/// With the names that it announces; people read them below it.
String sentenceOf( Failure const& failure ) {
    String const names = joined( failure.suggestions );
    return failure.what() + ( names.empty() ? "" : ' ' + names );
}

/// The parts are those of `bfri check`, which reads the file again for some of them.
void explainAsJson( LoadFailure const& failure, JsonAnswer& answer ) {
    String const place = placeText( failure.fault );
    Fault fault = failure.fault;
    addEvidence( fault );
    answer.member( "error",
                   sentenceOf( fault ) + ( place.empty() ? "" : " (" + place + ")" ) +
                       ( fault.found.empty() || !fault.problem.empty() ? "" : ", found " + fault.found ) );
    answer.member( "suggestions", List() );
    answer.member( "failure", rowOf( fault ) );
}

void explainAsJson( Failure const& failure, std::ostream& out ) {
    JsonAnswer answer( out );
    if( auto const* const load = dynamic_cast<LoadFailure const*>( &failure ) )
        return explainAsJson( *load, answer );
    answer.member( "error", sentenceOf( failure ) );
    answer.member( "suggestions", listOf( failure.suggestions, []( String const& name ) { return name; } ) );
}

ExitStatus answered( Request const& request, Streams const& io ) {
    Command const& command = *request.command;
    if( command.run )
        return command.run( request, io );
    Configuration const configuration = load( request.words.front(), command, io.err );
    return command.show( configuration, request, io );
}

/// Where JSON is asked for, also a failure is an answer.
template<class Step>
auto answer( bool inJson, std::ostream& out, Step step ) {
    try {
        return step();
    } catch( Failure const& failure ) {
        if( inJson )
            explainAsJson( failure, out );
        requireWritten( out );
        throw;
    }
}

/// Of a command line that may not be understood.
bool asksForJson( int argc, char const* const* argv ) {
    return std::find( argv + 1, argv + argc, std::string_view( "--json" ) ) != argv + argc;
}

/// The look that was asked for, in place of what standard output is.
Streams asAskedFor( Streams io, Request const& request ) {
    if( String const when = request.option( "--color" ); when == "always" || when == "never" )
        io.look.color = when == "always";
    return io;
}

ExitStatus report( Failure const& failure, Command const* command, std::ostream& err ) {
    err << "bfri: " << failure.what() << '\n';
    for( String const& name : failure.suggestions )
        err << "  " << escapeForTerminal( name ) << '\n';
    if( failure.status == ExitStatus::usage )
        err << "Run 'bfri " << ( command ? command->word + String( " " ) : "" )
            << "--help' to see how it is used.\n";
    return failure.status;
}

} // namespace

ExitStatus run( int argc, char const* const* argv, Streams const& io ) {
    try {
        errno = 0;
        ExitStatus status = ExitStatus::done;
        auto const request = answer( asksForJson( argc, argv ), io.out,
                                     [ & ] { return parseCommandLine( argc, argv, io.out ); } );
        if( request )
            status = answer( request->format == Format::json, io.out,
                             [ & ] { return answered( *request, asAskedFor( io, *request ) ); } );
        requireWritten( io.out );
        return status;
    } catch( Failure const& failure ) {
        return report( failure, commandIn( argc, argv ), io.err );
    } catch( std::exception const& error ) {
        return report(
            Failure( ExitStatus::internal, "internal error: " + escapeForTerminal( error.what() ) ), nullptr,
            io.err );
    }
}

} // namespace Bfri
