#pragma once

// The tables that serve match tables: counters, meters, WRED tables and registers.

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"
#include "resourceinfo/parser/context/Survey.h"

// The steps for one element of "tables" each, to be run when preprocessing is done. They return 0. What is
// referenced directly, but by no table, is fatal: "false && \"Table not found\"". Nothing is stored of a
// table whose step fails.

/// For "table_type" "statistics": appends a BfTableCounterInfo to `bfCounters`.
int parseBfTableCounterInfo( BfResourceInfo::BfResourceParser* parser, Context::Json table,
                             String const& contextFile, BfResourceParserContext const& context );

/// For "table_type" "meter": appends a BfTableWredInfo to `bfWreds` for a "meter_type" "red", else a
/// BfTableMeterInfo to `bfMeters`.
int parseBfTableMeterInfo( BfResourceInfo::BfResourceParser* parser, Context::Json table,
                           String const& contextFile, BfResourceParserContext const& context );

/// For "table_type" "stateful": appends a BfRegisterInfo to `bfRegisterInfos`. Fatal: "width == 32" for a
/// dual width of another "alu_width".
int parseBfRegisterInfo( BfResourceInfo::BfResourceParser* parser, Context::Json table,
                         BfResourceParserContext const& context );

/// Notes in the survey of a file the words of a table of one of these types that the steps do not know: a
/// "statistics_type" counts nothing then, a "how_referenced" of a meter is taken for indirect, of others for
/// direct.
void surveyAttachedTable( Context::SurveyedTable const& table, Context::FileSurvey& file );
