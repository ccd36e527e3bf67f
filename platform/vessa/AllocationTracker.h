#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

#include <atomic>
#include <cstddef>
#include <typeinfo>

namespace Vessa {

/// Counts the allocations made for one type, process-wide. Thread-safe, lock-free after the first look-up.
class VESSA_EXPORT AllocationTracker {
  public:
    /// The tracker of a type: one in the process whichever library asks, made on first use, never destroyed.
    /// Takes a lock; keep the reference.
    static AllocationTracker& forType( std::type_info const& type );

    void allocated( std::size_t bytes ) noexcept {
        made_.fetch_add( 1, std::memory_order_relaxed );
        live_.fetch_add( 1, std::memory_order_relaxed );
        liveBytes_.fetch_add( bytes, std::memory_order_relaxed );
    }
    void released( std::size_t bytes ) noexcept {
        live_.fetch_sub( 1, std::memory_order_relaxed );
        liveBytes_.fetch_sub( bytes, std::memory_order_relaxed );
    }

    /// Allocations ever made, those not given back yet, and the bytes of the latter.
    U64 made() const noexcept { return made_.load( std::memory_order_relaxed ); }
    U64 live() const noexcept { return live_.load( std::memory_order_relaxed ); }
    U64 liveBytes() const noexcept { return liveBytes_.load( std::memory_order_relaxed ); }

  private:
    std::atomic<U64> made_ = 0;
    std::atomic<U64> live_ = 0;
    std::atomic<U64> liveBytes_ = 0;
};

/// The tracker of T.
template<class T>
AllocationTracker& allocationTracker() {
    static AllocationTracker& tracker = AllocationTracker::forType( typeid( T ) );
    return tracker;
}

} // namespace Vessa
