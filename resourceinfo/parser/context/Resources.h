#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/Survey.h"

/// The type of a stage table by its text: "phase_0_match", "ternary_match", ..., "wred". Any other text is
/// fatal: a trace line at level 0, then "false && \"Unexpected BfResourceType\"".
BfResourceType stringToResourceType( std::string_view text );

/// The resource step for one element of "tables" that is no "condition": appends a BfResource to
/// `bfResources` and returns 0, or returns 1 for a table without stage tables. Fatal: the conditions of
/// findStageTables, "stages->IsArray()", an unknown type; nothing is stored then.
int parseBfResource( BfResourceInfo::BfResourceParser* parser, Context::Json table,
                     BfResourceParserContext const& context );

/// Notes in the survey of a file what the resource step takes for something else in a table: an unknown
/// "direction", which counts as egress, and a first stage that does not fit into the 8 bits of the entry by
/// handle.
void surveyResource( Context::SurveyedTable const& table, Context::FileSurvey& file );
