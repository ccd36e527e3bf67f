#include "inspect/stages/StageMap.h"

#include "inspect/model/Records.h"

#include <limits>

namespace Bfri {

namespace {

/// Numbers of a load. Sizes whose sum no 32 bits hold are as good as the largest.
void addLoad( Row& row, StageLoad const& load ) {
    constexpr std::uint64_t most = std::numeric_limits<U32>::max();
    row.push_back( { "starting", load.starting } );
    row.push_back( { "spanning", load.spanning } );
    row.push_back( { "entries", static_cast<U32>( std::min( load.entries, most ) ) } );
}

Row stageRow( StageMap const& map, std::size_t i ) {
    Row row{ { "stage", static_cast<U32>( map.stages[ i ] ) } };
    addLoad( row, map.loads[ i ] );
    List groups;
    for( StageGroup const& group : map.groups ) {
        if( group.loads[ i ].spanning == 0 )
            continue;
        Row groupRow{ { "ingress", group.ingress },
                      { "type", group.type },
                      { "typeName", typeNameOf( *group.resources.front().resource ) } };
        addLoad( groupRow, group.loads[ i ] );
        groups.push_back( std::move( groupRow ) );
    }
    row.push_back( { "groups", std::move( groups ) } );
    return row;
}

/// A resource with its stages: the record tells the first, and how many stage tables there are.
Row resourceRow( BfResource const& resource, Value stages ) {
    Row row = withTypeName( rowOf( resource ) );
    row.push_back( { "stageNumbers", std::move( stages ) } );
    return row;
}

List resourceRows( StageMap const& map, std::optional<Stage> asked ) {
    List rows;
    for( StageGroup const& group : map.groups ) {
        for( auto const& placed : group.resources ) {
            auto const number = []( Stage stage ) { return static_cast<U32>( stage ); };
            if( !asked || placed.isIn( *asked ) )
                rows.push_back( resourceRow( *placed.resource, listOf( placed.stages, number ) ) );
        }
    }
    for( BfResource const* const resource : map.lost ) {
        if( !asked )
            rows.push_back( resourceRow( *resource, {} ) );
    }
    return rows;
}

} // namespace

Row rowOf( StageMap const& map, std::optional<Stage> asked ) {
    List files = listOf( map.files, []( auto const* file ) {
        U32 const mask = file->key().value();
        return Row{ { "pipeMask", Hex( mask ) }, { "pipes", pipesOf( mask ) }, { "path", file->value() } };
    } );
    List stages;
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        if( !asked || *asked == map.stages[ i ] )
            stages.push_back( stageRow( map, i ) );
    }
    return { { "contextFile", std::move( files ) },
             { "stages", std::move( stages ) },
             { "bfResources", resourceRows( map, asked ) } };
}

} // namespace Bfri
