#include "cli/CommandLine.h"

#include "cli/Failure.h"
#include "cli/Listings.h"
#include "cli/Utf8.h"
#include "cli/WrongWord.h"

#include <algorithm>
#include <charconv>
#include <set>

#include <CLI/CLI.hpp>

namespace Bfri {

namespace {

[[noreturn]] void refuse( String const& reason ) { throw Failure( ExitStatus::usage, shown( reason ) ); }

/// The word that should be a command; null when there is none.
char const* commandWord( std::span<char const* const> words ) {
    auto const word = std::find_if( words.begin(), words.end(), []( char const* w ) { return *w != '-'; } );
    return word == words.end() ? nullptr : *word;
}

/// Names the wrong word, where the argument parser would only miss a right one.
Command const* requireKnownCommand( std::span<char const* const> words ) {
    char const* const word = commandWord( words );
    if( !word )
        return nullptr;
    if( Command const* const command = commandOf( word ) )
        return command;
    std::vector<String> known;
    for( Command const& command : commands() ) {
        if( *command.group )
            known.emplace_back( command.word );
    }
    refuse( "no command '" + String( word ) + "'" + whatWasMeant( known, word ) );
}

/// Names an unknown option in front of the value that it may have, or of a word that is no one's.
void requireKnownOptions( Command const& command, std::span<char const* const> words ) {
    std::vector<String> known = { "-h", "--help" };
    std::set<String> valued;
    for( Option const& option : optionsOf( command ) ) {
        known.emplace_back( option.name );
        if( option.argument )
            valued.insert( option.name );
    }
    auto const behindIt = std::find( words.begin(), words.end(), String( command.word ) ) + 1;
    bool isValue = false;
    for( String const word : std::span( behindIt, words.end() ) ) {
        bool const isOption = !isValue && word.size() > 1 && word[ 0 ] == '-';
        isValue = isOption && valued.count( word ) > 0;
        if( word == "--" && isOption )
            return;
        String const name =
            word.starts_with( "--" ) ? word.substr( 0, word.find( '=' ) ) : word.substr( 0, 2 );
        if( isOption && std::find( known.begin(), known.end(), name ) == known.end() )
            refuse( String( "'" ) + command.word + "' has no option '" + name + "'" +
                    whatWasMeant( known, name ) );
    }
}

Order orderBy( Listing const& listing, String const& word ) {
    bool const descending = word.starts_with( '-' );
    String const field = word.substr( descending ? 1 : 0 );
    auto const fields = fieldsOf( listing );
    if( std::find( fields.begin(), fields.end(), field ) != fields.end() )
        return { field, descending };
    String const meant = whatWasMeant( fields, field );
    refuse( "can't sort by '" + field + "'" + ( meant.empty() ? "." : meant ) + " The fields are " +
            joined( fields ) );
}

/// The numbers too large to be counted are as good as all.
std::size_t numberOf( String const& word ) {
    std::size_t number = std::numeric_limits<std::size_t>::max();
    char const* const end = word.data() + word.size();
    auto const [ rest, error ] = std::from_chars( word.data(), end, number );
    if( error == std::errc::invalid_argument || rest != end )
        refuse( "-n takes a number of rows, 0 or more, not '" + word + "'" );
    return number;
}

void addArgument( CLI::App& sub, Argument const& argument, Request& request ) {
    auto const take = [ & ]( String const& word ) { request.words.push_back( word ); };
    auto const takeAll = [ take ]( std::vector<String> const& words ) {
        std::for_each( words.begin(), words.end(), take );
    };
    CLI::Option* const option =
        argument.times == Times::once
            ? sub.add_option_function<String>( argument.label, take, argument.description )
            : sub.add_option_function<std::vector<String>>( argument.label, takeAll, argument.description );
    option->type_name( "" );
    option->required( argument.times != Times::anyTimes );
}

void addOption( CLI::App& sub, Option const& option, Request& request ) {
    String const name = option.name;
    if( !option.argument )
        sub.add_flag_callback(
            name, [ &request, name ] { request.options[ name ]; }, option.description );
    else
        sub.add_option_function<String>(
               name, [ &request, name ]( String const& word ) { request.options[ name ] = word; },
               option.description )
            ->type_name( option.argument );
}

void addCommand( CLI::App& app, Command const& command, Request& request ) {
    CLI::App* const sub = app.add_subcommand( command.word, command.description );
    sub->group( command.group );
    for( Argument const& argument : command.arguments )
        addArgument( *sub, argument, request );
    for( Option const& option : optionsOf( command ) )
        addOption( *sub, option, request );
    if( command.json && command.csv )
        sub->get_option( "--csv" )->excludes( "--json" );
    sub->footer( [ & ] { return detailsOf( command ); } );
    sub->callback( [ & ] { request.command = &command; } );
}

void takeFormat( Request& request ) {
    if( request.has( "--json" ) )
        request.format = Format::json;
    if( request.has( "--csv" ) )
        request.format = Format::csv;
    String const color = request.option( "--color" );
    if( request.has( "--color" ) && color != "auto" && color != "always" && color != "never" )
        refuse( "--color takes auto, always or never, not '" + color + "'" );
}

void takeChoice( Request& request, Listing const& listing ) {
    if( request.has( "--filter" ) )
        request.choice.filter.emplace( request.option( "--filter" ) );
    if( request.has( "--sort" ) )
        request.choice.order = orderBy( listing, request.option( "--sort" ) );
    if( request.has( "-n" ) )
        request.choice.most = numberOf( request.option( "-n" ) );
}

/// "help" and "help COMMAND" are "--help" and "COMMAND --help".
std::vector<char const*> withHelpAsOption( std::vector<char const*> line ) {
    if( line.size() < 2 || std::string_view( line[ 1 ] ) != "help" )
        return line;
    line[ 1 ] = "--help";
    if( line.size() > 2 )
        std::swap( line[ 1 ], line[ 2 ] );
    return line;
}

} // namespace

Command const* commandIn( int argc, char const* const* argv ) {
    char const* const word = commandWord( std::span( argv + 1, argv + argc ) );
    return word ? commandOf( word ) : nullptr;
}

std::optional<Request> parseCommandLine( int argc, char const* const* argv, std::ostream& out ) {
    auto const line = withHelpAsOption( { argv, argv + argc } );
    std::span const words = std::span( line ).subspan( 1 );
    if( Command const* const command = requireKnownCommand( words ) )
        requireKnownOptions( *command, words );
    Request request;
    CLI::App app( programDescription, "bfri" );
    app.set_version_flag( "--version", "bfri " BFRI_VERSION );
    app.require_subcommand( 0, 1 );
    app.get_formatter()->label( "SUBCOMMAND", "COMMAND CONF [ARG...]" );
    for( Command const& command : commands() )
        addCommand( app, command, request );
    app.footer( String( "'bfri COMMAND --help' says what a command takes, with examples.\n\nExit status: " ) +
                exitStatusText + "\n" + environmentText );
    try {
        app.parse( static_cast<int>( line.size() ), line.data() );
    } catch( CLI::Success const& asked ) {
        app.exit( asked, out, out );
        return std::nullopt;
    } catch( CLI::ParseError const& error ) {
        refuse( error.what() );
    }
    if( !request.command )
        refuse( "a command is required" );
    takeFormat( request );
    if( request.command->listing )
        takeChoice( request, *request.command->listing );
    return request;
}

} // namespace Bfri
