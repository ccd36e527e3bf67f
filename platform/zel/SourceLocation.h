#pragma once

#include "vessa/Types.h"

#include <source_location>

namespace Zel {

#ifdef __cpp_lib_source_location

/// The place of a call in the code.
using SourceLocation = std::source_location;

#else

/// The place of a call in the code: the part of std::source_location that is used, for Clang 14, which has
/// the standard header but not what it is made of. The function is a bare name here, not a signature.
class SourceLocation {
  public:
    static constexpr SourceLocation current( Vessa::U32 line = __builtin_LINE(),
                                             char const* function = __builtin_FUNCTION() ) {
        SourceLocation location;
        location.line_ = line;
        location.function_ = function;
        return location;
    }
    constexpr Vessa::U32 line() const { return line_; }
    constexpr char const* function_name() const { return function_; }

  private:
    Vessa::U32 line_ = 0;
    char const* function_ = "";
};

#endif

} // namespace Zel
