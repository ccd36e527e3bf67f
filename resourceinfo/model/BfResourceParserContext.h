#pragma once

#include "resourceinfo/model/BfPipeMask.h"

/// What every step of reading one context file is given.
struct BfResourceParserContext {
    BfResourceInfo::BfPipeMask pipeMask; ///< the pipes that share the file
    U32 handlePipeBits = 0;              ///< OR-ed into every handle read from the file
};
