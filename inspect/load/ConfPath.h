#pragma once

#include "inspect/load/Fault.h"

namespace Bfri {

/// Whether a file is gzip, by its first two characters.
bool isGzip( String const& path );

/// The switch configuration that a path stands for: the file itself; in a folder, its switch.conf; and for a
/// context file, one of its own, with that file as the program of pipe 0 and without run-time configuration.
/// A context file is gzip, or JSON of which the first known top-level member is a context file's; it is read
/// only as far as that member.
class ConfPath {
  public:
    explicit ConfPath( String const& path );
    ~ConfPath();
    ConfPath( ConfPath const& ) = delete;
    ConfPath& operator=( ConfPath const& ) = delete;

    /// To be opened as long as the object lives.
    String const& switchConf() const { return switchConf_; }
    bool isContextFile() const { return descriptor_ >= 0; }

  private:
    String switchConf_;
    int descriptor_ = -1; // of the configuration of a context file, which is in memory only
};

/// The configurations that a path stands for: itself; of a folder without a switch.conf of its own, every
/// switch.conf below it, ascending.
std::vector<String> configurationsIn( String const& path );

/// Adds to the fault of a switch configuration what is known about the file in its place.
void addHint( Fault& fault );

} // namespace Bfri
