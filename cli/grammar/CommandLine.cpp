#include "cli/grammar/CommandLine.h"
#include "cli/terminal/Characters.h"

#include "cli/Failure.h"
#include "cli/grammar/WrongWord.h"
#include "inspect/model/RecordKinds.h"

#include <algorithm>
#include <charconv>
#include <set>

#include <CLI/CLI.hpp>

namespace Bfri {

namespace {

[[noreturn]] void refuse( String const& reason ) {
    throw Failure( ExitStatus::usage, escapeForTerminal( reason ) );
}

/// The word that should be a command; null when there is none.
char const* commandWord( std::span<char const* const> words ) {
    auto const word = std::find_if( words.begin(), words.end(), []( char const* w ) { return *w != '-'; } );
    return word == words.end() ? nullptr : *word;
}

/// Where none but those of the whole program may stand.
void requireNoOptionInFront( std::span<char const* const> words ) {
    for( std::string_view const word : words ) {
        if( !word.starts_with( '-' ) )
            return;
        if( word != "-h" && word != "--help" && word != "--version" )
            refuse( "options come behind the command, not '" + String( word ) + "' in front of it" );
    }
}

std::size_t placeOf( Command const& command, std::span<char const* const> words ) {
    auto const place = std::find( words.begin(), words.end(), std::string_view( command.word ) );
    return static_cast<std::size_t>( place - words.begin() );
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

/// "--sort" of "--sort=name", "-n" of "-n2".
String optionNameIn( String const& word ) {
    return word.starts_with( "--" ) ? word.substr( 0, word.find( '=' ) ) : word.substr( 0, 2 );
}

/// Or other words that are no paths.
bool takesNames( Command const& command ) {
    return std::any_of( command.arguments.begin(), command.arguments.end(),
                        []( Argument const& argument ) { return argument.offer != CompletionKind::file; } );
}

Option const& requireKnownOption( Command const& command, std::vector<Option> const& options,
                                  String const& name ) {
    std::vector<String> known = { "-h", "--help" };
    for( Option const& option : options ) {
        if( name == option.name )
            return option;
        known.emplace_back( option.name );
    }
    String const meant = whatWasMeant( known, name );
    bool const mayBeName = takesNames( command ) && ( meant.empty() || !name.starts_with( "--" ) );
    char const* const howName = "Names that start with a dash come behind '--'";
    refuse( String( "'" ) + command.word + "' has no option '" + name + "'" + meant +
            ( mayBeName ? ( meant.empty() ? ". " : " " ) + String( howName ) : "" ) );
}

[[noreturn]] void refuseWithoutValue( Option const& option ) {
    refuse( String( option.name ) + " needs its " + option.argument + " behind it" );
}

/// Names what is wrong with an option, in front of a word that is no one's.
void requireGoodOptions( Command const& command, std::span<char const* const> words ) {
    auto const options = optionsOf( command );
    std::set<String> once;
    Option const* awaiting = nullptr; // the option whose value comes next
    for( String const word : words.subspan( placeOf( command, words ) + 1 ) ) {
        bool const isValue = std::exchange( awaiting, nullptr ) != nullptr;
        if( isValue || word.size() < 2 || word[ 0 ] != '-' )
            continue;
        String const name = optionNameIn( word );
        if( word == "--" || name == "-h" || name == "--help" )
            return;
        Option const& option = requireKnownOption( command, options, name );
        if( option.argument && !option.addsUp && !once.insert( name ).second )
            refuse( "only one " + name + " can be" );
        if( option.argument && word == name )
            awaiting = &option;
        else if( option.argument && word == name + '=' )
            refuseWithoutValue( option );
    }
    if( awaiting )
        refuseWithoutValue( *awaiting );
}

Order orderBy( RecordKind const& listing, String const& word ) {
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
        argument.times == Arity::once || argument.times == Arity::atMostOnce
            ? sub.add_option_function<String>( argument.label, take, argument.description )
            : sub.add_option_function<std::vector<String>>( argument.label, takeAll, argument.description );
    option->type_name( "" );
    option->required( argument.times == Arity::once || argument.times == Arity::onceOrMore );
}

void addOption( CLI::App& sub, Option const& option, Request& request ) {
    String const name = option.name;
    if( !option.argument )
        sub.add_flag_callback(
            name, [ &request, name ] { request.options[ name ]; }, option.description );
    else
        sub.add_option_function<String>(
               name,
               [ &request, name ]( String const& word ) {
                   auto const [ former, isFirst ] = request.options.try_emplace( name, word );
                   former->second += isFirst ? "" : ',' + word;
               },
               option.description )
            ->type_name( option.argument )
            ->trigger_on_parse();
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

void takeChoice( Request& request, RecordKind const& listing ) {
    if( request.has( "--filter" ) )
        request.choice.filter.emplace( request.option( "--filter" ) );
    if( request.has( "--sort" ) )
        request.choice.order = orderBy( listing, request.option( "--sort" ) );
    if( request.has( "-n" ) )
        request.choice.most = numberOf( request.option( "-n" ) );
}

/// A path that is an empty text, of a variable that is not set, say, would read oddly wherever it is quoted.
void requirePaths( Request const& request ) {
    auto const& arguments = request.command->arguments;
    for( std::size_t i = 0; i < request.words.size(); ++i ) {
        Argument const& argument = arguments[ std::min( i, arguments.size() - 1 ) ];
        if( argument.offer == CompletionKind::file && request.words[ i ].empty() )
            refuse( String( argument.label ) + " is an empty text, not the path of a switch configuration" );
    }
}

/// With the command that was given, if one was.
[[noreturn]] void refuseSurplus( CLI::App const& app, Command const* command ) {
    String const line = command ? command->word + argumentsOf( *command ) : "COMMAND";
    refuse( "'" + app.remaining( true ).front() + "' is too much: the command is 'bfri " + line + "'" );
}

} // namespace

Command const* commandIn( int argc, char const* const* argv ) {
    char const* const word = commandWord( std::span( argv + 1, argv + argc ) );
    return word ? commandOf( word ) : nullptr;
}

std::optional<Request> parseCommandLine( int argc, char const* const* argv, std::ostream& out ) {
    std::span const words( argv + 1, argv + argc );
    requireNoOptionInFront( words );
    Command const* const command = requireKnownCommand( words );
    if( command )
        requireGoodOptions( *command, words );
    Request request;
    CLI::App app( programDescription, "bfri" );
    app.set_version_flag( "--version", "bfri " BFRI_VERSION );
    app.require_subcommand( 0, 1 );
    app.get_formatter()->label( "SUBCOMMAND", "COMMAND CONF [ARG...]" );
    for( Command const& one : commands() )
        addCommand( app, one, request );
    app.footer( String( "'bfri COMMAND --help' says what a command takes, with examples.\n\nExit status: " ) +
                exitStatusText + "\n" + environmentText );
    try {
        app.parse( argc, argv );
    } catch( CLI::Success const& asked ) {
        app.exit( asked, out, out );
        return std::nullopt;
    } catch( CLI::ExtrasError const& ) {
        refuseSurplus( app, command );
    } catch( CLI::ParseError const& error ) {
        refuse( error.what() );
    }
    if( !request.command )
        refuse( "a command is required" );
    requirePaths( request );
    takeFormat( request );
    if( request.command->listing )
        takeChoice( request, *request.command->listing );
    return request;
}

} // namespace Bfri
