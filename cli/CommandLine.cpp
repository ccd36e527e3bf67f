#include "cli/CommandLine.h"

#include "cli/Failure.h"
#include "cli/Listings.h"
#include "cli/Names.h"
#include "cli/Utf8.h"

#include <algorithm>
#include <charconv>

#include <CLI/CLI.hpp>

namespace Bfri {

namespace {

constexpr Command first[] = {
    { "summary", "What is loaded: files, pipelines and counts of every kind", nullptr, true, nullptr,
      OnBadData::explain, summary },
    { "table", "The record of one match table", "Its name, or the end of it from a dot on", true, nullptr,
      OnBadData::explain, table },
    { "dump", "The whole model as one JSON object", nullptr, false, nullptr, OnBadData::dieAsLibrary, dump },
};

constexpr char const* footer =
    "'bfri COMMAND --help' says what a command takes.\n\n"
    "Exit status: 0 done, 1 not found or not unique, 2 wrong usage, 3 input cannot be loaded, "
    "4 internal error or output not written.\n"
    "Set ZEL_TRACE=BfResourceParser/5-7 to see on standard error how files are "
    "read.";

[[noreturn]] void refuse( String const& reason ) { throw Failure( ExitStatus::usage, shown( reason ) ); }

/// The end of a sentence that quotes a wrong word.
String whatWasMeant( std::vector<String> const& words, std::string_view word ) {
    String meant;
    for( String const& near : nearest( words, word ) )
        meant += ( meant.empty() ? "; did you mean '" : "' or '" ) + near;
    return meant + ( meant.empty() ? "" : "'?" );
}

/// Names the wrong word, where the argument parser would only miss a right one.
void requireKnownCommand( int argc, char const* const* argv ) {
    auto const word = std::find_if( argv + 1, argv + argc, []( String const& w ) { return w[ 0 ] != '-'; } );
    if( word == argv + argc )
        return;
    std::vector<String> words;
    for( Command const& command : commands() )
        words.emplace_back( command.word );
    if( std::find( words.begin(), words.end(), *word ) == words.end() )
        refuse( "no command '" + String( *word ) + "'" + whatWasMeant( words, *word ) );
}

std::vector<String> fieldsOf( Listing const& listing ) {
    std::vector<String> names;
    for( Field const& field : listing.blank() )
        names.emplace_back( field.name );
    return names;
}

String joined( std::vector<String> const& names ) {
    String text;
    for( String const& name : names )
        text += ( text.empty() ? "" : ", " ) + name;
    return text;
}

/// For the help, in lines that a terminal has room for.
String fieldLines( Listing const& listing ) {
    constexpr std::size_t most = 100;
    String text = "Fields:";
    std::size_t column = text.size();
    for( String const& name : fieldsOf( listing ) ) {
        bool const fits = column + 1 + name.size() <= most;
        text += ( fits ? " " : "\n        " ) + name;
        column = ( fits ? column + 1 : 8 ) + name.size();
    }
    return text;
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

void addFormats( CLI::App& sub, Command const& command, Request& request ) {
    CLI::Option* json = nullptr;
    if( command.offersJson )
        json = sub.add_flag_callback(
            "--json", [ & ] { request.format = Format::json; }, "Print one JSON object" );
    if( command.listing )
        sub.add_flag_callback(
               "--csv", [ & ] { request.format = Format::csv; }, "Print comma-separated values" )
            ->excludes( json );
}

void addChoice( CLI::App& sub, Listing const& listing, Choice& choice ) {
    auto const option = [ & ]( char const* name, char const* argument, char const* description,
                               std::function<void( String const& )> const& take ) {
        sub.add_option_function<String>( name, take, description )->type_name( argument );
    };
    option( "--filter", "REGEX", "Only rows whose name this (ECMAScript) matches, anywhere in it",
            [ & ]( String const& word ) { choice.filter.emplace( word ); } );
    option( "--sort", "FIELD", "Sort by one of the fields below; -FIELD: the other way round",
            [ & ]( String const& word ) { choice.order = orderBy( listing, word ); } );
    option( "-n", "N", "Only the first N of these rows",
            [ & ]( String const& word ) { choice.most = numberOf( word ); } );
    sub.footer( fieldLines( listing ) );
}

void addCommand( CLI::App& app, Command const& command, Request& request ) {
    CLI::App* const sub = app.add_subcommand( command.word, command.description );
    sub->group( command.listing ? "Lists, each with --filter, --sort, -n, --json and --csv" : "Commands" );
    sub->add_option( "CONF", request.conf, "Path of the switch configuration" )->required()->type_name( "" );
    if( command.nameDescription )
        sub->add_option( "NAME", request.name, command.nameDescription )->required()->type_name( "" );
    addFormats( *sub, command, request );
    if( command.listing )
        addChoice( *sub, *command.listing, request.choice );
    sub->callback( [ & ] { request.command = &command; } );
}

} // namespace

std::span<Command const> commands() {
    static std::vector<Command> const all = [] {
        std::vector<Command> both( std::begin( first ), std::end( first ) );
        for( Listing const& listing : listings() )
            both.push_back(
                { listing.word, listing.description, nullptr, true, &listing, OnBadData::explain, list } );
        return both;
    }();
    return all;
}

std::optional<Request> parseCommandLine( int argc, char const* const* argv, std::ostream& out ) {
    requireKnownCommand( argc, argv );
    Request request;
    CLI::App app( "Shows what the P4 compiler's context files say about a switch chip.", "bfri" );
    app.set_version_flag( "--version", "bfri " BFRI_VERSION );
    app.require_subcommand( 0, 1 );
    app.get_formatter()->label( "SUBCOMMAND", "COMMAND CONF [ARG...]" );
    for( Command const& command : commands() )
        addCommand( app, command, request );
    app.footer( footer ); // the commands' own help goes without it
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
