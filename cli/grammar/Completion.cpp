#include "cli/grammar/Completion.h"

#include "cli/grammar/LineParser.h"
#include "cli/grammar/ModelWords.h"
#include "inspect/check/Findings.h"
#include "inspect/diff/Verdict.h"

#include <cctype>

namespace Bfri {

namespace {

String lowerCase( String text ) {
    std::transform( text.begin(), text.end(), text.begin(),
                    []( unsigned char c ) { return static_cast<char>( std::tolower( c ) ); } );
    return text;
}

/// The codes that may follow those before the last comma; titles only where something is typed.
std::vector<String> findingCodes( TypedWord& typed, bool orAll ) {
    typed.keep( typed.rest.rfind( ',' ) + 1 );
    bool const isLowerCase = typed.rest.starts_with( 'b' );
    std::vector<String> words;
    for( FindingKind const& kind : findingKinds() ) {
        if( ( ',' + typed.kept ).find( ',' + String( kind.code ) + ',' ) != String::npos )
            continue;
        words.push_back( isLowerCase ? lowerCase( kind.code ) : kind.code );
        if( !typed.rest.empty() )
            words.emplace_back( kind.title );
    }
    if( orAll && typed.kept.empty() )
        words.emplace_back( "all" );
    return words;
}

std::vector<String> noticeCodes( TypedWord const& typed ) {
    bool const isLowerCase = typed.rest.starts_with( 'b' );
    std::vector<String> words{ "all" };
    for( NoticeKind const& kind : noticeKinds() ) {
        words.push_back( isLowerCase ? lowerCase( kind.code ) : kind.code );
        if( !typed.rest.empty() )
            words.emplace_back( kind.title );
    }
    return words;
}

std::vector<String> orderWords( ParsedLine const& line, TypedWord& typed ) {
    typed.keep( typed.rest.starts_with( '-' ) ? 1 : 0 );
    return fieldsOf( *line.command->listing );
}

std::vector<String> fieldWords( ParsedLine const& line ) {
    RecordKind const* const kind = line.recordKind();
    return kind ? fieldsOf( *kind ) : std::vector<String>();
}

std::vector<String> valueWords( Program const& program, ParsedLine const& line, ValueType const& type,
                                TypedWord& typed ) {
    switch( type.kind ) {
    case ValueKind::text:
    case ValueKind::number:
    case ValueKind::file:
        return {};
    case ValueKind::choice:
        return { type.choices.begin(), type.choices.end() };
    case ValueKind::command:
        return commandWords( program );
    case ValueKind::table:
    case ValueKind::name:
    case ValueKind::handle:
        return modelWords( line, type.kind, typed );
    case ValueKind::recordKind:
        return kindWords();
    case ValueKind::field:
        return fieldWords( line );
    case ValueKind::order:
        return orderWords( line, typed );
    case ValueKind::noticeCode:
        return noticeCodes( typed );
    case ValueKind::codes:
    case ValueKind::codesOrAll:
        return findingCodes( typed, type.kind == ValueKind::codesOrAll );
    }
    return {};
}

std::vector<String> optionWords( LineParser const& parser ) {
    std::vector<String> words;
    for( Option const* const option : parser.possibleOptions() )
        words.emplace_back( option->name );
    return words;
}

Candidates valueCandidates( Program const& program, ParsedLine const& line, Word const& word ) {
    TypedWord typed{ {}, word.value() };
    auto words = valueWords( program, line, word.type(), typed );
    return { .files = word.type().kind == ValueKind::file,
             .written = word.text.substr( 0, *word.valueAt ) + typed.kept,
             .words = std::move( words ) };
}

Candidates commandCandidates( Program const& program, LineParser const& parser ) {
    auto words = commandWords( program );
    auto const options = optionWords( parser );
    words.insert( words.end(), options.begin(), options.end() );
    return { .words = std::move( words ) };
}

} // namespace

Candidates candidatesFor( Program const& program, std::span<String const> words ) {
    LineParser parser( program );
    for( String const& word : words.first( words.size() - 1 ) )
        parser.take( word );
    String const& typed = words.back();
    bool const isOption = typed.starts_with( '-' ) && parser.takesOptions();
    Word const word = parser.meaningOf( typed );
    bool const isBegun = !word.error || word.error->mistake == Mistake::missingValue;
    if( word.valueAt && isBegun && !( isOption && word.role == Role::argument ) )
        return valueCandidates( program, parser.line(), word );
    if( isOption )
        return { .words = optionWords( parser ) };
    return parser.takesCommand() ? commandCandidates( program, parser ) : Candidates();
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

} // namespace Bfri
