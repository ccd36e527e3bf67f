#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/Json.h"

/// The pass over "dynamic_hash_calculations".
void parseDynamicHashCalculations( BfResourceInfo::BfResourceParser* parser, Context::Json d,
                                   BfResourceParserContext const& context );

/// The step for one element: puts it into `bfDynamicHashInfo`, in the place of an earlier one of that name.
/// Returns 0. Fatal: "fieldList.Size() == 1" for any other number of field lists, "fieldCount > 0" for a list
/// of no fields.
int parseBfDynamicHashInfo( BfResourceInfo::BfResourceParser* parser, Context::Json calculation,
                            BfResourceParserContext const& context );
