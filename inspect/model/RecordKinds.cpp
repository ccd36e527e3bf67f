#include "inspect/model/RecordKinds.h"

#include "inspect/model/KindRows.h"
#include "inspect/model/Records.h"

namespace Bfri {

namespace {

constexpr char const* ofLeftOut =
    "Of the match tables of a context file the model has those that are resource-controllable and have no\n"
    "static entries, with their actions. 'bfri check' names the others (BF409).\n\n";

constexpr char const* ofLeftOutQuantas =
    "Of the learn quantas of a context file the model has those that have an \"lq_cfg_type\". 'bfri check'\n"
    "names the others (BF409).\n\n";

// What fields of several kinds say.

constexpr char const* ofName = "name in the P4 program";
constexpr char const* ofHandle = "handle; with a runtime_config, the pipe is in its upper 4 bits";
constexpr char const* ofTableHandle = "handle: of a direct one its table's, else its own";
constexpr char const* ofDirect = "whether each entry of its table has one of its own";
constexpr char const* ofLogicalPipe = "logical pipe, such as a or b, where the context file tells";
constexpr char const* ofParent = "table that it belongs to, where the model knows just one";
constexpr char const* ofSeveralParents = "whether actions of several tables name it";
constexpr char const* ofOwner = "the table that references it, or whose actions name it";
constexpr char const* ofSeveralOwners = "whether several tables do";

// Match tables and what they take.

constexpr Column tableColumns[] = {
    { "HANDLE", "handle", ofHandle },
    { "SIZE", "size", "entries that it holds" },
    { "ENTRIES", "totalEntries", "entries that its hit-bit range is sized for" },
    { "IDLE BITS", "idleTimePrecision", "bits of idle time that an entry has; 0 without hit bits" },
    { "HIT FROM", "hitBitSmashOffset", "first slot in the hit-bit space; 0 without hit bits" },
    { "HIT TO", "hitBitSmashLast", "last slot in it; 0 without hit bits" },
    { "PARTS", "maxPartitions", "partitions of an algorithmic TCAM, else 0" },
    { "ACTION DATA", "adtHandle", "handle of its indirect action-data table; 0 without one" },
    { "SELECTION", "selHandle", "handle of its selection table; 0 without one" },
    { "PIPE", "logicalPipe", ofLogicalPipe },
    { "NAME", "name", ofName },
    { nullptr, "hitBitSupported", "whether its entries have hit bits, for idle time" },
    { nullptr, "maxEntries", "the same as size" },
    { nullptr, "maxPrios", "priorities of entries, always 255" },
    { nullptr, "hasActionProfile", "whether it has an action profile" },
    { nullptr, "maxAdtEntries", "entries of its indirect action-data table; 0 without one" },
    { nullptr, "maxSelGroups", "2 with a selection table, else 0" },
    { nullptr, "maxSelEntries", "entries of its selection table; 0 without one" },
    { nullptr, "adtName", "name of its indirect action-data table" },
    { nullptr, "selName", "name of its selection table" },
};

constexpr Column resourceColumns[] = {
    { "HANDLE", "handle", ofHandle },
    { "SIZE", "size", "entries that it holds" },
    { "TYPE", "type", "what it is for; in JSON and CSV a number" },
    { "DIRECTION", "ingress", "its side of the switch; in JSON and CSV whether ingress" },
    { "FIRST STAGE", "stageStart", "stage of its first stage table, from 0" },
    { "STAGE TABLES", "stages", "number of its stage tables, over all units" },
    { "NAME", "name", ofName },
    { nullptr, "typeName", "the type in words, as the context file has it" },
};

// What belongs to match tables. Of what several tables have, the model knows no parent.

constexpr Column counterColumns[] = {
    { "HANDLE", "handle", ofTableHandle },
    { "OWN HANDLE", "ownHandle", "its own handle, direct or not" },
    { "SIZE", "size", "entries that it holds" },
    { "DIRECT", "direct", ofDirect },
    { "BYTES", "bytes", "whether it counts bytes" },
    { "PACKETS", "packets", "whether it counts packets" },
    { "PIPE", "logicalPipe", ofLogicalPipe },
    { "NAME", "name", ofName },
    { "TABLE", "associatedTable", ofParent },
    { nullptr, "severalParents", ofSeveralParents },
};

constexpr Column meterColumns[] = {
    { "HANDLE", "handle", ofTableHandle },
    { "DIRECT", "direct", ofDirect },
    { "PPS", "pps", "whether it meters packets a second, not bytes" },
    { "PRE-COLOR", "hasPreColor", "whether packets come to it with a colour" },
    { "PIPE", "logicalPipe", ofLogicalPipe },
    { "NAME", "name", ofName },
    { "TABLE", "associatedTable", ofParent },
    { nullptr, "severalParents", ofSeveralParents },
};

constexpr Column wredColumns[] = {
    { "HANDLE", "handle", ofTableHandle },    { "DIRECT", "direct", ofDirect },
    { "PIPE", "logicalPipe", ofLogicalPipe }, { "NAME", "name", ofName },
    { "TABLE", "parent", ofOwner },           { nullptr, "severalParents", ofSeveralOwners },
};

constexpr Column registerColumns[] = {
    { "HANDLE", "handle", ofTableHandle },
    { "INDIRECT", "indirect", "whether tables reach it by an index, not entry by entry" },
    { "TYPE", "dataType", "C type of a cell; *uint8 where the ALU is wider than 32 bits: bytes" },
    { "WIDTH", "width", "bits that its ALU works on" },
    { "DUAL", "dualWidth", "whether a cell is a pair of two such values" },
    { "NAME", "name", ofName },
    { "TABLE", "parent", ofOwner },
    { nullptr, "severalParents", ofSeveralOwners },
};

constexpr Column actionColumns[] = {
    { "HANDLE", "handle", ofHandle },
    { "NAME", "name", ofName },
    { "TABLE", "tableName", "name of the table whose action it is" },
};

// What stands beside the tables.

constexpr Column learnQuantaColumns[] = {
    { "HANDLE", "handle", ofHandle },
    { "NAME", "name", ofName },
};

constexpr Column headerColumns[] = {
    { "NAME", "name", ofName },
    { "BYTES", "size", "bytes of all its fields" },
};

constexpr Column hashColumns[] = {
    { "NAME", "name", ofName },
    { "HANDLE", "tableHdl", ofHandle },
    { "FIELD LIST", "fieldListHdl", "handle of its list of fields" },
    { "FIELDS", "fieldCount", "number of its fields" },
    { "FIELD NAMES", "fieldNames", "their names in the order of the hash's input" },
};

// The PHV: one row a field, whichever direction has it.

constexpr Column phvColumns[] = {
    { "FIELD", "name", "name of the field" },
    { "INGRESS BYTES", "ingressBytes", "bytes that it takes in ingress; absent where it has no place" },
    { "EGRESS BYTES", "egressBytes", "the same in egress" },
};

// Placed tables by handle.

constexpr Column handleColumns[] = {
    { "HANDLE", "handle", ofHandle },
    { "SIZE", "size", "entries that it holds" },
    { "STAGE", "stageStart", "stage of its first stage table, from 0" },
    { "STATISTICS", "statReferences", "handles of the counters that it references" },
    { "METERS", "meterReferences", "handles of its meters and WRED tables" },
    { "STATEFUL", "statefulReferences", "handles of its registers" },
    { "NAME", "name", ofName },
    { "PARENT", "parent", ofOwner },
    { nullptr, "severalParents", ofSeveralOwners },
};

constexpr char const* ofNoParent =
    "A match table has no parent, and of direct action data the model knows none.\n\n";

constexpr RecordKind table_[] = {
    { "tables", "table", "The match tables", "bfTables", blankTable, tableRows, tableColumns, shownTable,
      ofLeftOut },
    { "resources", "resource", "The hardware resources: their kind, direction, size and stages",
      "bfResources", blankResource, resourceRows, resourceColumns, shownResource },
    { "counters", "counter", "The counters, and the tables that they belong to", "bfCounters", blankCounter,
      counterRows, counterColumns, shownParent },
    { "meters", "meter", "The meters, and the tables that they belong to", "bfMeters", blankMeter, meterRows,
      meterColumns, shownParent },
    { "wreds", "wred", "The WRED tables, and the tables that they belong to", "bfWreds", blankWred, wredRows,
      wredColumns, shownParent },
    { "registers", "register", "The registers, their cells, and the tables that they belong to",
      "bfRegisterInfos", blankRegister, registerRows, registerColumns, shownParent },
    { "learn-quantas", "learn-quanta", "The learn quantas", "bfLearnQuantaInfos", blankLearnQuanta,
      learnQuantaRows, learnQuantaColumns, nullptr, ofLeftOutQuantas },
    { "actions", "action", "The actions of the match tables", "bfActions", blankAction, actionRows,
      actionColumns },
    { "headers", "header", "The flexible headers, and their bytes", "bfHeaders", blankHeader, headerRows,
      headerColumns },
    { "hashes", "hash", "The dynamic hash calculations, and their fields", "bfDynamicHashInfo", blankHash,
      hashRows, hashColumns },
    { "phv", "phv", "The fields in the PHV, and the bytes that they take there", "phvContainers", blankPhv,
      phvRows, phvColumns },
    { "handles", "handle", "Every placed table by handle, with what it references", "resourceHandles",
      blankHandle, handleRows, handleColumns, shownParent, ofNoParent },
};

} // namespace

RowList columnsOf( std::span<Column const> columns, Row const& blank, std::vector<Row> const& rows ) {
    auto const cellsOf = [ & ]( Row const& row ) {
        Row cells;
        for( Column const& column : columns ) {
            if( column.title )
                cells.push_back( { column.title, valueOf( row, column.field ) } );
        }
        return cells;
    };
    RowList list{ cellsOf( blank ), {} };
    for( Row const& row : rows )
        list.rows.push_back( cellsOf( row ) );
    return list;
}

std::span<RecordKind const> recordKinds() { return table_; }

} // namespace Bfri
