#include "cli/StageMap.h"

#include <algorithm>
#include <bit>
#include <map>
#include <numeric>
#include <set>
#include <tuple>

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;
using Resources = std::vector<BfResource const*>;

/// All from 0 on, the empty ones too; of numbers that no chip has only those that are taken.
std::vector<Stage> stagesOf( Resources const& resources ) {
    constexpr Stage most = 64;
    std::set<Stage> taken;
    for( BfResource const* const resource : resources ) {
        Span const span( *resource );
        for( Stage stage = span.first; stage <= span.last; ++stage )
            taken.insert( stage );
    }
    if( taken.empty() || *taken.rbegin() >= most )
        return { taken.begin(), taken.end() };
    std::vector<Stage> stages( *taken.rbegin() + 1 );
    std::iota( stages.begin(), stages.end(), Stage( 0 ) );
    return stages;
}

void add( BfResource const& resource, std::vector<Stage> const& stages, std::vector<StageLoad>& loads ) {
    Span const span( resource );
    auto const first = static_cast<std::size_t>(
        std::lower_bound( stages.begin(), stages.end(), span.first ) - stages.begin() );
    ++loads[ first ].starting;
    loads[ first ].entries += resource.size;
    for( std::size_t i = first; i <= first + ( span.last - span.first ); ++i )
        ++loads[ i ].spanning;
}

bool isBefore( BfResource const* a, BfResource const* b ) {
    auto const key = []( BfResource const* r ) {
        return std::tuple( !r->ingress, r->type, r->stageStart, r->stages, std::string_view( r->name ) );
    };
    return key( a ) < key( b );
}

void fill( StageMap& map, Resources resources ) {
    std::stable_sort( resources.begin(), resources.end(), isBefore );
    map.stages = stagesOf( resources );
    map.loads.resize( map.stages.size() );
    for( BfResource const* const resource : resources ) {
        auto const& [ ingress, type ] = std::tie( resource->ingress, resource->type );
        if( map.groups.empty() || map.groups.back().ingress != ingress || map.groups.back().type != type )
            map.groups.push_back( { ingress, type, {}, std::vector<StageLoad>( map.stages.size() ) } );
        map.groups.back().resources.push_back( resource );
        add( *resource, map.stages, map.groups.back().loads );
        add( *resource, map.stages, map.loads );
    }
}

/// The upper bits that the handles of a file have: the number of its lowest pipe.
U32 handleBits( BfResourceInfo::BfPipeMask mask ) {
    return mask.value() == 0 ? 0 : static_cast<U32>( std::countr_zero( mask.value() ) ) & 0xFU;
}

} // namespace

std::size_t StageMap::size() const {
    return std::accumulate(
        groups.begin(), groups.end(), std::size_t( 0 ),
        []( std::size_t sum, auto const& group ) { return sum + group.resources.size(); } );
}

std::vector<StageMap> stageMapsOf( BfResourceParser const& parser ) {
    bool const apart = !parser.bfrtConfig().empty();
    std::map<U32, std::pair<StageMap, Resources>> byBits;
    for( auto const& file : parser.contextFile() )
        byBits[ apart ? handleBits( file.key() ) : 0 ].first.files.push_back( &file );
    for( BfResource const& resource : parser.bfResources() )
        byBits[ apart ? resource.handle >> 28 : 0 ].second.push_back( &resource );
    std::vector<StageMap> maps;
    for( auto& [ bits, content ] : byBits ) {
        fill( content.first, std::move( content.second ) );
        maps.push_back( std::move( content.first ) );
    }
    return maps;
}

} // namespace Bfri
