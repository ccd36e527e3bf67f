#include "MatchKind.h"

#include <algorithm>
#include <array>
#include <utility>

namespace bfgen {

namespace {

struct Traits {
    std::string_view matchType;
    std::string_view stageTableType; // none when all of the table is in its units
    uint32_t units;
    bool idleTime;
    bool attendants;
};

Traits const& traitsOf( MatchKind kind ) {
    static constexpr std::array<Traits, 8> traits{ {
        { "exact", "hash_match", 0, true, true },
        { "ternary", "ternary_match", 0, true, true },
        { "algorithmic_tcam", "", 2, true, true },
        { "chained_lpm", "", 3, true, true },
        { "algorithmic_lpm", "ternary_match", 3, false, true },
        { "keyless", "match_with_no_key", 0, false, true },
        { "hash_action", "hash_action", 0, false, false },
        { "port_properties", "phase_0_match", 0, false, false },
    } };
    return traits[ static_cast<std::size_t>( kind ) ];
}

constexpr uint32_t algorithmicPartitions = 16;

/// The first stage of a table tells the precision for all of it; later ones need not know of idle time.
void addIdleTime( StageTables& stageTables, uint32_t precision ) {
    for( std::size_t i = 0; i < stageTables.size(); i += 2 ) {
        stageTables[ i ].idlePrecision = precision;
    }
}

void addIdleTime( Table& table, IdleTime idleTime ) {
    auto& match = std::get<Match>( table.details );
    addIdleTime( table.stageTables, idleTime.precision );
    for( StageTables& unit : match.units ) {
        addIdleTime( unit, idleTime.precision );
    }
    // Readers take the precision from here, and want the list to be there even when it tells none.
    match.stageTablesBesideUnits = !match.units.empty();
    if( match.stageTablesBesideUnits && idleTime.besideUnits ) {
        table.stageTables = match.units.front();
    }
}

std::string_view stageTableType( Details const& details ) {
    static constexpr std::array<std::string_view, 7> types{
        "", "condition", "action_data", "selection", "statistics", "meter", "stateful" };
    return types[ details.index() ];
}

} // namespace

StageTables layOut( std::string_view type, uint32_t size, Placement placement ) {
    StageTables stageTables;
    for( uint32_t i = 0; i < placement.count; ++i ) {
        stageTables.push_back(
            { placement.first + i, type, std::max( size / placement.count, 1U ), std::nullopt } );
    }
    return stageTables;
}

Table makeMatchTable( MatchKind kind, uint32_t size, Placement placement, std::optional<IdleTime> idleTime ) {
    Traits const& traits = traitsOf( kind );
    Match match{ .type = traits.matchType };
    if( kind == MatchKind::algorithmicTcam ) {
        match.partitions = algorithmicPartitions;
    }
    for( uint32_t unit = 0; unit < traits.units; ++unit ) {
        match.units.push_back( layOut( "algorithmic_tcam_match", size / traits.units, placement ) );
    }
    Table table{ .name = {}, .ingress = true, .size = size, .details = std::move( match ) };
    if( !traits.stageTableType.empty() ) {
        table.stageTables = layOut( traits.stageTableType, size, placement );
    }
    if( idleTime.has_value() ) {
        addIdleTime( table, *idleTime );
    }
    return table;
}

Table makeAttendant( Details details, uint32_t size, Placement placement ) {
    StageTables stageTables = layOut( stageTableType( details ), size, placement );
    return { .name = {},
             .ingress = true,
             .size = size,
             .details = std::move( details ),
             .stageTables = std::move( stageTables ) };
}

bool supportsIdleTime( MatchKind kind ) { return traitsOf( kind ).idleTime; }

bool supportsAttendants( MatchKind kind ) { return traitsOf( kind ).attendants; }

} // namespace bfgen
