#pragma once

#include "vessa/Types.h"

#include <memory>
#include <string_view>

struct pcre2_real_code_8;

namespace Bfri {

using Vessa::String;

/// A regular expression in ECMAScript syntax. It matches UTF-8 characters; stray bytes match nothing.
/// Matching is limited in steps and in memory, and uses no stack.
class Pattern {
  public:
    /// Throws Failure with status usage if the expression is invalid, and says why.
    explicit Pattern( String expression );

    /// Whether a part of the text matches. Throws Failure with status usage if a limit is reached.
    bool isIn( std::string_view text ) const;

  private:
    struct Free {
        void operator()( pcre2_real_code_8* code ) const;
    };

    String expression_;
    std::unique_ptr<pcre2_real_code_8, Free> code_;
};

} // namespace Bfri
