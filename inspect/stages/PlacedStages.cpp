#include "inspect/stages/PlacedStages.h"

#include <limits>
#include <map>

namespace Bfri {

namespace {

bool isStage( std::optional<std::int64_t> number ) {
    return number && *number >= std::numeric_limits<std::int32_t>::min() &&
           *number <= std::numeric_limits<U32>::max();
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

} // namespace Bfri
