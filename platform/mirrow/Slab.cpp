#include "mirrow/Slab.h"

namespace Mirrow {

std::pmr::memory_resource& slab() {
#if defined( __SANITIZE_ADDRESS__ ) || defined( __SANITIZE_THREAD__ )
    // Blocks of their own, so that the sanitizer sees each one's life.
    return *std::pmr::new_delete_resource();
#else
    static auto& pool = *new std::pmr::synchronized_pool_resource;
    return pool;
#endif
}

} // namespace Mirrow
