#include "resourceinfo/Queries.h"

namespace BfResourceInfo {

U32 BfResourceInfoIntf::bfTablesNum() const { return queried()->bfTables().size(); }

U32 BfResourceInfoIntf::bfTablesHitBitSmashSize() const { return queried()->hitBitSmashEntries(); }

U32 BfResourceInfoIntf::bfTableIndex( String const& tbl ) const {
    return indexOf( queried()->bfTables(), tbl );
}

BfTableInfo BfResourceInfoIntf::bfTable( U32 index ) const { return queried()->bfTables().at( index ); }

U32 BfResourceInfoIntf::bfTableField( String const& tbl, BfTableFieldId f ) const {
    auto const parser = queried();
    U32 const index = indexOf( parser->bfTables(), tbl );
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid ) << "no table " << tbl;
    auto const bfTablesNum = sizeOf( parser->bfTables() );
    ZEL_ASSERT( index < bfTablesNum() );
    BfTableInfo const& record = parser->bfTables().at( index );
    switch( f ) {
    case tableHandle:
        return record.handle;
    case tableSize:
        return record.size;
    case tableHitBitSupported:
        return record.hitBitSupported;
    case tableIdleTimePrecision:
        return record.idleTimePrecision;
    case tableHitBitSmashOffset:
        return record.hitBitSmashOffset;
    case tableMaxEntries:
        return record.maxEntries;
    case tableMaxPartitions:
        return record.maxPartitions;
    case tableMaxPrios:
        return record.maxPrios;
    case tableHasActionProfile:
        return record.hasActionProfile;
    case tableMaxAdtEntries:
        return record.maxAdtEntries;
    case tableMaxSelGroups:
        return record.maxSelGroups;
    case tableMaxSelEntries:
        return record.maxSelEntries;
    case tableAdtHandle:
        return record.adtHandle;
    case tableSelHandle:
        return record.selHandle;
    }
    ZEL_ASSERT( 0 ) << "no field " << unsigned{ f };
}

String BfResourceInfoIntf::bfTableString( String const& tbl, BfTableStringId f ) const {
    auto const parser = queried();
    U32 const index = indexOf( parser->bfTables(), tbl );
    ZEL_ASSERT( index != BfResourceInfoIndexInvalid ) << "no table " << tbl;
    auto const bfTablesNum = sizeOf( parser->bfTables() );
    ZEL_ASSERT( index < bfTablesNum() );
    BfTableInfo const& record = parser->bfTables().at( index );
    switch( f ) {
    case tableAdtName:
        return record.adtName;
    case tableSelName:
        return record.selName;
    case tableLogicalPipe:
        return record.logicalPipe;
    }
    ZEL_ASSERT( 0 ) << "no field " << unsigned{ f };
}

BfTableInfo BfResourceInfoIntf::bfTableByHandle( U32 handle ) const {
    auto const parser = queried();
    if( BfTableInfo const* const record = recordByHandle( parser->bfTables(), handle ) )
        return *record;
    ZEL_ASSERT( 0 ) << "no table with handle " << handle;
}

String BfResourceInfoIntf::bfTableName( U32 index ) const { return queried()->bfTables().at( index ).name; }

} // namespace BfResourceInfo
