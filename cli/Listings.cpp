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

// Match tables and what they take.

constexpr Column tableColumns[] = { { "HANDLE", "handle" },
                                    { "SIZE", "size" },
                                    { "ENTRIES", "totalEntries" },
                                    { "IDLE BITS", "idleTimePrecision" },
                                    { "HIT FROM", "hitBitSmashOffset" },
                                    { "HIT TO", "hitBitSmashLast" },
                                    { "PARTS", "maxPartitions" },
                                    { "ACTION DATA", "adtHandle" },
                                    { "SELECTION", "selHandle" },
                                    { "PIPE", "logicalPipe" },
                                    { "NAME", "name" } };

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
    { "HANDLE", "handle" },          { "SIZE", "size" },     { "TYPE", "type" }, { "DIRECTION", "ingress" },
    { "FIRST STAGE", "stageStart" }, { "STAGES", "stages" }, { "NAME", "name" } };

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

constexpr Column counterColumns[] = { { "HANDLE", "handle" },
                                      { "OWN HANDLE", "ownHandle" },
                                      { "SIZE", "size" },
                                      { "DIRECT", "direct" },
                                      { "BYTES", "bytes" },
                                      { "PACKETS", "packets" },
                                      { "PIPE", "logicalPipe" },
                                      { "NAME", "name" },
                                      { "TABLE", "associatedTable" } };

constexpr Column meterColumns[] = {
    { "HANDLE", "handle" },         { "DIRECT", "direct" },    { "PPS", "pps" },
    { "PRE-COLOR", "hasPreColor" }, { "PIPE", "logicalPipe" }, { "NAME", "name" },
    { "TABLE", "associatedTable" } };

constexpr Column wredColumns[] = { { "HANDLE", "handle" },
                                   { "DIRECT", "direct" },
                                   { "PIPE", "logicalPipe" },
                                   { "NAME", "name" },
                                   { "TABLE", "parent" } };

constexpr Column registerColumns[] = {
    { "HANDLE", "handle" },  { "INDIRECT", "indirect" }, { "TYPE", "dataType" }, { "WIDTH", "width" },
    { "DUAL", "dualWidth" }, { "NAME", "name" },         { "TABLE", "parent" } };

constexpr Column actionColumns[] = { { "HANDLE", "handle" }, { "NAME", "name" }, { "TABLE", "tableName" } };

// What stands beside the tables.

constexpr Column learnQuantaColumns[] = { { "HANDLE", "handle" }, { "NAME", "name" } };

Row headerRow( String const& name, BfHeaderInfo const& header ) {
    return { { "name", name }, { "size", U32{ header.size() } } };
}

Row headerBlank() { return headerRow( {}, {} ); }

constexpr Column headerColumns[] = { { "NAME", "name" }, { "BYTES", "size" } };

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

constexpr Column hashColumns[] = { { "NAME", "name" },
                                   { "HANDLE", "tableHdl" },
                                   { "FIELD LIST", "fieldListHdl" },
                                   { "FIELDS", "fieldCount" },
                                   { "FIELD NAMES", "fieldNames" } };

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
    { "FIELD", "name" }, { "INGRESS BYTES", "ingressBytes" }, { "EGRESS BYTES", "egressBytes" } };

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

constexpr Column handleColumns[] = { { "HANDLE", "handle" },
                                     { "SIZE", "size" },
                                     { "STAGE", "stageStart" },
                                     { "STATISTICS", "statReferences" },
                                     { "METERS", "meterReferences" },
                                     { "STATEFUL", "statefulReferences" },
                                     { "NAME", "name" },
                                     { "PARENT", "parent" } };

std::vector<Row> handleRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    for( auto const* const entry : sortedByKey( parser.resourceHandles() ) )
        rows.push_back( attachedRow( parser, entry->second ) );
    return rows;
}

constexpr Listing table_[] = {
    { "tables", "table", "The match tables", "bfTables", blankOf<BfTableInfo>,
      rowsOf<&BfResourceParser::bfTables>, tableColumns, shownTable },
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
        for( Column const& column : columns )
            cells.push_back( { column.title, valueOf( row, column.field ) } );
        return cells;
    };
    RowList list{ cellsOf( blank ), {} };
    for( Row const& row : rows )
        list.rows.push_back( cellsOf( row ) );
    return list;
}

std::span<Listing const> listings() { return table_; }

} // namespace Bfri
