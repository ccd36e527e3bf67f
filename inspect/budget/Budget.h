#pragma once

// How much of a budget a configuration uses.

#include "inspect/budget/Rules.h"

namespace Bfri {

/// How much is used of what a rule allows. For the least size of a table, that size is what is used, and the
/// table's size is what is available.
struct Use {
    Rule const* rule;
    String what;        ///< "ingress hash_match entries", "size of match table pipe.acl"
    String contextFile; ///< empty if it is about all of them
    std::optional<Stage> stage;
    std::int64_t used;
    std::int64_t available;
    U32 unstated = 0; ///< stage tables that do not count as used, as the file does not state their entries

    bool isOver() const { return used > available; }
    std::int64_t slack() const { return available - used; }
    /// Rounded up, so that only what is over has more than 100; nothing if nothing is available.
    std::optional<std::int64_t> percent() const;
};

/// A rule that can't be judged: it matches nothing, or its name matches several records.
struct RuleProblem {
    Rule const* rule;
    String problem;
};

/// A configuration judged by rules, which must outlive it.
struct Budget {
    std::vector<Use> uses;             ///< the highest percent first
    std::vector<RuleProblem> problems; ///< all of them are errors
    std::size_t notJudged = 0;         ///< rules of growth, without an older configuration

    /// The broken rules of a level, one for each use.
    std::size_t broken( RuleLevel level ) const;
};

/// Judges a configuration that was loaded with a survey; so must `old` be, or null.
Budget budgetOf( Rules const& rules, Configuration const& configuration, Configuration const* old );

/// How much of a capacity the resources of a map use in one of its stages.
Use useOf( CapacityRule const& capacity, StageMap const& map, std::size_t stage );

/// The same for each capacity that is not off, in each stage of the map: capacity by capacity, stages
/// ascending.
std::vector<Use> capacityUses( Rules const& rules, StageMap const& map );

/// The members of the JSON object.
Row rowOf( Budget const& budget );
Row rowOf( Use const& use );

} // namespace Bfri
