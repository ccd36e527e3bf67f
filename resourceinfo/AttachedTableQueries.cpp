#include "resourceinfo/Queries.h"

namespace BfResourceInfo {

U32 BfResourceInfoIntf::bfTableCountersNum() const { return queried()->bfCounters().size(); }

U32 BfResourceInfoIntf::bfTableCounterIndex( String const& counter ) const {
    return indexOf( queried()->bfCounters(), counter );
}

BfTableCounterInfo BfResourceInfoIntf::bfTableCounter( U32 index ) const {
    auto const parser = queried();
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid );
    auto const bfTableCountersNum = sizeOf( parser->bfCounters() );
    ZEL_ASSERT( index < bfTableCountersNum() );
    return parser->bfCounters().at( index );
}

U32 BfResourceInfoIntf::bfTableCounterField( String const& counter, BfCounterFieldId f ) const {
    auto const parser = queried();
    U32 const index = indexOf( parser->bfCounters(), counter );
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid ) << "no counter " << counter;
    auto const bfTableCountersNum = sizeOf( parser->bfCounters() );
    ZEL_ASSERT( index < bfTableCountersNum() );
    BfTableCounterInfo const& record = parser->bfCounters().at( index );
    switch( f ) {
    case counterHandle:
        return record.handle;
    case counterSize:
        return record.size;
    case counterDirect:
        return record.direct;
    case counterBytes:
        return record.bytes;
    case counterPackets:
        return record.packets;
    }
    ZEL_ASSERT( 0 ) << "no field " << unsigned{ f };
}

U32 BfResourceInfoIntf::bfTableMetersNum() const { return queried()->bfMeters().size(); }

U32 BfResourceInfoIntf::bfTableMeterIndex( String const& meter ) const {
    return indexOf( queried()->bfMeters(), meter );
}

BfTableMeterInfo BfResourceInfoIntf::bfTableMeter( U32 index ) const {
    auto const parser = queried();
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid );
    auto const bfTableMetersNum = sizeOf( parser->bfMeters() );
    ZEL_ASSERT( index < bfTableMetersNum() );
    return parser->bfMeters().at( index );
}

U32 BfResourceInfoIntf::bfTableMeterField( String const& meter, BfMeterFieldId f ) const {
    auto const parser = queried();
    U32 const index = indexOf( parser->bfMeters(), meter );
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid ) << "no meter " << meter;
    auto const bfTableMetersNum = sizeOf( parser->bfMeters() );
    ZEL_ASSERT( index < bfTableMetersNum() );
    BfTableMeterInfo const& record = parser->bfMeters().at( index );
    switch( f ) {
    case meterHandle:
        return record.handle;
    case meterDirect:
        return record.direct;
    case meterPps:
        return record.pps;
    case meterHasPreColor:
        return record.hasPreColor;
    }
    ZEL_ASSERT( 0 ) << "no field " << unsigned{ f };
}

U32 BfResourceInfoIntf::bfTableWredNum() const { return queried()->bfWreds().size(); }

U32 BfResourceInfoIntf::bfTableWredIndex( String const& wred ) const {
    return indexOf( queried()->bfWreds(), wred );
}

BfTableWredInfo BfResourceInfoIntf::bfTableWred( U32 index ) const {
    auto const parser = queried();
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid );
    auto const bfTableWredNum = sizeOf( parser->bfWreds() );
    ZEL_ASSERT( index < bfTableWredNum() );
    return parser->bfWreds().at( index );
}

U32 BfResourceInfoIntf::bfTableWredField( String const& wred, BfWredFieldId f ) const {
    auto const parser = queried();
    U32 const index = indexOf( parser->bfWreds(), wred );
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid ) << "no WRED table " << wred;
    auto const bfTableWredNum = sizeOf( parser->bfWreds() );
    ZEL_ASSERT( index < bfTableWredNum() );
    BfTableWredInfo const& record = parser->bfWreds().at( index );
    switch( f ) {
    case wredHandle:
        return record.handle;
    case wredDirect:
        return record.direct;
    }
    ZEL_ASSERT( 0 ) << "no field " << unsigned{ f };
}

String BfResourceInfoIntf::bfAssociatedTable( String const& table ) {
    auto const parser = queried();
    U32 const meter = indexOf( parser->bfMeters(), table );
    if( meter != BfResourceInfoIndexInvalid )
        return parser->bfMeters().at( meter ).associatedTable;
    U32 const counter = indexOf( parser->bfCounters(), table );
    if( counter != BfResourceInfoIndexInvalid )
        return parser->bfCounters().at( counter ).associatedTable;
    ZEL_ASSERT( false && "check table name" ) << "no meter or counter " << table;
}

} // namespace BfResourceInfo
