#pragma once

// What differs, in words. Names are bytes, as everywhere.

#include "inspect/diff/Comparison.h"

namespace Bfri {

/// Lists in brackets, a handle with the name of its record, absent and empty values as "-".
String lineOf( Value const& value );

/// "1024 -> 512".
String fromTo( Value const& from, Value const& to );

/// The change as texts show it: the field's name for people, and a resource's direction and type in words.
Change inWords( Change const& change );

/// Changes in words; fields that change alike are together: "size, totalEntries 512 -> 1024".
String lineOf( std::vector<Change> const& changes );

/// "0-1 3": consecutive pipes as the first and the last.
String pipesText( U32 mask );

} // namespace Bfri
