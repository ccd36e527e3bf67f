#pragma once

#include "vessa/Types.h"

#include <memory>
#include <string_view>

struct pcre2_real_code_8;

namespace Bfri {

using Vessa::String;

/// A regular expression in ECMAScript syntax, which copies share. It matches UTF-8 characters; stray bytes
/// match nothing. Matching is limited in steps and in memory, and uses no stack.
class Pattern {
  public:
    /// An expression that is none is a Failure of status usage that says why, and names the option.
    explicit Pattern( String expression, char const* option = "--filter" );

    /// Whether a part of the text matches. Throws Failure with status usage if a limit is reached.
    bool isIn( std::string_view text ) const;

  private:
    String expression_;
    char const* option_;
    std::shared_ptr<pcre2_real_code_8> code_;
};

} // namespace Bfri
