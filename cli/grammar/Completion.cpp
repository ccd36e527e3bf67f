#include "cli/grammar/Completion.h"

#include "cli/grammar/LineParser.h"
#include "cli/grammar/Request.h"
#include "inspect/check/Findings.h"
#include "inspect/diff/Verdict.h"
#include "inspect/load/Load.h"
#include "inspect/model/ActionWord.h"
#include "inspect/model/Names.h"
#include "inspect/model/Records.h"

#include <cctype>
#include <fmt/format.h>
#include <set>
#include <sstream>

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

/// A word that is being typed.
struct TypedWord {
    String kept; ///< its start, which every completion keeps
    String rest; ///< the part that is completed

    void keep( std::size_t size ) {
        kept += rest.substr( 0, size );
        rest.erase( 0, size );
    }
};

// Names and handles of the configuration on the line.

/// The handles of everything that is placed, or of a kind.
std::set<U32> handlesOf( BfResourceParser const& parser, RecordKind const* kind ) {
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

/// Decimal, or hexadecimal with the leading zeros and upper-case letters that the typed text has.
std::vector<String> inFormOf( String const& typed, std::set<U32> const& handles ) {
    bool const isDecimal = !typed.empty() && typed[ 0 ] != '0';
    bool const withZeros = typed.size() < 3 || typed[ 2 ] == '0';
    bool const inCapitals = typed.find_first_of( "ABCDEF" ) != String::npos;
    String const form = isDecimal ? "{}"
                                  : String( typed.starts_with( "0X" ) ? "0X" : "0x" ) +
                                        ( withZeros ? "{:08" : "{:" ) + ( inCapitals ? "X}" : "x}" );
    return textsOf( handles, [ & ]( U32 handle ) { return fmt::format( fmt::runtime( form ), handle ); } );
}

/// The tables of the action in "ACTION of TABLE"; none when the typed text is no such thing.
std::set<String> actionTables( BfResourceParser const& parser, TypedWord& typed ) {
    std::set<String> tables;
    for( ActionWord const& reading : actionWordsIn( typed.rest ) ) {
        for( BfActionInfo const& record : parser.bfActions() ) {
            if( record.name == reading.action )
                tables.insert( record.tableName );
        }
        if( !tables.empty() ) {
            typed.keep( typed.rest.size() - reading.table.size() );
            break;
        }
    }
    return tables;
}

/// Names of a kind, or of all; handles as well where a digit is typed.
std::vector<String> namesAndHandles( BfResourceParser const& parser, RecordKind const* kind,
                                     TypedWord& typed ) {
    std::set<String> names;
    if( !kind || kind->kind == Kind::actions )
        names = actionTables( parser, typed );
    if( !names.empty() )
        return { names.begin(), names.end() };
    for( NameOfKind const& name : namesOfKinds( parser ) ) {
        if( !kind || name.kind == kind )
            names.insert( name.name );
    }
    std::vector<String> words( names.begin(), names.end() );
    if( !typed.rest.empty() && typed.rest[ 0 ] >= '0' && typed.rest[ 0 ] <= '9' )
        std::ranges::move( inFormOf( typed.rest, handlesOf( parser, kind ) ), std::back_inserter( words ) );
    return words;
}

/// For a value of kind table, name or handle; none without a configuration that can be loaded.
std::vector<String> modelWords( ParsedLine const& line, ValueKind kind, TypedWord& typed ) {
    auto const confs = line.argumentsOf( ValueKind::file );
    if( confs.empty() )
        return {};
    std::ostringstream ignored;
    auto const loaded = loadConfiguration( confs.front(), Survey::none, ignored );
    auto const* const configuration = std::get_if<Configuration>( &loaded );
    if( !configuration )
        return {};
    auto const& parser = configuration->parser();
    if( kind == ValueKind::handle )
        return inFormOf( typed.rest, handlesOf( parser, nullptr ) );
    return namesAndHandles( parser, kind == ValueKind::table ? &kindOf( Kind::tables ) : line.recordKind(),
                            typed );
}

// Other values.

/// The codes of findings or notices that are not kept yet, in the case of the typed text; titles only where
/// something is typed.
std::vector<String> codesOf( auto const& kinds, TypedWord const& typed ) {
    std::vector<String> words;
    for( auto const& kind : kinds ) {
        String code = kind.code;
        if( ( ',' + typed.kept ).find( ',' + code + ',' ) != String::npos )
            continue;
        if( typed.rest.starts_with( 'b' ) )
            std::ranges::transform( code, code.begin(), []( unsigned char c ) { return std::tolower( c ); } );
        words.push_back( code );
        if( !typed.rest.empty() )
            words.emplace_back( kind.title );
    }
    return words;
}

/// The fields, where a condition has one.
std::vector<String> conditionWords( ParsedLine const& line, TypedWord& typed ) {
    bool const areSeveral = line.argumentsOf( ValueKind::file ).size() > 1;
    Row const blank = withConf( line.command->blank(), "", areSeveral );
    auto const place = fieldAtEnd( typed.rest, blank );
    typed.keep( place.value_or( 0 ) );
    return place ? textsOf( blank, &Field::name ) : std::vector<String>();
}

std::vector<String> valueWords( Program const& program, ParsedLine const& line, ValueType const& type,
                                TypedWord& typed ) {
    std::vector<String> words;
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
    case ValueKind::order:
        typed.keep( typed.rest.starts_with( '-' ) ? 1 : 0 );
        return line.fields();
    case ValueKind::field:
        return line.fields();
    case ValueKind::condition:
        return conditionWords( line, typed );
    case ValueKind::noticeCode:
        words = codesOf( noticeKinds(), typed );
        words.insert( words.begin(), "all" );
        return words;
    case ValueKind::codes:
    case ValueKind::codesOrAll:
        typed.keep( typed.rest.rfind( ',' ) + 1 );
        words = codesOf( findingKinds(), typed );
        if( type.kind == ValueKind::codesOrAll && typed.kept.empty() )
            words.emplace_back( "all" );
        return words;
    }
    return words;
}

} // namespace

Candidates candidatesFor( Program const& program, std::span<String const> words ) {
    LineParser parser( program );
    for( String const& word : words.first( words.size() - 1 ) )
        parser.take( word );
    String const& last = words.back();
    bool const isOption = last.starts_with( '-' ) && parser.takesOptions();
    Word const word = parser.meaningOf( last );
    bool const isBegun = !word.error || word.error->mistake == Mistake::missingValue;
    if( word.valueAt && isBegun && !( isOption && word.role == Role::argument ) ) {
        TypedWord typed{ {}, word.value() };
        auto values = valueWords( program, parser.line(), word.type(), typed );
        return { word.type().kind == ValueKind::file, last.substr( 0, *word.valueAt ) + typed.kept,
                 std::move( values ) };
    }
    Candidates candidates;
    if( parser.takesCommand() && !isOption )
        candidates.words = commandWords( program );
    if( parser.takesCommand() || isOption )
        std::ranges::move( textsOf( parser.possibleOptions(), &Option::name ),
                           std::back_inserter( candidates.words ) );
    return candidates;
}

std::vector<String> beginningLike( String const& word, std::vector<String> const& candidates ) {
    std::vector<String> words;
    std::ranges::copy_if( candidates, std::back_inserter( words ),
                          [ & ]( String const& candidate ) { return candidate.starts_with( word ); } );
    if( words.empty() && !word.empty() )
        std::ranges::copy_if( candidates, std::back_inserter( words ), [ & ]( String const& candidate ) {
            return candidate.find( '.' + word ) != String::npos;
        } );
    return words;
}

} // namespace Bfri
