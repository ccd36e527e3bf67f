#include "TableWriter.h"

#include <array>
#include <span>
#include <vector>

namespace bfgen {

namespace {

std::string_view tableType( Details const& details ) {
    static constexpr std::array<std::string_view, 7> types{
        "match", "condition", "action_data", "selection", "statistics", "meter", "stateful" };
    return types[ details.index() ];
}

/// The fields of which an entry of a table that isn't matched consists.
std::span<Field const> entryFields( Details const& details ) {
    static std::vector<Field> const actionData{
        { "port", 9 }, { "queue", 5 }, { "next_hop", 16 }, { "source_address", 48 }, { "session", 10 } };
    static std::vector<Field> const counts{ { "packets", 28 }, { "bytes", 36 } };
    static std::vector<Field> const rates{
        { "level_committed", 24 }, { "level_peak", 24 }, { "rate_committed", 13 }, { "rate_peak", 13 } };
    static std::vector<Field> const cell{ { "low", 32 }, { "high", 32 } };
    static std::vector<Field> const members{ { "member", 11 }, { "alive", 1 } };
    static std::array<std::span<Field const>, 7> const fields{
        { {}, {}, actionData, members, counts, rates, cell } };
    return fields[ details.index() ];
}

void writeStageTables( JsonWriter& json, Bulk& bulk, Table const& table ) {
    json.objects( "stage_tables", table.stageTables, [ & ]( StageTable const& stageTable ) {
        writeStagePart( json, bulk, stageTable );
        writeWordLayout( json, bulk, entryFields( table.details ) );
    } );
}

class DetailsWriter {
  public:
    DetailsWriter( JsonWriter& json, Bulk& bulk, Table const& table )
        : json_( json ), bulk_( bulk ), table_( table ) {}

    void operator()( Match const& match ) { writeMatch( json_, bulk_, table_, match ); }

    void operator()( Condition const& condition ) {
        json_.field( "condition_text", condition.text );
        writeStageTables( json_, bulk_, table_ );
    }

    void operator()( ActionData const& ) { writeAttendant(); }

    void operator()( Selection const& selection ) {
        json_.field( "group_limit", selection.groups );
        writeAttendant();
    }

    void operator()( Statistics const& statistics ) {
        json_.field( "statistics_type", statistics.counts );
        writeAttendant();
    }

    void operator()( Meter const& meter ) {
        json_.field( "meter_type", meter.type );
        json_.field( "meter_granularity", meter.granularity );
        json_.optionalField( "pre_color_field_name", meter.preColorField );
        writeAttendant();
    }

    void operator()( Stateful const& stateful ) {
        json_.field( "alu_width", stateful.aluWidth );
        json_.optionalField( "dual_width_mode", stateful.dualWidth );
        json_.values( "initial_values", bulk_.count( 512 ),
                      [ this ]( uint32_t ) { return bulk_.random.below( 1U << 16 ); } );
        writeAttendant();
    }

  private:
    void writeAttendant() {
        json_.field( "how_referenced", howText( table_.how ) );
        writeStageTables( json_, bulk_, table_ );
    }

    JsonWriter& json_;
    Bulk& bulk_;
    Table const& table_;
};

} // namespace

void writeTable( JsonWriter& json, Bulk& bulk, Table const& table ) {
    json.field( "name", table.name );
    json.field( "handle", table.handle );
    json.field( "table_type", tableType( table.details ) );
    json.field( "direction", table.ingress ? "ingress" : "egress" );
    json.field( "size", table.size );
    json.optionalField( "logical_pipe", table.logicalPipe );
    std::visit( DetailsWriter( json, bulk, table ), table.details );
}

void writeStagePart( JsonWriter& json, Bulk& bulk, StageTable const& stageTable ) {
    json.field( "stage_number", stageTable.stage );
    json.field( "stage_table_type", stageTable.type );
    json.field( "size", stageTable.size );
    writeMemory( json, bulk, stageTable );
}

std::string_view howText( How how ) { return how == How::direct ? "direct" : "indirect"; }

} // namespace bfgen
