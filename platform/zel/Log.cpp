#include "zel/Log.h"

#include <map>
#include <mutex>

namespace Zel {

namespace {

struct Registry {
    std::mutex mutex;
    std::map<String, LogHandle> handles;
};

Registry& registry() {
    static auto& instance = *new Registry; // never destroyed: handles live as long as the process
    return instance;
}

} // namespace

LogHandle const& logHandleIs( LogHandle handle ) {
    std::lock_guard const lock( registry().mutex );
    String const name = handle.name;
    return registry().handles.insert_or_assign( name, std::move( handle ) ).first->second;
}

LogHandle const* logHandle( String const& name ) {
    std::lock_guard const lock( registry().mutex );
    auto const found = registry().handles.find( name );
    return found == registry().handles.end() ? nullptr : &found->second;
}

} // namespace Zel
