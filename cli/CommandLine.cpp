#include "cli/CommandLine.h"

#include "cli/Failure.h"
#include "cli/Names.h"
#include "cli/Utf8.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace Bfri {

namespace {

constexpr Command table_[] = {
    { "summary", "What is loaded: files, pipelines and counts of every kind", nullptr, true, false,
      OnBadData::explain, summary },
    { "tables", "The match tables, one a line", nullptr, true, true, OnBadData::explain, tables },
    { "resources", "Every placed table by handle, with what it references", nullptr, true, true,
      OnBadData::explain, resources },
    { "table", "Everything about one match table", "Its name, or the end of it from a dot on", true, false,
      OnBadData::explain, table },
    { "dump", "The whole model as one JSON object", nullptr, false, false, OnBadData::dieAsLibrary, dump },
};

constexpr char const* footer = "Exit status: 0 done, 1 not found, 2 wrong usage, 3 input cannot be loaded, "
                               "4 internal error or output not written.\n"
                               "Set ZEL_TRACE=BfResourceParser/5-7 to see on standard error how files are "
                               "read.";

[[noreturn]] void refuse( String const& reason ) {
    throw Failure( ExitStatus::usage, shown( reason ) + "\nRun 'bfri --help' to see how it is used." );
}

/// Names the wrong word, where the argument parser would only miss a right one.
void requireKnownCommand( int argc, char const* const* argv ) {
    auto const word = std::find_if( argv + 1, argv + argc, []( String const& w ) { return w[ 0 ] != '-'; } );
    if( word == argv + argc )
        return;
    std::vector<String> words;
    for( Command const& command : commands() )
        words.emplace_back( command.word );
    if( std::find( words.begin(), words.end(), *word ) != words.end() )
        return;
    String meant;
    for( String const& near : nearest( words, *word ) )
        meant += ( meant.empty() ? "; did you mean '" : "' or '" ) + near;
    refuse( "no command '" + String( *word ) + "'" + meant + ( meant.empty() ? "" : "'?" ) );
}

void addFormats( CLI::App& app, Command const& command, Request& request ) {
    CLI::Option* json = nullptr;
    if( command.offersJson )
        json = app.add_flag_callback(
            "--json", [ & ] { request.format = Format::json; }, "Print one JSON object" );
    if( command.offersCsv )
        app.add_flag_callback(
               "--csv", [ & ] { request.format = Format::csv; }, "Print comma-separated values" )
            ->excludes( json );
}

void addCommand( CLI::App& app, Command const& command, Request& request ) {
    CLI::App* const sub = app.add_subcommand( command.word, command.description );
    sub->group( "Commands" );
    sub->add_option( "CONF", request.conf, "Path of the switch configuration" )->required();
    if( command.nameDescription )
        sub->add_option( "NAME", request.name, command.nameDescription )->required();
    addFormats( *sub, command, request );
    sub->callback( [ & ] { request.command = &command; } );
}

} // namespace

std::span<Command const> commands() { return table_; }

std::optional<Request> parseCommandLine( int argc, char const* const* argv, std::ostream& out ) {
    requireKnownCommand( argc, argv );
    Request request;
    CLI::App app( "Shows what the P4 compiler's context files say about a switch chip.", "bfri" );
    app.set_version_flag( "--version", "bfri " BFRI_VERSION );
    app.require_subcommand( 0, 1 );
    app.get_formatter()->label( "SUBCOMMAND", "COMMAND CONF [ARG...]" );
    app.footer( footer );
    for( Command const& command : commands() )
        addCommand( app, command, request );
    try {
        app.parse( argc, argv );
    } catch( CLI::Success const& asked ) {
        app.exit( asked, out, out );
        return std::nullopt;
    } catch( CLI::ParseError const& error ) {
        refuse( error.what() );
    }
    if( !request.command )
        refuse( "a command is required" );
    return request;
}

} // namespace Bfri
