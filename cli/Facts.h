#pragma once

// What the rules of the findings read, and the rules. Each takes time in proportion to the model, but for
// sorting.

#include "cli/Findings.h"
#include "ostler/DeviceProfile.h"

#include <map>
#include <unordered_set>

namespace Bfri {

/// A record that belongs to match tables.
struct Attached {
    char const* kind;
    String const* name;
    U32 handle; ///< of a direct one that is no counter: of its match table
    bool direct;
    U32 ownHandle;             ///< its own handle, where the model keeps it; else 0
    std::size_t referenceKind; ///< index in referenceKinds
};

/// The three lists of handles that a placed table has.
struct ReferenceKind {
    char const* list;
    Vessa::Queue<U32> const& ( BfResourceInfo::BfZelResource::*queue )() const;
    BfResourceType types[ 2 ]; ///< what it may point to
};

extern ReferenceKind const referenceKinds[ 3 ];

/// A size that the model has no room for, and the context file that says so.
struct LostSize {
    std::uint64_t size = 0;
    String file = {};
};

/// What the model lacks of one record of a context file, or has otherwise.
struct Loss {
    String what; ///< the kind of record: "table"
    String name;
    std::optional<U32> handle; ///< as the model has it
    String says;
    String file;
};

/// What context files say that the model does not keep.
struct Losses {
    std::map<String, LostSize> ingressPhv; ///< of fields of 32 bytes and more the bytes
    std::map<String, LostSize> egressPhv;
    std::map<String, LostSize> headers; ///< of headers of 65,536 bits and more the bits
    std::vector<Loss> leftOut;          ///< match tables: why
    std::vector<Loss> leftOutQuantas;
    std::vector<Loss> tableTypes; ///< unknown ones
    std::vector<Loss> directions;
    std::vector<Loss> words;       ///< other unknown ones
    std::vector<Loss> repeated;    ///< members, in quotes
    std::vector<Loss> firstStages; ///< beyond 8 bits
    std::vector<Loss> stages;      ///< behind the first: no stages
    /// Of a handle the names of tables without a stage table that list it.
    std::unordered_map<U32, std::vector<String>> unplacedReferrers;
};

/// Reads the context files once more.
Losses lossesOf( BfResourceInfo::BfResourceParser const& parser );

struct Facts {
    explicit Facts( Model const& model );

    BfResourceInfo::BfResourceParser const& parser;
    Ostler::DeviceProfile const& profile;
    std::vector<Attached> attached;                    ///< counters, meters, WRED tables, registers
    std::unordered_map<U32, BfResource const*> placed; ///< by handle
    std::unordered_set<std::string_view> placedNames;
    std::unordered_map<U32, std::vector<U32>> referrers; ///< of a handle: the placed tables that list it
    Losses losses;

    bool hasPipeBits() const { return !parser.bfrtConfig().empty(); }
    /// In how many context files a handle may stand: those whose handles carry the same pipe, or all.
    std::size_t filesWith( U32 handle ) const;
    /// The part of a handle that tells the context files apart; 0 when nothing does.
    U32 pipeBits( U32 handle ) const { return hasPipeBits() ? handle >> 28 : 0; }
    /// The only context file that a record with that handle, or without one, may stand in; empty when there
    /// are several.
    String contextFileOf( std::optional<U32> handle ) const;

  private:
    std::unordered_map<U32, std::vector<String>> files_; // by pipe bits
};

/// The pipe that the handles of a context file carry in their upper bits: the lowest of its mask; 0 without a
/// runtime_config.
U32 pipeBitsOf( BfResourceInfo::BfResourceParser const& parser, U32 pipeMask );

/// For people, in quotes; those in it have a backslash in front.
String quoted( std::string_view name );
String hexOf( U32 number );

// Pipelines.
void findUnreadContextFiles( Facts const& facts, Findings& findings );
void findOverlappingPipes( Facts const& facts, Findings& findings );
void findWrappingPipes( Facts const& facts, Findings& findings );
void findPipelinesWithoutPipes( Facts const& facts, Findings& findings );
void findLostPipeBits( Facts const& facts, Findings& findings );
void findHandlesInPipeBits( Facts const& facts, Findings& findings );
void findNoContextFile( Facts const& facts, Findings& findings );

// Names and handles.
void findDuplicateTableNames( Facts const& facts, Findings& findings );
void findDuplicateResourceNames( Facts const& facts, Findings& findings );
void findDuplicateActions( Facts const& facts, Findings& findings );
void findDuplicateTableHandles( Facts const& facts, Findings& findings );
void findDuplicateActionHandles( Facts const& facts, Findings& findings );
void findNamesInSeveralPipelines( Facts const& facts, Findings& findings );
void findHandlesInSeveralPipelines( Facts const& facts, Findings& findings );
void findOddNames( Facts const& facts, Findings& findings );

// Who references whom.
void findUnknownReferences( Facts const& facts, Findings& findings );
void findReferencesOfWrongKind( Facts const& facts, Findings& findings );
void findReferencesOfWrongName( Facts const& facts, Findings& findings );
void findSeveralParents( Facts const& facts, Findings& findings );
void findUnreferenced( Facts const& facts, Findings& findings );
void findDisagreeingLinks( Facts const& facts, Findings& findings );
void findSharedDirect( Facts const& facts, Findings& findings );
void findUnknownResourceNames( Facts const& facts, Findings& findings );

// Stages, sizes, types.
void findUnplacedTables( Facts const& facts, Findings& findings );
void findEmptyTables( Facts const& facts, Findings& findings );
void findLostStages( Facts const& facts, Findings& findings );
void findOddStages( Facts const& facts, Findings& findings );
void findLostPhvWidths( Facts const& facts, Findings& findings );
void findWrappingHeaders( Facts const& facts, Findings& findings );
void findRepeatedHashFields( Facts const& facts, Findings& findings );
void findUnknownTableTypes( Facts const& facts, Findings& findings );
void findUnknownDirections( Facts const& facts, Findings& findings );
void findLeftOut( Facts const& facts, Findings& findings );
void findLeftOutTables( Facts const& facts, Findings& findings );
void findUnknownWords( Facts const& facts, Findings& findings );
void findRepeatedMembers( Facts const& facts, Findings& findings );

} // namespace Bfri
