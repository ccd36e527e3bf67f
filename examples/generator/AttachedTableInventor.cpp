#include "AttachedTableInventor.h"

#include <algorithm>
#include <string>
#include <utility>

namespace bfgen {

namespace {

/// An action chooses among counters, meters and registers; action data comes with the action itself.
bool chosenByAction( Details const& details ) {
    return !std::holds_alternative<ActionData>( details ) && !std::holds_alternative<Selection>( details );
}

} // namespace

Placement inventPlacement( Random& random, uint32_t stages ) {
    uint32_t const first = random.below( stages );
    return { first, std::min( random.between( 1, 3 ), stages - first ) };
}

void AttachedTableInventor::attend( Table& owner ) {
    inventActionData( owner );
    invent( owner, Statistics{}, "counter", statistics_.deal( random_ ) );
    invent( owner, Meter{}, "meter", meters_.deal( random_ ) );
    invent( owner, Stateful{}, "register", stateful_.deal( random_ ) );
}

void AttachedTableInventor::inventActionData( Table& owner ) {
    Attendance const attendance = actionData_.deal( random_ );
    invent( owner, ActionData{}, "action_data", attendance );
    auto& match = std::get<Match>( owner.details );
    if( attendance != Attendance::indirect || !match.actionData.has_value() ) {
        return;
    }
    match.actionProfile = owner.name + "_profile";
    bool const selects = selects_.deal( random_ );
    invent( owner, Selection{}, "selector", selects ? Attendance::indirect : Attendance::emptyList );
}

void AttachedTableInventor::invent( Table& owner, Details details, std::string_view suffix,
                                    Attendance attendance ) {
    if( attendance == Attendance::none ) {
        return;
    }
    if( attendance == Attendance::emptyList ) {
        referencesFor( std::get<Match>( owner.details ), details ).emplace();
        return;
    }
    Table* attendant = attendance == Attendance::shared ? sharable( owner, details ) : nullptr;
    if( attendant == nullptr && builder_.tableCount() < tableLimit_ ) {
        // A table without a place is unknown to those who look up whose entries a direct table serves.
        bool const direct = attendance == Attendance::direct && isPlaced( owner );
        attendant = &add( owner, std::move( details ), suffix, direct ? How::direct : How::indirect );
    }
    if( attendant != nullptr ) {
        link( owner, *attendant );
        choose( owner, *attendant );
    }
}

Table& AttachedTableInventor::add( Table const& owner, Details details, std::string_view suffix, How how ) {
    bool const placed = !chosenByAction( details ) || placed_.deal( random_ );
    Placement const placement = placed ? inventPlacement( random_, builder_.program().stages ) : Placement{};
    uint32_t const size = how == How::direct ? owner.size : 1U << random_.between( 7, 14 );
    std::visit( [ this ]( auto& kind ) { fill( kind ); }, details );
    Table table = makeAttendant( std::move( details ), size, placement );
    table.name = owner.name + "_" + std::string( suffix );
    table.ingress = owner.ingress;
    table.how = how;
    if( namesLogicalPipe_.deal( random_ ) ) {
        builder_.nameLogicalPipe( table );
    }
    Table& added = builder_.add( std::move( table ) );
    if( how == How::indirect ) {
        sharables_.push_back( &added );
    }
    return added;
}

Table* AttachedTableInventor::sharable( Table const& owner, Details const& details ) {
    auto const fits = [ & ]( Table const* table ) {
        return table->ingress == owner.ingress && table->details.index() == details.index();
    };
    auto const last = std::ranges::find_if( sharables_.rbegin(), sharables_.rend(), fits );
    return last == sharables_.rend() ? nullptr : *last;
}

void AttachedTableInventor::choose( Table& owner, Table const& attendant ) {
    auto& actions = std::get<Match>( owner.details ).actions;
    if( attendant.how == How::direct || !chosenByAction( attendant.details ) ) {
        return;
    }
    std::size_t const chosen = random_.below( static_cast<uint32_t>( actions.size() ) );
    for( std::size_t i = 0; i < actions.size(); ++i ) {
        if( i == chosen || random_.chance( 15 ) ) {
            useInAction( actions[ i ], attendant );
        }
    }
}

void AttachedTableInventor::fill( Meter& meter ) {
    meter.type = meterTypes_.deal( random_ );
    meter.granularity = granularities_.deal( random_ );
    if( preColors_.deal( random_ ) ) {
        meter.preColorField = "ig_md.packet_color";
    }
}

} // namespace bfgen
