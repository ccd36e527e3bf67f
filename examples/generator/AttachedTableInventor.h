#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "MatchKind.h"
#include "ProgramBuilder.h"
#include "Random.h"

namespace bfgen {

Placement inventPlacement( Random& random, uint32_t stages );

/// Invents the tables that serve a match table: its action data, selection, counters, meters and registers.
class AttachedTableInventor {
  public:
    AttachedTableInventor( ProgramBuilder& builder, Random& random, std::size_t tableLimit )
        : builder_( builder ), random_( random ), tableLimit_( tableLimit ) {}

    void attend( Table& owner );

  private:
    enum class Attendance : uint8_t { none, emptyList, direct, indirect, shared };

    void inventActionData( Table& owner );
    /// Of the details only the kind matters; they're filled in when a table is made.
    void invent( Table& owner, Details details, std::string_view suffix, Attendance attendance );
    Table& add( Table const& owner, Details details, std::string_view suffix, How how );
    Table* sharable( Table const& owner, Details const& details );
    void choose( Table& owner, Table const& attendant );

    template<typename Kind>
    void fill( Kind& ) {}
    void fill( Selection& selection ) { selection.groups = 1U << random_.between( 4, 10 ); }
    void fill( Statistics& statistics ) { statistics.counts = countings_.deal( random_ ); }
    void fill( Meter& meter );
    void fill( Stateful& stateful ) { stateful = registers_.deal( random_ ); }

    ProgramBuilder& builder_;
    Random& random_;
    std::size_t tableLimit_;
    std::vector<Table*> sharables_;

    // Cards, not dice: whatever can stand in a file or be left out then does both, even in a small one.
    Deck<Attendance> actionData_{ { Attendance::none, 1 },
                                  { Attendance::emptyList, 1 },
                                  { Attendance::direct, 3 },
                                  { Attendance::indirect, 4 },
                                  { Attendance::shared, 1 } };
    Deck<Attendance> statistics_{ { Attendance::none, 2 },
                                  { Attendance::emptyList, 1 },
                                  { Attendance::direct, 4 },
                                  { Attendance::indirect, 2 },
                                  { Attendance::shared, 1 } };
    Deck<Attendance> meters_{ { Attendance::none, 4 },
                              { Attendance::emptyList, 1 },
                              { Attendance::direct, 2 },
                              { Attendance::indirect, 3 },
                              { Attendance::shared, 1 } };
    Deck<Attendance> stateful_{ { Attendance::none, 5 },
                                { Attendance::emptyList, 1 },
                                { Attendance::direct, 1 },
                                { Attendance::indirect, 2 },
                                { Attendance::shared, 1 } };
    Deck<bool> placed_{ { true, 11 }, { false, 1 } };
    Deck<bool> namesLogicalPipe_{ { true, 2 }, { false, 1 } };
    Deck<bool> selects_{ { true, 1 }, { false, 1 } };
    Deck<std::string_view> countings_{ { "packets", 1 }, { "bytes", 1 }, { "packets_and_bytes", 2 } };
    Deck<std::string_view> meterTypes_{ { "standard", 3 }, { "lpf", 1 }, { "red", 2 } };
    Deck<std::string_view> granularities_{ { "bytes", 2 }, { "packets", 1 } };
    Deck<bool> preColors_{ { true, 1 }, { false, 1 } };
    Deck<Stateful> registers_{ { { 32, true }, 1 },         { { 1, std::nullopt }, 1 },
                               { { 8, std::nullopt }, 1 },  { { 16, false }, 1 },
                               { { 32, std::nullopt }, 1 }, { { 64, false }, 1 },
                               { { 128, std::nullopt }, 1 } };
};

} // namespace bfgen
