#include <array>
#include <span>
#include <string>

#include "Names.h"
#include "TableWriter.h"

namespace bfgen {

namespace {

constexpr std::array<std::string_view, 6> operations{ "assign", "add",  "subtract",
                                                      "select", "hash", "count" };

void writeParameter( JsonWriter& json, Bulk& bulk, uint32_t position ) {
    json.field( "name", "value_" + std::to_string( position ) );
    json.field( "position", position );
    json.field( "bits", bulk.random.between( 1, 48 ) );
}

void writeStep( JsonWriter& json, Bulk& bulk, Field const& target ) {
    json.field( "operation", bulk.random.pick( std::span<std::string_view const>( operations ) ) );
    json.object( "target", [ & ] {
        json.field( "field", target.name );
        json.field( "bits", target.bits );
    } );
    json.repeat( "operands", bulk.random.between( 1, 2 ), [ & ]( uint32_t ) {
        json.field( "kind", bulk.random.chance( 50 ) ? "parameter" : "constant" );
        json.field( "value", bulk.random.below( 1U << 20 ) );
    } );
}

void writeIndirectResources( JsonWriter& json, Action const& action ) {
    if( action.indirectResources.has_value() ) {
        json.objects( "indirect_resources", *action.indirectResources, [ & ]( std::string const& name ) {
            json.field( "access", "by_index" );
            json.field( "resource_name", name );
        } );
    }
}

} // namespace

void writeActions( JsonWriter& json, Bulk& bulk, Match const& match ) {
    json.objects( "actions", match.actions, [ & ]( Action const& action ) {
        json.field( "name", action.name );
        json.field( "handle", action.handle );
        json.field( "default_allowed", bulk.random.chance( 80 ) );
        writeIndirectResources( json, action );
        json.repeat( "parameters", bulk.countBetween( 1, 4 ),
                     [ & ]( uint32_t position ) { writeParameter( json, bulk, position ); } );
        json.objects( "steps", inventFields( bulk.random, bulk.countBetween( 4, 9 ) ),
                      [ & ]( Field const& target ) { writeStep( json, bulk, target ); } );
    } );
}

} // namespace bfgen
