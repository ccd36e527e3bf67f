#include "inspect/model/Collections.h"

#include "inspect/model/Records.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

/// The accessors of a collection are several functions of one name; here is the one that reads.
#define COLLECTION( name )                                                                                   \
    []( BfResourceParser const& parser ) -> auto const& { return parser.name(); }

template<auto collection>
std::size_t sizeOf( BfResourceParser const& parser ) {
    return collection( parser ).size();
}

template<auto collection>
Value records( BfResourceParser const& parser ) {
    return listOf( collection( parser ), []( auto const& record ) { return rowOf( record ); } );
}

template<class Map, class ToValue>
Row byName( Map const& map, ToValue const& toValue ) {
    Row row;
    for( auto const* const entry : sortedByKey( map ) )
        row.push_back( { entry->first, toValue( entry->second ) } );
    return row;
}

template<auto collection>
Value containers( BfResourceParser const& parser ) {
    Row row;
    for( auto const& entry : collection( parser ) )
        row.push_back( { entry.key(), U32{ entry.value() } } );
    return row;
}

Value headers( BfResourceParser const& parser ) {
    return byName( parser.bfHeaders(), []( BfHeaderInfo const& header ) { return U32{ header.size() }; } );
}

Value hashes( BfResourceParser const& parser ) {
    return byName( parser.bfDynamicHashInfo(), []( auto const& record ) { return rowOf( record ); } );
}

Value placedTables( BfResourceParser const& parser ) {
    return listOf( sortedByKey( parser.resourceHandles() ),
                   []( auto entry ) { return rowOf( entry->second ); } );
}

Value parents( BfResourceParser const& parser ) {
    return byName( parser.parentTable(), []( String const& parent ) { return parent; } );
}

Value severalParents( BfResourceParser const& parser ) {
    auto const& set = parser.multipleParentTables();
    std::vector<String> names( set.begin(), set.end() );
    std::sort( names.begin(), names.end() );
    return listOf( names, []( String const& name ) { return name; } );
}

template<auto collection>
constexpr Collection ofRecords( char const* member, char const* title, Kind kind ) {
    return { member, title, kind, sizeOf<collection>, records<collection> };
}

constexpr Collection allCollections[] = {
    ofRecords<COLLECTION( bfResources )>( "bfResources", "hardware resources", Kind::resources ),
    ofRecords<COLLECTION( bfTables )>( "bfTables", "match tables", Kind::tables ),
    ofRecords<COLLECTION( bfCounters )>( "bfCounters", "counters", Kind::counters ),
    ofRecords<COLLECTION( bfMeters )>( "bfMeters", "meters", Kind::meters ),
    ofRecords<COLLECTION( bfWreds )>( "bfWreds", "WRED tables", Kind::wreds ),
    ofRecords<COLLECTION( bfRegisterInfos )>( "bfRegisterInfos", "registers", Kind::registers ),
    ofRecords<COLLECTION( bfLearnQuantaInfos )>( "bfLearnQuantaInfos", "learn quantas", Kind::learnQuantas ),
    ofRecords<COLLECTION( bfActions )>( "bfActions", "actions", Kind::actions ),
    { "bfHeaders", "flexible headers", Kind::headers, sizeOf<COLLECTION( bfHeaders )>, headers },
    { "bfDynamicHashInfo", "dynamic hash calculations", Kind::hashes, sizeOf<COLLECTION( bfDynamicHashInfo )>,
      hashes },
    { "ingressPhvContainers", "ingress fields in PHV", Kind::phvFields,
      sizeOf<COLLECTION( ingressPhvContainers )>, containers<COLLECTION( ingressPhvContainers )> },
    { "egressPhvContainers", "egress fields in PHV", Kind::phvFields,
      sizeOf<COLLECTION( egressPhvContainers )>, containers<COLLECTION( egressPhvContainers )> },
    { "resourceHandles", "placed tables, by handle", Kind::handles, sizeOf<COLLECTION( resourceHandles )>,
      placedTables },
    { "parentTable", "resources with one parent table", {}, sizeOf<COLLECTION( parentTable )>, parents },
    { "multipleParentTables",
      "resources with several",
      {},
      sizeOf<COLLECTION( multipleParentTables )>,
      severalParents },
};

#undef COLLECTION

} // namespace

std::span<Collection const> collections() { return allCollections; }

Collection const& collectionOf( Kind kind ) {
    return *std::find_if( std::begin( allCollections ), std::end( allCollections ),
                          [ & ]( Collection const& one ) { return one.kind == kind; } );
}

List pipelinesOf( BfResourceParser const& parser ) {
    return listOf( parser.contextFile(), []( auto const& entry ) {
        U32 const mask = entry.key().value();
        return Row{ { "pipeMask", Hex( mask ) }, { "pipes", pipesOf( mask ) }, { "path", entry.value() } };
    } );
}

} // namespace Bfri
