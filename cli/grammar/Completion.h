#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// The possible completions of a word.
struct Candidates {
    bool files = false;             ///< paths, which the shell completes
    String written = {};            ///< the start of the word that is kept: "--sort=", "BF304,", "permit of "
    std::vector<String> words = {}; ///< what may follow it
};

/// Completions of the last of the words typed after the program's name; it has the meaning that the command
/// would give it. Completions keep the form of the typed part: decimal or hexadecimal, upper case or not.
/// Names come from the configuration on the line; there are none if it can't be loaded.
Candidates candidatesFor( Program const& program, std::span<String const> words );

/// The candidates that begin with a word; if there are none, those with a component that does. Components are
/// separated by dots.
std::vector<String> beginningLike( String const& word, std::vector<String> const& candidates );

} // namespace Bfri
