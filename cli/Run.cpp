#include "cli/Program.h"

#include "cli/commands/Loading.h"
#include "cli/grammar/Help.h"
#include "cli/grammar/LineParser.h"
#include "cli/terminal/Characters.h"
#include "inspect/rows/JsonFormat.h"

#include <cerrno>
#include <cstring>
#include <fmt/ostream.h>

namespace Bfri {

namespace {

void requireWritten( std::ostream& out ) {
    out.flush();
    if( out )
        return;
    String const reason = errno ? String( ": " ) + std::strerror( errno ) : "";
    throw Failure( ExitStatus::internal, "can't write to standard output" + reason );
}

Streams inColor( Streams io, Request const& request ) {
    if( String const when = request.option( "--color" ); when == "always" || when == "never" )
        io.look.color = when == "always";
    return io;
}

ExitStatus answered( Request const& request, Streams const& io ) {
    Command const& command = *request.command;
    if( command.run )
        return command.run( request, io );
    if( command.show && ( request.confs == 1 || !command.rows ) )
        return command.show( load( request.words.front(), command, io.err ), request, io );
    Answers answers = answersOf( request, io.err );
    ExitStatus const status = answers.status;
    command.print( std::move( answers ), request, io );
    return status;
}

ExitStatus answered( ParsedLine const& line, Streams const& io ) {
    if( line.error )
        throw Failure( ExitStatus::usage, usageMessage( program(), line ) );
    switch( line.asked ) {
    case ParsedLine::Asked::version:
        fmt::print( io.out, "{} {}\n{}\n", program().name, program().version, program().builtWith );
        return ExitStatus::done;
    case ParsedLine::Asked::help:
        line.command ? printHelp( io.out, program(), *line.command ) : printHelp( io.out, program() );
        return ExitStatus::done;
    case ParsedLine::Asked::answer:
        break;
    }
    Request const request = requestOf( line );
    return answered( request, inColor( io, request ) );
}

/// With --json, a failure is an answer as well.
ExitStatus answeredInFormat( ParsedLine const& line, Streams const& io ) {
    try {
        return answered( line, io );
    } catch( Failure const& failure ) {
        if( line.json )
            JsonAnswer( io.out ).members( rowOf( failure ) );
        requireWritten( io.out );
        throw;
    }
}

ExitStatus report( Failure const& failure, ParsedLine const& line, std::ostream& err ) {
    print( err, failure );
    if( failure.status == ExitStatus::usage )
        fmt::print( err, "Run '{}{}{} --help' to see how it is used.\n", program().name,
                    line.command ? " " : "", line.command ? line.command->word : "" );
    return failure.status;
}

} // namespace

ExitStatus run( int argc, char const* const* argv, Streams const& io ) {
    ParsedLine line;
    try {
        errno = 0;
        line = parseLine( program(), { argv + 1, argv + argc } );
        ExitStatus const status = answeredInFormat( line, io );
        requireWritten( io.out );
        return status;
    } catch( Failure const& failure ) {
        return report( failure, line, io.err );
    } catch( std::exception const& error ) {
        return report(
            Failure( ExitStatus::internal, "internal error: " + escapeForTerminal( error.what() ) ), line,
            io.err );
    }
}

} // namespace Bfri
