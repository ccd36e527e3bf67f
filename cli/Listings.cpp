#include "cli/Listings.h"

#include "cli/Records.h"

#include <map>

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

constexpr Column resourceColumns[] = {
    { "HANDLE", "handle" },          { "SIZE", "size" },     { "TYPE", "type" }, { "DIRECTION", "ingress" },
    { "FIRST STAGE", "stageStart" }, { "STAGES", "stages" }, { "NAME", "name" } };

// What belongs to match tables.

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

constexpr Column wredColumns[] = {
    { "HANDLE", "handle" }, { "DIRECT", "direct" }, { "PIPE", "logicalPipe" }, { "NAME", "name" } };

constexpr Column registerColumns[] = { { "HANDLE", "handle" },  { "INDIRECT", "indirect" },
                                       { "TYPE", "dataType" },  { "WIDTH", "width" },
                                       { "DUAL", "dualWidth" }, { "NAME", "name" } };

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

Row handleRow( BfZelResource const& resource, Value const& parent, bool severalParents ) {
    Row row = rowOf( resource );
    row.push_back( { "parent", parent } );
    row.push_back( { "severalParents", severalParents } );
    return row;
}

Row handleBlank() { return handleRow( {}, {}, false ); }

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
    for( auto const* const entry : sortedByKey( parser.resourceHandles() ) ) {
        String const& name = entry->second.name;
        String const* const parent = parser.parentTable().find( name );
        rows.push_back( handleRow( entry->second, parent ? Value( *parent ) : Value(),
                                   parser.multipleParentTablesHas( name ) ) );
    }
    return rows;
}

constexpr Listing table_[] = {
    { "tables", "table", "The match tables", "bfTables", blankOf<BfTableInfo>,
      rowsOf<&BfResourceParser::bfTables>, tableColumns, shownTable },
    { "resources", "resource", "The hardware resources: their kind, direction, size and stages",
      "bfResources", blankOf<BfResource>, rowsOf<&BfResourceParser::bfResources>, resourceColumns,
      shownResource },
    { "counters", "counter", "The counters, and the tables that they belong to", "bfCounters",
      blankOf<BfTableCounterInfo>, rowsOf<&BfResourceParser::bfCounters>, counterColumns },
    { "meters", "meter", "The meters, and the tables that they belong to", "bfMeters",
      blankOf<BfTableMeterInfo>, rowsOf<&BfResourceParser::bfMeters>, meterColumns },
    { "wreds", "wred", "The WRED tables", "bfWreds", blankOf<BfTableWredInfo>,
      rowsOf<&BfResourceParser::bfWreds>, wredColumns },
    { "registers", "register", "The registers, and the cells that they have", "bfRegisterInfos",
      blankOf<BfRegisterInfo>, rowsOf<&BfResourceParser::bfRegisterInfos>, registerColumns },
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
      handleBlank, handleRows, handleColumns, shownHandle },
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
