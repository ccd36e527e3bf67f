#pragma once

// Every field of every kind of record, with its meaning, in the order of the rows: `each` calls `field` with
// name, value and meaning. The bindings take a record apart as a whole: one that gains or loses a field does
// not compile here.

#include "inspect/model/Records.h"

#include <map>
#include <optional>

namespace Bfri::Fields {

// Meanings that fields of several kinds share.

constexpr char const* ofName = "name in the P4 program";
constexpr char const* ofHandle = "handle; with a runtime_config, the pipe is in its upper 4 bits";
constexpr char const* ofSize = "entries that it holds";
constexpr char const* ofFirstStage = "stage of its first stage table, from 0";
constexpr char const* ofTableHandle = "its table's handle if direct, else its own";
constexpr char const* ofDirect = "whether each entry of its table has its own";
constexpr char const* ofLogicalPipe = "logical pipe, such as a or b, if the context file states it";
constexpr char const* ofParent = "table that it belongs to, if the model knows just one";
constexpr char const* ofSeveralParents = "whether actions of several tables name it";
constexpr char const* ofOwner = "the table that references it, or whose actions name it";
constexpr char const* ofSeveralOwners = "whether there are several such tables";

template<class Visit>
void each( BfTableInfo const& record, Visit const& field ) {
    auto const& [ name, handle, size, totalEntries, hitBitSupported, idleTimePrecision, hitBitSmashOffset,
                  hitBitSmashLast, maxEntries, maxPartitions, maxPrios, hasActionProfile, maxAdtEntries,
                  maxSelGroups, maxSelEntries, adtHandle, selHandle, adtName, selName, logicalPipe ] = record;
    field( "name", name, ofName );
    field( "handle", Hex( handle ), ofHandle );
    field( "size", size, ofSize );
    field( "totalEntries", totalEntries, "entries that its hit-bit range is sized for" );
    field( "hitBitSupported", hitBitSupported, "whether its entries have hit bits, for idle time" );
    field( "idleTimePrecision", idleTimePrecision,
           "bits of idle time that an entry has; 0 without hit bits" );
    field( "hitBitSmashOffset", hitBitSmashOffset, "first slot in the hit-bit space; 0 without hit bits" );
    field( "hitBitSmashLast", hitBitSmashLast, "last slot in it; 0 without hit bits" );
    field( "maxEntries", maxEntries, "the same as size" );
    field( "maxPartitions", maxPartitions, "partitions of an algorithmic TCAM, else 0" );
    field( "maxPrios", maxPrios, "priorities of entries, always 255" );
    field( "hasActionProfile", hasActionProfile, "whether it has an action profile" );
    field( "maxAdtEntries", maxAdtEntries, "entries of its indirect action-data table; 0 without one" );
    field( "maxSelGroups", maxSelGroups, "2 with a selection table, else 0" );
    field( "maxSelEntries", maxSelEntries, "entries of its selection table; 0 without one" );
    field( "adtHandle", Hex( adtHandle ), "handle of its indirect action-data table; 0 without one" );
    field( "selHandle", Hex( selHandle ), "handle of its selection table; 0 without one" );
    field( "adtName", adtName, "name of its indirect action-data table" );
    field( "selName", selName, "name of its selection table" );
    field( "logicalPipe", logicalPipe, ofLogicalPipe );
}

/// With the type in words, which the record has as a number alone.
template<class Visit>
void each( BfResource const& record, Visit const& field ) {
    auto const& [ name, handle, type, size, ingress, stages, stageStart ] = record;
    field( "name", name, ofName );
    field( "handle", Hex( handle ), ofHandle );
    field( "type", type, "what it is for; in JSON and CSV a number" );
    field( "typeName", typeNameOf( record ), "the type in words, as in the context file" );
    field( "size", size, ofSize );
    field( "ingress", ingress, "its direction; in JSON and CSV whether it is ingress" );
    field( "stages", stages, "number of its stage tables, over all units" );
    field( "stageStart", stageStart, ofFirstStage );
}

template<class Visit>
void each( BfTableCounterInfo const& record, Visit const& field ) {
    auto const& [ name, handle, ownHandle, size, direct, bytes, packets, associatedTable, logicalPipe ] =
        record;
    field( "name", name, ofName );
    field( "handle", Hex( handle ), ofTableHandle );
    field( "ownHandle", Hex( ownHandle ), "its own handle, direct or not" );
    field( "size", size, ofSize );
    field( "direct", direct, ofDirect );
    field( "bytes", bytes, "whether it counts bytes" );
    field( "packets", packets, "whether it counts packets" );
    field( "associatedTable", associatedTable, ofParent );
    field( "logicalPipe", logicalPipe, ofLogicalPipe );
}

template<class Visit>
void each( BfTableMeterInfo const& record, Visit const& field ) {
    auto const& [ name, handle, direct, pps, hasPreColor, associatedTable, logicalPipe ] = record;
    field( "name", name, ofName );
    field( "handle", Hex( handle ), ofTableHandle );
    field( "direct", direct, ofDirect );
    field( "pps", pps, "whether it meters packets per second, not bytes" );
    field( "hasPreColor", hasPreColor, "whether packets arrive pre-coloured" );
    field( "associatedTable", associatedTable, ofParent );
    field( "logicalPipe", logicalPipe, ofLogicalPipe );
}

template<class Visit>
void each( BfTableWredInfo const& record, Visit const& field ) {
    auto const& [ name, handle, direct, logicalPipe ] = record;
    field( "name", name, ofName );
    field( "handle", Hex( handle ), ofTableHandle );
    field( "direct", direct, ofDirect );
    field( "logicalPipe", logicalPipe, ofLogicalPipe );
}

template<class Visit>
void each( BfRegisterInfo const& record, Visit const& field ) {
    auto const& [ name, handle, indirect, dataType, width, dualWidth ] = record;
    field( "name", name, ofName );
    field( "handle", Hex( handle ), ofTableHandle );
    field( "indirect", indirect, "whether tables reach it by an index, not entry by entry" );
    field( "dataType", dataType, "C type of a cell; *uint8 (bytes) if the ALU is wider than 32 bits" );
    field( "width", width, "bits that its ALU works on" );
    field( "dualWidth", dualWidth, "whether a cell is a pair of such values" );
}

template<class Visit>
void each( BfLearnQuantaInfo const& record, Visit const& field ) {
    auto const& [ name, handle ] = record;
    field( "name", name, ofName );
    field( "handle", Hex( handle ), ofHandle );
}

template<class Visit>
void each( BfActionInfo const& record, Visit const& field ) {
    auto const& [ handle, name, tableName ] = record;
    field( "handle", Hex( handle ), ofHandle );
    field( "name", name, ofName );
    field( "tableName", tableName, "name of the table that it belongs to" );
}

template<class Visit>
void each( BfDynamicHashInfo const& record, Visit const& field ) {
    auto const& [ tableHdl, fieldListHdl, fieldCount, fieldNames ] = record;
    field( "tableHdl", Hex( tableHdl ), ofHandle );
    field( "fieldListHdl", Hex( fieldListHdl ), "handle of its list of fields" );
    field( "fieldCount", fieldCount, "number of its fields" );
    field( "fieldNames", fieldNames, "their names, in the order of the hash's input" );
}

template<class Visit>
void each( BfZelResource const& record, Visit const& field ) {
    field( "handle", Hex( record.handle ), ofHandle );
    field( "name", record.name, ofName );
    field( "size", record.size, ofSize );
    field( "stageStart", U32{ record.stageStart }, ofFirstStage );
    field( "statReferences", record.statReferences(), "handles of the counters that it references" );
    field( "meterReferences", record.meterReferences(), "handles of its meters and WRED tables" );
    field( "statefulReferences", record.statefulReferences(), "handles of its registers" );
}

// What the model keeps by name.

template<class Visit>
void each( std::pair<String const, BfHeaderInfo> const& entry, Visit const& field ) {
    field( "name", entry.first, ofName );
    field( "size", U32{ entry.second.size() }, "bytes of all its fields" );
}

template<class Visit>
void each( std::pair<String const, BfDynamicHashInfo> const& entry, Visit const& field ) {
    field( "name", entry.first, ofName );
    each( entry.second, field );
}

/// Bytes that a field takes in the PHV.
struct PhvBytes {
    std::optional<U32> ingress = {};
    std::optional<U32> egress = {};
};

template<class Visit>
void each( std::pair<String const, PhvBytes> const& entry, Visit const& field ) {
    field( "name", entry.first, "name of the field" );
    field( "ingressBytes", entry.second.ingress,
           "bytes that it takes in ingress; absent if it has no place there" );
    field( "egressBytes", entry.second.egress, "the same in egress" );
}

// How values of fields become values of a row.

template<class Plain>
Value valueFrom( Plain const& value ) {
    return value;
}

inline Value valueFrom( std::optional<U32> number ) { return number ? Value( *number ) : Value(); }

/// A table, if there is one.
inline Value valueFrom( std::string_view name ) { return textOrNone( name ); }

inline Value valueFrom( Vessa::Queue<U32> const& handles ) {
    return listOf( handles, []( U32 handle ) { return Hex( handle ); } );
}

inline Value valueFrom( std::vector<String> const& names ) { return listOf( names ); }

/// The fields that a function tells, as a row with room for more.
template<class Tell>
Row rowFrom( Tell const& tell, std::size_t room ) {
    std::size_t count = room;
    tell( [ & ]( auto const&... ) { ++count; } );
    Row row;
    row.reserve( count );
    tell( [ & ]( char const* name, auto const& value, char const* ) {
        row.push_back( { name, valueFrom( value ) } );
    } );
    return row;
}

} // namespace Bfri::Fields
