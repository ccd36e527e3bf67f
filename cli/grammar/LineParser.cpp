#include "cli/grammar/LineParser.h"

#include "inspect/model/RecordKinds.h"

#include <filesystem>

namespace Bfri {

namespace {

bool contains( auto const& range, auto const& element ) {
    return std::ranges::find( range, element ) != range.end();
}

bool isDashed( String const& text ) { return text.size() > 1 && text[ 0 ] == '-'; }

bool isNamed( Option const& option, std::string_view name ) {
    return name == option.name || ( option.shortName && name == option.shortName );
}

bool excludeEachOther( Option const& a, Option const& b ) {
    return ( a.excludes && isNamed( b, a.excludes ) ) || ( b.excludes && isNamed( a, b.excludes ) );
}

/// The conflict of an option with those given before.
std::optional<UsageError> conflictOf( Option const& option, std::span<Option const* const> given ) {
    if( option.label && !option.repeatable && contains( given, &option ) )
        return UsageError{ Mistake::repeatedOption, {}, &option };
    for( Option const* const former : given ) {
        if( excludeEachOther( *former, option ) )
            return UsageError{ Mistake::conflictingOptions, {}, &option, former };
    }
    return std::nullopt;
}

Word wrong( String const& text, UsageError error ) {
    Word word{ text, Role::wrong };
    word.error = std::move( error );
    return word;
}

/// Whether a word is a record kind, or may be meant as one: no kind looks like a path.
bool startsKind( String const& text ) {
    std::error_code ignored;
    return kindOf( text ) ||
           ( text.find_first_of( "./" ) == String::npos && !std::filesystem::exists( text, ignored ) );
}

bool isOfType( Program const& program, ParsedLine const& line, ValueType const& type, String const& value ) {
    switch( type.kind ) {
    case ValueKind::number:
        return !value.empty() && value.find_first_not_of( "0123456789" ) == String::npos;
    case ValueKind::choice:
        return contains( type.choices, value );
    case ValueKind::file:
        return !value.empty();
    case ValueKind::command:
        return findCommand( program, value );
    case ValueKind::recordKind:
        return kindOf( value );
    case ValueKind::field: // with an unknown kind of record on the line, that is the mistake
        return line.fields().empty() || contains( line.fields(), value );
    case ValueKind::order:
        return contains( line.fields(), value.substr( value.starts_with( '-' ) ? 1 : 0 ) );
    default: // the command says what is wrong with it
        return true;
    }
}

} // namespace

std::vector<String> ParsedLine::argumentsOf( ValueKind kind ) const {
    std::vector<String> texts;
    for( Word const& word : words ) {
        if( word.role == Role::argument && word.type().kind == kind )
            texts.push_back( word.text );
    }
    return texts;
}

RecordKind const* ParsedLine::recordKind() const {
    auto const kinds = argumentsOf( ValueKind::recordKind );
    return kinds.empty() ? nullptr : kindOf( kinds.front() );
}

std::vector<String> ParsedLine::fields() const {
    RecordKind const* const kind = recordKind();
    auto* const blank = kind ? kind->blank : command->blank;
    return textsOf( blank ? blank() : Row(), &Field::name );
}

LineParser::LineParser( Program const& program )
    : program_( program ), known_{ &helpOption, &versionOption } {}

Word LineParser::meaningOf( String const& text ) const {
    if( awaiting_ )
        return { text, Role::optionValue, { awaiting_ }, nullptr, 0 };
    if( lost_ )
        return { text, Role::wrong };
    if( !line_.command )
        return beforeCommand( text );
    if( !optionsEnded_ && text == "--" )
        return { text, Role::endOfOptions };
    if( !optionsEnded_ && isDashed( text ) )
        return optionWord( text );
    return argumentWord( text );
}

Word LineParser::beforeCommand( String const& text ) const {
    if( !text.starts_with( '-' ) ) {
        if( findCommand( program_, text ) )
            return { text, Role::command };
        return wrong( text, { Mistake::unknownCommand, text } );
    }
    Word const word = optionWord( text );
    return word.error || word.options.empty() ? wrong( text, { Mistake::optionTooEarly, text } ) : word;
}

Word LineParser::optionWord( String const& text ) const {
    Word word = text.starts_with( "--" ) ? longOption( text ) : shortOptions( text );
    auto given = given_;
    for( Option const* const option : word.options ) {
        if( auto const conflict = conflictOf( *option, given ) )
            word.error = conflict;
        given.push_back( option );
    }
    return word;
}

/// "--json", "--sort", "--sort=name".
Word LineParser::longOption( String const& text ) const {
    auto const equals = text.find( '=' );
    String const name = text.substr( 0, equals );
    Option const* const option = optionNamed( name );
    if( !option )
        return wrong( text, { Mistake::unknownOption, name } );
    Word word{ text, Role::option, { option } };
    if( equals == String::npos )
        return word;
    word.valueAt = equals + 1;
    if( !option->label )
        return wrong( text, { Mistake::unexpectedValue, {}, option } );
    if( word.value().empty() )
        word.error = { Mistake::missingValue, {}, option };
    return word;
}

/// "-h", "-n", "-n2": flags, then perhaps an option with a value.
Word LineParser::shortOptions( String const& text ) const {
    Word word{ text, Role::option };
    for( std::size_t i = 1; i < text.size() && !word.valueAt; ++i ) {
        String const name = { '-', text[ i ] };
        Option const* const option = optionNamed( name );
        if( !option )
            return wrong( text, { Mistake::unknownOption, name } );
        word.options.push_back( option );
        if( option->label && i + 1 < text.size() )
            word.valueAt = i + 1;
    }
    return word;
}

Word LineParser::argumentWord( String const& text ) const {
    auto const& arguments = line_.command->arguments;
    bool const isOneMore = arguments_ >= arguments.size();
    if( arguments.empty() || ( isOneMore && !isRepeatable( arguments.back().arity ) ) )
        return wrong( text, { Mistake::unexpectedArgument, text } );
    Argument const* argument = isOneMore ? &arguments.back() : &arguments[ arguments_ ];
    if( !isOneMore && arguments_ > 0 && isRepeatable( argument[ -1 ].arity ) && !startsKind( text ) )
        --argument;
    return { text, Role::argument, {}, argument, 0 };
}

Option const* LineParser::optionNamed( std::string_view name ) const {
    auto const found =
        std::ranges::find_if( known_, [ & ]( Option const* option ) { return isNamed( *option, name ); } );
    return found == known_.end() ? nullptr : *found;
}

void LineParser::takeOptions( Word const& word ) {
    for( Option const* const option : word.options ) {
        given_.push_back( option );
        line_.json |= option == &jsonOption;
        if( option == &helpOption && line_.asked == ParsedLine::Asked::answer )
            line_.asked = ParsedLine::Asked::help;
        if( option == &versionOption )
            line_.asked = ParsedLine::Asked::version;
        if( option->label && !word.valueAt )
            awaiting_ = option;
    }
}

/// Arguments too many count only where nothing else is wrong; after --help, nothing counts but the command.
void LineParser::takeError( UsageError error ) {
    error.position = line_.words.size();
    auto& first = error.mistake == Mistake::unexpectedArgument ? surplus_ : line_.error;
    bool const counts = line_.asked == ParsedLine::Asked::answer || error.mistake == Mistake::unknownCommand;
    if( counts && !first )
        first = std::move( error );
}

void LineParser::take( String const& text ) {
    Word const word = meaningOf( text );
    awaiting_ = nullptr;
    if( word.error )
        takeError( *word.error );
    switch( word.role ) {
    case Role::command:
        line_.command = findCommand( program_, text );
        known_ = optionsOf( *line_.command );
        known_.insert( known_.begin(), &helpOption );
        break;
    case Role::option:
        takeOptions( word );
        break;
    case Role::endOfOptions:
        optionsEnded_ = true;
        break;
    case Role::argument:
        if( arguments_ < line_.command->arguments.size() &&
            word.argument == &line_.command->arguments[ arguments_ ] )
            ++arguments_;
        break;
    case Role::wrong:
        line_.json |= text == jsonOption.name;
        lost_ |= word.error && word.error->mistake == Mistake::unknownCommand;
        break;
    case Role::optionValue:
        break;
    }
    line_.words.push_back( word );
}

std::vector<Option const*> LineParser::possibleOptions() const {
    std::vector<Option const*> options;
    if( takesOptions() )
        std::ranges::copy_if( known_, std::back_inserter( options ), [ & ]( Option const* option ) {
            bool const isOver = !option->repeatable && contains( given_, option );
            return !isOver && !conflictOf( *option, given_ );
        } );
    return options;
}

/// At the end of a line whose words are right.
std::optional<UsageError> LineParser::arityError() const {
    UsageError missing{ .mistake = Mistake::noCommand, .position = line_.words.size() };
    if( awaiting_ ) {
        missing.mistake = Mistake::missingValue;
        missing.option = awaiting_;
        return missing;
    }
    if( !line_.command || surplus_ )
        return surplus_ ? surplus_ : missing;
    auto const& arguments = line_.command->arguments;
    if( arguments_ >= arguments.size() || isOptional( arguments[ arguments_ ].arity ) )
        return std::nullopt;
    missing.mistake = Mistake::missingArgument;
    missing.argument = &arguments[ arguments_ ];
    return missing;
}

std::optional<UsageError> LineParser::wrongValue() const {
    for( std::size_t i = 0; i < line_.words.size(); ++i ) {
        Word const& word = line_.words[ i ];
        if( !word.valueAt || isOfType( program_, line_, word.type(), word.value() ) )
            continue;
        Option const* const option = word.argument ? nullptr : word.options.back();
        return UsageError{ Mistake::wrongValue, word.value(), option, nullptr, word.argument, i };
    }
    return std::nullopt;
}

ParsedLine LineParser::finish() && {
    if( line_.asked == ParsedLine::Asked::answer && !line_.error )
        line_.error = arityError();
    if( line_.asked == ParsedLine::Asked::answer && !line_.error )
        line_.error = wrongValue();
    return std::move( line_ );
}

ParsedLine parseLine( Program const& program, std::span<char const* const> words ) {
    LineParser parser( program );
    for( char const* const word : words )
        parser.take( word );
    return std::move( parser ).finish();
}

} // namespace Bfri
