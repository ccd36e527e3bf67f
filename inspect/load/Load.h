#pragma once

#include "inspect/load/Fault.h"
#include "inspect/model/Configuration.h"

#include <ostream>
#include <variant>

namespace Bfri {

/// What to take from context files besides the model.
enum class Survey { none, facts, digests };

/// Loads a switch configuration. The fault says why it cannot be loaded: the configuration cannot be read, or
/// its context data cannot be used. Lines that the library traces meanwhile go to `trace`, except for those
/// of level 0, which explain a fault and are part of it. Configurations are loaded one after the other, as
/// the SDK library has one context a process.
std::variant<Configuration, Fault> loadConfiguration( String const& path, Survey survey,
                                                      std::ostream& trace );

/// The same without a survey; bad context data ends the process, as in every process that does not handle
/// assertions.
std::variant<Configuration, Fault> loadOrAbort( String const& path );

/// The context files that a configuration names, but that are not read, because a later pipeline has the same
/// pipes.
std::vector<String> unreadContextFiles( Configuration const& configuration );

} // namespace Bfri
