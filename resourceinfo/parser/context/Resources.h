#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"

/// The type of a stage table by its text: "phase_0_match", "ternary_match", ..., "wred". Any other text is
/// fatal: a trace line at level 0, then "false && \"Unexpected BfResourceType\"".
BfResourceType stringToResourceType( std::string_view text );

/// The resource step for one element of "tables" that is no "condition": appends a BfResource to
/// `bfResources`, unless the table has no stage tables. Returns 0. Fatal: the conditions of findStageTables,
/// "stages->IsArray()", an unknown type; nothing is stored then.
int parseBfResource( BfResourceInfo::BfResourceParser* parser, Context::Json table,
                     BfResourceParserContext const& context );
