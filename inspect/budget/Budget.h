#pragma once

// What a configuration takes of a budget.

#include "inspect/budget/Rules.h"

namespace Bfri {

/// What something takes of what a rule leaves it. Of a table's least size that is what is used, and its size
/// is what is available.
struct Use {
    Rule const* rule;
    String what;        ///< "ingress hash_match entries", "size of match table pipe.acl"
    String contextFile; ///< empty where it is about all of them
    std::optional<Stage> stage;
    std::int64_t used;
    std::int64_t available;
    U32 unstated = 0; ///< stage tables whose entries are not among the used ones, as the file states none

    bool isOver() const { return used > available; }
    std::int64_t slack() const { return available - used; }
    /// Rounded up, so that only what is over has more than 100; nothing where nothing is available.
    std::optional<std::int64_t> percent() const;
};

/// A rule that can't be judged: it matches nothing, or its name several records, which is an error whatever
/// the rule's level is; or it is a rule of growth, and there is nothing older.
struct RuleProblem {
    Rule const* rule;
    RuleLevel level;
    String problem;
};

/// A configuration, judged by rules, which outlive it.
struct Budget {
    std::vector<Use> uses;             ///< the highest percent first
    std::vector<RuleProblem> problems; ///< in the order of the rules
    std::size_t notJudged = 0;         ///< rules of growth, where there is nothing older

    /// The broken rules of a level, one for each use, and the problems of this level.
    std::size_t broken( RuleLevel level ) const;
};

/// Judges a configuration that was loaded with a survey; `old`, too, or null.
Budget budgetOf( Rules const& rules, Configuration const& configuration, Configuration const* old );

/// What the resources of a map take of a capacity in one of its stages.
Use useOf( CapacityRule const& capacity, StageMap const& map, std::size_t stage );

/// What the resources of a map take of each capacity that is not off, in each of its stages: capacity by
/// capacity, stages ascending.
std::vector<Use> capacityUses( Rules const& rules, StageMap const& map );

/// The members of the JSON object.
Row rowOf( Budget const& budget );
Row rowOf( Use const& use );

} // namespace Bfri
