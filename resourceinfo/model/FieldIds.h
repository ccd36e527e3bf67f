#pragma once

// The field identifiers: each names one field of a record for the field queries. The numbers are part of the
// interface; the record field is the identifier without its prefix, first letter in lower case. Each
// enumeration has the six functions of ZEL_BYTE_ENUM.

#include "resourceinfo/Export.h"
#include "resourceinfo/model/Types.h"
#include "zel/ByteEnum.h"

namespace BfResourceInfo {

/// Fields of a BfResource.
enum BfResourceFieldId : U8 {
    resourceHandle,
    resourceType,
    resourceSize,
    resourceIngress,
    resourceStages,
    resourceStageStart, ///< not served by bfResourceField; see bfResourceStageStart
};

/// Numeric and boolean fields of a BfTableInfo.
enum BfTableFieldId : U8 {
    tableHandle,
    tableSize,
    tableHitBitSupported,
    tableIdleTimePrecision,
    tableHitBitSmashOffset,
    tableMaxEntries,
    tableMaxPartitions,
    tableMaxPrios,
    tableHasActionProfile,
    tableMaxAdtEntries,
    tableMaxSelGroups,
    tableMaxSelEntries,
    tableAdtHandle,
    tableSelHandle,
};

/// Text fields of a BfTableInfo.
enum BfTableStringId : U8 {
    tableAdtName,
    tableSelName,
    tableLogicalPipe,
};

/// Fields of a BfTableCounterInfo.
enum BfCounterFieldId : U8 {
    counterHandle,
    counterSize,
    counterDirect,
    counterBytes,
    counterPackets,
};

/// Fields of a BfTableMeterInfo.
enum BfMeterFieldId : U8 {
    meterHandle,
    meterDirect,
    meterPps,
    meterHasPreColor,
};

/// Fields of a BfTableWredInfo.
enum BfWredFieldId : U8 {
    wredHandle,
    wredDirect,
};

ZEL_BYTE_ENUM( BFRESOURCEINFO_EXPORT, BfResourceFieldId )
ZEL_BYTE_ENUM( BFRESOURCEINFO_EXPORT, BfTableFieldId )
ZEL_BYTE_ENUM( BFRESOURCEINFO_EXPORT, BfTableStringId )
ZEL_BYTE_ENUM( BFRESOURCEINFO_EXPORT, BfCounterFieldId )
ZEL_BYTE_ENUM( BFRESOURCEINFO_EXPORT, BfMeterFieldId )
ZEL_BYTE_ENUM( BFRESOURCEINFO_EXPORT, BfWredFieldId )

} // namespace BfResourceInfo
