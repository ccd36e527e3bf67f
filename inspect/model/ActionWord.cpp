#include "inspect/model/ActionWord.h"

#include "inspect/model/HandleUses.h"
#include "inspect/model/Names.h"

#include <map>
#include <set>

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;
using Places = std::vector<U32>;

constexpr std::string_view between = " of ";

String wordFor( BfActionInfo const& action ) {
    return String( action.name ).append( between ).append( action.tableName );
}

template<class Rule>
Places placesOf( BfResourceParser const& parser, Rule rule ) {
    Places places;
    for( U32 i = 0; i < parser.bfActions().size(); ++i ) {
        if( rule( parser.bfActions().at( i ) ) )
            places.push_back( i );
    }
    return places;
}

/// The actions that the first half of a reading means.
Places actionsNamed( BfResourceParser const& parser, String const& word ) {
    std::vector<String> names;
    for( BfActionInfo const& action : parser.bfActions() )
        names.push_back( action.name );
    auto const meant = namesMeant( names, word );
    if( !meant.empty() )
        return placesOf( parser, [ & ]( BfActionInfo const& action ) {
            return std::binary_search( meant.begin(), meant.end(), action.name );
        } );
    auto const handle = handleIn( word );
    return placesOf( parser, [ & ]( BfActionInfo const& action ) { return handle == action.handle; } );
}

Places actionsRead( BfResourceParser const& parser, ActionWord const& word ) {
    Places places = actionsNamed( parser, word.action );
    std::vector<String> tables;
    for( U32 const place : places )
        tables.push_back( parser.bfActions().at( place ).tableName );
    auto const meant = namesMeant( tables, word.table );
    std::erase_if( places, [ & ]( U32 place ) {
        return !std::binary_search( meant.begin(), meant.end(), parser.bfActions().at( place ).tableName );
    } );
    return places;
}

std::vector<BfActionInfo const*> actionsAt( BfResourceParser const& parser, Places const& places ) {
    std::vector<BfActionInfo const*> actions;
    for( U32 const place : places )
        actions.push_back( &parser.bfActions().at( place ) );
    return actions;
}

bool areOne( std::vector<BfActionInfo const*> const& actions ) {
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
    auto exact =
        placesOf( parser, [ & ]( BfActionInfo const& action ) { return wordFor( action ) == word; } );
    if( !exact.empty() )
        return { std::move( exact ), {} };
    std::set<U32> found;
    for( ActionWord const& reading : words ) {
        auto const places = actionsRead( parser, reading );
        found.insert( places.begin(), places.end() );
    }
    ActionsMeant meant{ { found.begin(), found.end() }, {} };
    if( auto const actions = actionsAt( parser, meant.places ); !areOne( actions ) )
        meant.words = wordsForActions( actions );
    return meant;
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
        auto words = wordsForActions( actionsAt( parser, actionsNamed( parser, reading.action ) ) );
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
