#pragma once

#include "inspect/rows/Row.h"

namespace Bfri {

struct Command;

/// Whether a command prints JSON.
bool hasSchema( Command const& command );

/// The JSON Schema (2020-12) of what such a command prints, failures included.
Row schemaOf( Command const& command );

} // namespace Bfri
