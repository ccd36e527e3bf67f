#include "resourceinfo/Queries.h"

namespace BfResourceInfo {

U32 BfResourceInfoIntf::bfResourcesNum() const { return queried()->bfResources().size(); }

U32 BfResourceInfoIntf::bfResourceIndex( String const& res ) const {
    return indexOf( queried()->bfResources(), res );
}

BfResource BfResourceInfoIntf::bfResource( U32 index ) const {
    auto const parser = queried();
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid );
    auto const bfResourcesNum = sizeOf( parser->bfResources() );
    ZEL_ASSERT( index < bfResourcesNum() );
    return parser->bfResources().at( index );
}

U32 BfResourceInfoIntf::bfResourceField( String const& res, BfResourceFieldId f ) const {
    auto const parser = queried();
    U32 const index = indexOf( parser->bfResources(), res );
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid ) << "no resource " << res;
    auto const bfResourcesNum = sizeOf( parser->bfResources() );
    ZEL_ASSERT( index < bfResourcesNum() );
    BfResource const& record = parser->bfResources().at( index );
    switch( f ) {
    case resourceHandle:
        return record.handle;
    case resourceType:
        return record.type;
    case resourceSize:
        return record.size;
    case resourceIngress:
        return record.ingress;
    case resourceStages:
        return record.stages;
    case resourceStageStart: // served by bfResourceStageStart alone
        break;
    }
    ZEL_ASSERT( 0 && "Unsupported field" ) << "field " << unsigned{ f };
}

int BfResourceInfoIntf::bfResourceStageStart( String const& res ) const {
    auto const parser = queried();
    U32 const index = indexOf( parser->bfResources(), res );
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid ) << "no resource " << res;
    auto const bfResourcesNum = sizeOf( parser->bfResources() );
    ZEL_ASSERT( index < bfResourcesNum() );
    return static_cast<int>( parser->bfResources().at( index ).stageStart );
}

BfResource BfResourceInfoIntf::bfResourceByHandle( U32 handle ) const {
    auto const parser = queried();
    if( BfResource const* const record = recordByHandle( parser->bfResources(), handle ) )
        return *record;
    ZEL_ASSERT( 0 ) << "no resource with handle " << handle;
}

} // namespace BfResourceInfo
