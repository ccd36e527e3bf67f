#include "inspect/stages/StageMap.h"

#include "inspect/model/Records.h"

namespace Bfri {

namespace {

/// The entries in a stage, and how many stage tables state them.
template<class Load>
void addEntries( Row& row, Load const& load ) {
    bool const isKnown = load.stated > 0 || load.tables == 0;
    row.push_back( { "entries", isKnown ? Value( static_cast<std::int64_t>( load.entries ) ) : Value() } );
    row.push_back( { "stageTables", load.tables } );
    row.push_back( { "stated", load.stated } );
}

void addLoad( Row& row, StageLoad const& load ) {
    row.push_back( { "starting", load.starting } );
    row.push_back( { "spanning", load.spanning } );
    addEntries( row, load );
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
Row resourceRow( BfResource const& resource, Value stages, Value loads ) {
    Row row = rowOf( resource );
    row.push_back( { "stageNumbers", std::move( stages ) } );
    row.push_back( { "stageLoads", std::move( loads ) } );
    return row;
}

Value numberOf( PlacedStage const& placed ) { return static_cast<U32>( placed.stage ); }

Value loadRow( PlacedStage const& placed ) {
    Row row{ { "stage", numberOf( placed ) } };
    addEntries( row, placed );
    return row;
}

List resourceRows( StageMap const& map, std::optional<Stage> asked ) {
    List rows;
    for( StageGroup const& group : map.groups ) {
        for( auto const& placed : group.resources ) {
            if( !asked || placed.isIn( *asked ) )
                rows.push_back( resourceRow( *placed.resource, listOf( placed.stages, numberOf ),
                                             listOf( placed.stages, loadRow ) ) );
        }
    }
    for( BfResource const* const resource : map.lost ) {
        if( !asked )
            rows.push_back( resourceRow( *resource, {}, {} ) );
    }
    return rows;
}

} // namespace

Row rowOf( StageMap const& map, std::optional<Stage> asked ) {
    List files = listOf( map.files, []( auto const* file ) { return pipelineRow( *file ); } );
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
