#pragma once

#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LooseJson.h"
#include "resourceinfo/parser/context/Survey.h"

/// The pass over "phv_allocation": parsePhvStage for the two directions of every stage. Fatal:
/// "phvs.IsArray()", "phvStage.IsObject()".
void parsePhv( BfResourceInfo::BfResourceParser* parser, Context::Json d );

/// Takes the fields that one stage places in PHV containers in one direction, "ingress" or "egress", into the
/// collection of that direction, where each field keeps the largest number of bytes that any stage gives it.
/// Returns 0. Fatal: "gress_info.IsArray()", "records.IsArray()", "record.IsObject()",
/// "perStagePhvSize[ record_field_name ] == width" for a field with two widths, and for another direction, if
/// it has fields, "false && \"Invalid Direction\"".
int parsePhvStage( BfResourceInfo::BfResourceParser* parser, Context::Json phvStage,
                   String const& direction );

/// Notes in the survey of a file the fields of each stage and direction, each once, and those that
/// parsePhvStage truncates.
void surveyPhv( Context::LooseJson phvs, Context::FileSurvey& file );
