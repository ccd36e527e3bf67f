#include "resourceinfo/model/FieldIds.h"

#include "resourceinfo/model/TypeModules.h"

namespace BfResourceInfo {

ZEL_BYTE_ENUM_DEFINE( BfResourceFieldId, interfaceTypeModule().typeId( bfResourceFieldIdType ) )
ZEL_BYTE_ENUM_DEFINE( BfTableFieldId, interfaceTypeModule().typeId( bfTableFieldIdType ) )
ZEL_BYTE_ENUM_DEFINE( BfTableStringId, interfaceTypeModule().typeId( bfTableStringIdType ) )
ZEL_BYTE_ENUM_DEFINE( BfCounterFieldId, interfaceTypeModule().typeId( bfCounterFieldIdType ) )
ZEL_BYTE_ENUM_DEFINE( BfMeterFieldId, interfaceTypeModule().typeId( bfMeterFieldIdType ) )
ZEL_BYTE_ENUM_DEFINE( BfWredFieldId, interfaceTypeModule().typeId( bfWredFieldIdType ) )

} // namespace BfResourceInfo
