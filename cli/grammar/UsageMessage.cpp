#include "cli/grammar/LineParser.h"

#include "cli/terminal/Characters.h"
#include "inspect/model/Names.h"
#include "inspect/model/RecordKinds.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

/// "; did you mean 'size'?"; empty when no word is near.
String suggestion( std::vector<String> const& words, std::string_view word ) {
    String meant;
    for( String const& near : nearest( words, word ) )
        meant += ( meant.empty() ? "; did you mean '" : "' or '" ) + near;
    return meant + ( meant.empty() ? "" : "'?" );
}

/// A sentence about a word that is none of a few, then all of them.
String noneOf( String const& sentence, std::vector<String> const& words, std::string_view word,
               char const* what ) {
    String const meant = suggestion( words, word );
    return fmt::format( "{}{} The {} are {}", sentence, meant.empty() ? "." : meant, what,
                        fmt::join( words, ", " ) );
}

/// What a value may be: "a number of rows", "auto, always or never".
String wantedBy( ValueType const& type ) {
    if( type.choices.empty() )
        return type.description;
    return alternatives( std::vector<String>( type.choices.begin(), type.choices.end() ) );
}

String labelOf( UsageError const& error ) {
    return error.option ? error.option->name : error.argument->label;
}

bool takesNames( Command const& command ) {
    return std::ranges::any_of(
        command.arguments, []( Argument const& argument ) { return argument.type.kind != ValueKind::file; } );
}

String unknownOption( Command const& command, String const& name ) {
    auto known = textsOf( optionsOf( command ), &Option::name );
    known.insert( known.begin(), { "-h", "--help" } );
    String const meant = suggestion( known, name );
    String sentence = fmt::format( "'{}' has no option '{}'{}", command.word, name, meant );
    if( !takesNames( command ) || ( name.starts_with( "--" ) && !meant.empty() ) )
        return sentence;
    return sentence + ( meant.empty() ? ". " : " " ) + "Put '--' before names that start with a dash";
}

String unknownCommand( Program const& program, String const& word ) {
    return fmt::format( "no command '{}'{}", word, suggestion( commandWords( program ), word ) );
}

String wrongValue( Program const& program, ParsedLine const& line, UsageError const& error ) {
    ValueType const& type = error.option ? error.option->type : error.argument->type;
    switch( type.kind ) {
    case ValueKind::command:
        return unknownCommand( program, error.text );
    case ValueKind::recordKind:
        return noneOf( fmt::format( "no kind '{}'", error.text ), kindWords(), error.text, "kinds" );
    case ValueKind::field:
        return noneOf( fmt::format( "{} has no field '{}'", line.recordKind()->one, error.text ),
                       line.fields(), error.text, "fields" );
    case ValueKind::order: {
        String const field = error.text.substr( error.text.starts_with( '-' ) ? 1 : 0 );
        return noneOf( fmt::format( "can't sort by '{}'", field ), line.fields(), field, "fields" );
    }
    case ValueKind::file:
        return fmt::format( "{} is empty; it must be {}", labelOf( error ), type.description );
    default:
        return fmt::format( "{} takes {}, not '{}'", labelOf( error ), wantedBy( type ), error.text );
    }
}

String sentenceOf( Program const& program, ParsedLine const& line, UsageError const& error ) {
    switch( error.mistake ) {
    case Mistake::noCommand:
        return "a command is required";
    case Mistake::unknownCommand:
        return unknownCommand( program, error.text );
    case Mistake::optionTooEarly:
        return fmt::format( "options go after the command, but '{}' comes before it", error.text );
    case Mistake::unknownOption:
        return unknownOption( *line.command, error.text );
    case Mistake::missingValue:
        return fmt::format( "{} requires {}", error.option->name, error.option->label );
    case Mistake::unexpectedValue:
        return fmt::format( "{} takes no value", error.option->name );
    case Mistake::repeatedOption:
        return fmt::format( "{} given more than once", error.option->name );
    case Mistake::conflictingOptions:
        return fmt::format( "{} and {} can't be combined", error.other->name, error.option->name );
    case Mistake::missingArgument:
        return fmt::format( "{} is required", error.argument->label );
    case Mistake::unexpectedArgument:
        return fmt::format( "unexpected argument '{}'; the command is '{} {}{}'", error.text, program.name,
                            line.command->word, argumentsOf( *line.command ) );
    case Mistake::wrongValue:
        return wrongValue( program, line, error );
    }
    return {};
}

} // namespace

String usageMessage( Program const& program, ParsedLine const& line ) {
    return escapeForTerminal( sentenceOf( program, line, *line.error ) );
}

} // namespace Bfri
