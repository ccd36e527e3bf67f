#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LooseJson.h"
#include "resourceinfo/parser/context/Survey.h"

/// The action step for a match table that was recorded: appends a BfActionInfo to `bfActions` for each of
/// its "actions". Returns 0. Fatal: "actions.IsArray()", "action.IsObject()"; the actions before the faulty
/// one are stored.
int parseBfAction( BfResourceInfo::BfResourceParser* parser, Context::Json table,
                   BfResourceParserContext const& context );

/// The actions of a table, recorded or not, for a survey.
std::vector<Context::SurveyedAction> surveyActions( Context::LooseJson table,
                                                    BfResourceParserContext const& context );
