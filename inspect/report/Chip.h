#pragma once

// A configuration as a report shows it: every placed resource, record and match table with its links, by
// number.

#include "inspect/check/Findings.h"
#include "inspect/stages/StageMap.h"

#include <bitset>
#include <variant>

namespace Bfri {

/// What differs from an older configuration, gravest first.
enum class Mark { removed, shrank, added, grew, moved, changed };
inline constexpr std::size_t markCount = 6;
using Marks = std::bitset<markCount>;

inline bool has( Marks marks, Mark mark ) { return marks.test( static_cast<std::size_t>( mark ) ); }
inline void add( Marks& marks, Mark mark ) { marks.set( static_cast<std::size_t>( mark ) ); }

/// The entries of a resource in a stage.
struct StageEntries {
    Stage stage;
    std::uint64_t entries; ///< that the context file states
    std::uint64_t drawn;   ///< the same; an even share if the file does not state them
};

/// A part of the report that can be linked to, by its number.
struct ChipLink {
    enum class To { table, resource } to;
    std::size_t number;

    bool operator==( ChipLink const& ) const = default;
};

using ChipRecord = std::variant<std::monostate, BfTableCounterInfo const*, BfTableMeterInfo const*,
                                BfTableWredInfo const*, BfRegisterInfo const*>;

/// A table of a context file that is placed, or that has a record in the model other than a match table's.
struct ChipResource {
    std::size_t number;
    std::size_t program;
    Context::SurveyedTable const* survey;
    U32 handle;
    U32 type; ///< a BfResourceType
    std::uint64_t size;
    bool ingress;
    bool isPlaced;
    std::vector<StageEntries> stages = {}; ///< ascending; empty if unknown
    bool isStated = false;                 ///< the file states the entries of each stage
    std::optional<std::size_t> table = {}; ///< whose place it is
    std::vector<ChipLink> owners = {};     ///< that it is attached to
    ChipRecord record = {};

    Marks marks = {};
    ChipResource const* old = nullptr; ///< in the older configuration; null if it is not there

    String const& name() const { return survey->name; }
    bool isIn( Stage stage ) const;
    /// Where the report has everything about it.
    ChipLink link() const {
        return table ? ChipLink{ ChipLink::To::table, *table } : ChipLink{ ChipLink::To::resource, number };
    }
};

/// A match table of the model.
struct ChipTable {
    std::size_t number;
    std::size_t program;
    BfTableInfo const* record;
    std::optional<std::size_t> resource = {}; ///< its place
    std::vector<std::size_t> attached = {};   ///< resources
    std::vector<U32> unknown = {};            ///< handles that it references, but no resource has
    std::vector<BfActionInfo const*> actions = {};
    std::vector<std::size_t> findings = {};

    Marks marks = {};
    ChipTable const* old = nullptr;

    String const& name() const { return record->name; }
    ChipLink link() const { return { ChipLink::To::table, number }; }
};

/// A resource in a stage that it has left.
struct Ghost {
    ChipResource const* old;
    StageEntries place;
    ChipResource const* now; ///< null if it was removed
};

/// A context file, and the pipes that run it.
struct ChipProgram {
    Context::FileSurvey const* file;
    String name; ///< short, from its path
    std::vector<U32> pipes;
    std::size_t firstResource, endResource; ///< its own, without the end
    std::size_t firstTable, endTable;

    std::optional<std::size_t> old = {}; ///< the program that it is compared with
    std::vector<Ghost> ghosts = {};
};

/// The bytes of a field in the PHV.
struct ChipField {
    String const* name;
    std::optional<U32> ingress = {};
    std::optional<U32> egress = {};
};

struct Chip {
    Configuration const* configuration;
    Chip const* old = nullptr;                        ///< that it is compared with
    std::vector<ChipProgram> programs = {};           ///< in the order in which they were read
    std::vector<ChipResource> resources = {};         ///< of one program after the other
    std::vector<ChipTable> tables = {};               ///< the same
    std::vector<ChipResource const*> removed = {};    ///< resources of the old chip that are gone
    std::vector<ChipTable const*> removedTables = {}; ///< match tables; not if their place is gone, too
    std::vector<ChipField> fields = {};               ///< most bytes first
    std::vector<Finding> findings = {};
    std::vector<Stage> stages =
        {}; ///< of all programs, empty ones included unless a number is impossibly high

    std::span<ChipResource const> resourcesOf( ChipProgram const& program ) const {
        return std::span( resources )
            .subspan( program.firstResource, program.endResource - program.firstResource );
    }
    std::span<ChipTable const> tablesOf( ChipProgram const& program ) const {
        return std::span( tables ).subspan( program.firstTable, program.endTable - program.firstTable );
    }
    BfResourceInfo::BfResourceParser const& parser() const { return configuration->parser(); }
    std::size_t columnOf( Stage stage ) const; ///< its place among the stages
    std::size_t countOthers() const; ///< the parts that do not belong to match tables, placed or not
    std::size_t countPlaced( ChipProgram const& program ) const; ///< its resources, as the model counts them
    String const& nameOf( ChipLink link ) const;
    U32 handleOf( ChipLink link ) const;
    ChipResource const* placeOf( ChipTable const& table ) const { ///< null if it is not placed
        return table.resource ? &resources[ *table.resource ] : nullptr;
    }
    /// What a finding is about; nothing if no part has that name.
    std::optional<ChipLink> linkOf( Finding const& finding ) const;

    std::unordered_multimap<std::string_view, ChipLink> byName = {};
};

/// Made from a configuration that was loaded with a survey and must outlive the chip.
Chip chipOf( Configuration const& configuration );

/// The old names of tables and resources by their new ones.
using Renames = std::unordered_map<std::string_view, std::string_view>;

/// Marks in a chip what differs from an older one, which must outlive it.
void compare( Chip& now, Chip const& old, Renames const& renames = {} );

/// The position of a type in pictures and lists; unknown types come last.
std::size_t placeOfType( U32 type );
inline constexpr std::size_t typeCount = 13;

/// Whether a type is for match tables.
inline bool isMatchType( U32 type ) { return type < static_cast<U32>( BfResourceType::actionData ); }

} // namespace Bfri
