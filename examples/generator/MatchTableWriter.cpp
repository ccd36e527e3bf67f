#include <string>

#include "TableWriter.h"

namespace bfgen {

namespace {

void writeReferences( JsonWriter& json, std::string_view member, References const& references ) {
    if( !references.has_value() ) {
        return;
    }
    json.objects( member, *references, [ & ]( Reference const& reference ) {
        json.field( "name", reference.name );
        json.field( "handle", reference.handle );
        json.field( "how_referenced", howText( reference.how ) );
    } );
}

void writeStaticEntries( JsonWriter& json, Bulk& bulk, Match const& match ) {
    if( !match.staticEntries.has_value() ) {
        return;
    }
    json.repeat( "static_entries", *match.staticEntries, [ & ]( uint32_t i ) {
        json.field( "priority", i );
        json.objects( "key_values", match.keys, [ & ]( Field const& key ) {
            json.field( "field", key.name );
            json.field( "value", "0x" + std::to_string( bulk.random.below( 100 ) ) );
        } );
    } );
}

/// The table as its author wrote it; real files quote source text, with all that has to be escaped.
std::string sourceText( Table const& table, Match const& match ) {
    std::string text = "@unit(\"" + table.name + "\")\ntable {\n\tkey = {";
    for( Field const& key : match.keys ) {
        text += "\n\t\t" + key.name + " : " + std::string( match.type ) + ";";
    }
    return text + "\n\t}\n}";
}

void writeKeys( JsonWriter& json, Match const& match ) {
    uint32_t position = 0;
    json.objects( "key_fields", match.keys, [ & ]( Field const& key ) {
        json.field( "position", position++ );
        json.field( "name", key.name );
        json.field( "bits", key.bits );
        json.field( "bytes", ( key.bits + 7 ) / 8 );
        json.field( "masked", match.type != "exact" );
    } );
}

void writeStageTables( JsonWriter& json, Bulk& bulk, Match const& match, StageTables const& stageTables ) {
    json.objects( "stage_tables", stageTables, [ & ]( StageTable const& stageTable ) {
        writeStagePart( json, bulk, stageTable );
        if( stageTable.idlePrecision.has_value() ) {
            json.object( "idletime_stage_table", [ & ] {
                json.field( "precision", *stageTable.idlePrecision );
                writeMemory( json, bulk, stageTable );
            } );
        }
        writeWordLayout( json, bulk, match.keys );
        if( stageTable.type == "hash_match" ) {
            writeHashWays( json, bulk );
        }
    } );
}

void writeUnits( JsonWriter& json, Bulk& bulk, Match const& match ) {
    uint32_t index = 0;
    json.objects( "units", match.units, [ & ]( StageTables const& stageTables ) {
        json.field( "unit", index++ );
        json.object( "match_attributes", [ & ] {
            json.field( "match_type", "ternary" );
            writeStageTables( json, bulk, match, stageTables );
        } );
    } );
}

/// The bulk of an algorithmic lpm table is a table of its own within, searched after the first one.
void writeInnerTable( JsonWriter& json, Bulk& bulk, Match const& match ) {
    json.object( "atcam_table", [ & ] {
        json.object( "match_attributes", [ & ] {
            json.field( "match_type", "algorithmic_tcam" );
            writeUnits( json, bulk, match );
        } );
    } );
}

void writeMatchAttributes( JsonWriter& json, Bulk& bulk, Table const& table, Match const& match ) {
    json.field( "match_type", match.type );
    json.optionalField( "number_partitions", match.partitions );
    writeKeys( json, match );
    bool const hasInnerTable = match.type == "algorithmic_lpm";
    bool const hasUnits = !match.units.empty() && !hasInnerTable;
    if( hasInnerTable ) {
        writeInnerTable( json, bulk, match );
    }
    if( hasUnits ) {
        writeUnits( json, bulk, match );
    }
    if( !hasUnits || match.stageTablesBesideUnits ) {
        writeStageTables( json, bulk, match, table.stageTables );
    }
}

} // namespace

void writeMatch( JsonWriter& json, Bulk& bulk, Table const& table, Match const& match ) {
    json.field( "is_resource_controllable", match.resourceControllable );
    json.optionalField( "action_profile", match.actionProfile );
    json.field( "source_text", sourceText( table, match ) );
    writeStaticEntries( json, bulk, match );
    writeReferences( json, "action_data_table_refs", match.actionData );
    writeReferences( json, "selection_table_refs", match.selection );
    writeReferences( json, "statistics_table_refs", match.statistics );
    writeReferences( json, "meter_table_refs", match.meters );
    writeReferences( json, "stateful_table_refs", match.stateful );
    writeActions( json, bulk, match );
    json.object( "match_attributes", [ & ] { writeMatchAttributes( json, bulk, table, match ); } );
}

} // namespace bfgen
