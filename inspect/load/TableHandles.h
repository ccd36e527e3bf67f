#pragma once

#include "vessa/Types.h"

namespace Bfri {

using Vessa::String;
using Vessa::U32;

/// A handle that is missing in the model, and what of it is not the context file's but the pipeline's.
struct MissingHandle {
    U32 handle;
    U32 pipeBits;
};

/// Why a table that others must list is not found by its handle: who lists it, and whether a second table
/// with one of the handles hides that. Reads the context file once more, in linear time.
String whoLists( MissingHandle const& missing, String const& contextFile );

/// Why a handle that is listed leads to no placed table: who has it. In the same way.
String whoHas( MissingHandle const& missing, String const& contextFile );

} // namespace Bfri
