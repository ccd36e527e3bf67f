#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LooseJson.h"
#include "resourceinfo/parser/context/Survey.h"

/// The pass over "learn_quanta". Fatal: "lqs.IsArray()", "lq.IsObject()".
void parseLearnQuantas( BfResourceInfo::BfResourceParser* parser, Context::Json d,
                        BfResourceParserContext const& context );

/// The step for one element: appends a BfLearnQuantaInfo to `bfLearnQuantaInfos` and returns 0, or returns 1
/// for an element without an "lq_cfg_type".
int parseBfLearnQuantaInfo( BfResourceInfo::BfResourceParser* parser, Context::Json lq,
                            BfResourceParserContext const& context );

/// Notes in the survey of a learn quanta whether the step leaves it out.
void surveyLearnQuanta( Context::LooseJson lq, Context::SurveyedLearnQuanta& result );
