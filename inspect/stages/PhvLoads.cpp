#include "inspect/stages/PhvLoads.h"

namespace Bfri {

std::vector<PhvStage> phvStagesOf( Context::FileSurvey const& file ) {
    std::vector<PhvStage> stages( file.phvFields.empty() ? 0 : file.phvFields.back().element + 1 );
    for( Context::SurveyedPhvField const& field : file.phvFields ) {
        PhvStage& stage = stages[ field.element ];
        PhvLoad& load = field.ingress ? stage.ingress : stage.egress;
        ++load.fields;
        load.bytes += field.bytes;
    }
    return stages;
}

} // namespace Bfri
