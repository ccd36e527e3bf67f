#pragma once

#include "inspect/load/Fault.h"

#include <stdexcept>

namespace Bfri {

/// The exit status of the process; scripts branch on the numbers.
enum class ExitStatus {
    done = 0,
    no = 1,          ///< the answer is no: not found, not unique, differs, findings
    usage = 2,       ///< the command line is wrong
    notLoadable = 3, ///< switch configuration or context file
    internal = 4,    ///< anything else, including standard output that cannot be written
};

/// Ends the command with a message for people, and below it the names that they may have meant.
struct Failure : std::runtime_error {
    Failure( ExitStatus exitStatus, String const& message, std::vector<String> names = {},
             std::optional<Fault> unloadable = {} )
        : std::runtime_error( message ),
          status( exitStatus ),
          suggestions( std::move( names ) ),
          fault( std::move( unloadable ) ) {}

    ExitStatus status;
    std::vector<String> suggestions;
    std::optional<Fault> fault; ///< why the configuration can't be loaded
};

} // namespace Bfri
