#include "cli/grammar/Help.h"

#include "cli/terminal/TextFormat.h"

#include <array>
#include <fmt/ostream.h>

namespace Bfri {

namespace {

void printRow( std::ostream& out, String const& left, char const* right ) {
    fmt::print( out, "  {:<27} {}\n", left, right );
}

/// "-h, --help", "--sort FIELD".
String signatureOf( Option const& option ) {
    String const name =
        option.shortName ? fmt::format( "{}, {}", option.shortName, option.name ) : option.name;
    return option.label ? fmt::format( "{} {}", name, option.label ) : name;
}

void printOptions( std::ostream& out, std::span<Option const* const> options ) {
    out << "\nOptions:\n";
    printRow( out, signatureOf( helpOption ), helpOption.description );
    for( Option const* const option : options )
        printRow( out, signatureOf( *option ), option->description );
}

void printArguments( std::ostream& out, std::span<Argument const> arguments ) {
    if( arguments.empty() )
        return;
    out << "\nArguments:\n";
    for( Argument const& argument : arguments )
        printRow( out, argument.label + String( isRepeatable( argument.arity ) ? "..." : "" ),
                  argument.description );
}

void printCommands( std::ostream& out, std::span<Command const> commands ) {
    std::string_view group;
    for( Command const& command : commands ) {
        if( !*command.group )
            continue;
        if( group != command.group )
            fmt::print( out, "\n{}:\n", command.group );
        group = command.group;
        printRow( out, command.word, command.description );
    }
}

void printExplanations( std::ostream& out, char const* title, std::span<Explanation const> rows ) {
    fmt::print( out, "\n{}:\n", title );
    for( auto const& [ term, meaning ] : rows )
        printRow( out, term, meaning );
}

void printParagraph( std::ostream& out, String const& text ) {
    out << '\n' << inLines( text, { .columns = 100 } );
}

void printExamples( std::ostream& out, std::vector<String> const& examples ) {
    if( examples.empty() )
        return;
    out << "\nExamples:\n";
    for( String const& line : examples )
        out << "  " << line << '\n';
}

} // namespace

void printHelp( std::ostream& out, Program const& program, Command const& command ) {
    fmt::print( out, "{}\nUsage: {} {} [OPTIONS]{}\n", command.description, program.name, command.word,
                argumentsOf( command ) );
    printArguments( out, command.arguments );
    printOptions( out, optionsOf( command ) );
    for( String const& paragraph : paragraphsOf( command ) )
        printParagraph( out, paragraph );
    if( command.listing )
        out << '\n' << fieldTable( command );
    printExamples( out, examplesOf( program, command ) );
}

void printHelp( std::ostream& out, Program const& program ) {
    fmt::print( out, "{}\nUsage: {} {}\n", program.description, program.name, program.usage );
    printOptions( out, std::array{ &versionOption } );
    printCommands( out, program.commands );
    printParagraph(
        out, fmt::format( "'{} COMMAND --help' shows the arguments and options of a command, with examples.",
                          program.name ) );
    printExplanations( out, "Exit status", program.exitStatuses );
    printExplanations( out, "Environment", program.environment );
}

} // namespace Bfri
