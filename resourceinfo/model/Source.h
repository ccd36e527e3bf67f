#pragma once

// What every file of the parser and its model says where it traces or asserts.

#include "zel/Trace.h"

/// The source name in assertions and trace lines.
#define ZEL_SOURCE "BfResourceParser"

namespace BfResourceInfo {

/// The parser's trace handle, made on first use. Level 5: major operations; 6: passes; 7: stored items; 0:
/// the explanation of a fatal assertion.
inline Zel::TraceHandle& traceHandle() {
    static Zel::TraceHandle& handle = Zel::TraceHandle::byName( ZEL_SOURCE );
    return handle;
}

} // namespace BfResourceInfo

#define BF_TRACE( level ) ZEL_TRACE( ::BfResourceInfo::traceHandle(), level )
