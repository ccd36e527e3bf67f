#include "inspect/report/FloorPlan.h"

#include <array>
#include <cmath>
#include <numeric>
#include <tuple>

namespace Bfri {

namespace {

constexpr std::uint64_t leastKind = 9; ///< pixels of the small ones of a kind

/// In the order of a column, which keeps bands from crossing. A ghost is where its resource would be.
bool isAbove( PlanBlock const& a, PlanBlock const& b ) {
    auto const key = []( PlanBlock const& block ) {
        ChipResource const& one = block.ghost && block.ghost->now ? *block.ghost->now : *block.resource;
        Stage const first = one.stages.empty() ? 0 : one.stages.front().stage;
        return std::tuple( placeOfType( one.type ), first, ~one.size, std::string_view( one.name() ),
                           one.number, block.ghost != nullptr );
    };
    return key( a ) < key( b );
}

bool isLoud( PlanBlock const& block ) { return block.ghost || block.resource->marks.any(); }

std::uint64_t entriesOf( std::vector<PlanBlock> const& blocks ) {
    return std::accumulate( blocks.begin(), blocks.end(), std::uint64_t( 0 ),
                            []( std::uint64_t sum, auto const& block ) { return sum + block.entries; } );
}

/// Which blocks are drawn in a column with too many: those that are large enough, and the first that differ,
/// up to half of the room, whatever their size.
std::vector<bool> chosenOf( std::vector<PlanBlock> const& all, std::uint64_t total, int height ) {
    constexpr std::size_t forKinds = 8;
    std::size_t const room = static_cast<std::size_t>( height / leastBlock ) - forKinds;
    std::vector<std::size_t> ranked( all.size() );
    std::iota( ranked.begin(), ranked.end(), std::size_t( 0 ) );
    std::stable_sort( ranked.begin(), ranked.end(), [ & ]( std::size_t a, std::size_t b ) {
        return std::tuple( !isLoud( all[ a ] ), ~all[ a ].entries ) <
               std::tuple( !isLoud( all[ b ] ), ~all[ b ].entries );
    } );
    std::vector<bool> chosen( all.size() );
    std::size_t count = 0;
    for( std::size_t const i : ranked ) {
        bool const isLarge = all[ i ].entries * static_cast<unsigned>( height ) >= leastBlock * total;
        bool const fits = count < ( isLoud( all[ i ] ) && !isLarge ? room / 2 : room );
        chosen[ i ] = fits && ( isLarge || isLoud( all[ i ] ) );
        count += chosen[ i ];
    }
    return chosen;
}

PlanBlock several( std::vector<PlanBlock> const& blocks ) {
    PlanBlock sum;
    sum.several = blocks.size();
    sum.entries = entriesOf( blocks );
    sum.type = blocks.front().resource->type;
    for( PlanBlock const& block : blocks ) {
        if( block.resource->type != sum.type )
            return sum.type.reset(), sum;
    }
    return sum;
}

/// The others become one block a kind; kinds with hardly any room one block together.
std::vector<PlanBlock> folded( std::vector<PlanBlock> const& all, int height ) {
    std::uint64_t const total = entriesOf( all );
    auto const chosen = chosenOf( all, total, height );
    std::array<std::vector<PlanBlock>, typeCount> shown, others;
    for( std::size_t i = 0; i < all.size(); ++i )
        ( chosen[ i ] ? shown : others )[ placeOfType( all[ i ].resource->type ) ].push_back( all[ i ] );
    std::vector<PlanBlock> blocks, tiny;
    for( std::size_t type = 0; type < typeCount; ++type ) {
        blocks.insert( blocks.end(), shown[ type ].begin(), shown[ type ].end() );
        if( others[ type ].empty() )
            continue;
        if( entriesOf( others[ type ] ) * static_cast<unsigned>( height ) >= leastKind * total )
            blocks.push_back( several( others[ type ] ) );
        else
            tiny.insert( tiny.end(), others[ type ].begin(), others[ type ].end() );
    }
    if( !tiny.empty() )
        blocks.push_back( several( tiny ) );
    return blocks;
}

void lay( PlanColumn& column, int height ) {
    if( column.blocks.size() > static_cast<std::size_t>( height / leastBlock ) )
        column.blocks = folded( column.blocks, height );
    std::vector<std::uint64_t> values;
    std::vector<int> minima;
    for( PlanBlock const& block : column.blocks ) {
        values.push_back( block.entries );
        minima.push_back( block.several ? int( leastKind ) : leastBlock );
    }
    auto const heights = heightsOf( values, minima, height );
    int top = 0;
    for( std::size_t i = 0; i < heights.size(); ++i ) {
        column.blocks[ i ].top = top;
        column.blocks[ i ].height = heights[ i ];
        top += heights[ i ];
    }
}

void addBlocks( FloorPlan& plan, Chip const& chip, ChipProgram const& program, bool ingress ) {
    auto const put = [ & ]( ChipResource const& resource, StageEntries const& place, Ghost const* ghost ) {
        PlanColumn& column = plan.columns[ chip.columnOf( place.stage ) ];
        column.entries += place.drawn;
        column.blocks.push_back( { &resource, ghost, 0, {}, place.drawn } );
    };
    for( ChipResource const& resource : chip.resourcesOf( program ) ) {
        for( StageEntries const& place : resource.stages ) {
            if( resource.ingress == ingress )
                put( resource, place, nullptr );
        }
    }
    for( Ghost const& ghost : program.ghosts ) {
        if( ghost.old->ingress == ingress )
            put( *ghost.old, ghost.place, &ghost );
    }
    for( PlanColumn& column : plan.columns )
        std::sort( column.blocks.begin(), column.blocks.end(), isAbove );
}

/// Where resources are drawn, by column; ghosts separately.
struct Drawn {
    std::size_t column;
    PlanBlock const* block;
};

void addMoves( FloorPlan& plan, std::unordered_map<ChipResource const*, std::vector<Drawn>> const& drawn ) {
    for( std::size_t i = 0; i < plan.columns.size(); ++i ) {
        for( PlanBlock const& block : plan.columns[ i ].blocks ) {
            auto const now = block.ghost ? drawn.find( block.ghost->now ) : drawn.end();
            if( now == drawn.end() )
                continue;
            auto const distance = [ & ]( Drawn const& one ) {
                return std::max( one.column, i ) - std::min( one.column, i );
            };
            Drawn const& near = *std::min_element(
                now->second.begin(), now->second.end(),
                [ & ]( Drawn const& a, Drawn const& b ) { return distance( a ) < distance( b ); } );
            bool const isLeft = i < near.column;
            plan.bands.push_back( { std::min( i, near.column ), std::max( i, near.column ),
                                    isLeft ? &block : near.block, isLeft ? near.block : &block, true } );
        }
    }
}

void addBands( FloorPlan& plan, std::span<ChipResource const> resources ) {
    std::unordered_map<ChipResource const*, std::vector<Drawn>> drawn;
    for( std::size_t i = 0; i < plan.columns.size(); ++i ) {
        for( PlanBlock const& block : plan.columns[ i ].blocks ) {
            if( block.resource && !block.ghost )
                drawn[ block.resource ].push_back( { i, &block } );
        }
    }
    for( ChipResource const& resource : resources ) {
        auto const places = drawn.find( &resource );
        for( std::size_t i = 1; places != drawn.end() && i < places->second.size(); ++i ) {
            auto const &left = places->second[ i - 1 ], &right = places->second[ i ];
            plan.bands.push_back( { left.column, right.column, left.block, right.block, false } );
        }
    }
    addMoves( plan, drawn );
}

int heightOf( FloorPlan const& plan, bool ingress ) {
    constexpr std::size_t tallest = 440;
    std::size_t most = 0;
    for( PlanColumn const& column : plan.columns )
        most = std::max( most, column.blocks.size() );
    if( most == 0 )
        return 0;
    std::size_t const wanted = most < 10 ? most * 30 : most * leastBlock;
    return static_cast<int>( std::max<std::size_t>( ingress ? 150 : 120, std::min( tallest, wanted ) ) );
}

} // namespace

std::vector<int> heightsOf( std::vector<std::uint64_t> const& values, std::vector<int> const& minima,
                            int height ) {
    std::vector<bool> fixed( values.size() );
    double room = 0, rest = 0;
    for( bool again = true; again; ) {
        again = false;
        room = height;
        rest = 0;
        for( std::size_t i = 0; i < values.size(); ++i )
            fixed[ i ] ? room -= minima[ i ] : rest += static_cast<double>( values[ i ] );
        for( std::size_t i = 0; i < values.size(); ++i ) {
            if( !fixed[ i ] &&
                ( rest <= 0 || static_cast<double>( values[ i ] ) * room < minima[ i ] * rest ) )
                fixed[ i ] = again = true;
        }
    }
    std::vector<int> heights;
    double end = 0;
    int top = 0;
    for( std::size_t i = 0; i < values.size(); ++i ) {
        end += fixed[ i ] ? minima[ i ] : static_cast<double>( values[ i ] ) * room / rest;
        heights.push_back( static_cast<int>( std::lround( end ) ) - top );
        top += heights.back();
    }
    return heights;
}

FloorPlan floorPlanOf( Chip const& chip, ChipProgram const& program, bool ingress ) {
    FloorPlan plan;
    plan.columns.resize( chip.stages.size() );
    addBlocks( plan, chip, program, ingress );
    plan.height = heightOf( plan, ingress );
    for( PlanColumn& column : plan.columns )
        lay( column, plan.height );
    addBands( plan, chip.resourcesOf( program ) );
    return plan;
}

} // namespace Bfri
