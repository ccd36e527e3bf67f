#pragma once

#include "vessa/Types.h"

#include <memory>
#include <string_view>

struct pcre2_real_code_8;

namespace Bfri {

using Vessa::String;

/// A regular expression of ECMAScript's syntax. Its characters are those of UTF-8; bytes that are no part of
/// any match nothing. What it takes to match is limited, in steps and in memory, and none of it is stack.
class Pattern {
  public:
    /// An expression that is none is a Failure of status usage that says why, and names the option.
    explicit Pattern( String expression, char const* option = "--filter" );

    /// Does a part of the text match? Reaching a limit is a Failure of status usage, too.
    bool isIn( std::string_view text ) const;

  private:
    struct Free {
        void operator()( pcre2_real_code_8* code ) const;
    };

    String expression_;
    char const* option_;
    std::unique_ptr<pcre2_real_code_8, Free> code_;
};

} // namespace Bfri
