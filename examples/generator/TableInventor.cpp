#include "TableInventor.h"

#include <string>
#include <utility>

#include "Names.h"

namespace bfgen {

void TableInventor::inventAll() {
    while( builder_.tableCount() < tableLimit_ ) {
        std::optional<MatchKind> const kind = kinds_.deal( random_ );
        if( kind.has_value() ) {
            inventMatch( *kind );
        } else {
            inventCondition();
        }
    }
}

void TableInventor::inventMatch( MatchKind kind ) {
    Table& table = builder_.add( inventMatchTable( kind ) );
    auto& match = std::get<Match>( table.details );
    inventControl( kind, match );
    inventActions( kind, table );
    if( supportsAttendants( kind ) ) {
        attendants_.attend( table );
    }
    leaveResourceLists( match );
}

void TableInventor::inventCondition() {
    bool const ingress = ingress_.deal( random_ );
    Placement const placement = inventPlacement( random_, builder_.program().stages );
    Table table = makeAttendant( Condition{ std::string( inventConditionText( random_ ) ) }, 0, placement );
    table.name = builder_.qualified( ingress, "condition" );
    table.ingress = ingress;
    builder_.add( std::move( table ) );
}

Table TableInventor::inventMatchTable( MatchKind kind ) {
    Placement placement = inventPlacement( random_, builder_.program().stages );
    uint32_t size = random_.between( 2, 24 ) << random_.between( 5, 11 );
    if( kind == MatchKind::portProperties ) {
        placement = { 0, 1 };
        size = 256;
    } else if( kind == MatchKind::keyless ) {
        size = 1;
    } else if( kind != MatchKind::hashAction && !placed_.deal( random_ ) ) {
        placement = {};
    }
    std::optional<IdleTime> const idleTime = placement.count > 0 ? inventIdleTime( kind ) : std::nullopt;
    Table table = makeMatchTable( kind, size, placement, idleTime );
    table.ingress = kind == MatchKind::portProperties || ingress_.deal( random_ );
    table.name = builder_.qualified( table.ingress, inventTableName( random_, kind ) );
    if( namesLogicalPipe_.deal( random_ ) ) {
        builder_.nameLogicalPipe( table );
    }
    return table;
}

std::optional<IdleTime> TableInventor::inventIdleTime( MatchKind kind ) {
    uint32_t const precision = random_.between( 1, 6 );
    if( kind == MatchKind::algorithmicTcam || kind == MatchKind::chainedLpm ) {
        std::optional<bool> const besideUnits = unitsIdle_.deal( random_ );
        return besideUnits.has_value() ? std::optional( IdleTime{ precision, *besideUnits } ) : std::nullopt;
    }
    bool const idle = supportsIdleTime( kind ) && idle_.deal( random_ );
    return idle ? std::optional( IdleTime{ precision } ) : std::nullopt;
}

void TableInventor::inventControl( MatchKind kind, Match& match ) {
    if( kind != MatchKind::keyless && kind != MatchKind::hashAction ) {
        match.keys = inventFields( random_, random_.between( 1, 6 ) );
    }
    match.resourceControllable = controllable_.deal( random_ );
    switch( staticEntries_.deal( random_ ) ) {
    case Presence::absent:
        break;
    case Presence::empty:
        match.staticEntries = 0;
        break;
    case Presence::filled:
        match.staticEntries = random_.between( 1, 8 );
        break;
    }
    // No agent can take on these; the compiler hands them out only where nobody is meant to.
    if( kind == MatchKind::algorithmicLpm && match.staticEntries.value_or( 0 ) == 0 ) {
        match.resourceControllable = false;
    }
}

void TableInventor::inventActions( MatchKind kind, Table& table ) {
    auto& match = std::get<Match>( table.details );
    uint32_t const count = supportsAttendants( kind ) ? random_.between( 1, 5 ) : random_.below( 2 );
    for( std::string_view const name : inventActionNames( random_, count ) ) {
        builder_.addAction( match, std::string( name ) );
    }
}

/// A list of resources can also be there and empty.
void TableInventor::leaveResourceLists( Match& match ) {
    for( Action& action : match.actions ) {
        if( !action.indirectResources.has_value() && listsNoResources_.deal( random_ ) ) {
            action.indirectResources.emplace();
        }
    }
}

} // namespace bfgen
