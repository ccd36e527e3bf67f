#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/StageText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/Records.h"
#include "inspect/rows/JsonFormat.h"
#include "inspect/stages/StageMap.h"

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
                       "--stage takes the number of a stage, not '" + escapeForTerminal( word ) + "'" );
    return stage;
}

/// Those of all maps: from the first to the last.
void requireStage( Stage asked, std::vector<StageMap> const& maps ) {
    std::set<Stage> stages;
    for( StageMap const& map : maps )
        stages.insert( map.stages.begin(), map.stages.end() );
    if( stages.count( asked ) > 0 )
        return;
    String const there = stages.empty() ? "no resource has stages that are known"
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
    return { { "contextFile", std::move( files ) },
             { "stages", std::move( stages ) },
             { "bfResources", resourceRows( map, asked ) } };
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

/// "the fullest is 7 with 6" or "the fullest are 4 and 10 with 5 each".
String fullestText( StageMap const& map ) {
    constexpr std::size_t most = 4;
    U32 load = 0;
    for( StageLoad const& one : map.loads )
        load = std::max( load, one.spanning );
    std::vector<String> fullest;
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        if( map.loads[ i ].spanning == load )
            fullest.push_back( std::to_string( map.stages[ i ] ) );
    }
    if( fullest.size() == 1 )
        return "the fullest is " + fullest.front() + " with " + std::to_string( load );
    String text = fullest.front();
    for( std::size_t i = 1; i < fullest.size(); ++i )
        text += ( i + 1 < fullest.size() ? ", " : " and " ) + fullest[ i ];
    if( fullest.size() > most )
        text = std::to_string( fullest.size() ) + " of these";
    return "the fullest are " + text + " with " + std::to_string( load ) + " each";
}

String overview( StageMap const& map, std::optional<Stage> asked ) {
    if( map.groups.empty() )
        return map.lost.empty() ? "no resource is placed" : "no resource has stages that are known";
    if( asked )
        return "stage " + std::to_string( *asked ) + ": " + std::to_string( loadOf( map, *asked ).spanning ) +
               " of " + counted( map.size() );
    return counted( map.size() ) + " in " + stagesText( map.stages ) + "; " + fullestText( map );
}

void printTitle( std::ostream& out, StageMap const& map ) {
    for( auto const* const file : map.files ) {
        out << "pipes";
        for( Value const& pipe : pipesOf( file->key().value() ) )
            out << ' ' << std::get<U32>( pipe.is );
        out << ": " << escapeForTerminal( file->value() ) << '\n';
    }
    if( map.files.size() > 1 )
        out << "one map for all of these, as their handles do not tell them apart\n";
}

void printLost( std::ostream& out, StageMap const& map ) {
    if( map.lost.empty() )
        return;
    out << "not on the map, as the context file does not tell all of their stages: "
        << counted( map.lost.size() ) << '\n';
    for( BfResource const* const resource : map.lost )
        out << "  " << escapeForTerminal( resource->name ) << '\n';
}

void printMap( std::ostream& out, TerminalStyle const& look, StageMap const& map, Request const& request ) {
    auto const asked = stageAskedFor( request );
    printTitle( out, map );
    out << overview( map, asked ) << '\n';
    printLost( out, map );
    if( asked ? loadOf( map, *asked ).spanning == 0 : map.groups.empty() )
        return;
    out << '\n';
    if( asked || request.has( "--list" ) )
        printBars( out, look, map, asked );
    else
        printGrid( out, look, map );
}

void printFooter( std::ostream& out, TerminalStyle const& look ) {
    out << '\n' << inLines( "2+1: two start in the stage, and one goes on from an earlier one", look );
}

void printText( std::ostream& out, TerminalStyle const& look, std::vector<StageMap> const& maps,
                Request const& request ) {
    for( StageMap const& map : maps ) {
        out << ( &map == &maps.front() ? "" : "\n" );
        printMap( out, look, map, request );
    }
    if( maps.empty() )
        out << "no resource is placed\n";
    bool const somePlaced =
        std::any_of( maps.begin(), maps.end(), []( StageMap const& map ) { return map.size() > 0; } );
    if( somePlaced && !request.has( "--list" ) && !request.has( "--stage" ) )
        printFooter( out, look );
}

} // namespace

ExitStatus stages( Configuration const& configuration, Request const& request, Streams const& io ) {
    auto const asked = stageAskedFor( request );
    auto const maps = stageMapsOf( configuration );
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
