#pragma once

#include "cli/grammar/Commands.h"

namespace Bfri {

/// What a word may be completed to.
struct Candidates {
    bool files = false;             ///< paths, which the shell completes best
    String written = {};            ///< the front of the word that stays: "--sort=", "BF304,", "permit of "
    std::vector<String> words = {}; ///< what may follow it
};

/// For the last of the words typed after the program's name, which means what it would mean to the command.
/// Only the form of what is typed of it counts: decimal or hexadecimal, upper case or not. Names come from
/// the configuration on the line; one that can't be loaded offers none.
Candidates candidatesFor( Program const& program, std::span<String const> words );

/// The candidates that begin with a word; where there are none, those with a component that does: components
/// follow the dots of a name.
std::vector<String> beginningLike( String const& word, std::vector<String> const& candidates );

} // namespace Bfri
