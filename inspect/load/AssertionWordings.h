#pragma once

#include "zel/Assert.h"

namespace Bfri {

using Vessa::String;

/// What a condition of the library's reading of context data wants, in words.
struct Expectation {
    String text;        ///< fits behind "expected"; the condition itself when there are no words for it
    bool traceAddsToIt; ///< the trace line in front of the failure says what neither text nor place do
    /// Whose value broke it: that at the failure's place ("."), that of a member beside it (its name), or
    /// none that stands there alone (empty).
    String culprit = ".";
};

Expectation expectationOf( Zel::AssertionFailure const& failure );

} // namespace Bfri
