#pragma once

#include "cli/Commands.h"

namespace Bfri {

/// What may stand in the place of a word.
struct Candidates {
    bool files = false; ///< paths of files, which the shell knows best
    std::vector<String> words = {};
};

/// For the last of the words behind "bfri", as far as it is written; the shell drops what does not begin so.
/// Names come from the configuration that the line names; one that cannot be loaded offers none.
Candidates candidatesFor( std::span<String const> words );

} // namespace Bfri
