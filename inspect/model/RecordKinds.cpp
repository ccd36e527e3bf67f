#include "inspect/model/RecordKinds.h"

#include "inspect/model/KindRows.h"
#include "inspect/model/Records.h"

namespace Bfri {

namespace {

// Meanings that fields of several kinds share.

constexpr char const* ofName = "name in the P4 program";
constexpr char const* ofHandle = "handle; with a runtime_config, the pipe is in its upper 4 bits";
constexpr char const* ofTableHandle = "its table's handle if direct, else its own";
constexpr char const* ofDirect = "whether each entry of its table has its own";
constexpr char const* ofLogicalPipe = "logical pipe, such as a or b, if the context file states it";
constexpr char const* ofParent = "table that it belongs to, if the model knows just one";
constexpr char const* ofSeveralParents = "whether actions of several tables name it";
constexpr char const* ofOwner = "the table that references it, or whose actions name it";
constexpr char const* ofSeveralOwners = "whether there are several such tables";

// Match tables and what they take.

constexpr FieldInfo tableFields[] = {
    { "handle", ofHandle },
    { "size", "entries that it holds" },
    { "totalEntries", "entries that its hit-bit range is sized for" },
    { "idleTimePrecision", "bits of idle time that an entry has; 0 without hit bits" },
    { "hitBitSmashOffset", "first slot in the hit-bit space; 0 without hit bits" },
    { "hitBitSmashLast", "last slot in it; 0 without hit bits" },
    { "maxPartitions", "partitions of an algorithmic TCAM, else 0" },
    { "adtHandle", "handle of its indirect action-data table; 0 without one" },
    { "selHandle", "handle of its selection table; 0 without one" },
    { "logicalPipe", ofLogicalPipe },
    { "name", ofName },
    { "hitBitSupported", "whether its entries have hit bits, for idle time" },
    { "maxEntries", "the same as size" },
    { "maxPrios", "priorities of entries, always 255" },
    { "hasActionProfile", "whether it has an action profile" },
    { "maxAdtEntries", "entries of its indirect action-data table; 0 without one" },
    { "maxSelGroups", "2 with a selection table, else 0" },
    { "maxSelEntries", "entries of its selection table; 0 without one" },
    { "adtName", "name of its indirect action-data table" },
    { "selName", "name of its selection table" },
};

constexpr FieldInfo resourceFields[] = {
    { "handle", ofHandle },
    { "size", "entries that it holds" },
    { "type", "what it is for; in JSON and CSV a number" },
    { "ingress", "its direction; in JSON and CSV whether it is ingress" },
    { "stageStart", "stage of its first stage table, from 0" },
    { "stages", "number of its stage tables, over all units" },
    { "name", ofName },
    { "typeName", "the type in words, as in the context file" },
};

// What belongs to match tables. If something belongs to several tables, the model knows no parent.

constexpr FieldInfo counterFields[] = {
    { "handle", ofTableHandle },
    { "ownHandle", "its own handle, direct or not" },
    { "size", "entries that it holds" },
    { "direct", ofDirect },
    { "bytes", "whether it counts bytes" },
    { "packets", "whether it counts packets" },
    { "logicalPipe", ofLogicalPipe },
    { "name", ofName },
    { "associatedTable", ofParent },
    { "severalParents", ofSeveralParents },
};

constexpr FieldInfo meterFields[] = {
    { "handle", ofTableHandle },
    { "direct", ofDirect },
    { "pps", "whether it meters packets per second, not bytes" },
    { "hasPreColor", "whether packets arrive pre-coloured" },
    { "logicalPipe", ofLogicalPipe },
    { "name", ofName },
    { "associatedTable", ofParent },
    { "severalParents", ofSeveralParents },
};

constexpr FieldInfo wredFields[] = {
    { "handle", ofTableHandle }, { "direct", ofDirect }, { "logicalPipe", ofLogicalPipe },
    { "name", ofName },          { "parent", ofOwner },  { "severalParents", ofSeveralOwners },
};

constexpr FieldInfo registerFields[] = {
    { "handle", ofTableHandle },
    { "indirect", "whether tables reach it by an index, not entry by entry" },
    { "dataType", "C type of a cell; *uint8 (bytes) if the ALU is wider than 32 bits" },
    { "width", "bits that its ALU works on" },
    { "dualWidth", "whether a cell is a pair of such values" },
    { "name", ofName },
    { "parent", ofOwner },
    { "severalParents", ofSeveralOwners },
};

constexpr FieldInfo actionFields[] = {
    { "handle", ofHandle },
    { "name", ofName },
    { "tableName", "name of the table that it belongs to" },
};

// What does not belong to tables.

constexpr FieldInfo learnQuantaFields[] = {
    { "handle", ofHandle },
    { "name", ofName },
};

constexpr FieldInfo headerFields[] = {
    { "name", ofName },
    { "size", "bytes of all its fields" },
};

constexpr FieldInfo hashFields[] = {
    { "name", ofName },
    { "tableHdl", ofHandle },
    { "fieldListHdl", "handle of its list of fields" },
    { "fieldCount", "number of its fields" },
    { "fieldNames", "their names, in the order of the hash's input" },
};

// The PHV: one row per field, for both directions.

constexpr FieldInfo phvFields[] = {
    { "name", "name of the field" },
    { "ingressBytes", "bytes that it takes in ingress; absent if it has no place there" },
    { "egressBytes", "the same in egress" },
};

// Placed tables by handle.

constexpr FieldInfo handleFields[] = {
    { "handle", ofHandle },
    { "size", "entries that it holds" },
    { "stageStart", "stage of its first stage table, from 0" },
    { "statReferences", "handles of the counters that it references" },
    { "meterReferences", "handles of its meters and WRED tables" },
    { "statefulReferences", "handles of its registers" },
    { "name", ofName },
    { "parent", ofOwner },
    { "severalParents", ofSeveralOwners },
};

constexpr RecordKind table_[] = {
    { Kind::tables, "table", "tables", "match table", "match tables", "bfTables", blankTable, tableRows,
      tableFields, true },
    { Kind::resources, "resource", "resources", "hardware resource", "hardware resources", "bfResources",
      blankResource, resourceRows, resourceFields, true },
    { Kind::counters, "counter", "counters", "counter", "counters", "bfCounters", blankCounter, counterRows,
      counterFields, true, true, &allAttachments[ 0 ] },
    { Kind::meters, "meter", "meters", "meter", "meters", "bfMeters", blankMeter, meterRows, meterFields,
      true, true, &allAttachments[ 1 ] },
    { Kind::wreds, "wred", "wreds", "WRED table", "WRED tables", "bfWreds", blankWred, wredRows, wredFields,
      true, true, &allAttachments[ 2 ] },
    { Kind::registers, "register", "registers", "register", "registers", "bfRegisterInfos", blankRegister,
      registerRows, registerFields, true, true, &allAttachments[ 3 ] },
    { Kind::learnQuantas, "learn-quanta", "learn-quantas", "learn quanta", "learn quantas",
      "bfLearnQuantaInfos", blankLearnQuanta, learnQuantaRows, learnQuantaFields },
    { Kind::actions, "action", "actions", "action", "actions", "bfActions", blankAction, actionRows,
      actionFields, true },
    { Kind::headers, "header", "headers", "flexible header", "flexible headers", "bfHeaders", blankHeader,
      headerRows, headerFields },
    { Kind::hashes, "hash", "hashes", "hash", "hashes", "bfDynamicHashInfo", blankHash, hashRows,
      hashFields },
    { Kind::phvFields, "phv", "phv", "PHV field", "PHV fields", "phvContainers", blankPhv, phvRows, phvFields,
      false, false },
    { Kind::handles, "handle", "handles", "placed table", "placed tables", "resourceHandles", blankHandle,
      handleRows, handleFields, true, false } };

} // namespace

std::span<RecordKind const> recordKinds() { return table_; }

RecordKind const& kindOf( Kind kind ) { return table_[ static_cast<std::size_t>( kind ) ]; }

RecordKind const* kindOf( std::string_view word ) {
    auto const found =
        std::find_if( std::begin( table_ ), std::end( table_ ),
                      [ & ]( RecordKind const& kind ) { return word == kind.many || word == kind.one; } );
    return found == std::end( table_ ) ? nullptr : found;
}

} // namespace Bfri
