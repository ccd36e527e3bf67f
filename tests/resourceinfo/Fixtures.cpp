#include "tests/resourceinfo/Fixtures.h"

#include "vessa/AllocationTracker.h"

#include <sstream>

namespace BfResourceInfo {

namespace {

void show( std::ostream& os, BfResource const& r ) {
    os << r.name << ' ' << r.handle << ' ' << r.type << ' ' << r.size << ' ' << r.ingress << ' ' << r.stages
       << ' ' << r.stageStart;
}

void show( std::ostream& os, BfTableInfo const& t ) {
    os << t.name << ' ' << t.handle << ' ' << t.size << ' ' << t.totalEntries << ' ' << t.hitBitSupported
       << ' ' << t.idleTimePrecision << ' ' << t.hitBitSmashOffset << ' ' << t.hitBitSmashLast << ' '
       << t.maxEntries << ' ' << t.maxPartitions << ' ' << t.maxPrios << ' ' << t.hasActionProfile << ' '
       << t.maxAdtEntries << ' ' << t.maxSelGroups << ' ' << t.maxSelEntries << ' ' << t.adtHandle << ' '
       << t.selHandle << " adt=" << t.adtName << " sel=" << t.selName << " pipe=" << t.logicalPipe;
}

void show( std::ostream& os, BfTableCounterInfo const& c ) {
    os << c.name << ' ' << c.handle << ' ' << c.ownHandle << ' ' << c.size << ' ' << c.direct << ' '
       << c.bytes << ' ' << c.packets << " of=" << c.associatedTable << " pipe=" << c.logicalPipe;
}

void show( std::ostream& os, BfTableMeterInfo const& m ) {
    os << m.name << ' ' << m.handle << ' ' << m.direct << ' ' << m.pps << ' ' << m.hasPreColor
       << " of=" << m.associatedTable << " pipe=" << m.logicalPipe;
}

void show( std::ostream& os, BfTableWredInfo const& w ) {
    os << w.name << ' ' << w.handle << ' ' << w.direct << " pipe=" << w.logicalPipe;
}

void show( std::ostream& os, BfRegisterInfo const& r ) {
    os << r.name << ' ' << r.handle << ' ' << r.indirect << ' ' << r.dataType << ' ' << r.width << ' '
       << r.dualWidth;
}

void show( std::ostream& os, BfLearnQuantaInfo const& l ) { os << l.name << ' ' << l.handle; }

void show( std::ostream& os, BfActionInfo const& a ) {
    os << a.handle << ' ' << a.name << " of=" << a.tableName;
}

void show( std::ostream& os, BfDynamicHashInfo const& h ) {
    os << h.tableHdl << ' ' << h.fieldListHdl << ' ' << h.fieldCount;
    for( String const& name : h.fieldNames )
        os << ' ' << name;
}

void show( std::ostream& os, BfZelResource const& resource ) {
    os << resource;
    for( auto const* queue :
         { &resource.statReferences(), &resource.meterReferences(), &resource.statefulReferences() } ) {
        os << " [";
        for( U32 const handle : *queue )
            os << ' ' << handle;
        os << " ]";
    }
}

void show( std::ostream& os, BfHeaderInfo const& header ) { os << header; }
void show( std::ostream& os, String const& text ) { os << text; }

template<class Sequence>
void showSequence( std::ostream& os, char const* name, Sequence const& sequence ) {
    os << name << '\n';
    for( auto const& record : sequence ) {
        show( os << "  ", record );
        os << '\n';
    }
}

template<class Map>
void showHashMap( std::ostream& os, char const* name, Map const& map ) {
    os << name << '\n';
    std::map<typename Map::const_iterator::value_type::first_type, String> sorted;
    for( auto const& [ key, value ] : map ) {
        std::ostringstream text;
        show( text, value );
        sorted[ key ] = text.str();
    }
    for( auto const& [ key, text ] : sorted )
        os << "  " << key << ": " << text << '\n';
}

template<class Map>
void showContainers( std::ostream& os, char const* name, Map const& map ) {
    os << name << '\n';
    for( auto const& entry : map )
        os << "  " << entry.key() << ": " << unsigned{ entry.value() } << '\n';
}

template<class... Types>
LiveAllocations liveOf() {
    return { { typeid( Types ).name(), Vessa::allocationTracker<Types>().live() }... };
}

} // namespace

Zel::Ptr<BfResourceParser> emptyParser() { return bfResourceParserFactory( "" ); }

Zel::Ptr<BfResourceInfoIntf> emptyInterface() { return bfResourceInfoIntfFactory( "" ); }

String modelText( BfResourceParser const& parser ) {
    std::ostringstream os;
    os << "hitBitSmashEntries " << parser.hitBitSmashEntries() << '\n';
    showSequence( os, "bfResources", parser.bfResources() );
    showSequence( os, "bfTables", parser.bfTables() );
    showSequence( os, "bfCounters", parser.bfCounters() );
    showSequence( os, "bfMeters", parser.bfMeters() );
    showSequence( os, "bfWreds", parser.bfWreds() );
    showSequence( os, "bfRegisterInfos", parser.bfRegisterInfos() );
    showSequence( os, "bfLearnQuantaInfos", parser.bfLearnQuantaInfos() );
    showSequence( os, "bfActions", parser.bfActions() );
    showHashMap( os, "bfHeaders", parser.bfHeaders() );
    showHashMap( os, "bfDynamicHashInfo", parser.bfDynamicHashInfo() );
    showContainers( os, "ingressPhvContainers", parser.ingressPhvContainers() );
    showContainers( os, "egressPhvContainers", parser.egressPhvContainers() );
    showHashMap( os, "resourceHandles", parser.resourceHandles() );
    showHashMap( os, "parentTable", parser.parentTable() );
    os << "multipleParentTables\n";
    std::map<String, int> names;
    for( String const& name : parser.multipleParentTables() )
        names[ name ];
    for( auto const& [ name, unused ] : names )
        os << "  " << name << '\n';
    return os.str();
}

LiveAllocations liveAllocations() {
    return liveOf<BfResourceInfoIntf, BfResourceParser, ZelContextFile, ZelIngressPhvContainers,
                  ZelEgressPhvContainers, BfResource, BfTableInfo, BfTableCounterInfo, BfTableMeterInfo,
                  BfTableWredInfo, BfRegisterInfo, BfLearnQuantaInfo, BfActionInfo, String,
                  std::pair<String const, BfHeaderInfo>, std::pair<String const, BfDynamicHashInfo>,
                  std::pair<U32 const, BfZelResource>, std::pair<String const, String>>();
}

} // namespace BfResourceInfo
