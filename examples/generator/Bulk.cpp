#include "Bulk.h"

#include <algorithm>
#include <string>

#include "Names.h"

namespace bfgen {

namespace {

constexpr uint32_t wordBits = 128;
constexpr uint32_t wordsInBlock = 1024;

void writeBlock( JsonWriter& json, Bulk& bulk, uint32_t index ) {
    json.field( "block", bulk.random.below( 96 ) );
    json.field( "row", index / 12 );
    json.field( "column", index % 12 );
    json.field( "first_word", index * wordsInBlock );
    json.field( "last_word", ( index + 1 ) * wordsInBlock - 1 );
    json.field( "checked", bulk.random.chance( 90 ) );
}

void writePiece( JsonWriter& json, Bulk& bulk, Field const& field, uint32_t wordBit ) {
    uint32_t const bits = std::min( field.bits, 32U );
    json.field( "source", field.name );
    json.field( "source_bit", field.bits - bits );
    json.field( "bits", bits );
    json.field( "word_bit", wordBit );
    json.field( "enabled", bulk.random.chance( 95 ) );
}

void writeTransition( JsonWriter& json, Bulk& bulk, uint32_t state ) {
    json.field( "value", bulk.random.below( 1U << 16 ) );
    json.field( "mask", 0xFFFFU );
    json.field( "shift_bytes", bulk.random.between( 1, 40 ) );
    json.field( "next_state", "state_" + std::to_string( state + bulk.random.between( 1, 8 ) ) );
}

void writeState( JsonWriter& json, Bulk& bulk, uint32_t state ) {
    json.field( "state", "state_" + std::to_string( state ) );
    json.field( "priority", state );
    json.objects( "extracts", inventFields( bulk.random, bulk.random.between( 1, 4 ) ),
                  [ & ]( Field const& field ) {
                      json.field( "field", field.name );
                      json.field( "bits", field.bits );
                      json.field( "at_byte", bulk.random.below( 32 ) );
                  } );
    json.repeat( "transitions", bulk.random.between( 1, 5 ),
                 [ & ]( uint32_t ) { writeTransition( json, bulk, state ); } );
}

} // namespace

void writeMemory( JsonWriter& json, Bulk& bulk, StageTable const& stageTable ) {
    json.object( "memory", [ & ] {
        json.field( "spare_words", bulk.random.below( wordsInBlock ) );
        json.field( "entries_in_word", bulk.random.between( 1, 4 ) );
        json.field( "fill", bulk.random.fraction() );
        uint32_t const blocks = std::min( 36 + stageTable.size / wordsInBlock, 72U );
        json.repeat( "blocks", bulk.count( blocks ), [ & ]( uint32_t i ) { writeBlock( json, bulk, i ); } );
    } );
}

void writeWordLayout( JsonWriter& json, Bulk& bulk, std::span<Field const> fields ) {
    json.object( "word_layout", [ & ] {
        json.field( "word_bits", wordBits );
        json.repeat( "slots", bulk.countBetween( 3, 5 ), [ & ]( uint32_t slot ) {
            json.field( "slot", slot );
            uint32_t wordBit = slot;
            json.objects( "pieces", fields, [ & ]( Field const& field ) {
                writePiece( json, bulk, field, wordBit % wordBits );
                wordBit += field.bits;
            } );
        } );
    } );
}

void writeHashWays( JsonWriter& json, Bulk& bulk ) {
    json.repeat( "ways", bulk.countBetween( 3, 6 ), [ & ]( uint32_t way ) {
        json.field( "way", way );
        json.field( "first_index_bit", way * 10 );
        json.field( "select_mask", bulk.random.below( 4096 ) );
        json.values( "polynomial", 6, [ & ]( uint32_t ) { return bulk.random.below( 65536 ); } );
        json.values( "blocks", 8, [ & ]( uint32_t ) { return bulk.random.below( 96 ); } );
    } );
}

void writeParseGraph( JsonWriter& json, Bulk& bulk, bool ingress ) {
    json.repeat( ingress ? "ingress" : "egress", bulk.countBetween( 40, 80 ),
                 [ & ]( uint32_t state ) { writeState( json, bulk, state ); } );
}

} // namespace bfgen
