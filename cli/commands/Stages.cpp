#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/StageText.h"
#include "inspect/rows/JsonFormat.h"
#include "inspect/stages/StageMap.h"

#include <charconv>
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

/// The stages of all maps: from the first to the last.
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

Row mapRow( StageMap const& map, std::optional<Stage> asked, Rules const* budget ) {
    Row row = rowOf( map, asked );
    if( !budget )
        return row;
    auto uses = capacityUses( *budget, map );
    std::erase_if( uses, [ & ]( Use const& use ) { return asked && use.stage != asked; } );
    row.push_back( { "capacities", listOf( uses, []( Use const& use ) { return rowOf( use ); } ) } );
    return row;
}

} // namespace

ExitStatus stages( Configuration const& configuration, Request const& request, Streams const& io ) {
    auto const asked = stageAskedFor( request );
    auto const rules = rulesOf( request );
    Rules const* const budget = rules ? &*rules : nullptr;
    auto const maps = budget ? stageMapsByProgram( configuration ) : stageMapsOf( configuration );
    if( asked )
        requireStage( *asked, maps );
    if( request.format == Format::json )
        JsonAnswer( io.out ).member( "pipelines", listOf( maps, [ & ]( StageMap const& map ) {
                                         return mapRow( map, asked, budget );
                                     } ) );
    else {
        auto const by = request.option( "--by" ) == "entries" ? StageMeasure::entries : StageMeasure::tables;
        printStages( io.out, io.look, maps, { by, asked, request.has( "--list" ), budget } );
    }
    return ExitStatus::done;
}

} // namespace Bfri
