#include "cli/Listings.h"

#include "cli/Records.h"

#include <map>
#include <optional>

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

template<class Record>
Row blankOf() {
    return rowOf( Record() );
}

template<auto records>
std::vector<Row> rowsOf( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    rows.reserve( ( parser.*records )().size() );
    for( auto const& record : ( parser.*records )() )
        rows.push_back( rowOf( record ) );
    return rows;
}

constexpr char const* ofLeftOut =
    "Of the match tables of a context file the model has those that are resource-controllable and have no\n"
    "static entries, with their actions. 'bfri check' names the others (BF409).\n\n";

// What fields of several kinds say.

constexpr char const* ofName = "name in the P4 program";
constexpr char const* ofHandle = "handle; with a runtime_config, the pipe is in its upper 4 bits";
constexpr char const* ofTableHandle = "handle: of a direct one its table's, else its own";
constexpr char const* ofDirect = "whether each entry of its table has one of its own";
constexpr char const* ofLogicalPipe = "logical pipe, such as a or b, where the context file tells";
constexpr char const* ofParent = "table that it belongs to, where the model knows just one";
constexpr char const* ofSeveralParents = "whether actions of several tables name it";

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

Row resourceRow( BfResource const& resource ) { return withTypeName( rowOf( resource ) ); }

Row resourceBlank() { return resourceRow( {} ); }

std::vector<Row> resourceRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    rows.reserve( parser.bfResources().size() );
    for( BfResource const& resource : parser.bfResources() )
        rows.push_back( resourceRow( resource ) );
    return rows;
}

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

/// The table that a record without a name for it belongs to: a direct one bears its handle.
Value parentOf( BfResourceParser const& parser, String const& name, std::optional<U32> directHandle ) {
    if( directHandle ) {
        auto const* const placed = parser.resourceHandles().find( *directHandle );
        return placed ? Value( placed->name ) : Value();
    }
    String const* const parent = parser.parentTable().find( name );
    return parent ? Value( *parent ) : Value();
}

Value parentOf( BfResourceParser const& parser, BfTableWredInfo const& wred ) {
    return parentOf( parser, wred.name, wred.direct ? std::optional( wred.handle ) : std::nullopt );
}

Value parentOf( BfResourceParser const& parser, BfRegisterInfo const& cells ) {
    return parentOf( parser, cells.name, cells.indirect ? std::nullopt : std::optional( cells.handle ) );
}

Value parentOf( BfResourceParser const& parser, BfZelResource const& placed ) {
    return parentOf( parser, placed.name, std::nullopt );
}

/// Counters and meters name their table themselves.
template<class Record>
constexpr bool namesItsTable = requires( Record record ) {
    record.associatedTable;
};

template<class Record>
Row attachedRow( Record const& record, Value const& parent, bool severalParents ) {
    Row row = rowOf( record );
    if constexpr( !namesItsTable<Record> )
        row.push_back( { "parent", parent } );
    row.push_back( { "severalParents", severalParents } );
    return row;
}

template<class Record>
Row attachedRow( BfResourceParser const& parser, Record const& record ) {
    Value parent;
    if constexpr( !namesItsTable<Record> )
        parent = parentOf( parser, record );
    return attachedRow( record, parent, parser.multipleParentTablesHas( record.name ) );
}

template<class Record>
Row attachedBlank() {
    return attachedRow( Record(), {}, false );
}

template<auto records>
std::vector<Row> attachedRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    rows.reserve( ( parser.*records )().size() );
    for( auto const& record : ( parser.*records )() )
        rows.push_back( attachedRow( parser, record ) );
    return rows;
}

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
    { "TABLE", "parent", ofParent },          { nullptr, "severalParents", ofSeveralParents },
};

constexpr Column registerColumns[] = {
    { "HANDLE", "handle", ofTableHandle },
    { "INDIRECT", "indirect", "whether tables reach it by an index, not entry by entry" },
    { "TYPE", "dataType", "C type of a cell; *uint8 where the ALU is wider than 32 bits: bytes" },
    { "WIDTH", "width", "bits that its ALU works on" },
    { "DUAL", "dualWidth", "whether a cell is a pair of two such values" },
    { "NAME", "name", ofName },
    { "TABLE", "parent", ofParent },
    { nullptr, "severalParents", ofSeveralParents },
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

Row headerRow( String const& name, BfHeaderInfo const& header ) {
    return { { "name", name }, { "size", U32{ header.size() } } };
}

Row headerBlank() { return headerRow( {}, {} ); }

constexpr Column headerColumns[] = {
    { "NAME", "name", ofName },
    { "BYTES", "size", "bytes of all its fields" },
};

std::vector<Row> headerRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    for( auto const* const entry : sortedByKey( parser.bfHeaders() ) )
        rows.push_back( headerRow( entry->first, entry->second ) );
    return rows;
}

Row hashRow( String const& name, BfDynamicHashInfo const& hash ) {
    Row row = rowOf( hash );
    row.insert( row.begin(), { "name", name } );
    return row;
}

Row hashBlank() { return hashRow( {}, {} ); }

constexpr Column hashColumns[] = {
    { "NAME", "name", ofName },
    { "HANDLE", "tableHdl", ofHandle },
    { "FIELD LIST", "fieldListHdl", "handle of its list of fields" },
    { "FIELDS", "fieldCount", "number of its fields" },
    { "FIELD NAMES", "fieldNames", "their names in the order of the hash's input" },
};

std::vector<Row> hashRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    for( auto const* const entry : sortedByKey( parser.bfDynamicHashInfo() ) )
        rows.push_back( hashRow( entry->first, entry->second ) );
    return rows;
}

// The PHV: one row a field, whichever direction has it.

struct PhvBytes {
    Value ingress;
    Value egress;
};

Row phvRow( String const& name, PhvBytes const& bytes ) {
    return { { "name", name }, { "ingressBytes", bytes.ingress }, { "egressBytes", bytes.egress } };
}

Row phvBlank() { return phvRow( {}, {} ); }

constexpr Column phvColumns[] = {
    { "FIELD", "name", "name of the field" },
    { "INGRESS BYTES", "ingressBytes", "bytes that it takes in ingress; absent where it has no place" },
    { "EGRESS BYTES", "egressBytes", "the same in egress" },
};

std::vector<Row> phvRows( BfResourceParser const& parser ) {
    std::map<String, PhvBytes> fields;
    for( auto const& entry : parser.ingressPhvContainers() )
        fields[ entry.key() ].ingress = U32{ entry.value() };
    for( auto const& entry : parser.egressPhvContainers() )
        fields[ entry.key() ].egress = U32{ entry.value() };
    std::vector<Row> rows;
    rows.reserve( fields.size() );
    for( auto const& [ name, bytes ] : fields )
        rows.push_back( phvRow( name, bytes ) );
    return rows;
}

// Placed tables by handle.

constexpr Column handleColumns[] = {
    { "HANDLE", "handle", ofHandle },
    { "SIZE", "size", "entries that it holds" },
    { "STAGE", "stageStart", "stage of its first stage table, from 0" },
    { "STATISTICS", "statReferences", "handles of the counters that it references" },
    { "METERS", "meterReferences", "handles of its meters and WRED tables" },
    { "STATEFUL", "statefulReferences", "handles of its registers" },
    { "NAME", "name", ofName },
    { "PARENT", "parent", ofParent },
    { nullptr, "severalParents", ofSeveralParents },
};

std::vector<Row> handleRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    for( auto const* const entry : sortedByKey( parser.resourceHandles() ) )
        rows.push_back( attachedRow( parser, entry->second ) );
    return rows;
}

constexpr Listing table_[] = {
    { "tables", "table", "The match tables", "bfTables", blankOf<BfTableInfo>,
      rowsOf<&BfResourceParser::bfTables>, tableColumns, shownTable, ofLeftOut },
    { "resources", "resource", "The hardware resources: their kind, direction, size and stages",
      "bfResources", resourceBlank, resourceRows, resourceColumns, shownResource },
    { "counters", "counter", "The counters, and the tables that they belong to", "bfCounters",
      attachedBlank<BfTableCounterInfo>, attachedRows<&BfResourceParser::bfCounters>, counterColumns,
      shownParent },
    { "meters", "meter", "The meters, and the tables that they belong to", "bfMeters",
      attachedBlank<BfTableMeterInfo>, attachedRows<&BfResourceParser::bfMeters>, meterColumns, shownParent },
    { "wreds", "wred", "The WRED tables, and the tables that they belong to", "bfWreds",
      attachedBlank<BfTableWredInfo>, attachedRows<&BfResourceParser::bfWreds>, wredColumns, shownParent },
    { "registers", "register", "The registers, their cells, and the tables that they belong to",
      "bfRegisterInfos", attachedBlank<BfRegisterInfo>, attachedRows<&BfResourceParser::bfRegisterInfos>,
      registerColumns, shownParent },
    { "learn-quantas", "learn-quanta", "The learn quantas", "bfLearnQuantaInfos", blankOf<BfLearnQuantaInfo>,
      rowsOf<&BfResourceParser::bfLearnQuantaInfos>, learnQuantaColumns },
    { "actions", "action", "The actions of the match tables", "bfActions", blankOf<BfActionInfo>,
      rowsOf<&BfResourceParser::bfActions>, actionColumns },
    { "headers", "header", "The flexible headers, and their bytes", "bfHeaders", headerBlank, headerRows,
      headerColumns },
    { "hashes", "hash", "The dynamic hash calculations, and their fields", "bfDynamicHashInfo", hashBlank,
      hashRows, hashColumns },
    { "phv", "phv", "The fields in the PHV, and the bytes that they take there", "phvContainers", phvBlank,
      phvRows, phvColumns },
    { "handles", "handle", "Every placed table by handle, with what it references", "resourceHandles",
      attachedBlank<BfZelResource>, handleRows, handleColumns, shownParent },
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

std::span<Listing const> listings() { return table_; }

} // namespace Bfri
