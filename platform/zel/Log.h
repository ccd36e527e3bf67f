#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

namespace Zel {

using Vessa::String;
using Vessa::U32;

/// A structured log message as a part of the process registers it.
struct LogHandle {
    String name; ///< "BFN_SWITCH_CONF_ERROR"
    U32 severity = 0;
    String format; ///< printf style
    String explanation;
    String recommendedAction;
    U32 seconds = 0;
    double rate = 0;
    U32 burst = 0;
    U32 flags = 0;
};

/// Registers a message under its name; from then on that name finds this one. The returned handle lives
/// unchanged as long as the process, also when its name is registered again. Thread-safe.
VESSA_EXPORT LogHandle const& logHandleIs( LogHandle handle );

/// The message registered last under that name, null when there is none. Thread-safe.
VESSA_EXPORT LogHandle const* logHandle( String const& name );

} // namespace Zel
