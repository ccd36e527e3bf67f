#pragma once

// The rules of a budget, as a file in TOML states them.

#include "inspect/stages/StageMap.h"

#include <optional>
#include <variant>
#include <vector>

namespace Bfri {

/// What happens if a rule is broken. A rule that is off is ignored.
enum class RuleLevel { off, warn, error };

char const* wordOf( RuleLevel level );

/// The sections of the file.
enum class RuleKind { chip, capacity, table, program, growth };

char const* wordOf( RuleKind kind );

/// What every rule has.
struct Rule {
    RuleKind kind;
    RuleLevel level;
    String reason;
    U32 line;   ///< of the rule's first key, or of its section
    U32 column; ///< in characters, from 1
};

/// What each stage of the chip provides for resources of some types.
struct CapacityRule : Rule {
    String type;                 ///< of the resources, or a pattern: "*_match"
    std::optional<bool> ingress; ///< only for this direction; else for both together
    std::vector<Stage> stages;   ///< ascending; empty: all
    StageMeasure of;
    std::uint64_t available; ///< in each stage

    bool isFor( StageGroup const& group ) const;
    bool isFor( Stage stage ) const;
};

/// The sizes that tables may have.
struct SizeRule : Rule {
    String name; ///< a name, the unique end of one, or a pattern
    std::optional<U32> least;
    std::optional<U32> most;
};

/// How many stages a program may use, or the chip has, from stage 0 on.
struct ProgramRule : Rule {
    String contextFile; ///< its path, the end of it, or a pattern; empty: every program, as for the chip
    U32 stages;
};

/// How much more than in an older configuration there may be: of the sizes of tables and other resources of
/// the context files, or of their number.
struct GrowthRule : Rule {
    String name; ///< of resources, as in a SizeRule; empty: all that there is
    StageMeasure of;
    std::optional<U32> most;    ///< entries, or resources
    std::optional<U32> percent; ///< of what there was
};

struct Rules {
    String path;
    std::optional<ProgramRule> chip = {};
    std::vector<CapacityRule> capacities = {};
    std::vector<SizeRule> sizes = {};
    std::vector<ProgramRule> programs = {};
    std::vector<GrowthRule> growths = {};
};

/// What is wrong with a file of rules, and where.
struct RulesMistake {
    String path;
    U32 line; ///< 0 if the file cannot be read
    U32 column;
    String problem;
};

std::variant<Rules, RulesMistake> readRules( String const& path );

/// Whether a text is a pattern: it has a star, for any characters, or a question mark, for one.
bool isPattern( std::string_view text );

/// Whether a pattern matches all of a text.
bool matches( std::string_view pattern, std::string_view text );

} // namespace Bfri
