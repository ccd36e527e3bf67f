#include "inspect/stages/PlacedStages.h"

#include <algorithm>
#include <limits>

namespace Bfri {

namespace {

std::optional<std::vector<Stage>> stagesOf( Context::SurveyedTable const& table ) {
    std::vector<Stage> stages;
    for( Context::SurveyedStageTable const& stageTable : table.stageTables ) {
        auto const number = stageTable.stage;
        if( !number || *number < std::numeric_limits<std::int32_t>::min() ||
            *number > std::numeric_limits<U32>::max() )
            return std::nullopt;
        stages.push_back( static_cast<U32>( *number ) );
    }
    std::sort( stages.begin(), stages.end() );
    stages.erase( std::unique( stages.begin(), stages.end() ), stages.end() );
    return stages;
}

} // namespace

std::vector<std::optional<std::vector<Stage>>> placedStages( Configuration const& configuration ) {
    std::vector<std::optional<std::vector<Stage>>> placed( configuration.parser().bfResources().size() );
    for( Context::FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedTable const& table : file.tables ) {
            if( table.resource )
                placed[ *table.resource ] = stagesOf( table );
        }
    }
    return placed;
}

} // namespace Bfri
