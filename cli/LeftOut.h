#pragma once

#include "resourceinfo/BfResourceInfoIntf.h"

namespace Bfri {

using Vessa::String;
using Vessa::U32;

// What a miss in the model may be about: a match table that its context file has, but that the model leaves
// out, or an action of one. Each is a sentence without its end, or empty when there is no such thing, and
// reads the context files once more, in linear time.

/// Of a name, or the end of one from a dot on.
String leftOutOfName( BfResourceInfo::BfResourceParser const& parser, String const& word );

/// Of a handle as the model would have it.
String leftOutOfHandle( BfResourceInfo::BfResourceParser const& parser, U32 handle );

} // namespace Bfri
