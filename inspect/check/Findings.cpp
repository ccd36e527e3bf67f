#include "inspect/check/CheckContext.h"

#include <algorithm>

namespace Bfri {

namespace {

constexpr auto note = Severity::note;
constexpr auto warning = Severity::warning;
constexpr auto error = Severity::error;

constexpr FindingKind kinds[] = {
    // The switch configuration.
    { "BF101", "unread-context-file", error,
      "Two pipelines have the same pipes; only the context file of the last one is read.",
      "Nothing of the other program is in the model: an agent does not find its tables.",
      "Give each pipeline pipes of its own, or remove the one that is not intended from the switch "
      "configuration.",
      findUnreadContextFiles },
    { "BF102", "overlapping-pipes", error, "Two pipelines share a pipe. Both context files are read.",
      "A pipe runs one program. The model has the tables of both, and with a runtime_config their handles "
      "may be the same.",
      "Name each pipe in one pipeline only.", findOverlappingPipes },
    { "BF103", "wrapping-pipe", error, "A pipe number is 32 or more. Pipes count modulo 32.",
      "The pipeline runs on other pipes than it says, and may displace the pipeline that is there.",
      "Correct the number in \"pipes\".", findWrappingPipes },
    { "BF104", "no-pipes", warning,
      "A pipeline has an empty list of pipes. Its context file is read all the same.",
      "An agent finds tables that run nowhere, and a second pipeline without pipes displaces the first.",
      "Name its pipes, or remove the pipeline.", findPipelinesWithoutPipes },
    { "BF105", "lost-pipe-bits", error,
      "The lowest pipe of a pipeline is 16 or more. With a runtime_config, handles carry that pipe in "
      "their upper four bits, which have no room for it.",
      "Its handles look like those of the pipeline whose lowest pipe is 16 less.",
      "Give the pipeline a pipe below 16, or leave runtime_config out.", findLostPipeBits },
    { "BF106", "handle-in-pipe-bits", error,
      "A handle of the context file uses the upper four bits, which with a runtime_config are the pipe's; "
      "the model has both mixed.",
      "The handle differs from the one in the context file, and its pipe is wrong.",
      "Ask the compiler for handles below 0x10000000, or leave runtime_config out.", findHandlesInPipeBits },
    { "BF107", "no-context-file", warning, "The switch configuration names no context file.",
      "The model is empty: nothing was looked at.",
      "Check whether this is the right file, and why it names no device.", findNoContextFile },
    // Names and handles.
    { "BF201", "duplicate-table-name", error, "Several match tables of a context file have the same name.",
      "A query by name answers for the first; the others are found by index and handle only.",
      "Rename all but one in the P4 program.", findDuplicateTableNames },
    { "BF202", "duplicate-resource-name", warning,
      "Several placed tables of a context file, other than match tables of the model, have the same name.",
      "A query by name answers for the first, and they share the tables whose actions name them.",
      "Rename all but one in the P4 program.", findDuplicateResourceNames },
    { "BF203", "duplicate-action", warning, "A match table has several actions with the same name.",
      "An agent that looks for table and action finds the first.",
      "Rename all but one in the P4 program, or name the action once in the table.", findDuplicateActions },
    { "BF204", "duplicate-table-handle", error, "Tables with different names have the same handle.",
      "A look-up by handle answers for one of them, and references by handle go astray.",
      "Compile the program again; the compiler numbers its tables.", findDuplicateTableHandles },
    { "BF205", "duplicate-action-handle", warning, "Actions with different names have the same handle.",
      "A look-up by handle answers for the first.",
      "Compile the program again; the compiler numbers its actions.", findDuplicateActionHandles },
    { "BF206", "name-in-several-pipelines", note,
      "A name occurs several times, at most once per context file that can have it: most likely one "
      "program, or a part of it, runs in several pipelines.",
      "A query by name answers for the first pipeline only.",
      "In the agent, look up by handle, or by index and handle. If all pipelines run the same program, "
      "one pipeline with all pipes is enough.",
      findNamesInSeveralPipelines },
    { "BF207", "handle-in-several-pipelines", warning,
      "A handle belongs to several names, at most one per context file that can have it: several "
      "pipelines use the same handles.",
      "A look-up by handle answers for one pipeline, and references by handle may lead into another's "
      "tables.",
      "Name a runtime_config in the switch configuration: handles then carry their pipeline's lowest pipe.",
      findHandlesInSeveralPipelines },
    { "BF208", "odd-name", warning,
      "A name is empty, or has characters that a terminal can't show, or is not valid UTF-8.",
      "It is hard to type and to find, and looks different in every program that shows it; in JSON, bytes "
      "that are not UTF-8 are lost.",
      "Look for the name in the context file, and rename it in the P4 program.", findOddNames },
    { "BF209", "look-alike-name", warning,
      "A name differs from another one only invisibly: by characters without width, marks of the writing "
      "direction, or another normal form of the same characters.",
      "Somebody who reads or types one of the names may get the other record.",
      "Look for the name in the context file, and rename one of the two in the P4 program.", findLookAlikes },
    // References.
    { "BF301", "unknown-reference", error, "A placed table lists a handle that no table of the model has.",
      "What the table counts, meters or remembers there cannot be reached.",
      "Compile the program again; if the finding stays, report it to the compiler's makers.",
      findUnknownReferences },
    { "BF302", "wrong-kind-reference", error,
      "A table lists a handle of the wrong kind, for example as its counter a table that is not a "
      "statistics table.",
      "An agent that follows the reference works on the wrong table.",
      "Look at both tables in the context file; handles of two pipelines that are the same (BF207) do "
      "this, too.",
      findReferencesOfWrongKind },
    { "BF303", "wrong-name-reference", warning,
      "A match table names its action-data or selection table differently than the table with that handle "
      "is named.",
      "Name and handle of the record lead to different tables.",
      "Look at both tables in the context file; handles of two pipelines that are the same (BF207) do "
      "this, too.",
      findReferencesOfWrongName },
    { "BF304", "several-parents", note,
      "Actions of several tables name an indirect counter, meter, WRED table or register.",
      "It does not belong to one table, so its associated table is empty. P4 allows this; an agent that "
      "needs the table must know it from elsewhere.",
      "Nothing, if it is intended to be shared. Otherwise, give each table its own.", findSeveralParents },
    { "BF305", "unreferenced", warning,
      "No placed table lists the handle of an indirect counter, meter, WRED table or register, and no "
      "action of one names it.",
      "It takes memory on the chip, but no packet reaches it through a table of the model.",
      "Remove it from the P4 program, or use it. If a table lists it but has no stage table, the finding "
      "names the table; so does BF401 or BF409.",
      findUnreferenced },
    { "BF306", "disagreeing-links", warning,
      "The tables that list the handle of an indirect counter, meter, WRED table or register differ from "
      "those whose actions name it.",
      "The model derives the table that it belongs to from the actions alone; the lists of handles give "
      "another answer.",
      "Compile the program again; if the finding stays, report it to the compiler's makers.",
      findDisagreeingLinks },
    { "BF307", "shared-direct", warning,
      "Several tables list a direct counter, meter, WRED table or register, though it has one entry for "
      "each entry of a single table.",
      "In the model it belongs to the one with the lowest handle.",
      "Make it indirect in the P4 program, or give each table its own.", findSharedDirect },
    { "BF308", "unknown-resource", warning, "Actions of a table name a resource, but no table has that name.",
      "Nothing has this table as its parent, though something should.",
      "Look for the name in the context file: it may be spelled in two ways.", findUnknownResourceNames },
    // Stages, sizes, widths, types.
    { "BF401", "unplaced-table", note, "A match table has no stage table, so it is not on the chip.",
      "An agent finds its record, but no resource and no entry by handle; its entries match no packet.",
      "Check in the compiler's log whether it was optimised away or did not fit.", findUnplacedTables },
    { "BF402", "empty-table", warning, "A table has a size of 0.", "It can hold no entry.",
      "Give it a size in the P4 program, or remove it.", findEmptyTables },
    { "BF403", "lost-stage", error,
      "The number of a table's first stage is not from 0 to 255. The entry by handle keeps its lowest 8 "
      "bits, and the resource its lowest 32.",
      "Resource and entry by handle have different stages.",
      "Compile the program again; no chip has such a stage.", findLostStages },
    { "BF404", "lost-phv-width", warning,
      "A field in the PHV is 32 bytes or wider. The model keeps its bytes modulo 32; for several stages, "
      "the most.",
      "An agent that lays out fields by the model gives this field too little room.",
      "Split the field in the P4 program, or keep the agent from relying on its width.", findLostPhvWidths },
    { "BF405", "wrapping-header", error,
      "Together, the fields of a flexible header have 65,536 bits or more. The model counts them modulo "
      "65,536.",
      "The header's size in the model is too small.", "Split the header in the P4 program.",
      findWrappingHeaders },
    { "BF406", "repeated-hash-field", warning,
      "A dynamic hash calculation has a field more than once in its list.",
      "A search by name finds only the first; the repetition adds no new data to the hash's input.",
      "Name the field once in the P4 program, unless slices of it are intended.", findRepeatedHashFields },
    { "BF407", "unknown-table-type", warning,
      "A table has a \"table_type\" that the model does not know, so the table is of no kind.",
      "If it is a match table, a counter, a meter or a register, an agent does not find it: no query for "
      "that kind answers for it.",
      "Look for a misspelled word; otherwise, the compiler knows more types than the model.",
      findUnknownTableTypes },
    { "BF408", "unknown-direction", error,
      "A table has a \"direction\" other than \"ingress\" and \"egress\". The model assumes egress.",
      "An agent looks for the table on the wrong side, if it is an ingress table.",
      "Correct the word in the context file, or compile the program again.", findUnknownDirections },
    { "BF409", "left-out-record", note,
      "The model omits a match table of the context file and its actions: it has only match tables that "
      "are resource-controllable and have no static entries. Or it omits a learn quanta: it has only "
      "those with an \"lq_cfg_type\".",
      "An agent cannot find the table or its actions, or the learn quanta, by name. If a table has stage "
      "tables, its resource and its entry by handle are there.",
      "Nothing, if agents do not add entries to the table, or do not learn with the quanta. Otherwise, "
      "let the compiler mark the table as controllable, and remove its constant entries from the P4 "
      "program; or let it write the \"lq_cfg_type\".",
      findOmitted },
    { "BF410", "unknown-word", warning,
      "A counter has a \"statistics_type\", or a counter, meter, WRED table or register a "
      "\"how_referenced\", that the model does not know. In the model, a counter of such a type counts "
      "neither packets nor bytes; an unknown \"how_referenced\" means \"direct\", but for a meter or WRED "
      "table \"indirect\".",
      "An agent treats it as something else, or looks for it at the wrong table.",
      "Look for a misspelled word, or compile the program again.", findUnknownWords },
    { "BF411", "repeated-member", warning,
      "An object of the switch configuration or of a context file has several members with the same name, "
      "one that is read in such a file. The first counts. The finding has the path to it within the table "
      "or the file.",
      "Other programs that read the file may take the last one.",
      "Remove all but the right one, or compile the program again.", findRepeatedMembers },
    { "BF412", "odd-stage", warning,
      "A stage table after a table's first has no \"stage_number\", or one that is not a number from 0 to "
      "255. The model reads only the first stage table's.",
      "It is unknown which stages the table takes. The stage map shows a number of up to 32 bits as it is, "
      "and leaves out tables with anything else.",
      "Correct the number in the context file, or compile the program again.", findOddStages },
    { "BF413", "far-stage", warning,
      "A table takes a stage far beyond all others of its program, with more than eight empty stages in "
      "between.",
      "Most likely the number is wrong, or the placement is not as the compiler says. Programs that go "
      "through all stages up to the last one also go through the empty ones.",
      "Look at the stage tables of the table in the context file, and check in the compiler's log why "
      "they are there.",
      findFarStages },
};

} // namespace

char const* wordOf( Severity severity ) {
    return severity == error ? "error" : severity == warning ? "warning" : "note";
}

std::optional<Severity> severityOf( std::string_view word ) {
    for( Severity const severity : { note, warning, error } ) {
        if( word == wordOf( severity ) )
            return severity;
    }
    return std::nullopt;
}

String Finding::subject() const {
    return what + " " + quoted( name ) + ( handle ? " (" + hexText( *handle ) + ")" : "" );
}

std::span<FindingKind const> findingKinds() { return kinds; }

namespace {

/// Where the records of a configuration start in their context files, by its survey.
class RecordPlaces {
  public:
    explicit RecordPlaces( Configuration const& configuration ) {
        for( Context::FileSurvey const& file : configuration.files ) {
            auto const addAll = [ & ]( auto const& elements ) {
                for( auto const& element : elements )
                    byName_[ element.name ].push_back( { &file, &element, element.handle } );
            };
            addAll( file.tables );
            addAll( file.learnQuantas );
            addAll( file.headers );
            addAll( file.hashes );
            for( Context::SurveyedTable const& table : file.tables ) {
                for( Context::SurveyedAction const& action : table.actions )
                    byName_[ action.name ].push_back( { &file, &table, action.handle } );
            }
        }
    }

    /// The place of the finding's record: the element with its name and, if known, its handle and context
    /// file; for an action, its table. Nothing for fields, and for what is not a record.
    std::optional<FindingPlace> of( Finding const& finding ) const {
        auto const found = byName_.find( finding.name );
        if( found == byName_.end() )
            return std::nullopt;
        auto const agreed = [ & ]( Candidate const& candidate ) {
            return ( finding.handle && candidate.handle == finding.handle ? 2 : 0 ) +
                   ( candidate.file->path == finding.contextFile ? 1 : 0 );
        };
        auto const best =
            std::ranges::max_element( found->second, [ & ]( Candidate const& a, Candidate const& b ) {
                return agreed( a ) < agreed( b );
            } );
        return FindingPlace{ best->file->path, best->element->place };
    }

  private:
    struct Candidate {
        Context::FileSurvey const* file;
        Context::SurveyedElement const* element;
        std::optional<U32> handle; ///< of the record, which may be an action
    };
    std::unordered_map<std::string_view, std::vector<Candidate>> byName_ = {};
};

} // namespace

std::vector<Finding> findingsOf( Configuration const& configuration ) {
    CheckContext const facts( configuration );
    std::vector<Finding> all;
    for( FindingKind const& kind : kinds ) {
        Findings findings( kind, all );
        kind.find( facts, findings );
    }
    RecordPlaces const places( configuration );
    for( Finding& finding : all ) {
        if( finding.contextFile.empty() && finding.what != "switch configuration" )
            finding.contextFile =
                finding.what == "pipeline" ? finding.name : facts.contextFileOf( finding.handle );
        if( !finding.place )
            finding.place = places.of( finding );
    }
    std::ranges::stable_sort(
        all, []( Finding const& a, Finding const& b ) { return a.kind->severity > b.kind->severity; } );
    return all;
}

} // namespace Bfri
