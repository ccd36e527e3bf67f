#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LooseJson.h"
#include "resourceinfo/parser/context/Survey.h"

/// The match-table step for one element of "tables": appends a BfTableInfo to `bfTables` and returns 0, or
/// returns 1 for a table that is no match table, is not resource-controllable or has static entries.
/// `contextFile` is the path of the file, for the logical pipe. The tables that it refers to must be in
/// `resourceHandles`. Every violation is fatal; nothing is stored then.
int parseBfTable( BfResourceInfo::BfResourceParser* parser, Context::Json table, String const& contextFile,
                  BfResourceParserContext const& context );

/// Notes in the survey of a table whether the match-table step leaves it out. The number of its static
/// entries is there.
void surveyBfTable( Context::LooseJson table, Context::SurveyedTable& result );
