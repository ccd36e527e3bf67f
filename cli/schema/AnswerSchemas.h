#pragma once

// The keys of the answers, a function each.

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

/// What every command answers where it fails.
Row failure();

/// The object that an answer is: `format`, then these keys.
Row answer( std::vector<Key> keys, char const* meaning = "" );

} // namespace Bfri::Schema
