#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LooseJson.h"
#include "resourceinfo/parser/context/Survey.h"

/// The pass before all others: fills `resourceHandles` with every placed table and the handles that it
/// references, and `parentTable` and `multipleParentTables` with who names which resource in
/// "indirect_resources". Every violation is fatal: "d[ \"tables\" ].IsArray()", "table.IsObject()", those of
/// findStageTables, "stages->IsArray()".
void preprocessContext( BfResourceInfo::BfResourceParser* parser, Context::Json d,
                        BfResourceParserContext const& context );

/// The references of a table that have a handle, for a survey: those that preprocessContext takes, and those
/// of match tables to their action data and selection.
std::vector<Context::SurveyedReference> surveyReferences( Context::LooseJson table,
                                                          BfResourceParserContext const& context );

/// The handle of the table whose `referenceKind` ("statistics_table_refs", "meter_table_refs" or
/// "stateful_table_refs") names a handle, pipe bits included; of several, the lowest. None is fatal: a trace
/// line at level 0, then "false && \"Table not found\"". Constant time on average.
U32 getTableThatReferences( BfResourceInfo::BfResourceParser* parser, std::string_view referenceKind,
                            U32 handle );
