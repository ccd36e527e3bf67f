#include "resourceinfo/parser/ResourceHandles.h"

namespace BfResourceInfo {

namespace {

struct ReferenceKind {
    std::string_view name;
    Vessa::Queue<U32> const& ( BfZelResource::*queue )() const;
};

constexpr std::array<ReferenceKind, 3> referenceKinds{ {
    { "statistics_table_refs", &BfZelResource::statReferences },
    { "meter_table_refs", &BfZelResource::meterReferences },
    { "stateful_table_refs", &BfZelResource::statefulReferences },
} };

} // namespace

std::optional<U32> ResourceHandles::referrer( std::string_view referenceKind, U32 reference ) const {
    for( std::size_t kind = 0; kind < referenceKinds.size(); ++kind ) {
        if( referenceKinds[ kind ].name != referenceKind )
            continue;
        auto const found = referrers_[ kind ].find( reference );
        if( found != referrers_[ kind ].end() )
            return *found->second.begin();
    }
    return std::nullopt;
}

void ResourceHandles::is( U32 handle, BfZelResource resource ) {
    removeReferences( handle );
    addReferences( handle, resource );
    resources_.is( handle, std::move( resource ) );
}

BfZelResource ResourceHandles::del( U32 handle ) {
    removeReferences( handle );
    return resources_.del( handle );
}

void ResourceHandles::delAll() {
    for( Referrers& referrers : referrers_ )
        referrers.clear();
    resources_.delAll();
}

void ResourceHandles::addReferences( U32 handle, BfZelResource const& resource ) {
    for( std::size_t kind = 0; kind < referenceKinds.size(); ++kind ) {
        for( U32 const reference : ( resource.*referenceKinds[ kind ].queue )() )
            referrers_[ kind ][ reference ].insert( handle );
    }
}

void ResourceHandles::removeReferences( U32 handle ) {
    BfZelResource const* const resource = resources_.find( handle );
    if( !resource )
        return;
    for( std::size_t kind = 0; kind < referenceKinds.size(); ++kind ) {
        for( U32 const reference : ( resource->*referenceKinds[ kind ].queue )() ) {
            auto const found = referrers_[ kind ].find( reference );
            if( found == referrers_[ kind ].end() )
                continue; // listed twice, gone with the first
            found->second.erase( handle );
            if( found->second.empty() )
                referrers_[ kind ].erase( found );
        }
    }
}

} // namespace BfResourceInfo
