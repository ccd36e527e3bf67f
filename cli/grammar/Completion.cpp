#include "cli/grammar/Completion.h"

#include "cli/commands/Answers.h"
#include "cli/grammar/WrongWord.h"
#include "inspect/check/Findings.h"
#include "inspect/load/Load.h"
#include "inspect/model/ActionWord.h"
#include "inspect/model/Names.h"
#include "inspect/model/Records.h"

#include <cctype>
#include <iomanip>
#include <set>
#include <sstream>

namespace Bfri {

namespace {

/// A command line up to the word that is to be completed.
struct Line {
    Command const* command;
    std::vector<String> positionals; ///< those in front of that word
    Option const* awaiting;          ///< the option whose value it is; else null
    String written = {};             ///< the front of that word that stays
    String word = {};                ///< the rest of it, as far as it is written

    void keep( std::size_t size ) {
        written += word.substr( 0, size );
        word.erase( 0, size );
    }
};

Line understood( Command const& command, std::span<Option const> options, std::span<String const> words ) {
    Line line{ &command, {}, nullptr };
    for( String const& word : words ) {
        auto const option = std::find_if( options.begin(), options.end(),
                                          [ & ]( Option const& known ) { return word == known.name; } );
        if( line.awaiting )
            line.awaiting = nullptr;
        else if( option != options.end() )
            line.awaiting = option->argument ? &*option : nullptr;
        else if( !word.starts_with( '-' ) )
            line.positionals.push_back( word );
    }
    return line;
}

std::vector<String> namesOf( BfResourceInfo::BfResourceParser const& parser, RecordKind const* kind ) {
    std::set<String> names;
    for( NameOfKind const& name : namesOfKinds( parser ) ) {
        if( !kind || name.kind == kind )
            names.insert( name.name );
    }
    return { names.begin(), names.end() };
}

/// Of all that is placed, or of a kind.
std::set<U32> handlesOf( BfResourceInfo::BfResourceParser const& parser, RecordKind const* kind ) {
    std::set<U32> handles;
    if( !kind ) {
        for( auto const& entry : parser.resourceHandles() )
            handles.insert( entry.first );
        return handles;
    }
    for( Row const& row : kind->rows( parser ) ) {
        if( auto const* const handle = std::get_if<Hex>( &valueOf( row, "handle" ).is ) )
            handles.insert( handle->value );
    }
    return handles;
}

/// In the form of the word: decimal; or as texts show them, without the zeros in front where it has none, and
/// with capitals where it has them.
std::vector<String> inFormOf( String const& word, std::set<U32> const& all ) {
    bool const isDecimal = !word.empty() && word[ 0 ] != '0';
    bool const withZeros = word.size() < 3 || word[ 2 ] == '0';
    String const prefix = isDecimal ? "" : word.starts_with( "0X" ) ? "0X" : "0x";
    bool const inCapitals = word.find_first_of( "ABCDEF" ) != String::npos;
    std::vector<String> handles;
    for( U32 const handle : all ) {
        std::ostringstream digits;
        if( inCapitals )
            digits << std::uppercase;
        if( !isDecimal )
            digits << std::hex << std::setfill( '0' ) << std::setw( withZeros ? 8 : 0 );
        digits << handle;
        handles.push_back( prefix + digits.str() );
    }
    return handles;
}

/// The tables of an action, behind "ACTION of ".
std::vector<String> tablesOf( BfResourceInfo::BfResourceParser const& parser, String const& action ) {
    std::set<String> tables;
    for( BfActionInfo const& record : parser.bfActions() ) {
        if( record.name == action )
            tables.insert( record.tableName );
    }
    return { tables.begin(), tables.end() };
}

/// The kind in front of the word; null without one.
RecordKind const* kindAsked( Line const& line ) {
    return line.positionals.size() > 1 ? kindOf( line.positionals[ 1 ] ) : nullptr;
}

std::vector<String> namesFor( Line& line, BfResourceInfo::BfResourceParser const& parser ) {
    RecordKind const* const kind = kindAsked( line );
    if( !kind || kind->kind == Kind::actions ) {
        for( ActionWord const& reading : actionWordsIn( line.word ) ) {
            auto tables = tablesOf( parser, reading.action );
            if( tables.empty() )
                continue;
            line.keep( line.word.size() - reading.table.size() );
            return tables;
        }
    }
    return namesOf( parser, kind );
}

/// The words in place of which a model is asked; it was written first.
std::vector<String> fromModel( Line& line, CompletionKind offer ) {
    if( line.positionals.empty() )
        return {};
    std::ostringstream unheard;
    try {
        auto const loaded = loadConfiguration( line.positionals.front(), Survey::none, unheard );
        auto const* const configuration = std::get_if<Configuration>( &loaded );
        if( !configuration )
            return {};
        auto const& parser = configuration->parser();
        if( offer == CompletionKind::handle )
            return inFormOf( line.word, handlesOf( parser, nullptr ) );
        RecordKind const* const kind =
            offer == CompletionKind::table ? &kindOf( Kind::tables ) : kindAsked( line );
        auto names = offer == CompletionKind::table ? namesOf( parser, kind ) : namesFor( line, parser );
        if( !line.word.empty() && line.word[ 0 ] >= '0' && line.word[ 0 ] <= '9' ) {
            auto const handles = inFormOf( line.word, handlesOf( parser, kind ) );
            names.insert( names.end(), handles.begin(), handles.end() );
        }
        return names;
    } catch( Failure const& ) {
        return {};
    }
}

std::vector<String> kindWords() {
    std::vector<String> words;
    for( RecordKind const& kind : recordKinds() )
        words.emplace_back( kind.one );
    return words;
}

String smallLetters( String text ) {
    std::transform( text.begin(), text.end(), text.begin(),
                    []( unsigned char c ) { return static_cast<char>( std::tolower( c ) ); } );
    return text;
}

/// Each behind those that are written; titles, which do for codes, where one is begun.
std::vector<String> findingCodes( Line& line, bool orAll ) {
    line.keep( line.word.rfind( ',' ) + 1 );
    bool const isSmall = line.word.starts_with( 'b' );
    std::vector<String> words;
    for( FindingKind const& kind : findingKinds() ) {
        if( ( ',' + line.written ).find( ',' + String( kind.code ) + ',' ) != String::npos )
            continue;
        words.push_back( isSmall ? smallLetters( kind.code ) : kind.code );
        if( !line.word.empty() )
            words.emplace_back( kind.title );
    }
    if( orAll && line.written.empty() )
        words.emplace_back( "all" );
    return words;
}

std::vector<String> orderWords( Line& line ) {
    line.keep( line.word.starts_with( '-' ) ? 1 : 0 );
    return fieldsOf( *line.command->listing );
}

std::vector<String> fieldWords( Line const& line ) {
    RecordKind const* const kind = kindAsked( line );
    return kind ? fieldsOf( *kind ) : std::vector<String>();
}

std::vector<String> commandWords() {
    std::vector<String> words;
    for( Command const& command : commands() ) {
        if( *command.group )
            words.emplace_back( command.word );
    }
    return words;
}

std::vector<String> wordsFor( Line& line, CompletionKind offer ) {
    switch( offer ) {
    case CompletionKind::nothing:
    case CompletionKind::file:
        return {};
    case CompletionKind::command:
        return commandWords();
    case CompletionKind::table:
    case CompletionKind::name:
    case CompletionKind::handle:
        return fromModel( line, offer );
    case CompletionKind::kind:
        return kindWords();
    case CompletionKind::field:
        return fieldWords( line );
    case CompletionKind::order:
        return orderWords( line );
    case CompletionKind::codes:
    case CompletionKind::codesOrAll:
        return findingCodes( line, offer == CompletionKind::codesOrAll );
    case CompletionKind::severity:
        return { "error", "warning", "note" };
    case CompletionKind::color:
        return { "auto", "always", "never" };
    }
    return {};
}

CompletionKind offerOf( Line const& line ) {
    if( line.awaiting )
        return line.awaiting->offer;
    auto const& arguments = line.command->arguments;
    if( line.positionals.size() < arguments.size() )
        return arguments[ line.positionals.size() ].offer;
    bool const more = !arguments.empty() && ( arguments.back().times == Arity::onceOrMore ||
                                              arguments.back().times == Arity::anyTimes );
    return more ? arguments.back().offer : CompletionKind::nothing;
}

std::vector<String> optionWords( std::span<Option const> options ) {
    std::vector<String> words = { "--help" };
    for( Option const& option : options )
        words.emplace_back( option.name );
    return words;
}

/// Of a word "--sort=na" the value is awaited.
void keepOption( Line& line, std::span<Option const> options ) {
    for( Option const& option : options ) {
        String const front = option.name + String( "=" );
        if( !option.argument || !line.word.starts_with( front ) )
            continue;
        line.awaiting = &option;
        line.keep( front.size() );
    }
}

} // namespace

Candidates candidatesFor( std::span<String const> words ) {
    if( words.size() <= 1 ) {
        auto all = commandWords();
        all.insert( all.end(), { "--help", "--version" } );
        return { .words = all };
    }
    Command const* const command = commandOf( words.front() );
    if( !command )
        return {};
    auto const options = optionsOf( *command );
    Line line = understood( *command, options, words.subspan( 1, words.size() - 2 ) );
    line.word = words.back();
    if( !line.awaiting )
        keepOption( line, options );
    if( !line.awaiting && line.word.starts_with( '-' ) )
        return { .words = optionWords( options ) };
    CompletionKind const offer = offerOf( line );
    auto candidates = wordsFor( line, offer );
    return { offer == CompletionKind::file, line.written, std::move( candidates ) };
}

std::vector<String> beginningLike( String const& word, std::vector<String> const& candidates ) {
    std::vector<String> words;
    std::copy_if( candidates.begin(), candidates.end(), std::back_inserter( words ),
                  [ & ]( String const& candidate ) { return candidate.starts_with( word ); } );
    if( !words.empty() || word.empty() )
        return words;
    std::copy_if( candidates.begin(), candidates.end(), std::back_inserter( words ),
                  [ & ]( String const& candidate ) { return candidate.find( '.' + word ) != String::npos; } );
    return words;
}

/// A line each; ":files" in front where paths will do.
ExitStatus complete( Request const& request, Streams const& io ) {
    Candidates const candidates = candidatesFor( request.words );
    if( candidates.files )
        io.out << ":files\n";
    String const rest = request.words.back().substr( candidates.written.size() );
    for( String const& word : beginningLike( rest, candidates.words ) ) {
        if( word.find( '\n' ) == String::npos )
            io.out << candidates.written << word << '\n';
    }
    return ExitStatus::done;
}

} // namespace Bfri
