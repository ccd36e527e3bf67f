#include "inspect/model/HandleOwners.h"

#include "inspect/model/HandleUses.h"

#include <iterator>

namespace Bfri {

HandleOwners::HandleOwners( BfResourceInfo::BfResourceParser const& parser, RecordKind const* only ) {
    bool const isOfAll = !only || only->kind == Kind::handles;
    eachHandleUse( parser, [ & ]( HandleUse const& bearer ) {
        bool const isAsked = isOfAll || bearer.kind == only->kind;
        if( !isAsked || bearer.owner != bearer.name )
            return;
        bool const isAction = bearer.kind == Kind::actions;
        String const name = String( bearer.name ) + ( isAction ? " of " + String( bearer.table ) : String() );
        names_[ bearer.handle ].insert( name );
        handles_[ name ].insert( bearer.handle );
    } );
}

std::set<String> const& HandleOwners::namesOf( U32 handle ) const {
    static std::set<String> const none;
    auto const found = names_.find( handle );
    return found == names_.end() ? none : found->second;
}

std::vector<SharedHandle> HandleOwners::sharedSince( HandleOwners const& old ) const {
    std::vector<SharedHandle> shared;
    for( auto const& [ handle, names ] : names_ ) {
        if( names.size() > 1 && !old.areTogether( names ) )
            shared.push_back( { handle, names } );
    }
    return shared;
}

bool HandleOwners::takesOver( U32 handle, HandleOwners const& old, U32 oldHandle ) const {
    auto const& before = old.namesOf( oldHandle );
    auto const& after = namesOf( handle );
    return before.size() == after.size() &&
           std::all_of( before.begin(), before.end(), [ & ]( String const& name ) {
               return after.count( name ) > 0 || handles_.count( name ) == 0;
           } );
}

/// Whether those of the names that are known here share a handle, with as many as there are in all: one of
/// them may have had another name.
bool HandleOwners::areTogether( std::set<String> const& names ) const {
    std::set<U32> common;
    bool isFirst = true;
    for( String const& name : names ) {
        auto const known = handles_.find( name );
        if( known == handles_.end() )
            continue;
        std::set<U32> both;
        std::set_intersection( common.begin(), common.end(), known->second.begin(), known->second.end(),
                               std::inserter( both, both.end() ) );
        common = std::exchange( isFirst, false ) ? known->second : both;
    }
    return std::any_of( common.begin(), common.end(),
                        [ & ]( U32 handle ) { return names_.at( handle ).size() >= names.size(); } );
}

} // namespace Bfri
