#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/LooseJson.h"
#include "resourceinfo/parser/context/Survey.h"

/// The pass over "flexible_headers", which a file may lack.
void parseFlexibleHeaders( BfResourceInfo::BfResourceParser* parser, Context::Json d,
                           BfResourceParserContext const& context );

/// The step for one element: keeps the header's size in bytes in `bfHeaders`; all files of a switch share the
/// headers. Returns 0. Fatal: "header.size() % 8 == 0" for bits that make no whole bytes,
/// "parser->bfHeaders( hdrName ) == header" for a header that is known with another size.
int parseBfHeaderInfo( BfResourceInfo::BfResourceParser* parser, Context::Json element,
                       BfResourceParserContext const& context );

/// Notes in the survey of a header its bits, and in that of the file when the step truncates them.
void surveyHeader( Context::LooseJson element, Context::SurveyedHeader& result, Context::FileSurvey& file );
