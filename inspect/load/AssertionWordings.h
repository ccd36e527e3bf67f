#pragma once

#include "zel/Assert.h"

namespace Bfri {

using Vessa::String;

/// What a condition on context data requires, in words.
struct Expectation {
    String text;        ///< follows "expected"; the condition itself if there are no words for it
    bool traceAddsToIt; ///< the trace line before the failure says more than text and place
    /// Whose value broke it: the one at the failure's place ("."), a member beside it (its name), or no
    /// single value (empty).
    String culprit = ".";
};

Expectation expectationOf( Zel::AssertionFailure const& failure );

} // namespace Bfri
