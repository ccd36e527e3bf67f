#include "zel/Log.h"

#include <deque>
#include <map>
#include <mutex>

namespace Zel {

namespace {

struct Registry {
    std::mutex mutex;
    std::deque<LogHandle> handles; // a deque: registered handles never move
    std::map<String, LogHandle const*> byName;
};

Registry& registry() {
    static auto& instance = *new Registry; // never destroyed: handles live as long as the process
    return instance;
}

} // namespace

LogHandle const& logHandleIs( LogHandle handle ) {
    std::lock_guard const lock( registry().mutex );
    LogHandle const& registered = registry().handles.emplace_back( std::move( handle ) );
    registry().byName[ registered.name ] = &registered;
    return registered;
}

LogHandle const* logHandle( String const& name ) {
    std::lock_guard const lock( registry().mutex );
    auto const found = registry().byName.find( name );
    return found == registry().byName.end() ? nullptr : found->second;
}

} // namespace Zel
