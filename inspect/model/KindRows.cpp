#include "inspect/model/KindRows.h"

#include "inspect/model/Relations.h"

#include <map>

namespace Bfri {

namespace {

template<auto records>
std::vector<Row> rowsOf( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    rows.reserve( ( parser.*records )().size() );
    for( auto const& record : ( parser.*records )() )
        rows.push_back( rowOf( record ) );
    return rows;
}

Row resourceRow( BfResource const& resource ) { return withTypeName( rowOf( resource ) ); }

/// The owner of a record that does not name its table: a direct one has its handle.
Owners::Owner ownerOf( BfResourceParser const& parser, Owners const& owners, String const& name, U32 handle,
                       bool direct ) {
    if( !direct )
        return owners.of( handle, name );
    auto const* const placed = parser.resourceHandles().find( handle );
    return { placed ? std::string_view( placed->name ) : std::string_view() };
}

Owners::Owner ownerOf( BfResourceParser const& parser, Owners const& owners, BfTableWredInfo const& wred ) {
    return ownerOf( parser, owners, wred.name, wred.handle, wred.direct );
}

Owners::Owner ownerOf( BfResourceParser const& parser, Owners const& owners, BfRegisterInfo const& cells ) {
    return ownerOf( parser, owners, cells.name, cells.handle, !cells.indirect );
}

Owners::Owner ownerOf( BfResourceParser const& parser, Owners const& owners, BfZelResource const& placed ) {
    return ownerOf( parser, owners, placed.name, placed.handle, false );
}

/// Counters and meters name their table themselves.
template<class Record>
constexpr bool namesItsTable = requires( Record record ) {
    record.associatedTable;
};

template<class Record>
Row attachedRow( Record const& record, Owners::Owner const& owner ) {
    Row row = rowOf( record );
    if constexpr( !namesItsTable<Record> )
        row.push_back( { "parent", owner.table.empty() ? Value() : Value( String( owner.table ) ) } );
    row.push_back( { "severalParents", owner.several } );
    return row;
}

template<auto records>
std::vector<Row> attachedRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    rows.reserve( ( parser.*records )().size() );
    for( auto const& record : ( parser.*records )() )
        rows.push_back( attachedRow( record, { .several = parser.multipleParentTablesHas( record.name ) } ) );
    return rows;
}

/// For records that do not name their table.
template<auto records>
std::vector<Row> ownedRows( BfResourceParser const& parser ) {
    Owners const owners( parser );
    std::vector<Row> rows;
    rows.reserve( ( parser.*records )().size() );
    for( auto const& record : ( parser.*records )() )
        rows.push_back( attachedRow( record, ownerOf( parser, owners, record ) ) );
    return rows;
}

Row headerRow( String const& name, BfHeaderInfo const& header ) {
    return { { "name", name }, { "size", U32{ header.size() } } };
}

Row hashRow( String const& name, BfDynamicHashInfo const& hash ) {
    Row row = rowOf( hash );
    row.insert( row.begin(), { "name", name } );
    return row;
}

struct PhvBytes {
    Value ingress;
    Value egress;
};

Row phvRow( String const& name, PhvBytes const& bytes ) {
    return { { "name", name }, { "ingressBytes", bytes.ingress }, { "egressBytes", bytes.egress } };
}

} // namespace

Row blankTable() { return rowOf( BfTableInfo() ); }
Row blankResource() { return resourceRow( {} ); }
Row blankCounter() { return attachedRow( BfTableCounterInfo(), {} ); }
Row blankMeter() { return attachedRow( BfTableMeterInfo(), {} ); }
Row blankWred() { return attachedRow( BfTableWredInfo(), {} ); }
Row blankRegister() { return attachedRow( BfRegisterInfo(), {} ); }
Row blankHandle() { return attachedRow( BfZelResource(), {} ); }
Row blankLearnQuanta() { return rowOf( BfLearnQuantaInfo() ); }
Row blankAction() { return rowOf( BfActionInfo() ); }
Row blankHeader() { return headerRow( {}, {} ); }
Row blankHash() { return hashRow( {}, {} ); }
Row blankPhv() { return phvRow( {}, {} ); }

std::vector<Row> tableRows( BfResourceParser const& parser ) {
    return rowsOf<&BfResourceParser::bfTables>( parser );
}

std::vector<Row> resourceRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    rows.reserve( parser.bfResources().size() );
    for( BfResource const& resource : parser.bfResources() )
        rows.push_back( resourceRow( resource ) );
    return rows;
}

std::vector<Row> counterRows( BfResourceParser const& parser ) {
    return attachedRows<&BfResourceParser::bfCounters>( parser );
}

std::vector<Row> meterRows( BfResourceParser const& parser ) {
    return attachedRows<&BfResourceParser::bfMeters>( parser );
}

std::vector<Row> wredRows( BfResourceParser const& parser ) {
    return ownedRows<&BfResourceParser::bfWreds>( parser );
}

std::vector<Row> registerRows( BfResourceParser const& parser ) {
    return ownedRows<&BfResourceParser::bfRegisterInfos>( parser );
}

std::vector<Row> handleRows( BfResourceParser const& parser ) {
    Owners const owners( parser );
    std::vector<Row> rows;
    for( auto const* const entry : sortedByKey( parser.resourceHandles() ) )
        rows.push_back( attachedRow( entry->second, ownerOf( parser, owners, entry->second ) ) );
    return rows;
}

std::vector<Row> learnQuantaRows( BfResourceParser const& parser ) {
    return rowsOf<&BfResourceParser::bfLearnQuantaInfos>( parser );
}

std::vector<Row> actionRows( BfResourceParser const& parser ) {
    return rowsOf<&BfResourceParser::bfActions>( parser );
}

std::vector<Row> headerRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    for( auto const* const entry : sortedByKey( parser.bfHeaders() ) )
        rows.push_back( headerRow( entry->first, entry->second ) );
    return rows;
}

std::vector<Row> hashRows( BfResourceParser const& parser ) {
    std::vector<Row> rows;
    for( auto const* const entry : sortedByKey( parser.bfDynamicHashInfo() ) )
        rows.push_back( hashRow( entry->first, entry->second ) );
    return rows;
}

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

} // namespace Bfri
