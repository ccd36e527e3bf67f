#include "inspect/model/Names.h"

#include "inspect/model/HandleUses.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <map>
#include <numeric>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace Bfri {

namespace {

constexpr std::size_t tooFar = std::numeric_limits<std::size_t>::max();
constexpr std::size_t mostSuggestions = 5;

bool endsIn( std::string_view name, std::string_view suffix ) {
    if( suffix.empty() || suffix.size() >= name.size() || !name.ends_with( suffix ) )
        return false;
    return suffix.front() == '.' || name[ name.size() - suffix.size() - 1 ] == '.';
}

/// Insertions, deletions and replacements of a byte that make one text of the other; too far when more than
/// `most`.
std::size_t editDistance( std::string_view a, std::string_view b, std::size_t most ) {
    if( std::max( a.size(), b.size() ) - std::min( a.size(), b.size() ) > most )
        return tooFar;
    std::vector<std::size_t> row( b.size() + 1 ); // distances of the part of a so far to each front part of b
    std::iota( row.begin(), row.end(), std::size_t( 0 ) );
    for( std::size_t i = 0; i < a.size(); ++i ) {
        std::size_t diagonal = std::exchange( row[ 0 ], i + 1 );
        for( std::size_t j = 0; j < b.size(); ++j ) {
            std::size_t const replaced = diagonal + ( a[ i ] == b[ j ] ? 0 : 1 );
            diagonal = row[ j + 1 ];
            row[ j + 1 ] = std::min( { replaced, diagonal + 1, row[ j ] + 1 } );
        }
    }
    return row.back() <= most ? row.back() : tooFar;
}

/// The end of a qualified name with as many parts, or all of it.
std::string_view lastParts( std::string_view name, std::ptrdiff_t count ) {
    std::size_t from = name.size();
    while( count-- > 0 && from != std::string_view::npos )
        from = from == 0 ? std::string_view::npos : name.rfind( '.', from - 1 );
    return from == std::string_view::npos ? name : name.substr( from + 1 );
}

String lowerCase( String text ) {
    std::transform( text.begin(), text.end(), text.begin(),
                    []( unsigned char c ) { return static_cast<char>( std::tolower( c ) ); } );
    return text;
}

/// Whether a name has the word between two of the separators, or between one and an end of it.
bool hasPart( std::string_view name, std::string_view word, std::string_view separators ) {
    auto const isEdge = [ & ]( std::size_t place ) {
        return place >= name.size() || separators.find( name[ place ] ) != separators.npos;
    };
    for( auto at = name.find( word ); at != name.npos; at = name.find( word, at + 1 ) ) {
        if( isEdge( at - 1 ) && isEdge( at + word.size() ) )
            return true;
    }
    return false;
}

std::size_t distance( std::string_view name, std::string_view word ) {
    if( word.empty() )
        return editDistance( lastParts( name, 1 ), word, 2 );
    if( hasPart( name, word, "." ) )
        return 0;
    if( hasPart( name, word, "._" ) )
        return 1;
    std::size_t const most = std::max<std::size_t>( 2, word.size() / 3 );
    std::string_view const end = lastParts( name, std::count( word.begin(), word.end(), '.' ) + 1 );
    std::size_t const edits = std::min( editDistance( name, word, most ), editDistance( end, word, most ) );
    if( edits != tooFar )
        return 1 + edits;
    return name.find( word ) != name.npos ? most + 2 : tooFar;
}

/// Nearest first; of those that are as near, first those that hold the word in their last part.
std::vector<String> like( std::vector<String> const& names, std::string_view word ) {
    String const wanted = lowerCase( String( word ) );
    std::set<std::tuple<std::size_t, bool, String>> found;
    for( String const& name : names ) {
        String const known = lowerCase( name );
        std::size_t const far = distance( known, wanted );
        if( far != tooFar )
            found.emplace( far, lastParts( known, 1 ).find( wanted ) == known.npos, name );
    }
    std::vector<String> result;
    result.reserve( found.size() );
    for( auto const& entry : found )
        result.push_back( std::get<String>( entry ) );
    return result;
}

} // namespace

std::vector<String> namesEndingIn( std::vector<String> const& names, std::string_view suffix ) {
    std::set<String> found;
    for( String const& name : names ) {
        if( endsIn( name, suffix ) )
            found.insert( name );
    }
    return { found.begin(), found.end() };
}

std::vector<String> nearest( std::vector<String> const& names, std::string_view word ) {
    auto result = like( names, word );
    result.resize( std::min( mostSuggestions, result.size() ) );
    return result;
}

std::vector<String> namesMeant( std::vector<String> const& names, String const& word ) {
    if( std::find( names.begin(), names.end(), word ) != names.end() )
        return { word };
    return namesEndingIn( names, word );
}

Meaning meaningOf( std::vector<String> const& names, String const& word ) {
    auto meant = namesMeant( names, word );
    if( meant.size() == 1 )
        return { Meaning::Is::found, std::move( meant ) };
    if( !meant.empty() )
        return { Meaning::Is::ambiguous, std::move( meant ) };
    auto similar = like( names, word );
    std::size_t const count = similar.size();
    similar.resize( std::min( mostSuggestions, count ) );
    return { Meaning::Is::missing, std::move( similar ), count };
}

std::vector<NameOfKind> namesOfKinds( BfResourceParser const& parser ) {
    std::vector<NameOfKind> names;
    for( RecordKind const& kind : recordKinds() ) {
        std::unordered_set<String> seen;
        for( Row const& row : kind.rows( parser ) ) {
            String const& name = valueAs<String>( row, "name" );
            if( seen.insert( name ).second )
                names.push_back( { name, &kind } );
        }
    }
    return names;
}

std::vector<String> allNames( BfResourceParser const& parser ) {
    std::vector<String> names;
    std::unordered_set<String> seen;
    for( NameOfKind& one : namesOfKinds( parser ) ) {
        if( seen.insert( one.name ).second )
            names.push_back( std::move( one.name ) );
    }
    return names;
}

namespace {

using Actions = std::vector<BfActionInfo const*>;

constexpr std::string_view between = " of ";

String wordFor( BfActionInfo const& action ) {
    return String( action.name ).append( between ).append( action.tableName );
}

template<class Rule>
Actions actionsWhere( BfResourceParser const& parser, Rule rule ) {
    Actions actions;
    for( BfActionInfo const& action : parser.bfActions() ) {
        if( rule( action ) )
            actions.push_back( &action );
    }
    return actions;
}

/// The actions that the first half of a reading means.
Actions actionsNamed( BfResourceParser const& parser, String const& word ) {
    std::vector<String> names;
    for( BfActionInfo const& action : parser.bfActions() )
        names.push_back( action.name );
    auto const meant = namesMeant( names, word );
    auto const handle = handleIn( word );
    return actionsWhere( parser, [ & ]( BfActionInfo const& action ) {
        return meant.empty() ? handle == action.handle
                             : std::binary_search( meant.begin(), meant.end(), action.name );
    } );
}

Actions actionsRead( BfResourceParser const& parser, ActionWord const& word ) {
    Actions actions = actionsNamed( parser, word.action );
    std::vector<String> tables;
    for( BfActionInfo const* const action : actions )
        tables.push_back( action->tableName );
    auto const meant = namesMeant( tables, word.table );
    std::erase_if( actions, [ & ]( BfActionInfo const* action ) {
        return !std::binary_search( meant.begin(), meant.end(), action->tableName );
    } );
    return actions;
}

bool areOne( Actions const& actions ) {
    return std::all_of( actions.begin(), actions.end(), [ & ]( BfActionInfo const* action ) {
        return action->name == actions.front()->name && action->tableName == actions.front()->tableName;
    } );
}

} // namespace

std::vector<ActionWord> actionWordsIn( String const& word ) {
    std::vector<ActionWord> words;
    for( auto at = word.find( between ); at != String::npos; at = word.find( between, at + 1 ) )
        words.push_back( { word.substr( 0, at ), word.substr( at + between.size() ) } );
    return words;
}

ActionsMeant actionsMeant( BfResourceParser const& parser, String const& word ) {
    auto const words = actionWordsIn( word );
    if( words.empty() )
        return {};
    Actions exact =
        actionsWhere( parser, [ & ]( BfActionInfo const& action ) { return wordFor( action ) == word; } );
    if( !exact.empty() )
        return exact;
    std::set<BfActionInfo const*> found; // in the order of the model
    for( ActionWord const& reading : words ) {
        auto const actions = actionsRead( parser, reading );
        found.insert( actions.begin(), actions.end() );
    }
    Actions actions( found.begin(), found.end() );
    if( areOne( actions ) )
        return actions;
    return SeveralRecords{ &kindOf( Kind::actions ), actions.size(), wordsForActions( actions ) };
}

std::vector<String> wordsForActions( std::vector<BfActionInfo const*> const& actions ) {
    std::map<String, std::set<U32>> handles;
    for( BfActionInfo const* const action : actions )
        handles[ wordFor( *action ) ].insert( action->handle );
    std::set<String> words;
    for( BfActionInfo const* const action : actions ) {
        String const word = wordFor( *action );
        bool const tells = handles.at( word ).size() == 1;
        words.insert( tells ? word
                            : hexText( action->handle ).append( between ).append( action->tableName ) );
    }
    return { words.begin(), words.end() };
}

std::vector<String> actionsLike( BfResourceParser const& parser, String const& word ) {
    for( ActionWord const& reading : actionWordsIn( word ) ) {
        auto words = wordsForActions( actionsNamed( parser, reading.action ) );
        if( words.empty() )
            continue;
        auto near = nearest( words, word );
        if( !near.empty() )
            return near;
        words.resize( std::min<std::size_t>( 5, words.size() ) );
        return words;
    }
    return {};
}

} // namespace Bfri
