#pragma once

#include "cli/Commands.h"

namespace Bfri {

/// What may stand in the place of a word.
struct Candidates {
    bool files = false; ///< paths of files, which the shell knows best
    std::vector<String> words = {};
};

/// For the last of the words behind "bfri", whatever of it is written, but for the form of handles and lists.
/// Names come from the configuration that the line names; one that cannot be loaded offers none.
Candidates candidatesFor( std::span<String const> words );

/// Those of the candidates that begin as a word does; where none does, those with a part that does: a name
/// has one behind each dot.
std::vector<String> beginningLike( String const& word, std::vector<String> const& candidates );

} // namespace Bfri
