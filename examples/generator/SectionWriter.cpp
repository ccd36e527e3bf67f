#include "SectionWriter.h"

namespace bfgen {

namespace {

void writeFields( JsonWriter& json, std::vector<Field> const& fields ) {
    json.objects( "fields", fields, [ & ]( Field const& field ) {
        json.field( "name", field.name );
        json.object( "slice", [ & ] {
            json.field( "first_bit", 0U );
            json.field( "bit_width", field.bits );
        } );
    } );
}

} // namespace

void writeLearnQuanta( JsonWriter& json, Program const& program ) {
    json.objects( "learn_quanta", program.learnQuanta, [ & ]( LearnQuanta const& quanta ) {
        json.field( "name", quanta.name );
        json.field( "handle", quanta.handle );
        json.optionalField( "lq_cfg_type", quanta.configType );
        writeFields( json, quanta.fields );
    } );
}

void writeFlexibleHeaders( JsonWriter& json, Program const& program ) {
    if( !program.headers.has_value() ) {
        return;
    }
    json.objects( "flexible_headers", *program.headers, [ & ]( Header const& header ) {
        json.field( "name", header.name );
        writeFields( json, header.fields );
    } );
}

void writeHashCalculations( JsonWriter& json, Program const& program ) {
    json.objects( "dynamic_hash_calculations", program.hashCalculations,
                  [ & ]( HashCalculation const& hash ) {
                      json.field( "name", hash.name );
                      json.field( "handle", hash.handle );
                      json.array( "field_lists", [ & ] {
                          json.object( [ & ] {
                              json.field( "name", hash.name + "_inputs" );
                              json.field( "handle", hash.fieldListHandle );
                              writeFields( json, hash.fields );
                          } );
                      } );
                  } );
}

} // namespace bfgen
