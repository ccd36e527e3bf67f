#include "cli/Completion.h"

#include "cli/Answers.h"
#include "cli/Findings.h"
#include "cli/Kinds.h"
#include "cli/Load.h"
#include "cli/Records.h"
#include "cli/TextFormat.h"
#include "cli/WrongWord.h"

#include <set>
#include <sstream>

namespace Bfri {

namespace {

/// A command line up to the word that is to be completed.
struct Line {
    Command const* command;
    std::vector<String> positionals; ///< those in front of that word
    Option const* awaiting;          ///< the option whose value it is; else null
    String word = {};                ///< the word itself, as far as it is written
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

std::vector<String> namesOf( BfResourceInfo::BfResourceParser const& parser, Listing const* kind ) {
    std::set<String> names;
    for( NameOfKind const& name : namesOfKinds( parser ) ) {
        if( !kind || name.kind == kind )
            names.insert( name.name );
    }
    return { names.begin(), names.end() };
}

/// As texts show them; without the zeros in front where the word has none.
std::vector<String> handlesOf( BfResourceInfo::BfResourceParser const& parser, String const& word ) {
    bool const withZeros = word.size() < 3 || word[ 2 ] == '0';
    std::vector<String> handles;
    for( auto const* const entry : sortedByKey( parser.resourceHandles() ) ) {
        std::ostringstream digits;
        digits << std::hex << entry->first;
        handles.push_back( withZeros ? textOf( Hex( entry->first ) ) : "0x" + digits.str() );
    }
    return handles;
}

/// The words in place of which a model is asked; it was written first.
std::vector<String> fromModel( Line const& line, Offer offer ) {
    if( line.positionals.empty() )
        return {};
    std::ostringstream unheard;
    try {
        auto const model = load( line.positionals.front(), OnBadData::explain, unheard );
        auto const& parser = *model->parser();
        if( offer == Offer::handle )
            return handlesOf( parser, line.word );
        if( offer == Offer::table )
            return namesOf( parser, kindOf( "table" ) );
        return namesOf( parser, line.positionals.size() > 1 ? kindOf( line.positionals[ 1 ] ) : nullptr );
    } catch( Failure const& ) {
        return {};
    }
}

std::vector<String> kindWords() {
    std::vector<String> words;
    for( Listing const& kind : listings() )
        words.emplace_back( kind.one );
    return words;
}

/// Where several may come, each behind those that are written.
std::vector<String> findingCodes( Line const& line ) {
    bool const several = line.awaiting && line.awaiting->argument == std::string_view( "CODES" );
    auto const comma = several ? line.word.rfind( ',' ) : String::npos;
    String const written = comma == String::npos ? "" : line.word.substr( 0, comma + 1 );
    std::vector<String> codes;
    for( FindingKind const& kind : findingKinds() ) {
        if( ( ',' + written ).find( ',' + String( kind.code ) + ',' ) == String::npos )
            codes.push_back( written + kind.code );
    }
    return codes;
}

std::vector<String> fieldWords( Line const& line ) {
    Listing const* const kind = line.positionals.size() > 1 ? kindOf( line.positionals[ 1 ] ) : nullptr;
    return kind ? fieldsOf( *kind ) : std::vector<String>();
}

std::vector<String> wordsFor( Line const& line, Offer offer ) {
    switch( offer ) {
    case Offer::nothing:
    case Offer::file:
        return {};
    case Offer::table:
    case Offer::name:
    case Offer::handle:
        return fromModel( line, offer );
    case Offer::kind:
        return kindWords();
    case Offer::field:
        return fieldWords( line );
    case Offer::order:
        return fieldsOf( *line.command->listing );
    case Offer::code:
        return findingCodes( line );
    case Offer::severity:
        return { "error", "warning", "note" };
    case Offer::color:
        return { "auto", "always", "never" };
    }
    return {};
}

Offer offerOf( Line const& line ) {
    if( line.awaiting )
        return line.awaiting->offer;
    auto const& arguments = line.command->arguments;
    if( line.positionals.size() < arguments.size() )
        return arguments[ line.positionals.size() ].offer;
    bool const more = !arguments.empty() && arguments.back().times != Times::once;
    return more ? arguments.back().offer : Offer::nothing;
}

std::vector<String> commandWords() {
    std::vector<String> words = { "--help", "--version" };
    for( Command const& command : commands() ) {
        if( *command.group )
            words.emplace_back( command.word );
    }
    return words;
}

std::vector<String> optionWords( std::span<Option const> options ) {
    std::vector<String> words = { "--help" };
    for( Option const& option : options )
        words.emplace_back( option.name );
    return words;
}

} // namespace

Candidates candidatesFor( std::span<String const> words ) {
    if( words.size() <= 1 )
        return { false, commandWords() };
    Command const* const command = commandOf( words.front() );
    if( !command )
        return {};
    auto const options = optionsOf( *command );
    Line line = understood( *command, options, words.subspan( 1, words.size() - 2 ) );
    line.word = words.back();
    if( !line.awaiting && words.back().starts_with( '-' ) )
        return { false, optionWords( options ) };
    Offer const offer = offerOf( line );
    return { offer == Offer::file, wordsFor( line, offer ) };
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
    for( String const& word : beginningLike( request.words.back(), candidates.words ) ) {
        if( word.find( '\n' ) == String::npos )
            io.out << word << '\n';
    }
    return ExitStatus::done;
}

} // namespace Bfri
