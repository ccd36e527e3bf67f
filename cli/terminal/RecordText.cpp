#include "cli/terminal/RecordText.h"

namespace Bfri {

namespace {

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

constexpr Column resourceColumns[] = { { "HANDLE", "handle" },
                                       { "SIZE", "size" },
                                       { "TYPE", "type" },
                                       { "DIRECTION", "ingress" },
                                       { "FIRST STAGE", "stageStart" },
                                       { "STAGE TABLES", "stages" },
                                       { "NAME", "name" } };

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

constexpr Column learnQuantaColumns[] = { { "HANDLE", "handle" }, { "NAME", "name" } };

constexpr Column actionColumns[] = { { "HANDLE", "handle" }, { "NAME", "name" }, { "TABLE", "tableName" } };

constexpr Column headerColumns[] = { { "NAME", "name" }, { "BYTES", "size" } };

constexpr Column hashColumns[] = { { "NAME", "name" },
                                   { "HANDLE", "tableHdl" },
                                   { "FIELD LIST", "fieldListHdl" },
                                   { "FIELDS", "fieldCount" },
                                   { "FIELD NAMES", "fieldNames" } };

constexpr Column phvColumns[] = {
    { "FIELD", "name" }, { "INGRESS BYTES", "ingressBytes" }, { "EGRESS BYTES", "egressBytes" } };

constexpr Column handleColumns[] = { { "HANDLE", "handle" },
                                     { "SIZE", "size" },
                                     { "STAGE", "stageStart" },
                                     { "STATISTICS", "statReferences" },
                                     { "METERS", "meterReferences" },
                                     { "STATEFUL", "statefulReferences" },
                                     { "NAME", "name" },
                                     { "PARENT", "parent" } };

void replace( Row& row, std::initializer_list<std::string_view> names, Value const& value ) {
    for( Field& field : row ) {
        if( std::find( names.begin(), names.end(), field.name ) != names.end() )
            field.value = value;
    }
}

Row tableForPeople( Row row ) {
    if( !valueAs<bool>( row, "hitBitSupported" ) )
        replace( row, { "idleTimePrecision", "hitBitSmashOffset", "hitBitSmashLast" }, {} );
    if( valueAs<Hex>( row, "adtHandle" ).value == 0 && valueAs<String>( row, "adtName" ).empty() )
        replace( row, { "maxAdtEntries", "adtHandle", "adtName" }, {} );
    if( valueAs<U32>( row, "maxSelGroups" ) == 0 )
        replace( row, { "maxSelGroups", "maxSelEntries", "selHandle", "selName" }, {} );
    return row;
}

Row resourceForPeople( Row row ) {
    replace( row, { "type" }, valueOf( row, "typeName" ) );
    replace( row, { "ingress" }, valueAs<bool>( row, "ingress" ) ? "ingress" : "egress" );
    return row;
}

/// The row says which table the record belongs to, or that several have it.
Row ownedForPeople( Row row ) {
    bool const* const hasSeveral = std::get_if<bool>( &valueOf( row, "severalParents" ).is );
    for( Field& field : row ) {
        String const* const table = std::get_if<String>( &field.value.is );
        bool const isTable = field.name == "parent" || field.name == "associatedTable";
        if( hasSeveral && *hasSeveral && isTable && ( !table || table->empty() ) )
            field.value = "(several)";
    }
    return row;
}

} // namespace

std::span<Column const> columnsOf( Kind kind ) {
    static constexpr std::span<Column const> columns[] = {
        // in the order of the kinds
        tableColumns,       resourceColumns, counterColumns, meterColumns, wredColumns, registerColumns,
        learnQuantaColumns, actionColumns,   headerColumns,  hashColumns,  phvColumns,  handleColumns };
    return columns[ static_cast<std::size_t>( kind ) ];
}

Row rowForPeople( Kind kind, Row row ) {
    return kind == Kind::tables      ? tableForPeople( std::move( row ) )
           : kind == Kind::resources ? resourceForPeople( std::move( row ) )
                                     : ownedForPeople( std::move( row ) );
}

RowList inColumns( std::span<Column const> columns, Row const& blank, std::vector<Row> const& rows ) {
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

RowList listForPeople( Kind kind, std::vector<Row> rows ) {
    for( Row& row : rows )
        row = rowForPeople( kind, std::move( row ) );
    return inColumns( columnsOf( kind ), kindOf( kind ).blank(), rows );
}

} // namespace Bfri
