#pragma once

// The keys of the answers, one function for each command.

#include "cli/schema/SchemaParts.h"

namespace Bfri::Schema {

Row summary();
Row show();
Row table();
Row stages();
Row dump();
Row lookup();
Row names();
Row check();
Row budget();
Row diff();
Row listOf( RecordKind const& kind );

/// The answer of every command that fails.
Row failure();

/// The object of an answer: `format`, then these keys.
Row answer( std::vector<Key> keys, char const* meaning = "" );

} // namespace Bfri::Schema
