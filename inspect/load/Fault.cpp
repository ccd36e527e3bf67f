#include "inspect/load/Fault.h"

#include "inspect/load/ConfPath.h"
#include "inspect/rows/Row.h"

#include <limits>

namespace Bfri {

namespace {

/// What a condition on context data requires, in words; the condition itself if there are none for it.
struct Expectation {
    std::string_view text;          ///< follows "expected"
    bool traceAddsToIt = false;     ///< the trace line before the failure says more than text and place
    std::string_view culprit = "."; ///< see Fault
};

constexpr char const* noAlgorithmicLpm =
    "no \"algorithmic_lpm\" table that is resource-controllable; compilers mark these otherwise";

constexpr std::pair<std::string_view, Expectation> wordings[] = {
    // Sections of the file.
    { "d[ \"tables\" ].IsArray()", { "\"tables\" to be an array" } },
    { "lqs.IsArray()", { "\"learn_quanta\" to be an array" } },
    { "phvs.IsArray()", { "\"phv_allocation\" to be an array" } },
    { "table.IsObject()", { "each element of \"tables\" to be an object" } },
    { "lq.IsObject()", { "each element of \"learn_quanta\" to be an object" } },
    { "phvStage.IsObject()", { "each element of \"phv_allocation\" to be an object" } },
    // Stage tables.
    { "false", { "a table with \"stage_tables\" or \"match_attributes\"" } },
    { "!table.HasMember( \"match_attributes\" )",
      { "a table with \"stage_tables\" or with \"match_attributes\", not with both" } },
    { "match_attributes.IsObject()", { "\"match_attributes\" to be an object" } },
    { "match_attributes.HasMember( \"stage_tables\" )",
      { "\"match_attributes\" with \"units\" or with \"stage_tables\"" } },
    { "match_attributes[ \"stage_tables\" ].IsArray()", { "\"stage_tables\" to be an array" } },
    { "matchAttributes[ \"stage_tables\" ].IsArray()", { "\"stage_tables\" to be an array" } },
    { "unit[ \"stage_tables\" ].IsArray()", { "\"stage_tables\" of a unit to be an array" } },
    { "stages->IsArray()", { "\"stage_tables\" to be an array" } },
    { "units.IsArray()", { "\"units\" to be an array" } },
    { "matchAttributes[ \"units\" ].IsArray()", { "\"units\" to be an array" } },
    // Match tables.
    { "table[ \"static_entries\" ].IsArray()", { "\"static_entries\" to be an array" } },
    { "atcamMatchAttributes.IsArray()", { noAlgorithmicLpm } },
    { "matAttrMatchType != \"algorithmic_tcam\"",
      { "\"number_partitions\" in the \"match_attributes\" of an \"algorithmic_tcam\" table", false, "" } },
    { "parser->resourceHandlesHas( adtTblHdl )",
      { "\"action_data_table_refs\" to hold the handle of a table that has stage tables", true, "handle" } },
    { "parser->resourceHandlesHas( selTblHdl )",
      { "\"selection_table_refs\" to hold the handle of a table that has stage tables", true, "handle" } },
    { "actions.IsArray()", { "\"actions\" of a match table to be an array" } },
    { "action.IsObject()", { "each element of \"actions\" to be an object" } },
    // Other tables.
    { "false && \"Unexpected BfResourceType\"",
      { "a known \"stage_table_type\" in the first stage table", true } },
    { "false && \"Table not found\"",
      { "a match table that references this one, as it is not \"indirect\"", true } },
    { "width == 32", { "\"alu_width\" 32 where \"dual_width_mode\" is true", false, "alu_width" } },
    // The PHV.
    { "gress_info.IsArray()", { "\"ingress\" and \"egress\" of a stage to be arrays" } },
    { "records.IsArray()", { "\"records\" to be an array" } },
    { "record.IsObject()", { "each element of \"records\" to be an object" } },
    { "perStagePhvSize[ record_field_name ] == width",
      { "a field to have one \"field_width\" in all containers of a stage and direction" } },
    // Flexible headers and dynamic hashes.
    { "header.size() % 8 == 0", { "\"bit_width\"s that add up to whole bytes", false, "" } },
    { "parser->bfHeaders( hdrName ) == header",
      { "a flexible header of the same size wherever its name comes again", false, "" } },
    { "fieldList.Size() == 1", { "exactly one element in \"field_lists\"" } },
    { "fieldCount > 0", { "at least one element in \"fields\" of the field list" } },
    // The switch configuration.
    { "\"numPipelines > 0\" == nullptr", { "at least one element in \"pipelines\" of every device" } },
};

/// Whether an "algorithmic_lpm" table was read as the object that it never is: nothing else reads there.
bool isAlgorithmicLpm( Zel::AssertionFailure const& failure ) {
    String const pointer = failure.place.pointer.value_or( "" );
    return failure.expected == "an object" &&
           ( pointer.ends_with( "/atcam_table" ) || pointer.ends_with( "/atcam_table/match_attributes" ) );
}

/// The texts are constants or the failure's.
Expectation expectationOf( Zel::AssertionFailure const& failure ) {
    if( isAlgorithmicLpm( failure ) )
        return { noAlgorithmicLpm };
    if( !failure.expected.empty() )
        return { failure.expected };
    for( auto const& [ condition, expectation ] : wordings ) {
        if( failure.condition == condition )
            return expectation;
    }
    return { failure.condition, true };
}

/// The number, if it fits into the inspector's type.
std::optional<U32> fitting( std::optional<Vessa::U64> number ) {
    return number && *number <= std::numeric_limits<U32>::max() ? std::optional( static_cast<U32>( *number ) )
                                                                : std::nullopt;
}

/// Why the file cannot be used.
void addProblem( Zel::InputPlace const& place, Fault& fault ) {
    using Problem = Zel::InputPlace::Problem;
    fault.problem = place.reason;
    if( place.problem == Problem::open )
        fault.problem = "can't open it: " + place.reason;
    if( place.problem == Problem::read )
        fault.problem =
            ( isGzip( place.file ) ? "can't read it as gzip: " : "can't read it: " ) + place.reason;
    fault.line = fitting( place.line );
    fault.column = fitting( place.column );
    fault.expected = "a file, plain or gzip, that holds JSON";
}

/// The value that is not as expected.
void addPlace( Zel::InputPlace const& place, Fault& fault ) {
    if( fault.inContextFile )
        fault.pointer = place.pointer.value_or( "" );
    fault.member = place.member;
    fault.handle = place.handle;
    if( place.element ) {
        fault.tableIndex = place.element->index;
        fault.table = place.element->name.value_or( "" );
    }
}

} // namespace

Fault faultOf( Ostler::Status const& status ) {
    Fault fault;
    fault.file = status.file;
    if( status.line ) {
        fault.line = status.line;
        fault.column = status.column;
    }
    fault.expected = status.expected;
    fault.found = status.found;
    if( status.expected.empty() )
        fault.problem = status.reason;
    return fault;
}

Fault faultOf( Zel::AssertionFailure const& failure, std::vector<Zel::TraceLine> const& traced ) {
    Fault fault;
    fault.condition = failure.condition;
    fault.function = failure.function;
    fault.file = failure.place.file;
    fault.inContextFile = failure.place.kind == "context file";
    if( failure.place.problem != Zel::InputPlace::Problem::none ) {
        addProblem( failure.place, fault );
        return fault;
    }
    addPlace( failure.place, fault );
    Expectation const expected = expectationOf( failure );
    fault.expected = expected.text;
    fault.culprit = expected.culprit;
    if( !failure.message.empty() )
        fault.reported.push_back( failure.message );
    for( Zel::TraceLine const& line : traced ) {
        if( expected.traceAddsToIt && !line.text.empty() )
            fault.reported.push_back( line.text );
    }
    return fault;
}

String handleOf( Fault const& fault ) {
    return fault.handle ? std::to_string( *fault.handle ) + " (" + hexText( *fault.handle ) + ")" : "";
}

String problemOf( Fault const& fault ) {
    if( fault.problem.empty() || !fault.line || !fault.column )
        return fault.problem;
    return "line " + std::to_string( *fault.line ) + ", column " + std::to_string( *fault.column ) + ": " +
           fault.problem;
}

String conditionOf( Fault const& fault ) {
    bool const says = !fault.condition.empty() && fault.condition != "false";
    return says ? fault.condition + ", in " + fault.function : "";
}

String subjectOf( Fault const& fault ) {
    return ( fault.inContextFile ? "context file " : "switch configuration " ) +
           ( fault.file.empty() ? "with an empty path" : fault.file );
}

String sentenceOf( Fault const& fault ) {
    return "can't use " + subjectOf( fault ) + ": " +
           ( fault.problem.empty() ? "expected " + fault.expected : problemOf( fault ) );
}

} // namespace Bfri
