#pragma once

// Pairs what two lists have in common.

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Bfri {

using Positions = std::vector<std::size_t>;

/// Of all elements of a list.
template<class List>
Positions positionsOf( List const& list ) {
    Positions positions( list.size() );
    std::iota( positions.begin(), positions.end(), 0 );
    return positions;
}

/// A name, and for an action the name of its table.
using RecordKey = std::pair<std::string_view, std::string_view>;

struct HashOfPair {
    template<class First, class Second>
    std::size_t operator()( std::pair<First, Second> const& key ) const {
        return std::hash<First>()( key.first ) * 31 + std::hash<Second>()( key.second );
    }
};

/// Positions in two lists: those that are joined, by ascending old positions, and those that are not yet.
struct Join {
    std::vector<std::pair<std::size_t, std::size_t>> both = {};
    Positions removed;
    Positions added;

    /// Joins by keys, which are pairs. Of those with one key, the first is joined with the first. Linear.
    template<class OldKey, class NewKey>
    void match( OldKey const& oldKey, NewKey const& newKey ) {
        matchFirst( oldKey, newKey );
        if( !removed.empty() && !added.empty() )
            matchRest( oldKey, newKey );
        std::ranges::sort( both );
    }
    /// Whether those that are joined are in another order now.
    bool isReordered() const {
        return !std::ranges::is_sorted( both,
                                        []( auto const& a, auto const& b ) { return a.second < b.second; } );
    }

  private:
    template<class OldKey, class NewKey>
    void matchRest( OldKey const& oldKey, NewKey const& newKey ) {
        std::unordered_map<decltype( newKey( 0 ) ), Positions, HashOfPair> waiting; // the first come last
        for( auto position = added.rbegin(); position != added.rend(); ++position )
            waiting[ newKey( *position ) ].push_back( *position );
        std::unordered_set<std::size_t> joined;
        std::erase_if( removed, [ & ]( std::size_t position ) {
            auto const found = waiting.find( oldKey( position ) );
            if( found == waiting.end() || found->second.empty() )
                return false;
            both.emplace_back( position, found->second.back() );
            joined.insert( found->second.back() );
            found->second.pop_back();
            return true;
        } );
        std::erase_if( added, [ & ]( std::size_t position ) { return joined.count( position ) > 0; } );
    }
    /// As long as the keys come in the same order, which is most often all, nothing need be looked up.
    template<class OldKey, class NewKey>
    void matchFirst( OldKey const& oldKey, NewKey const& newKey ) {
        std::size_t count = 0;
        while( count < std::min( removed.size(), added.size() ) &&
               oldKey( removed[ count ] ) == newKey( added[ count ] ) ) {
            both.emplace_back( removed[ count ], added[ count ] );
            ++count;
        }
        for( Positions* const list : { &removed, &added } )
            list->erase( list->begin(), list->begin() + static_cast<std::ptrdiff_t>( count ) );
    }
};

} // namespace Bfri
