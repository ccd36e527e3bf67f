#include "inspect/load/Fault.h"

namespace Bfri {

namespace {

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

} // namespace

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

} // namespace Bfri
