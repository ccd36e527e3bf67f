#pragma once

#include "inspect/check/CheckContext.h"
#include "inspect/load/FileTables.h"

namespace Bfri {

/// Where tables come from, and the model that was made of them.
struct FileTables {
    String file;
    U32 pipeBits; ///< of their handles
    BfResourceInfo::BfResourceParser const& parser;
};

/// Adds what the model does not keep of one of them.
void addLosses( FileTable const& table, FileTables const& tables, Losses& losses );

} // namespace Bfri
