#include "zel/Type.h"

#include "zel/Ptr.h"

#include <deque>
#include <mutex>
#include <stdexcept>

namespace Zel {

namespace {

struct Registry {
    std::mutex mutex;
    std::deque<TypeModule> modules; // a deque: registered modules never move
};

Registry& registry() {
    static auto& instance = *new Registry; // never destroyed: identities stay valid to the very end
    return instance;
}

} // namespace

TypeModule::TypeModule( String name, std::vector<TypeInfo> types )
    : name_( std::move( name ) ), types_( std::move( types ) ) {}

TypeModule const& typeModuleIs( String name, std::vector<TypeInfo> types ) {
    std::lock_guard const lock( registry().mutex );
    return registry().modules.emplace_back( std::move( name ), std::move( types ) );
}

std::vector<TypeModule const*> typeModules() {
    std::lock_guard const lock( registry().mutex );
    std::vector<TypeModule const*> result;
    for( TypeModule const& module : registry().modules )
        result.push_back( &module );
    return result;
}

TypeInfo const& typeInfo( TypeId type ) { return type.module->types().at( type.index ); }

Ptr<PtrInterface> construct( TypeId type, std::span<String const> arguments ) {
    TypeInfo const& info = typeInfo( type );
    if( !info.construct )
        throw std::invalid_argument( info.name + " cannot be constructed from arguments" );
    if( arguments.size() != info.constructArguments )
        throw std::invalid_argument( info.name + " takes " + std::to_string( info.constructArguments ) +
                                     " argument(s), got " + std::to_string( arguments.size() ) );
    return info.construct( arguments );
}

} // namespace Zel
