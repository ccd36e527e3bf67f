#include "bench/load/Model.h"

#include <functional>

namespace {

/// FNV-1a, 64 bits.
class Digest {
  public:
    template<class... Fields>
    explicit Digest( Fields const&... fields ) {
        ( add( fields ), ... );
    }

    std::uint64_t value() const { return value_; }

  private:
    void add( String const& text ) {
        add( text.size() );
        for( char const c : text )
            add( static_cast<unsigned char>( c ) );
    }
    void add( std::uint64_t number ) { value_ = ( value_ ^ number ) * 0x100000001b3; }
    template<class Element>
    void add( std::vector<Element> const& list ) {
        for( Element const& element : list )
            add( element );
    }

    std::uint64_t value_ = 0xcbf29ce484222325;
};

Digest digestOf( BfResource const& r ) {
    return Digest( r.name, r.handle, r.type, r.size, r.ingress, r.stages, r.stageStart );
}
Digest digestOf( BfTableInfo const& r ) {
    return Digest( r.name, r.handle, r.size, r.totalEntries, r.hitBitSupported, r.idleTimePrecision,
                   r.hitBitSmashOffset, r.hitBitSmashLast, r.maxEntries, r.maxPartitions, r.maxPrios,
                   r.hasActionProfile, r.maxAdtEntries, r.maxSelGroups, r.maxSelEntries, r.adtHandle,
                   r.selHandle, r.adtName, r.selName, r.logicalPipe );
}
Digest digestOf( BfTableCounterInfo const& r ) {
    return Digest( r.name, r.handle, r.ownHandle, r.size, r.direct, r.bytes, r.packets, r.associatedTable,
                   r.logicalPipe );
}
Digest digestOf( BfTableMeterInfo const& r ) {
    return Digest( r.name, r.handle, r.direct, r.pps, r.hasPreColor, r.associatedTable, r.logicalPipe );
}
Digest digestOf( BfTableWredInfo const& r ) { return Digest( r.name, r.handle, r.direct, r.logicalPipe ); }
Digest digestOf( BfRegisterInfo const& r ) {
    return Digest( r.name, r.handle, r.indirect, r.dataType, r.width, r.dualWidth );
}
Digest digestOf( BfLearnQuantaInfo const& r ) { return Digest( r.name, r.handle ); }
Digest digestOf( BfActionInfo const& r ) { return Digest( r.handle, r.name, r.tableName ); }
Digest digestOf( BfDynamicHashInfo const& r ) {
    return Digest( r.tableHdl, r.fieldListHdl, r.fieldCount, r.fieldNames );
}
Digest digestOf( Placed const& r ) {
    return Digest( r.name, r.size, r.stageStart, r.counters, r.meters, r.registers );
}
Digest digestOf( String const& text ) { return Digest( text ); }
Digest digestOf( std::uint64_t number ) { return Digest( number ); }
template<class Key, class Value>
Digest digestOf( std::pair<Key const, Value> const& entry ) {
    return Digest( digestOf( entry.first ).value(), digestOf( entry.second ).value() );
}

/// The digest of records in their order.
template<class Record>
std::uint64_t inOrder( std::vector<Record> const& records ) {
    std::uint64_t sum = 0;
    for( Record const& record : records )
        sum = Digest( sum, digestOf( record ).value() ).value();
    return sum;
}

/// The digest of entries in any order.
template<class Map>
std::uint64_t together( Map const& map ) {
    std::uint64_t sum = 0;
    for( auto const& entry : map )
        sum += digestOf( entry ).value();
    return sum;
}

template<class Records, class Field>
std::uint64_t sumOf( Records const& records, Field field ) {
    std::uint64_t sum = 0;
    for( auto const& record : records )
        sum += std::invoke( field, record );
    return sum;
}

std::uint64_t handles( Model const& m ) {
    return sumOf( m.tables, &BfTableInfo::handle ) + sumOf( m.resources, &BfResource::handle ) +
           sumOf( m.actions, &BfActionInfo::handle ) + sumOf( m.counters, &BfTableCounterInfo::handle ) +
           sumOf( m.meters, &BfTableMeterInfo::handle ) + sumOf( m.wreds, &BfTableWredInfo::handle ) +
           sumOf( m.registers, &BfRegisterInfo::handle ) +
           sumOf( m.learnQuantas, &BfLearnQuantaInfo::handle );
}

std::uint64_t sizes( Model const& m ) {
    return sumOf( m.tables, &BfTableInfo::size ) + sumOf( m.resources, &BfResource::size ) +
           sumOf( m.counters, &BfTableCounterInfo::size );
}

std::uint64_t phvBytes( Model const& m ) {
    auto const bytes = []( auto const& entry ) { return entry.second; };
    return sumOf( m.ingressPhv, bytes ) + sumOf( m.egressPhv, bytes );
}

std::uint64_t digest( Model const& m ) {
    return Digest( inOrder( m.resources ), inOrder( m.tables ), inOrder( m.counters ), inOrder( m.meters ),
                   inOrder( m.wreds ), inOrder( m.registers ), inOrder( m.learnQuantas ),
                   inOrder( m.actions ), together( m.headers ), together( m.hashes ),
                   together( m.ingressPhv ), together( m.egressPhv ), together( m.placed ),
                   together( m.parents ) )
        .value();
}

} // namespace

Answer answerOf( Model const& m ) {
    return { { "resources", m.resources.size() },
             { "match tables", m.tables.size() },
             { "counters", m.counters.size() },
             { "meters", m.meters.size() },
             { "WRED tables", m.wreds.size() },
             { "registers", m.registers.size() },
             { "learn quantas", m.learnQuantas.size() },
             { "actions", m.actions.size() },
             { "flexible headers", m.headers.size() },
             { "dynamic hashes", m.hashes.size() },
             { "fields in PHV", m.ingressPhv.size() + m.egressPhv.size() },
             { "placed tables", m.placed.size() },
             { "parents", m.parents.size() },
             { "sum of handles", handles( m ) },
             { "sum of sizes", sizes( m ) },
             { "sum of PHV bytes", phvBytes( m ) },
             { "digest", digest( m ) } };
}
