#pragma once

// What a front end wants to know of a context file beyond the model: taken during the one reading of the
// file, from the document that the passes see, and only when somebody has asked. Agents never ask, so this
// header is not installed.

#include "resourceinfo/Export.h"
#include "resourceinfo/model/Types.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Context {

/// Where a value starts in its file, the name of a member included.
struct Place {
    std::uint64_t offset = 0; ///< characters in front of it, unpacked
    U32 line = 0;             ///< from 1
    U32 column = 0;           ///< in characters of 8 bits, from 1

    bool operator==( Place const& ) const = default;
};

/// XXH3-128 of a value: equal for equal values, however they are written. White space, escapes and the order
/// of an object's members make no difference; the order of elements does, and so does the type that a number
/// is read as. Members of one name count in their order.
struct Digest {
    std::uint64_t low = 0;
    std::uint64_t high = 0;

    bool operator==( Digest const& ) const = default;
};

/// The digest of a part of an object: of a member, "memory", or of a part of one,
/// "match_attributes/key_fields", "actions/0".
struct PartDigest {
    String path;
    Digest digest;
    Digest unread = {}; ///< of what no pass may read in it: members with names that no pass asks for; zero
                        ///< without any

    bool operator==( PartDigest const& ) const = default;
};

/// An element of "tables", "learn_quanta", "flexible_headers" or "dynamic_hash_calculations". What the
/// element does not have, or has with another type, is empty.
struct SurveyedElement {
    U32 index = 0; ///< in its list
    Place place = {};
    String name = {};
    std::optional<U32> handle = {};       ///< as the model has it, pipe bits included
    std::optional<Digest> digest = {};    ///< only where digests were asked for
    std::vector<PartDigest> digests = {}; ///< of its members, in their order; in a table, of the members of
                                          ///< "match_attributes" and the elements of "actions", too
};

/// A member of "stage_tables".
struct SurveyedStageTable {
    String path; ///< in the table: "match_attributes/units/0/match_attributes/stage_tables/1"
    std::optional<std::int64_t> stage; ///< "stage_number"; none when it is no whole number of 64 bits
    std::optional<String>
        stageText;           ///< how it is written, empty for an object or array; none without the member
    String type;             ///< "stage_table_type"
    std::optional<U32> size; ///< "size"; none where the file does not state one
};

/// An element of one of a table's lists of references.
struct SurveyedReference {
    String list;    ///< "statistics_table_refs"
    U32 handle = 0; ///< as the model has it
};

/// A name and a handle as the model has it.
struct SurveyedAction {
    String name;
    std::optional<U32> handle;
};

/// An element of "tables".
struct SurveyedTable : SurveyedElement {
    String type = {};           ///< "table_type"
    String direction = {};      ///< "direction"
    String howReferenced = {};  ///< "how_referenced"
    String statisticsType = {}; ///< "statistics_type"
    bool isWred = false;        ///< "meter_type" is "red"
    std::optional<U32> size = {};
    bool isControllable = true;      ///< "is_resource_controllable"; false only where the file says so
    std::uint64_t staticEntries = 0; ///< number of "static_entries"
    bool isOmitted = false; ///< the model leaves out the record and the actions of a match table, which is
                            ///< not controllable or has static entries
    std::vector<SurveyedStageTable> stageTables = {}; ///< of all units
    std::vector<SurveyedReference> references = {};   ///< list after list, each in its order
    std::vector<SurveyedAction> actions = {};

    // Where the model has it, by position in the parser's sequences. Only when the file was loaded whole.
    std::optional<U32> resource = {}; ///< in `bfResources`
    std::optional<U32> record =
        {}; ///< in `bfTables`, `bfCounters`, `bfMeters`, `bfWreds` or `bfRegisterInfos`
    std::optional<U32> firstAction = {}; ///< in `bfActions`, where the model has the actions
};

/// An element of "learn_quanta".
struct SurveyedLearnQuanta : SurveyedElement {
    bool isOmitted = false;         ///< the model has no record of it, since it has no "lq_cfg_type"
    std::optional<U32> record = {}; ///< in `bfLearnQuantaInfos`, when the file was loaded whole
};

/// An element of "flexible_headers".
struct SurveyedHeader : SurveyedElement {
    std::uint64_t bits = 0; ///< of all its fields; the model has them modulo 65536
};

/// A field in the containers of one stage and direction.
struct SurveyedPhvField {
    U32 element = 0; ///< of "phv_allocation": the stage
    bool ingress = false;
    String name;
    U32 bytes = 0; ///< "field_width"; the model has it modulo 32
};

/// A member whose value no pass knows.
struct UnknownWord {
    U32 table = 0;      ///< index in "tables"
    char const* member; ///< "direction"
    String word;
};

/// A member that came before in the same object: the first one counts.
struct DuplicateMember {
    String pointer; ///< JSON pointer
    Place place;    ///< of the second or later one
};

/// A number that the model has no room for.
struct TruncatedSize {
    enum class Kind { firstStage, header, ingressPhv, egressPhv };

    Kind kind;
    U32 index = 0;         ///< of the table, the header or the element of "phv_allocation"
    String name;           ///< of the table, the header or the field
    std::int64_t size = 0; ///< as the file has it: stage number, bits, bytes
    std::int64_t kept = 0; ///< as the model takes it
};

/// What one context file says.
struct FileSurvey {
    String path;
    U32 pipeMask = 0;
    U32 handlePipeBits = 0;
    bool isLoaded =
        false; ///< all passes are done; else the file is at fault, and this is what was seen of it

    std::vector<SurveyedTable> tables = {};
    std::vector<SurveyedLearnQuanta> learnQuantas = {};
    std::vector<SurveyedHeader> headers = {};
    std::vector<SurveyedElement> hashes = {};
    std::vector<SurveyedPhvField> phvFields = {}; ///< stage by stage, ingress first; not those with "is_pov"
    std::vector<UnknownWord> unknownWords = {};
    std::vector<DuplicateMember> duplicates =
        {}; ///< of members that some pass reads, in the order of the file
    std::vector<TruncatedSize> truncatedSizes = {};
    std::optional<Digest> digest = {};    ///< of the whole file, where digests were asked for
    std::vector<PartDigest> digests = {}; ///< of its members, in their order
};

/// Takes the surveys of the files that a thread loads.
class SurveySink {
  public:
    virtual ~SurveySink() = default;

    /// Called once for each file, when its passes are done or have failed; it must not throw.
    virtual void take( FileSurvey survey ) noexcept = 0;
    /// Whether digests are wanted: such a load takes about twice the time.
    virtual bool wantsDigests() const { return false; }
};

/// Installs a sink (null: none) for the loads of this thread and returns the former. It must outlive them.
BFRESOURCEINFO_EXPORT SurveySink* surveySinkIs( SurveySink* sink );

/// That of this thread; null when nobody asks.
SurveySink* surveySink();

} // namespace Context
