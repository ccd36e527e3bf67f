#include "inspect/model/Records.h"

#include <iterator>

namespace Bfri {

namespace {

Value handles( Vessa::Queue<U32> const& queue ) {
    return listOf( queue, []( U32 handle ) { return Hex( handle ); } );
}

/// The type of a resource, as the context file spells it; for an unknown type, its number.
String typeName( U32 number ) {
    for( auto const& [ type, text ] : bfResourceTypeTexts ) {
        if( static_cast<U32>( type ) == number )
            return String( text );
    }
    return std::to_string( number );
}

/// The fields as a row, with room for those that some kinds add. A list in braces would be copied.
template<std::size_t count>
Row moved( Field ( &&fields )[ count ] ) {
    constexpr std::size_t added = 3;
    Row row;
    row.reserve( count + added );
    row.insert( row.end(), std::make_move_iterator( std::begin( fields ) ),
                std::make_move_iterator( std::end( fields ) ) );
    return row;
}

} // namespace

// The bindings take each record apart as a whole: one that gains or loses a field does not compile here.

Row rowOf( BfResource const& record ) {
    auto const& [ name, handle, type, size, ingress, stages, stageStart ] = record;
    return moved( { { "name", name },
                    { "handle", Hex( handle ) },
                    { "type", type },
                    { "size", size },
                    { "ingress", ingress },
                    { "stages", stages },
                    { "stageStart", stageStart } } );
}

Row rowOf( BfTableInfo const& record ) {
    auto const& [ name, handle, size, totalEntries, hitBitSupported, idleTimePrecision, hitBitSmashOffset,
                  hitBitSmashLast, maxEntries, maxPartitions, maxPrios, hasActionProfile, maxAdtEntries,
                  maxSelGroups, maxSelEntries, adtHandle, selHandle, adtName, selName, logicalPipe ] = record;
    return moved( { { "name", name },
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
                    { "logicalPipe", logicalPipe } } );
}

Row rowOf( BfTableCounterInfo const& record ) {
    auto const& [ name, handle, ownHandle, size, direct, bytes, packets, associatedTable, logicalPipe ] =
        record;
    return moved( { { "name", name },
                    { "handle", Hex( handle ) },
                    { "ownHandle", Hex( ownHandle ) },
                    { "size", size },
                    { "direct", direct },
                    { "bytes", bytes },
                    { "packets", packets },
                    { "associatedTable", associatedTable },
                    { "logicalPipe", logicalPipe } } );
}

Row rowOf( BfTableMeterInfo const& record ) {
    auto const& [ name, handle, direct, pps, hasPreColor, associatedTable, logicalPipe ] = record;
    return moved( { { "name", name },
                    { "handle", Hex( handle ) },
                    { "direct", direct },
                    { "pps", pps },
                    { "hasPreColor", hasPreColor },
                    { "associatedTable", associatedTable },
                    { "logicalPipe", logicalPipe } } );
}

Row rowOf( BfTableWredInfo const& record ) {
    auto const& [ name, handle, direct, logicalPipe ] = record;
    return {
        { "name", name }, { "handle", Hex( handle ) }, { "direct", direct }, { "logicalPipe", logicalPipe } };
}

Row rowOf( BfRegisterInfo const& record ) {
    auto const& [ name, handle, indirect, dataType, width, dualWidth ] = record;
    return moved( { { "name", name },
                    { "handle", Hex( handle ) },
                    { "indirect", indirect },
                    { "dataType", dataType },
                    { "width", width },
                    { "dualWidth", dualWidth } } );
}

Row rowOf( BfLearnQuantaInfo const& record ) {
    auto const& [ name, handle ] = record;
    return moved( { { "name", name }, { "handle", Hex( handle ) } } );
}

Row rowOf( BfActionInfo const& record ) {
    auto const& [ handle, name, tableName ] = record;
    return moved( { { "handle", Hex( handle ) }, { "name", name }, { "tableName", tableName } } );
}

Row rowOf( BfDynamicHashInfo const& record ) {
    auto const& [ tableHdl, fieldListHdl, fieldCount, fieldNames ] = record;
    return moved( { { "tableHdl", Hex( tableHdl ) },
                    { "fieldListHdl", Hex( fieldListHdl ) },
                    { "fieldCount", fieldCount },
                    { "fieldNames", listOf( fieldNames, []( String const& name ) { return name; } ) } } );
}

Row rowOf( BfZelResource const& record ) {
    return moved( { { "handle", Hex( record.handle ) },
                    { "name", record.name },
                    { "size", record.size },
                    { "stageStart", U32{ record.stageStart } },
                    { "statReferences", handles( record.statReferences() ) },
                    { "meterReferences", handles( record.meterReferences() ) },
                    { "statefulReferences", handles( record.statefulReferences() ) } } );
}

String typeNameOf( BfResource const& record ) { return typeName( record.type ); }

Row withTypeName( Row row ) {
    auto const type =
        std::find_if( row.begin(), row.end(), []( Field const& field ) { return field.name == "type"; } );
    Value name = typeName( std::get<U32>( type->value.is ) );
    row.insert( type + 1, { "typeName", std::move( name ) } );
    return row;
}

List pipesOf( U32 mask ) {
    List pipes;
    for( U32 pipe = 0; pipe < 32; ++pipe ) {
        if( mask >> pipe & 1 )
            pipes.push_back( pipe );
    }
    return pipes;
}

} // namespace Bfri
