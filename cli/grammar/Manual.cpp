#include "cli/grammar/Help.h"

#include <cctype>
#include <fmt/ostream.h>

namespace Bfri {

namespace {

/// Text without markup.
String roff( std::string_view text ) {
    String result;
    bool lineStart = true;
    for( char const c : text ) {
        if( lineStart && ( c == '.' || c == '\'' ) )
            result += "\\&";
        if( c == '\\' )
            result += "\\e";
        else if( c == '-' )
            result += "\\-";
        else
            result += c;
        lineStart = c == '\n';
    }
    return result;
}

String upperCase( String text ) {
    std::transform( text.begin(), text.end(), text.begin(),
                    []( unsigned char c ) { return static_cast<char>( std::toupper( c ) ); } );
    return text;
}

void printOption( std::ostream& out, Option const& option ) {
    out << ".TP\n";
    if( option.shortName )
        fmt::print( out, "\\fB{}\\fR, ", roff( option.shortName ) );
    fmt::print( out, "\\fB{}\\fR", roff( option.name ) );
    if( option.label )
        fmt::print( out, " \\fI{}\\fR", option.label );
    fmt::print( out, "\n{}\n", roff( option.description ) );
}

void startLines( std::ostream& out ) { out << ".PP\n.nf\n"; }
void endLines( std::ostream& out ) { out << ".fi\n"; }

void printExampleLines( std::ostream& out, std::vector<String> const& examples ) {
    if( examples.empty() )
        return;
    startLines( out );
    out << "Examples:\n";
    for( String const& line : examples )
        fmt::print( out, "  {}\n", roff( line ) );
    endLines( out );
}

void printFields( std::ostream& out, String const& table ) {
    if( table.empty() )
        return;
    startLines( out );
    out << roff( table );
    endLines( out );
}

void printCommand( std::ostream& out, Program const& program, Command const& command ) {
    fmt::print( out, ".SS \\fB{}\\fR{}\n{}.\n", roff( command.word ), argumentsOf( command, "\\fI", "\\fR" ),
                roff( command.description ) );
    for( Argument const& argument : command.arguments )
        fmt::print( out, ".TP\n\\fI{}\\fR\n{}\n", argument.label, roff( argument.description ) );
    for( Option const* const option : optionsOf( command ) )
        printOption( out, *option );
    for( String const& paragraph : paragraphsOf( command ) )
        fmt::print( out, ".PP\n{}\n", roff( paragraph ) );
    printFields( out, fieldTable( command ) );
    printExampleLines( out, examplesOf( program, command ) );
}

void printCommands( std::ostream& out, Program const& program ) {
    std::string_view group;
    for( Command const& command : program.commands ) {
        if( !*command.group )
            continue;
        if( group != command.group )
            fmt::print( out, ".SH \"{}\"\n", roff( command.group ) );
        group = command.group;
        printCommand( out, program, command );
    }
}

void printExplanationList( std::ostream& out, char const* title, std::span<Explanation const> rows ) {
    fmt::print( out, ".SH \"{}\"\n", title );
    for( auto const& [ term, meaning ] : rows )
        fmt::print( out, ".TP\n\\fB{}\\fR\n{}\n", roff( term ), roff( meaning ) );
}

} // namespace

void printManual( std::ostream& out, Program const& program ) {
    fmt::print( out,
                ".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n"
                ".SH NAME\n{} \\- {}\n"
                ".SH SYNOPSIS\n\\fB{}\\fR \\fICOMMAND\\fR [\\fIARG\\fR...] [\\fIOPTION\\fR...]\n"
                ".SH DESCRIPTION\n{}\n",
                upperCase( program.name ), program.name, program.version, program.name, roff( program.title ),
                program.name, roff( program.description ) );
    printOption( out, helpOption );
    printOption( out, versionOption );
    printCommands( out, program );
    printExplanationList( out, "EXIT STATUS", program.exitStatuses );
    printExplanationList( out, "ENVIRONMENT", program.environment );
}

} // namespace Bfri
