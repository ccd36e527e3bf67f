#pragma once

// The tables that serve match tables: counters, meters, WRED tables and registers.

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"

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
