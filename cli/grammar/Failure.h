#pragma once

#include "vessa/Types.h"

#include <stdexcept>
#include <vector>

namespace Bfri {

using Vessa::String;

/// What the process ends with; scripts branch on the numbers.
enum class ExitStatus {
    done = 0,
    no = 1,          ///< the answer is no: not found, not unique, differs, findings
    usage = 2,       ///< the command line is wrong
    notLoadable = 3, ///< switch configuration or context file
    internal = 4,    ///< anything else, standard output that cannot be written included
};

/// Ends the command: the message is for people, the names under it are what they may have meant.
class Failure : public std::runtime_error {
  public:
    Failure( ExitStatus exitStatus, String const& message, std::vector<String> names = {} )
        : std::runtime_error( message ), status( exitStatus ), suggestions( std::move( names ) ) {}

    ExitStatus status;
    std::vector<String> suggestions;
};

} // namespace Bfri
