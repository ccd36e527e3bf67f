#pragma once

#include "inspect/load/Fault.h"

namespace Bfri {

/// Whether a file is gzip, by its first two characters.
bool isGzip( String const& path );

/// The switch configuration that a path means: the file itself; for a folder, its switch.conf; for a context
/// file, a configuration made for it, with that file as the program of pipe 0 and without run-time
/// configuration. A context file is gzip, or JSON whose first known top-level member belongs to a context
/// file; it is read only up to that member.
class ConfPath {
  public:
    explicit ConfPath( String const& path );
    ~ConfPath();
    ConfPath( ConfPath const& ) = delete;
    ConfPath& operator=( ConfPath const& ) = delete;

    /// Can be opened as long as this object lives.
    String const& switchConf() const { return switchConf_; }
    bool isContextFile() const { return descriptor_ >= 0; }

  private:
    String switchConf_;
    int descriptor_ = -1; // of the configuration made for a context file, in memory only
};

/// The configurations that a path means: itself; for a folder without a switch.conf of its own, every
/// switch.conf below it, ascending.
std::vector<String> configurationsIn( String const& path );

/// Adds to the fault of a switch configuration what is known about the file in its place.
void addHint( Fault& fault );

} // namespace Bfri
