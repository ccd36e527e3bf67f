#include "inspect/model/RecordKinds.h"

#include "inspect/model/ListedRow.h"

namespace Bfri {

namespace {

// What the model has of a kind. The accessors of a collection are several functions of one name; here is the
// one that reads.

#define COLLECTION( name )                                                                                   \
    []( BfResourceParser const& parser ) -> auto const& { return parser.name(); }

/// Of both directions.
std::map<String, Fields::PhvBytes> phvFieldsOf( BfResourceParser const& parser ) {
    std::map<String, Fields::PhvBytes> fields;
    for( auto const& entry : parser.ingressPhvContainers() )
        fields[ entry.key() ].ingress = entry.value();
    for( auto const& entry : parser.egressPhvContainers() )
        fields[ entry.key() ].egress = entry.value();
    return fields;
}

/// What a list shows of an element: of placed tables by handle the table, as it has the handle itself.
template<class Element>
Element const& recordIn( Element const& element ) {
    return element;
}
BfZelResource const& recordIn( std::pair<U32 const, BfZelResource> const& entry ) { return entry.second; }

/// Calls `visit` with each record, by ascending key if the model keeps them in a hash map.
template<class All, class Visit>
void eachIn( All const& all, Visit const& visit ) {
    if constexpr( requires { all.begin()->first; } ) {
        for( auto const* const entry : sortedByKey( all ) )
            visit( recordIn( *entry ) );
    } else {
        for( auto const& record : all )
            visit( record );
    }
}

template<auto collection>
using RecordIn = std::remove_cvref_t<decltype( recordIn(
    *collection( std::declval<BfResourceParser const&>() ).begin() ) )>;

// The functions of a kind.

template<auto collection>
std::size_t sizeOf( BfResourceParser const& parser ) {
    return collection( parser ).size();
}

template<auto collection>
std::vector<Row> rowsOf( BfResourceParser const& parser ) {
    using Record = RecordIn<collection>;
    auto const& all = collection( parser );
    std::vector<Row> rows;
    rows.reserve( all.size() );
    if constexpr( hasOwner<Record> ) {
        Owners const owners( parser );
        eachIn( all, [ & ]( Record const& record ) {
            rows.push_back( listedRow( record, owners.of( record ) ) );
        } );
    } else {
        eachIn( all, [ & ]( Record const& record ) {
            Owners::Owner owner;
            if constexpr( namesItsTable<Record> )
                owner.several = parser.multipleParentTablesHas( record.name );
            rows.push_back( listedRow( record, owner ) );
        } );
    }
    return rows;
}

template<auto collection>
Row blankOf() {
    return listedRow( RecordIn<collection>(), {} );
}

template<auto collection>
std::vector<FieldInfo> fieldsOf() {
    std::vector<FieldInfo> fields;
    eachListed( RecordIn<collection>(), {}, [ & ]( char const* name, auto const&, char const* meaning ) {
        fields.push_back( { name, meaning } );
    } );
    return fields;
}

template<auto collection>
constexpr RecordType recordsOf = { sizeOf<collection>, rowsOf<collection>, blankOf<collection>,
                                   fieldsOf<collection> };

constexpr Attachment allAttachments[] = {
    { Kind::counters, BfResourceType::statistics, &BfZelResource::statReferences },
    { Kind::meters, BfResourceType::meter, &BfZelResource::meterReferences },
    { Kind::wreds, BfResourceType::wred, &BfZelResource::meterReferences },
    { Kind::registers, BfResourceType::stateful, &BfZelResource::statefulReferences },
};

constexpr RecordKind allKinds[] = {
    { recordsOf<COLLECTION( bfTables )>, Kind::tables, "table", "tables", "match table", "match tables",
      "bfTables", true },
    { recordsOf<COLLECTION( bfResources )>, Kind::resources, "resource", "resources", "hardware resource",
      "hardware resources", "bfResources", true },
    { recordsOf<COLLECTION( bfCounters )>, Kind::counters, "counter", "counters", "counter", "counters",
      "bfCounters", true, true, &allAttachments[ 0 ] },
    { recordsOf<COLLECTION( bfMeters )>, Kind::meters, "meter", "meters", "meter", "meters", "bfMeters", true,
      true, &allAttachments[ 1 ] },
    { recordsOf<COLLECTION( bfWreds )>, Kind::wreds, "wred", "wreds", "WRED table", "WRED tables", "bfWreds",
      true, true, &allAttachments[ 2 ] },
    { recordsOf<COLLECTION( bfRegisterInfos )>, Kind::registers, "register", "registers", "register",
      "registers", "bfRegisterInfos", true, true, &allAttachments[ 3 ] },
    { recordsOf<COLLECTION( bfLearnQuantaInfos )>, Kind::learnQuantas, "learn-quanta", "learn-quantas",
      "learn quanta", "learn quantas", "bfLearnQuantaInfos" },
    { recordsOf<COLLECTION( bfActions )>, Kind::actions, "action", "actions", "action", "actions",
      "bfActions", true },
    { recordsOf<COLLECTION( bfHeaders )>, Kind::headers, "header", "headers", "flexible header",
      "flexible headers", "bfHeaders" },
    { recordsOf<COLLECTION( bfDynamicHashInfo )>, Kind::hashes, "hash", "hashes", "hash", "hashes",
      "bfDynamicHashInfo" },
    { recordsOf<phvFieldsOf>, Kind::phvFields, "phv", "phv", "PHV field", "PHV fields", "phvContainers",
      false, false },
    { recordsOf<COLLECTION( resourceHandles )>, Kind::handles, "handle", "handles", "placed table",
      "placed tables", "resourceHandles", true, false },
};

// The collections as a dump has them.

Value dumped( String const& text ) { return text; }
Value dumped( BfHeaderInfo const& header ) { return U32{ header.size() }; }

template<class Record>
Value dumped( Record const& record ) {
    Row row = Fields::rowFrom( [ & ]( auto const& field ) { Fields::each( record, field ); }, 0 );
    std::erase_if( row, []( Field const& field ) { return field.name == "typeName"; } ); // not in the record
    return row;
}

template<auto collection>
Value contentOf( BfResourceParser const& parser ) {
    List records;
    Row byName;
    eachIn( collection( parser ), [ & ]( auto const& record ) {
        if constexpr( requires { record.key(); } )
            byName.push_back( { record.key(), U32{ record.value() } } );
        else if constexpr( requires { record.first; } )
            byName.push_back( { record.first, dumped( record.second ) } );
        else
            records.push_back( dumped( record ) );
    } );
    using Record = RecordIn<collection>;
    constexpr bool isByName = requires( Record const& record ) { record.key(); }
    || requires( Record const& record ) { record.first; };
    return isByName ? Value( std::move( byName ) ) : Value( std::move( records ) );
}

/// In byte order.
Value severalParents( BfResourceParser const& parser ) {
    auto const& all = parser.multipleParentTables();
    std::vector<String> names( all.begin(), all.end() );
    std::sort( names.begin(), names.end() );
    return listOf( names );
}

template<auto collection>
constexpr Collection collectionOf( char const* member, char const* title, std::optional<Kind> kind = {} ) {
    return { member, title, kind, sizeOf<collection>, contentOf<collection> };
}

/// The only collection of a kind.
template<auto collection>
constexpr Collection onlyOf( Kind kind, char const* title = nullptr ) {
    RecordKind const& known = allKinds[ static_cast<std::size_t>( kind ) ];
    return collectionOf<collection>( known.member, title ? title : known.nouns, kind );
}

constexpr Collection allCollections[] = {
    onlyOf<COLLECTION( bfResources )>( Kind::resources ),
    onlyOf<COLLECTION( bfTables )>( Kind::tables ),
    onlyOf<COLLECTION( bfCounters )>( Kind::counters ),
    onlyOf<COLLECTION( bfMeters )>( Kind::meters ),
    onlyOf<COLLECTION( bfWreds )>( Kind::wreds ),
    onlyOf<COLLECTION( bfRegisterInfos )>( Kind::registers ),
    onlyOf<COLLECTION( bfLearnQuantaInfos )>( Kind::learnQuantas ),
    onlyOf<COLLECTION( bfActions )>( Kind::actions ),
    onlyOf<COLLECTION( bfHeaders )>( Kind::headers ),
    onlyOf<COLLECTION( bfDynamicHashInfo )>( Kind::hashes, "dynamic hash calculations" ),
    collectionOf<COLLECTION( ingressPhvContainers )>( "ingressPhvContainers", "ingress fields in PHV",
                                                      Kind::phvFields ),
    collectionOf<COLLECTION( egressPhvContainers )>( "egressPhvContainers", "egress fields in PHV",
                                                     Kind::phvFields ),
    onlyOf<COLLECTION( resourceHandles )>( Kind::handles, "placed tables, by handle" ),
    collectionOf<COLLECTION( parentTable )>( "parentTable", "resources with one parent table" ),
    { "multipleParentTables",
      "resources with several",
      {},
      sizeOf<COLLECTION( multipleParentTables )>,
      severalParents },
};

#undef COLLECTION

} // namespace

std::span<Attachment const> attachments() { return allAttachments; }

std::span<RecordKind const> recordKinds() { return allKinds; }

RecordKind const& kindOf( Kind kind ) { return allKinds[ static_cast<std::size_t>( kind ) ]; }

RecordKind const* kindOf( std::string_view word ) {
    auto const found =
        std::find_if( std::begin( allKinds ), std::end( allKinds ),
                      [ & ]( RecordKind const& kind ) { return word == kind.many || word == kind.one; } );
    return found == std::end( allKinds ) ? nullptr : found;
}

std::span<Collection const> collections() { return allCollections; }

} // namespace Bfri
