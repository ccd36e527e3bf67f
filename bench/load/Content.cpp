#include "bench/load/Model.h"

#include "resourceinfo/BfResourceInfoIntf.h"

namespace {

template<class Records>
std::vector<typename Records::value_type> listOf( Records const& records ) {
    return { records.begin(), records.end() };
}

template<class Containers>
std::map<String, U8, std::less<>> mapOf( Containers const& containers ) {
    std::map<String, U8, std::less<>> map;
    for( auto const& entry : containers )
        map[ entry.key() ] = entry.value();
    return map;
}

Placed placedOf( BfResourceInfo::BfZelResource const& entry ) {
    return { entry.name,
             entry.size,
             entry.stageStart,
             { entry.statReferences().begin(), entry.statReferences().end() },
             { entry.meterReferences().begin(), entry.meterReferences().end() },
             { entry.statefulReferences().begin(), entry.statefulReferences().end() } };
}

} // namespace

Model contentOf( BfResourceInfo::BfResourceInfoIntf const& interface ) {
    BfResourceInfo::BfResourceParser const& parser = *interface.parser();
    Model model;
    model.resources = listOf( parser.bfResources() );
    model.tables = listOf( parser.bfTables() );
    model.counters = listOf( parser.bfCounters() );
    model.meters = listOf( parser.bfMeters() );
    model.wreds = listOf( parser.bfWreds() );
    model.registers = listOf( parser.bfRegisterInfos() );
    model.learnQuantas = listOf( parser.bfLearnQuantaInfos() );
    model.actions = listOf( parser.bfActions() );
    for( auto const& [ name, header ] : parser.bfHeaders() )
        model.headers[ name ] = header.size();
    model.hashes.insert( parser.bfDynamicHashInfo().begin(), parser.bfDynamicHashInfo().end() );
    model.ingressPhv = mapOf( parser.ingressPhvContainers() );
    model.egressPhv = mapOf( parser.egressPhvContainers() );
    for( auto const& [ handle, entry ] : parser.resourceHandles() )
        model.placed[ handle ] = placedOf( entry );
    model.parents.insert( parser.parentTable().begin(), parser.parentTable().end() );
    return model;
}
