#include "mirrow/Slab.h"

#if defined( __SANITIZE_ADDRESS__ ) || defined( __SANITIZE_THREAD__ )
#define MIRROW_SANITIZED
#elif defined( __has_feature )
#if __has_feature( address_sanitizer ) || __has_feature( thread_sanitizer )
#define MIRROW_SANITIZED
#endif
#endif

namespace Mirrow {

std::pmr::memory_resource& slab() {
#ifdef MIRROW_SANITIZED
    // Blocks of their own, so that the sanitizer sees each one's life.
    return *std::pmr::new_delete_resource();
#else
    static auto& pool = *new std::pmr::synchronized_pool_resource;
    return pool;
#endif
}

} // namespace Mirrow
