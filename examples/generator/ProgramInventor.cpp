#include "ProgramInventor.h"

#include <string>
#include <utility>

#include "Names.h"
#include "ProgramBuilder.h"
#include "Random.h"
#include "TableInventor.h"

namespace bfgen {

namespace {

void inventLearnQuanta( ProgramBuilder& builder, Random& random ) {
    static constexpr std::string_view names[]{ "mac_learn", "flow_learn", "neighbour_learn", "port_event" };
    uint32_t const count = random.between( 2, 4 );
    for( uint32_t i = 0; i < count; ++i ) {
        LearnQuanta quanta{ builder.qualified( true, names[ i ] ), 0, std::nullopt,
                            inventFields( random, random.between( 2, 5 ) ) };
        if( i != 1 ) {
            quanta.configType = i == 0 ? "timed" : "counted";
        }
        builder.addLearnQuanta( std::move( quanta ) );
    }
}

void inventHashCalculations( ProgramBuilder& builder, Random& random ) {
    static constexpr std::string_view names[]{ "ecmp_hash", "lag_hash", "entropy_hash", "sample_hash" };
    uint32_t const count = random.between( 1, 4 );
    for( uint32_t i = 0; i < count; ++i ) {
        builder.addHashCalculation(
            { builder.qualified( true, names[ i ] ), 0, 0, inventFields( random, random.between( 1, 9 ) ) } );
    }
}

PhvRecord inventRecord( Random& random, Field const& field, uint32_t stages ) {
    uint32_t const first = random.below( stages );
    return { .field = field.name,
             .bytes = ( field.bits + 7 ) / 8,
             .isPov = false,
             .ingress = random.chance( 60 ),
             .container = random.below( 224 ),
             .firstStage = first,
             .lastStage = random.between( first, stages - 1 ) };
}

/// The compiler narrows a field once the rest of it isn't read any more.
void inventNarrowing( Random& random, PhvRecord& record, std::vector<PhvRecord>& records ) {
    if( record.bytes < 2 || record.firstStage == record.lastStage ) {
        return;
    }
    PhvRecord narrow = record;
    narrow.bytes = random.between( 1, record.bytes - 1 );
    narrow.firstStage = random.between( record.firstStage + 1, record.lastStage );
    record.lastStage = narrow.firstStage - 1;
    records.push_back( std::move( narrow ) );
}

/// A field may stand in two containers; both then tell the same width.
void inventSecondContainer( Random& random, std::vector<PhvRecord>& records ) {
    PhvRecord second = records.back();
    second.container = random.below( 224 );
    second.lastStage = random.between( second.firstStage, second.lastStage );
    records.push_back( std::move( second ) );
}

/// Validity bits say nothing of a field's width, and the widths they carry needn't agree.
void inventValidity( Random& random, uint32_t stages, std::vector<PhvRecord>& records ) {
    for( Field const& field : inventFields( random, 6 ) ) {
        PhvRecord record = inventRecord( random, field, stages );
        record.isPov = true;
        record.bytes = random.between( 1, 4 );
        records.push_back( std::move( record ) );
    }
}

void inventPhv( Program& program, Random& random ) {
    std::vector<Field> fields = inventFields( random, random.between( 20, 40 ) );
    fields.push_back( { "ig_md.bridged_block", 8 * random.between( 28, 36 ) } );
    for( Field const& field : fields ) {
        program.phvRecords.push_back( inventRecord( random, field, program.stages ) );
        if( random.chance( 30 ) ) {
            inventNarrowing( random, program.phvRecords.back(), program.phvRecords );
        }
        if( random.chance( 30 ) ) {
            inventSecondContainer( random, program.phvRecords );
        }
    }
    inventValidity( random, program.stages, program.phvRecords );
}

} // namespace

Program inventProgram( Invention const& invention, uint32_t pipelineIndex ) {
    Random random( invention.seed, pipelineIndex );
    ProgramBuilder builder( pipelineIndex, invention.stages, "Switch" );
    TableInventor( builder, random, invention.tables ).inventAll();
    inventLearnQuanta( builder, random );
    inventHashCalculations( builder, random );
    inventPhv( builder.program(), random );
    if( invention.flexibleHeaders && !random.chance( 15 ) ) {
        builder.program().headers = inventFlexibleHeaders( random, random.between( 3, 12 ) );
    }
    return std::move( builder.program() );
}

} // namespace bfgen
