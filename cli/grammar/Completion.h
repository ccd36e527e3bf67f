#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// What may stand in the place of a word.
struct Candidates {
    bool files = false;             ///< paths of files, which the shell knows best
    String written = {};            ///< the front of the word that stays: "--sort=", "BF304,", "permit of "
    std::vector<String> words = {}; ///< what may stand behind it
};

/// For the last of the words behind "bfri". Of it only the form of what is written so far counts: decimal or
/// hexadecimal, capital letters or not. Names come from the configuration that the line names; one that
/// cannot be loaded offers none.
Candidates candidatesFor( std::span<String const> words );

/// Those of the candidates that begin as a word does; where none does, those with a part that does: a name
/// has one behind each dot.
std::vector<String> beginningLike( String const& word, std::vector<String> const& candidates );

} // namespace Bfri
