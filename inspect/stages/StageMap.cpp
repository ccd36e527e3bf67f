#include "inspect/stages/StageMap.h"

#include "inspect/model/Records.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <map>
#include <numeric>
#include <tuple>

namespace Bfri {

namespace {

using BfResourceInfo::ZelContextFile;
using Resources = std::vector<Placed>;

bool isStage( std::optional<std::int64_t> number ) {
    return number && *number >= std::numeric_limits<std::int32_t>::min() &&
           *number <= std::numeric_limits<U32>::max();
}

void add( Placed const& placed, std::vector<Stage> const& stages, std::vector<StageLoad>& loads ) {
    auto const loadOf = [ & ]( Stage stage ) -> StageLoad& {
        auto const place = std::lower_bound( stages.begin(), stages.end(), stage );
        return loads[ static_cast<std::size_t>( place - stages.begin() ) ];
    };
    for( PlacedStage const& one : placed.stages )
        loadOf( one.stage ).add( one, &one == &placed.stages.front() );
}

bool isBefore( Placed const& a, Placed const& b ) {
    auto const key = []( Placed const& placed ) {
        auto const& [ resource, stages ] = placed;
        return std::tuple( !resource->ingress, resource->type, stages.front().stage, stages.size(),
                           std::string_view( resource->name ) );
    };
    return key( a ) < key( b );
}

void fill( StageMap& map, Resources resources ) {
    std::stable_sort( resources.begin(), resources.end(), isBefore );
    std::vector<Stage> taken;
    for( Placed const& placed : resources ) {
        for( PlacedStage const& one : placed.stages )
            taken.push_back( one.stage );
    }
    map.stages = allStagesUpTo( std::move( taken ) );
    map.loads.resize( map.stages.size() );
    for( Placed& placed : resources ) {
        auto const& [ ingress, type ] = std::tie( placed.resource->ingress, placed.resource->type );
        if( map.groups.empty() || map.groups.back().ingress != ingress || map.groups.back().type != type )
            map.groups.push_back( { ingress, type, {}, std::vector<StageLoad>( map.stages.size() ) } );
        add( placed, map.stages, map.groups.back().loads );
        add( placed, map.stages, map.loads );
        map.groups.back().resources.push_back( std::move( placed ) );
    }
}

/// By ascending key of the files, and of the resources by position.
template<class KeyOfFile, class KeyOfResource>
std::vector<StageMap> mapsOf( Configuration const& configuration, KeyOfFile keyOfFile,
                              KeyOfResource keyOfResource ) {
    BfResourceParser const& parser = configuration.parser();
    std::map<U32, std::pair<StageMap, Resources>> byKey;
    for( auto const& file : parser.contextFile() )
        byKey[ keyOfFile( file ) ].first.files.push_back( &file );
    auto stages = placedStages( configuration );
    std::size_t position = 0;
    for( BfResource const& resource : parser.bfResources() ) {
        auto& [ map, placed ] = byKey[ keyOfResource( resource, position ) ];
        if( auto& ofResource = stages[ position++ ] )
            placed.push_back( { &resource, std::move( *ofResource ) } );
        else
            map.lost.push_back( &resource );
    }
    std::vector<StageMap> maps;
    for( auto& [ key, content ] : byKey ) {
        fill( content.first, std::move( content.second ) );
        maps.push_back( std::move( content.first ) );
    }
    return maps;
}

/// The upper bits that the handles of a file have: the number of its lowest pipe.
U32 handleBits( BfResourceInfo::BfPipeMask mask ) {
    return mask.value() == 0 ? 0 : static_cast<U32>( std::countr_zero( mask.value() ) ) & 0xFU;
}

} // namespace

std::optional<std::vector<PlacedStage>> stagesOf( Context::SurveyedTable const& table ) {
    std::map<Stage, PlacedStage> stages;
    for( Context::SurveyedStageTable const& stageTable : table.stageTables ) {
        if( !isStage( stageTable.stage ) )
            return std::nullopt;
        Stage const number = static_cast<U32>( *stageTable.stage );
        PlacedStage& placed = stages.try_emplace( number, PlacedStage{ number } ).first->second;
        ++placed.tables;
        placed.stated += stageTable.size ? 1 : 0;
        placed.entries += stageTable.size.value_or( 0 );
    }
    std::vector<PlacedStage> ascending;
    ascending.reserve( stages.size() );
    for( auto const& [ number, placed ] : stages )
        ascending.push_back( placed );
    return ascending;
}

std::vector<std::optional<std::vector<PlacedStage>>> placedStages( Configuration const& configuration ) {
    std::vector<std::optional<std::vector<PlacedStage>>> placed(
        configuration.parser().bfResources().size() );
    for( Context::FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedTable const& table : file.tables ) {
            if( table.resource )
                placed[ *table.resource ] = stagesOf( table );
        }
    }
    return placed;
}

PlacedStage const* Placed::in( Stage stage ) const {
    auto const found = std::lower_bound( stages.begin(), stages.end(), stage,
                                         []( PlacedStage const& one, Stage s ) { return one.stage < s; } );
    return found != stages.end() && found->stage == stage ? &*found : nullptr;
}

void StageLoad::add( PlacedStage const& placed, bool starts ) {
    starting += starts ? 1 : 0;
    ++spanning;
    tables += placed.tables;
    stated += placed.stated;
    entries += placed.entries;
}

std::vector<Stage> allStagesUpTo( std::vector<Stage> taken ) {
    constexpr Stage most = 64;
    std::sort( taken.begin(), taken.end() );
    taken.erase( std::unique( taken.begin(), taken.end() ), taken.end() );
    if( taken.empty() || taken.back() >= most )
        return taken;
    std::vector<Stage> stages( taken.back() + 1 );
    std::iota( stages.begin(), stages.end(), Stage( 0 ) );
    return stages;
}

std::size_t StageMap::size() const {
    return std::accumulate(
        groups.begin(), groups.end(), std::size_t( 0 ),
        []( std::size_t sum, auto const& group ) { return sum + group.resources.size(); } );
}

std::vector<StageMap> stageMapsOf( Configuration const& configuration ) {
    bool const apart = !configuration.parser().bfrtConfig().empty();
    return mapsOf(
        configuration, [ & ]( ZelContextFile const& file ) { return apart ? handleBits( file.key() ) : 0; },
        [ & ]( BfResource const& resource, std::size_t ) { return apart ? resource.handle >> 28 : 0; } );
}

std::vector<StageMap> stageMapsByProgram( Configuration const& configuration ) {
    std::vector<U32> masks( configuration.parser().bfResources().size() );
    for( Context::FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedTable const& table : file.tables ) {
            if( table.resource )
                masks[ *table.resource ] = file.pipeMask;
        }
    }
    return mapsOf(
        configuration, []( ZelContextFile const& file ) { return file.key().value(); },
        [ & ]( BfResource const&, std::size_t position ) { return masks[ position ]; } );
}

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
