#pragma once

#include "zel/Trace.h"

#include <bitset>
#include <vector>

namespace Support {

/// While it lives, collects what all trace handles emit, and has the given levels of one of them on, the
/// others off. Then sink and levels are as before.
class TraceCollector {
  public:
    TraceCollector( std::string const& source, std::initializer_list<Zel::U32> levels );
    TraceCollector( TraceCollector const& ) = delete;
    TraceCollector& operator=( TraceCollector const& ) = delete;
    ~TraceCollector();

    /// In the order of emission; to be read when no other thread emits.
    std::vector<Zel::TraceLine> const& lines() const { return lines_; }
    std::vector<std::string> texts() const;

  private:
    Zel::TraceHandle& handle_;
    std::bitset<Zel::TraceHandle::levels> formerLevels_;
    Zel::TraceSink formerSink_;
    std::vector<Zel::TraceLine> lines_;
};

} // namespace Support
