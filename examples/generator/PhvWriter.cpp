#include <map>
#include <vector>

#include "SectionWriter.h"

namespace bfgen {

namespace {

using Container = std::vector<PhvRecord const*>;

/// What is alive in one stage and direction, by container.
std::map<uint32_t, Container> liveContainers( Program const& program, uint32_t stage, bool ingress ) {
    std::map<uint32_t, Container> containers;
    for( PhvRecord const& record : program.phvRecords ) {
        if( record.ingress == ingress && record.firstStage <= stage && stage <= record.lastStage ) {
            containers[ record.container ].push_back( &record );
        }
    }
    return containers;
}

void writeContainer( JsonWriter& json, uint32_t number, Container const& container ) {
    json.field( "container", number );
    json.field( "container_bits", number < 64 ? 32U : number < 128 ? 8U : 16U );
    json.objects( "records", container, [ & ]( PhvRecord const* record ) {
        json.field( "field_name", record->field );
        json.field( "field_width", record->bytes );
        json.field( "is_pov", record->isPov );
        json.field( "live_from", record->firstStage );
        json.field( "live_to", record->lastStage );
    } );
}

void writeDirection( JsonWriter& json, Program const& program, uint32_t stage, bool ingress ) {
    json.objects( ingress ? "ingress" : "egress", liveContainers( program, stage, ingress ),
                  [ & ]( auto const& item ) { writeContainer( json, item.first, item.second ); } );
}

} // namespace

void writePhvAllocation( JsonWriter& json, Program const& program ) {
    json.repeat( "phv_allocation", program.stages, [ & ]( uint32_t stage ) {
        json.field( "stage_number", stage );
        writeDirection( json, program, stage, true );
        writeDirection( json, program, stage, false );
    } );
}

} // namespace bfgen
