#pragma once

#include "resourceinfo/parser/context/GZFileReadStream.h"
#include "resourceinfo/parser/context/PruningFilter.h"
#include "resourceinfo/parser/context/ValueDigests.h"

namespace Context {

/// Reads a file as ContextReader does through a PruningFilter alone, with the same result, and takes the
/// digests of all values. Throws TokenTooLong as that does. Compiled by itself: where both ways of reading
/// are in one source file, the compiler makes calls of what it else inlines, and loads without digests take a
/// tenth longer.
rapidjson::ParseResult readWithDigests( GZFileReadStream& stream, PruningFilter& filter,
                                        ValueDigests& digests );

} // namespace Context
