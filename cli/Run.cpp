#include "cli/Run.h"

#include "cli/CommandLine.h"
#include "cli/JsonFormat.h"
#include "cli/Load.h"
#include "cli/Utf8.h"

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

void explainAsJson( Failure const& failure, std::ostream& out ) {
    JsonAnswer answer( out );
    answer.member( "error", String( failure.what() ) );
    answer.member( "suggestions", listOf( failure.suggestions, []( String const& name ) { return name; } ) );
}

ExitStatus answered( Request const& request, Streams const& io ) {
    Command const& command = *request.command;
    if( command.run )
        return command.run( request, io );
    auto const model = load( request.words.front(), command.onBadData, io.err );
    return command.show( *model, request, io );
}

/// Behind the command line, also a failure is an answer where JSON was asked for.
ExitStatus answer( Request const& request, Streams const& io ) {
    try {
        return answered( request, io );
    } catch( Failure const& failure ) {
        if( request.format == Format::json )
            explainAsJson( failure, io.out );
        requireWritten( io.out );
        throw;
    }
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
        err << "  " << shown( name ) << '\n';
    if( failure.status == ExitStatus::usage )
        err << "Run 'bfri " << ( command ? command->word + String( " " ) : "" )
            << "--help' to see how it is used.\n";
    return failure.status;
}

} // namespace

ExitStatus run( int argc, char const* const* argv, Streams const& io ) {
    try {
        errno = 0;
        auto const request = parseCommandLine( argc, argv, io.out );
        ExitStatus const status = request ? answer( *request, asAskedFor( io, *request ) ) : ExitStatus::done;
        requireWritten( io.out );
        return status;
    } catch( Failure const& failure ) {
        return report( failure, commandIn( argc, argv ), io.err );
    } catch( std::exception const& error ) {
        return report( Failure( ExitStatus::internal, "internal error: " + shown( error.what() ) ), nullptr,
                       io.err );
    }
}

} // namespace Bfri
