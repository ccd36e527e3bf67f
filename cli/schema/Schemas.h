#pragma once

#include "inspect/rows/Row.h"

namespace Bfri {

struct Command;

/// Whether a command prints JSON.
bool hasSchema( Command const& command );

/// The JSON Schema (2020-12) of a command's JSON answers, failures included.
Row schemaOf( Command const& command );

} // namespace Bfri
