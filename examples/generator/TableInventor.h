#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "AttachedTableInventor.h"
#include "MatchKind.h"
#include "ProgramBuilder.h"
#include "Random.h"

namespace bfgen {

/// Invents match tables, each with the tables that serve it, and conditions.
class TableInventor {
  public:
    TableInventor( ProgramBuilder& builder, Random& random, std::size_t tableLimit )
        : builder_( builder ),
          random_( random ),
          tableLimit_( tableLimit ),
          attendants_( builder, random, tableLimit ) {}

    void inventAll();

  private:
    enum class Presence : uint8_t { absent, empty, filled };

    void inventMatch( MatchKind kind );
    void inventCondition();
    Table inventMatchTable( MatchKind kind );
    std::optional<IdleTime> inventIdleTime( MatchKind kind );
    void inventControl( MatchKind kind, Match& match );
    void inventActions( MatchKind kind, Table& table );
    void leaveResourceLists( Match& match );

    ProgramBuilder& builder_;
    Random& random_;
    std::size_t tableLimit_;
    AttachedTableInventor attendants_;

    static constexpr std::nullopt_t condition = std::nullopt;
    Deck<std::optional<MatchKind>> kinds_{
        { MatchKind::exact, 5 },      { MatchKind::ternary, 4 },        { MatchKind::algorithmicTcam, 3 },
        { MatchKind::chainedLpm, 2 }, { MatchKind::algorithmicLpm, 1 }, { MatchKind::keyless, 1 },
        { MatchKind::hashAction, 1 }, { MatchKind::portProperties, 1 }, { condition, 2 } };
    Deck<bool> ingress_{ { true, 3 }, { false, 2 } };
    Deck<bool> placed_{ { true, 11 }, { false, 1 } };
    Deck<bool> namesLogicalPipe_{ { true, 2 }, { false, 1 } };
    Deck<bool> controllable_{ { true, 11 }, { false, 1 } };
    Deck<Presence> staticEntries_{ { Presence::absent, 9 }, { Presence::empty, 2 }, { Presence::filled, 1 } };
    Deck<bool> idle_{ { true, 1 }, { false, 2 } };
    Deck<std::optional<bool>> unitsIdle_{
        { true, 1 },
        { false, 1 },
        { std::nullopt, 1 } }; // whether it's told beside the units too; none: no idle time
    Deck<bool> listsNoResources_{ { true, 1 }, { false, 2 } };
};

} // namespace bfgen
