#include "inspect/check/CheckContext.h"

#include "inspect/model/Records.h"
#include "inspect/stages/StageMap.h"

#include <set>

namespace Bfri {

void findUnplacedTables( CheckContext const& facts, Findings& findings ) {
    for( BfTableInfo const& table : facts.parser.bfTables() ) {
        if( !facts.parser.resourceHandlesHas( table.handle ) )
            findings.add( "match table", table.name, table.handle, "has no stage table" );
    }
}

void findEmptyTables( CheckContext const& facts, Findings& findings ) {
    std::unordered_set<U32> matches;
    for( BfTableInfo const& table : facts.parser.bfTables() ) {
        matches.insert( table.handle );
        if( table.size == 0 )
            findings.add( "match table", table.name, table.handle, "has a size of 0 entries" );
    }
    for( BfResource const& resource : facts.parser.bfResources() ) {
        if( resource.size == 0 && matches.count( resource.handle ) == 0 )
            findings.add( "placed table", resource.name, resource.handle, "has a size of 0 entries" );
    }
}

namespace {

/// The number of a stage that the model takes as it is.
bool isPlausible( Stage stage ) { return stage <= 255; }

/// The resource that takes a stage, the first of several.
Placed const& placedIn( StageMap const& map, Stage stage ) {
    for( StageGroup const& group : map.groups ) {
        for( Placed const& placed : group.resources ) {
            if( placed.isIn( stage ) )
                return placed;
        }
    }
    return map.groups.front().resources.front(); // not reached: the stage is taken
}

/// The stages that some resource takes, ascending.
std::vector<std::pair<Stage, U32>> takenStages( StageMap const& map ) {
    std::vector<std::pair<Stage, U32>> taken;
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        if( map.loads[ i ].spanning > 0 && isPlausible( map.stages[ i ] ) )
            taken.emplace_back( map.stages[ i ], map.loads[ i ].spanning );
    }
    return taken;
}

} // namespace

void findFarStages( CheckContext const& facts, Findings& findings ) {
    constexpr Stage mostEmpty = 8;
    for( StageMap const& map : stageMapsByProgram( facts.configuration ) ) {
        auto const taken = takenStages( map );
        for( std::size_t i = 1; i < taken.size(); ++i ) {
            auto const [ stage, resources ] = taken[ i ];
            Stage const empty = stage - taken[ i - 1 ].first - 1;
            if( empty <= mostEmpty )
                continue;
            BfResource const& first = *placedIn( map, stage ).resource;
            findings.add( "placed table", first.name, first.handle,
                          "takes stage " + std::to_string( stage ) + ", after " + std::to_string( empty ) +
                              " empty ones" +
                              ( resources == 1 ? ""
                                : resources == 2
                                    ? ", and so does 1 more"
                                    : ", and so do " + std::to_string( resources - 1 ) + " more" ),
                          map.files.front()->value() );
        }
    }
}

void findRepeatedHashFields( CheckContext const& facts, Findings& findings ) {
    for( auto const* const entry : sortedByKey( facts.parser.bfDynamicHashInfo() ) ) {
        std::unordered_set<std::string_view> seen;
        std::set<String> repeated;
        for( String const& field : entry->second.fieldNames ) {
            if( !seen.insert( field ).second )
                repeated.insert( field );
        }
        for( String const& field : repeated )
            findings.add( "hash", entry->first, entry->second.tableHdl,
                          "its field list holds " + quoted( field ) + " more than once" );
    }
}

} // namespace Bfri
