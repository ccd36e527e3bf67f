#include "resourceinfo/Queries.h"

namespace BfResourceInfo {

U32 BfResourceInfoIntf::bfRegistersNum() const { return queried()->bfRegisterInfos().size(); }

U32 BfResourceInfoIntf::bfRegisterIndex( String const& reg ) const {
    return indexOf( queried()->bfRegisterInfos(), reg );
}

BfRegisterInfo BfResourceInfoIntf::bfRegister( U32 index ) const {
    auto const parser = queried();
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid );
    auto const bfRegistersNum = sizeOf( parser->bfRegisterInfos() );
    ZEL_ASSERT( index < bfRegistersNum() );
    return parser->bfRegisterInfos().at( index );
}

U32 BfResourceInfoIntf::bfLearnQuantasNum() const { return queried()->bfLearnQuantaInfos().size(); }

U32 BfResourceInfoIntf::bfLearnQuantaIndex( String const& lq ) const {
    return indexOf( queried()->bfLearnQuantaInfos(), lq );
}

BfLearnQuantaInfo BfResourceInfoIntf::bfLearnQuanta( U32 index ) const {
    auto const parser = queried();
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid );
    auto const bfLearnQuantasNum = sizeOf( parser->bfLearnQuantaInfos() );
    ZEL_ASSERT( index < bfLearnQuantasNum() );
    return parser->bfLearnQuantaInfos().at( index );
}

U32 BfResourceInfoIntf::bfActionsNum() const { return queried()->bfActions().size(); }

U32 BfResourceInfoIntf::bfActionIndex( String const& action ) const {
    return indexOf( queried()->bfActions(), action );
}

BfActionInfo BfResourceInfoIntf::bfAction( U32 index ) const {
    auto const parser = queried();
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid );
    auto const bfActionsNum = sizeOf( parser->bfActions() );
    ZEL_ASSERT( index < bfActionsNum() );
    return parser->bfActions().at( index );
}

} // namespace BfResourceInfo
