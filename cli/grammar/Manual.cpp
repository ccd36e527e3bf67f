#include "cli/commands/Answers.h"

namespace Bfri {

namespace {

/// A text between macros: nothing in it is one.
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

void printOption( std::ostream& out, Option const& option ) {
    out << ".TP\n\\fB" << roff( option.name ) << "\\fR";
    if( option.argument )
        out << " \\fI" << option.argument << "\\fR";
    out << '\n' << roff( option.description ) << '\n';
}

void printCommand( std::ostream& out, Command const& command ) {
    out << ".SS \\fB" << roff( command.word ) << "\\fR" << argumentsOf( command, "\\fI", "\\fR" ) << '\n'
        << roff( command.description ) << ".\n";
    for( Option const& option : optionsOf( command ) )
        printOption( out, option );
    if( String const details = detailsOf( command ); !details.empty() )
        out << ".PP\n.nf\n" << roff( details ) << "\n.fi\n";
}

} // namespace

ExitStatus manual( Request const&, Streams const& io ) {
    io.out << ".TH BFRI 1 \"\" \"bfri " BFRI_VERSION "\" \"User Commands\"\n"
              ".SH NAME\nbfri \\- inspector of what a P4 compiler says about a switch chip\n"
              ".SH SYNOPSIS\n\\fBbfri\\fR \\fICOMMAND\\fR [\\fIARG\\fR...] [\\fIOPTION\\fR...]\n"
              ".SH DESCRIPTION\n"
           << roff( programDescription ) << '\n';
    std::string_view group;
    for( Command const& command : commands() ) {
        if( !*command.group )
            continue;
        if( group != command.group )
            io.out << ".SH \"" << roff( command.group ) << "\"\n";
        group = command.group;
        printCommand( io.out, command );
    }
    io.out << ".SH \"EXIT STATUS\"\n"
           << roff( exitStatusText ) << '\n'
           << ".SH ENVIRONMENT\n"
           << roff( environmentText ) << '\n';
    return ExitStatus::done;
}

} // namespace Bfri
