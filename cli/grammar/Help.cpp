#include "cli/grammar/Help.h"

#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"

#include <array>
#include <cctype>
#include <fmt/ostream.h>
#include <sstream>

namespace Bfri {

namespace {

// What the help and the manual page say about a command after its options.

constexpr char const* whereText =
    "--where compares fields with values: =, !=, <, <=, >, >= and ~= (a regular expression, for text), "
    "joined with and, or, not and parentheses: of tables, 'size>=4096 and not (name~=acl or "
    "hitBitSupported=yes)'. A value with a space is in single or double quotes. Fields that are true or "
    "false take = and != only. A list "
    "matches if one element does; with !=, if no element equals the value. Without a value, a field equals "
    "nothing.";

constexpr char const* fieldsText =
    "The fields are named as in --sort, --json and --csv. Text output shows those that have a column.";

/// The label of the first of some arguments or options whose value has a type; null without one.
char const* labelOf( ValueKind kind, auto const& takers ) {
    auto const found =
        std::ranges::find_if( takers, [ & ]( auto const& taker ) { return taker.type.kind == kind; } );
    return found == takers.end() ? nullptr : found->label;
}

/// What a command's help says after its options.
std::vector<String> paragraphsOf( CommandText const& text, Command const& command ) {
    auto paragraphs = text.paragraphs;
    if( command.blank )
        paragraphs.emplace_back( whereText );
    if( command.listing )
        paragraphs.emplace_back( fieldsText );
    char const* const argument = labelOf( ValueKind::recordKind, command.arguments );
    char const* const option = labelOf( ValueKind::recordKind, command.options );
    if( char const* const label = argument ? argument : option )
        paragraphs.insert( paragraphs.begin(),
                           fmt::format( "{} is {}.", label, alternatives( kindWords() ) ) );
    return paragraphs;
}

/// The fields of the rows that a list command prints, with their meaning; empty for other commands.
String fieldTable( Command const& command ) {
    if( !command.listing )
        return {};
    RowList fields{ { { "COLUMN", {} }, { "FIELD", {} }, { "MEANING", {} } }, {} };
    auto const columns = columnsOf( command.listing->kind );
    auto const columnOf = [ & ]( FieldInfo const& field ) {
        return std::ranges::find( columns, std::string_view( field.name ), &Column::field );
    };
    auto known = command.listing->fields(); // in the order of the columns; last those without one
    std::ranges::stable_sort( known, {}, columnOf );
    for( FieldInfo const& field : known ) {
        auto const column = columnOf( field );
        fields.rows.push_back( { { "", column == columns.end() ? Value() : Value( column->title ) },
                                 { "", field.name },
                                 { "", field.meaning } } );
    }
    std::ostringstream lines;
    printColumns( lines, fields );
    return lines.str();
}

/// Command lines, as paragraphs: one per line.
String examplesOf( Program const& program, CommandText const& text, Command const& command ) {
    if( !command.listing )
        return text.examples;
    Kind const kind = command.listing->kind; // a filter that finds some names of the example switch
    char const* const filter = kind == Kind::actions                              ? "^set_"
                               : kind == Kind::headers || kind == Kind::phvFields ? "^hdr"
                                                                                  : "^pipe_a";
    return fmt::format( "{0}\n{0} --filter {1} --sort=-name -n 10\n{0} --json",
                        fmt::format( "{} {} switch.conf", program.name, command.word ), filter );
}

/// Calls a function with each command that the help lists, and with the title of its group if it is the first
/// of that, else null.
template<class Function>
void eachListed( Program const& program, Function const& function ) {
    std::string_view group;
    for( Command const& command : program.commands ) {
        if( *command.group )
            function( command, group == command.group ? nullptr : command.group );
        group = command.group;
    }
}

// Help.

void printRow( std::ostream& out, String const& left, String const& right ) {
    fmt::print( out, "  {:<27} {}\n", left, right );
}

/// "-h, --help", "--sort FIELD".
void printOption( std::ostream& out, Option const& option ) {
    String const shortName = option.shortName ? option.shortName + String( ", " ) : "";
    printRow( out, shortName + option.name + ( option.label ? String( " " ) + option.label : "" ),
              option.description );
}

void printOptions( std::ostream& out, std::span<Option const* const> options ) {
    out << "\nOptions:\n";
    printOption( out, helpOption );
    for( Option const* const option : options )
        printOption( out, *option );
}

void printArguments( std::ostream& out, std::span<Argument const> arguments ) {
    if( !arguments.empty() )
        out << "\nArguments:\n";
    for( Argument const& argument : arguments )
        printRow( out, argument.label + String( isRepeatable( argument.arity ) ? "..." : "" ),
                  argument.description );
}

void printExplanations( std::ostream& out, char const* title, std::span<Explanation const> rows ) {
    fmt::print( out, "\n{}:\n", title );
    for( auto const& [ term, meaning ] : rows )
        printRow( out, term, meaning );
}

void printParagraph( std::ostream& out, String const& text ) {
    out << '\n' << inLines( text, { .columns = 100 } );
}

/// The lines, indented, with a title above them.
String exampleLines( String const& examples ) {
    std::istringstream lines( examples );
    String text;
    for( String line; std::getline( lines, line ); )
        text += ( text.empty() ? "Examples:\n  " : "  " ) + line + '\n';
    return text;
}

// The manual page.

/// Text without markup.
String roff( std::string_view text ) {
    String result;
    for( char last = '\n'; char const c : text ) {
        if( last == '\n' && ( c == '.' || c == '\'' ) )
            result += "\\&";
        if( c == '\\' )
            result += "\\e";
        else if( c == '-' )
            result += "\\-";
        else
            result += c;
        last = c;
    }
    return result;
}

void printTagged( std::ostream& out, String const& tag, char const* text ) {
    fmt::print( out, ".TP\n{}\n{}\n", tag, roff( text ) );
}

void printTaggedOption( std::ostream& out, Option const& option ) {
    String const shortName = option.shortName ? fmt::format( "\\fB{}\\fR, ", roff( option.shortName ) ) : "";
    String const label = option.label ? fmt::format( " \\fI{}\\fR", option.label ) : "";
    printTagged( out, fmt::format( "{}\\fB{}\\fR{}", shortName, roff( option.name ), label ),
                 option.description );
}

/// Lines as they are.
void printLines( std::ostream& out, String const& lines ) {
    if( !lines.empty() )
        fmt::print( out, ".PP\n.nf\n{}.fi\n", roff( lines ) );
}

void printTaggedList( std::ostream& out, char const* title, std::span<Explanation const> rows ) {
    fmt::print( out, ".SH \"{}\"\n", title );
    for( auto const& [ term, meaning ] : rows )
        printTagged( out, fmt::format( "\\fB{}\\fR", roff( term ) ), meaning );
}

void printSection( std::ostream& out, Program const& program, Command const& command ) {
    CommandText const text = textOf( program, command );
    fmt::print( out, ".SS \\fB{}\\fR{}\n{}.\n", roff( command.word ), argumentsOf( command, "\\fI", "\\fR" ),
                roff( text.description ) );
    for( Argument const& argument : command.arguments )
        printTagged( out, fmt::format( "\\fI{}\\fR", argument.label ), argument.description );
    for( Option const* const option : optionsOf( command ) )
        printTaggedOption( out, *option );
    for( String const& paragraph : paragraphsOf( text, command ) )
        fmt::print( out, ".PP\n{}\n", roff( paragraph ) );
    printLines( out, fieldTable( command ) );
    printLines( out, exampleLines( examplesOf( program, text, command ) ) );
}

} // namespace

CommandText textOf( Program const& program, Command const& command ) {
    CommandText text;
    String const start = command.word + String( ": " );
    bool isMeant = false, isNew = true;
    std::istringstream lines( program.texts );
    for( String line; std::getline( lines, line ); isNew = !line.starts_with( ' ' ) ) {
        if( !line.empty() && line[ 0 ] != ' ' ) {
            isMeant = line.starts_with( start );
            if( isMeant )
                text.description = line.substr( start.size() );
        } else if( !isMeant || line.empty() )
            continue;
        else if( line.starts_with( "  $ " ) )
            text.examples += line.substr( 4 ) + '\n';
        else if( isNew )
            text.paragraphs.push_back( line.substr( 2 ) );
        else
            text.paragraphs.back() += line.substr( 1 );
    }
    return text;
}

void printHelp( std::ostream& out, Program const& program, Command const& command ) {
    CommandText const text = textOf( program, command );
    fmt::print( out, "{}\nUsage: {} {} [OPTIONS]{}\n", text.description, program.name, command.word,
                argumentsOf( command ) );
    printArguments( out, command.arguments );
    printOptions( out, optionsOf( command ) );
    for( String const& paragraph : paragraphsOf( text, command ) )
        printParagraph( out, paragraph );
    for( String const& lines :
         { fieldTable( command ), exampleLines( examplesOf( program, text, command ) ) } )
        out << ( lines.empty() ? "" : "\n" ) << lines;
}

void printHelp( std::ostream& out, Program const& program ) {
    fmt::print( out, "{}\nUsage: {} {}\n", program.description, program.name, program.usage );
    printOptions( out, std::array{ &versionOption } );
    eachListed( program, [ & ]( Command const& command, char const* group ) {
        if( group )
            fmt::print( out, "\n{}:\n", group );
        printRow( out, command.word, textOf( program, command ).description );
    } );
    printParagraph(
        out, fmt::format( "'{} COMMAND --help' shows the arguments and options of a command, with examples.",
                          program.name ) );
    printExplanations( out, "Exit status", program.exitStatuses );
    printExplanations( out, "Environment", program.environment );
}

void printManual( std::ostream& out, Program const& program ) {
    String title = program.name;
    std::ranges::transform( title, title.begin(), []( unsigned char c ) { return std::toupper( c ); } );
    fmt::print( out,
                ".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n"
                ".SH NAME\n{} \\- {}\n"
                ".SH SYNOPSIS\n\\fB{}\\fR \\fICOMMAND\\fR [\\fIARG\\fR...] [\\fIOPTION\\fR...]\n"
                ".SH DESCRIPTION\n{}\n",
                title, program.name, program.version, program.name, roff( program.title ), program.name,
                roff( program.description ) );
    printTaggedOption( out, helpOption );
    printTaggedOption( out, versionOption );
    eachListed( program, [ & ]( Command const& command, char const* group ) {
        if( group )
            fmt::print( out, ".SH \"{}\"\n", roff( group ) );
        printSection( out, program, command );
    } );
    printTaggedList( out, "EXIT STATUS", program.exitStatuses );
    printTaggedList( out, "ENVIRONMENT", program.environment );
}

} // namespace Bfri
