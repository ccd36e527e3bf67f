#pragma once

// The rules of the findings, and the data that they read. Each rule is linear in the model and its survey,
// except for sorting.

#include "inspect/check/Findings.h"
#include "inspect/rows/Row.h"
#include "inspect/rows/Utf8.h"

#include <unordered_set>

namespace Bfri {

/// A record that belongs to match tables.
struct Attached {
    char const* kind;
    String const* name;
    U32 handle; ///< for a direct one other than a counter: its match table's
    bool direct;
    U32 ownHandle;             ///< its own handle if the model keeps it, else 0
    std::size_t referenceKind; ///< index in referenceKinds
};

/// One of the three lists of handles in a placed table.
struct ReferenceKind {
    char const* list;
    Vessa::Queue<U32> const& ( BfResourceInfo::BfZelResource::*queue )() const;
    BfResourceType types[ 2 ]; ///< types that it may refer to
};

extern ReferenceKind const referenceKinds[ 3 ];

/// The texts of the first elements, at most so many: "t", "u", ...
template<class All, class TextOf>
String firstFew( std::size_t most, All const& all, TextOf textOf ) {
    String text;
    for( std::size_t i = 0; i < std::min( most, all.size() ); ++i )
        text += ( i == 0 ? "" : ", " ) + textOf( all[ i ] );
    return text + ( all.size() > most ? ", ..." : "" );
}

/// What a table of a context file is in the model: "match table".
char const* recordOf( Context::SurveyedTable const& table );

struct CheckContext {
    explicit CheckContext( Configuration const& configuration );

    Configuration const& configuration;
    BfResourceInfo::BfResourceParser const& parser;
    std::vector<Attached> attached;                    ///< counters, meters, WRED tables, registers
    std::unordered_map<U32, BfResource const*> placed; ///< by handle
    std::unordered_set<std::string_view> placedNames;
    std::unordered_map<U32, std::vector<U32>> referrers; ///< by handle: the placed tables that list it
    /// By handle: the names of tables without a stage table that list it.
    std::unordered_map<U32, std::vector<String>> unplacedReferrers;

    bool hasPipeBits() const { return !parser.bfrtConfig().empty(); }
    /// In how many context files a handle may be: those whose handles carry the same pipe, or all.
    std::size_t filesWith( U32 handle ) const;
    /// The part of a handle that tells the context files apart; 0 when nothing does.
    U32 pipeBits( U32 handle ) const { return hasPipeBits() ? handle >> 28 : 0; }
    /// The only context file that may have a record with that handle, or without one; empty if there are
    /// several.
    String contextFileOf( std::optional<U32> handle ) const;

  private:
    std::unordered_map<U32, std::vector<String>> files_; // by pipe bits
};

/// Adds the findings of one kind.
using FindingRule = void( CheckContext const& facts, Findings& findings );

// Pipelines.
FindingRule findUnreadContextFiles, findOverlappingPipes, findWrappingPipes, findPipelinesWithoutPipes,
    findLostPipeBits, findHandlesInPipeBits, findNoContextFile;

// Names and handles.
FindingRule findDuplicateTableNames, findDuplicateResourceNames, findDuplicateActions,
    findDuplicateTableHandles, findDuplicateActionHandles, findNamesInSeveralPipelines,
    findHandlesInSeveralPipelines, findLookAlikes, findOddNames;

// References.
FindingRule findUnknownReferences, findReferencesOfWrongKind, findReferencesOfWrongName, findSeveralParents,
    findUnreferenced, findDisagreeingLinks, findSharedDirect, findUnknownResourceNames;

// Stages, sizes, types.
FindingRule findUnplacedTables, findEmptyTables, findLostStages, findOddStages, findFarStages,
    findLostPhvWidths, findWrappingHeaders, findRepeatedHashFields, findUnknownTableTypes,
    findUnknownDirections, findOmitted, findUnknownWords, findRepeatedMembers;

} // namespace Bfri
