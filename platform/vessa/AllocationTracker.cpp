#include "vessa/AllocationTracker.h"

#include <map>
#include <mutex>
#include <typeindex>

namespace Vessa {

AllocationTracker& AllocationTracker::forType( std::type_info const& type ) {
    // Never destroyed: entities may outlive every other static object of the process.
    static auto& mutex = *new std::mutex;
    static auto& trackers = *new std::map<std::type_index, AllocationTracker>;
    std::lock_guard const lock( mutex );
    return trackers[ std::type_index( type ) ];
}

} // namespace Vessa
