#include "cli/Records.h"

namespace Bfri {

namespace {

Value handles( Vessa::Queue<U32> const& queue ) {
    return listOf( queue, []( U32 handle ) { return Hex( handle ); } );
}

void makeAbsent( Row& row, std::initializer_list<std::string_view> names ) {
    for( Field& field : row ) {
        if( std::find( names.begin(), names.end(), field.name ) != names.end() )
            field.value = {};
    }
}

} // namespace

// The bindings take each record apart as a whole: one that gains or loses a field does not compile here.

Row rowOf( BfResource const& record ) {
    auto const& [ name, handle, type, size, ingress, stages, stageStart ] = record;
    return { { "name", name },
             { "handle", Hex( handle ) },
             { "type", type },
             { "size", size },
             { "ingress", ingress },
             { "stages", stages },
             { "stageStart", stageStart } };
}

Row rowOf( BfTableInfo const& record ) {
    auto const& [ name, handle, size, totalEntries, hitBitSupported, idleTimePrecision, hitBitSmashOffset,
                  hitBitSmashLast, maxEntries, maxPartitions, maxPrios, hasActionProfile, maxAdtEntries,
                  maxSelGroups, maxSelEntries, adtHandle, selHandle, adtName, selName, logicalPipe ] = record;
    return { { "name", name },
             { "handle", Hex( handle ) },
             { "size", size },
             { "totalEntries", totalEntries },
             { "hitBitSupported", hitBitSupported },
             { "idleTimePrecision", idleTimePrecision },
             { "hitBitSmashOffset", hitBitSmashOffset },
             { "hitBitSmashLast", hitBitSmashLast },
             { "maxEntries", maxEntries },
             { "maxPartitions", maxPartitions },
             { "maxPrios", maxPrios },
             { "hasActionProfile", hasActionProfile },
             { "maxAdtEntries", maxAdtEntries },
             { "maxSelGroups", maxSelGroups },
             { "maxSelEntries", maxSelEntries },
             { "adtHandle", Hex( adtHandle ) },
             { "selHandle", Hex( selHandle ) },
             { "adtName", adtName },
             { "selName", selName },
             { "logicalPipe", logicalPipe } };
}

Row rowOf( BfTableCounterInfo const& record ) {
    auto const& [ name, handle, ownHandle, size, direct, bytes, packets, associatedTable, logicalPipe ] =
        record;
    return { { "name", name },
             { "handle", Hex( handle ) },
             { "ownHandle", Hex( ownHandle ) },
             { "size", size },
             { "direct", direct },
             { "bytes", bytes },
             { "packets", packets },
             { "associatedTable", associatedTable },
             { "logicalPipe", logicalPipe } };
}

Row rowOf( BfTableMeterInfo const& record ) {
    auto const& [ name, handle, direct, pps, hasPreColor, associatedTable, logicalPipe ] = record;
    return { { "name", name },
             { "handle", Hex( handle ) },
             { "direct", direct },
             { "pps", pps },
             { "hasPreColor", hasPreColor },
             { "associatedTable", associatedTable },
             { "logicalPipe", logicalPipe } };
}

Row rowOf( BfTableWredInfo const& record ) {
    auto const& [ name, handle, direct, logicalPipe ] = record;
    return {
        { "name", name }, { "handle", Hex( handle ) }, { "direct", direct }, { "logicalPipe", logicalPipe } };
}

Row rowOf( BfRegisterInfo const& record ) {
    auto const& [ name, handle, indirect, dataType, width, dualWidth ] = record;
    return { { "name", name },         { "handle", Hex( handle ) }, { "indirect", indirect },
             { "dataType", dataType }, { "width", width },          { "dualWidth", dualWidth } };
}

Row rowOf( BfLearnQuantaInfo const& record ) {
    auto const& [ name, handle ] = record;
    return { { "name", name }, { "handle", Hex( handle ) } };
}

Row rowOf( BfActionInfo const& record ) {
    auto const& [ handle, name, tableName ] = record;
    return { { "handle", Hex( handle ) }, { "name", name }, { "tableName", tableName } };
}

Row rowOf( BfDynamicHashInfo const& record ) {
    auto const& [ tableHdl, fieldListHdl, fieldCount, fieldNames ] = record;
    return { { "tableHdl", Hex( tableHdl ) },
             { "fieldListHdl", Hex( fieldListHdl ) },
             { "fieldCount", fieldCount },
             { "fieldNames", listOf( fieldNames, []( String const& name ) { return name; } ) } };
}

Row rowOf( BfZelResource const& record ) {
    return { { "handle", Hex( record.handle ) },
             { "name", record.name },
             { "size", record.size },
             { "stageStart", U32{ record.stageStart } },
             { "statReferences", handles( record.statReferences() ) },
             { "meterReferences", handles( record.meterReferences() ) },
             { "statefulReferences", handles( record.statefulReferences() ) } };
}

Row shownRow( BfTableInfo const& record ) {
    Row row = rowOf( record );
    if( !record.hitBitSupported )
        makeAbsent( row, { "idleTimePrecision", "hitBitSmashOffset", "hitBitSmashLast" } );
    if( record.adtHandle == 0 && record.adtName.empty() )
        makeAbsent( row, { "maxAdtEntries", "adtHandle", "adtName" } );
    if( record.maxSelGroups == 0 )
        makeAbsent( row, { "maxSelGroups", "maxSelEntries", "selHandle", "selName" } );
    if( record.logicalPipe.empty() )
        makeAbsent( row, { "logicalPipe" } );
    return row;
}

Value valueOf( Row const& row, std::string_view name ) {
    auto const found =
        std::find_if( row.begin(), row.end(), [ & ]( Field const& field ) { return field.name == name; } );
    return found == row.end() ? Value() : found->value;
}

} // namespace Bfri
