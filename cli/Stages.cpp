#include "cli/Answers.h"
#include "cli/JsonFormat.h"
#include "cli/Records.h"
#include "cli/StageMap.h"
#include "cli/StageText.h"
#include "cli/TextFormat.h"
#include "cli/Utf8.h"

#include <charconv>
#include <limits>
#include <set>

namespace Bfri {

namespace {

std::optional<Stage> stageAskedFor( Request const& request ) {
    if( !request.has( "--stage" ) )
        return std::nullopt;
    String const word = request.option( "--stage" );
    U32 stage = 0;
    auto const [ rest, error ] = std::from_chars( word.data(), word.data() + word.size(), stage );
    if( error != std::errc() || rest != word.data() + word.size() )
        throw Failure( ExitStatus::usage,
                       "--stage takes the number of a stage, not '" + shown( word ) + "'" );
    return stage;
}

/// Those of all maps: from the first to the last.
void requireStage( Stage asked, std::vector<StageMap> const& maps ) {
    std::set<Stage> stages;
    for( StageMap const& map : maps )
        stages.insert( map.stages.begin(), map.stages.end() );
    if( stages.count( asked ) > 0 )
        return;
    String const there = stages.empty() ? "no resource is placed"
                                        : "the stages are " + std::to_string( *stages.begin() ) + " to " +
                                              std::to_string( *stages.rbegin() );
    throw Failure( ExitStatus::no, "no stage " + std::to_string( asked ) + "; " + there );
}

// For machines.

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
                      { "typeName", valueOf( shownResource( rowOf( *group.resources.front() ) ), "type" ) } };
        addLoad( groupRow, group.loads[ i ] );
        groups.push_back( std::move( groupRow ) );
    }
    row.push_back( { "groups", std::move( groups ) } );
    return row;
}

Row mapRow( StageMap const& map, std::optional<Stage> asked ) {
    List files = listOf( map.files, []( auto const* file ) {
        U32 const mask = file->key().value();
        return Row{ { "pipeMask", Hex( mask ) }, { "pipes", pipesOf( mask ) }, { "path", file->value() } };
    } );
    List stages;
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        if( !asked || *asked == map.stages[ i ] )
            stages.push_back( stageRow( map, i ) );
    }
    List resources;
    for( StageGroup const& group : map.groups ) {
        for( BfResource const* const resource : group.resources ) {
            if( !asked || Span( *resource ).has( *asked ) )
                resources.push_back( withTypeName( rowOf( *resource ) ) );
        }
    }
    return { { "contextFile", std::move( files ) },
             { "stages", std::move( stages ) },
             { "bfResources", std::move( resources ) } };
}

// For people.

/// "stage 3" or "stages 0 to 11".
String stagesText( std::vector<Stage> const& stages ) {
    String const last = std::to_string( stages.back() );
    return stages.size() == 1 ? "stage " + last
                              : "stages " + std::to_string( stages.front() ) + " to " + last;
}

String counted( std::size_t resources ) {
    return std::to_string( resources ) + ( resources == 1 ? " resource" : " resources" );
}

StageLoad loadOf( StageMap const& map, Stage stage ) {
    auto const found = std::find( map.stages.begin(), map.stages.end(), stage );
    return found == map.stages.end() ? StageLoad()
                                     : map.loads[ static_cast<std::size_t>( found - map.stages.begin() ) ];
}

String overview( StageMap const& map, std::optional<Stage> asked ) {
    if( map.groups.empty() )
        return "no resource is placed";
    if( asked )
        return "stage " + std::to_string( *asked ) + ": " + std::to_string( loadOf( map, *asked ).spanning ) +
               " of " + counted( map.size() );
    auto const fullest =
        std::max_element( map.loads.begin(), map.loads.end(),
                          []( StageLoad const& a, StageLoad const& b ) { return a.spanning < b.spanning; } );
    auto const where = map.stages[ static_cast<std::size_t>( fullest - map.loads.begin() ) ];
    return counted( map.size() ) + " in " + stagesText( map.stages ) + "; the fullest is " +
           std::to_string( where ) + " with " + std::to_string( fullest->spanning );
}

void printTitle( std::ostream& out, StageMap const& map ) {
    for( auto const* const file : map.files ) {
        out << "pipes";
        for( Value const& pipe : pipesOf( file->key().value() ) )
            out << ' ' << std::get<U32>( pipe.is );
        out << ": " << shown( file->value() ) << '\n';
    }
    if( map.files.size() > 1 )
        out << "one map for all of these, as their handles do not tell them apart\n";
}

void printMap( std::ostream& out, Look const& look, StageMap const& map, Request const& request ) {
    auto const asked = stageAskedFor( request );
    printTitle( out, map );
    out << overview( map, asked ) << '\n';
    if( asked ? loadOf( map, *asked ).spanning == 0 : map.groups.empty() )
        return;
    out << '\n';
    if( asked || request.has( "--list" ) )
        printBars( out, look, map, asked );
    else
        printGrid( out, look, map );
}

bool hasSeveralStageTables( StageGroup const& group ) {
    return std::any_of( group.resources.begin(), group.resources.end(),
                        []( BfResource const* resource ) { return resource->stages > 1; } );
}

void printFooter( std::ostream& out, Look const& look, std::vector<StageMap> const& maps, bool hasGrids ) {
    bool somePlaced = false;
    bool someSpan = false;
    for( StageMap const& map : maps ) {
        somePlaced |= map.size() > 0;
        someSpan |= std::any_of( map.groups.begin(), map.groups.end(), hasSeveralStageTables );
    }
    bool const explained = somePlaced && hasGrids;
    out << ( explained || someSpan ? "\n" : "" );
    if( explained )
        out << inLines( "2+1: two start in the stage, and one goes on from the stage before", look );
    if( someSpan )
        out << inLines( "spans are counted in stage tables: a table of several units may end earlier", look );
}

void printText( std::ostream& out, Look const& look, std::vector<StageMap> const& maps,
                Request const& request ) {
    for( StageMap const& map : maps ) {
        out << ( &map == &maps.front() ? "" : "\n" );
        printMap( out, look, map, request );
    }
    if( maps.empty() )
        out << "no resource is placed\n";
    printFooter( out, look, maps, !request.has( "--list" ) && !request.has( "--stage" ) );
}

} // namespace

ExitStatus stages( Model const& model, Request const& request, Streams const& io ) {
    auto const asked = stageAskedFor( request );
    auto const maps = stageMapsOf( *model.parser() );
    if( asked )
        requireStage( *asked, maps );
    if( request.format == Format::json )
        JsonAnswer( io.out ).member(
            "pipelines", listOf( maps, [ & ]( StageMap const& map ) { return mapRow( map, asked ); } ) );
    else
        printText( io.out, io.look, maps, request );
    return ExitStatus::done;
}

} // namespace Bfri
