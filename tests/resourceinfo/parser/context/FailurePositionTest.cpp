#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

// What a failure says about the place in the input: file, place of the value, member asked for, table.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;

class FailurePosition : public testing::Test {
  protected:
    Zel::AssertionFailure failureOfLoading( ContextBuilder const& context ) const {
        String const conf = folder_.conf( context );
        return Support::failureOf( [ & ] { bfResourceInfoIntfFactory( conf ); } );
    }

    SwitchFolder folder_;
    String const file_ = "context file " + folder_.path( "context.json" );
};

TEST_F( FailurePosition, NamesFileValueMemberAndTable ) {
    struct Row {
        char const* pointer;
        std::optional<char const*> json;
        String position;
    };
    for( auto const& [ pointer, json, position ] : {
             Row{ "/tables/1/size", {}, " at /tables/1, member \"size\", table 1 \"acl\"" },
             Row{ "/tables/1/size", "null", " at /tables/1/size, table 1 \"acl\"" },
             Row{ "/tables/1/match_attributes/stage_tables/0/stage_number",
                  {},
                  " at /tables/1/match_attributes/stage_tables/0, member \"stage_number\", table 1 \"acl\"" },
             Row{ "/tables/1/statistics_table_refs/0/handle", "-1",
                  " at /tables/1/statistics_table_refs/0/handle, table 1 \"acl\"" },
             Row{ "/tables/1/name", {}, " at /tables/1, member \"name\", table 1" },
             Row{ "/tables/1/name", "7", " at /tables/1/name, table 1" },
             Row{ "/tables/1", "null", " at /tables/1, table 1" },
             Row{ "/tables/1/match_attributes/match_type",
                  {},
                  " at /tables/1/match_attributes, member "
                  "\"match_type\", table 1 \"acl\"" },
             Row{ "/tables", {}, ", member \"tables\"" },
             Row{ "/tables", "null", " at /tables" },
             Row{ "/phv_allocation", {}, ", member \"phv_allocation\"" },
             Row{ "/learn_quanta", "null", " at /learn_quanta" },
             Row{ "/dynamic_hash_calculations", "7", " at /dynamic_hash_calculations" },
         } ) {
        auto context =
            ContextBuilder().table( matchTable( "first" ) ).table( matchTable( "acl" ).statistics( "s" ) );
        if( json )
            context.with( pointer, *json );
        else
            context.without( pointer );
        auto const failure = failureOfLoading( context );
        EXPECT_EQ( failure.position, file_ + position );
        EXPECT_EQ( failure.source, "BfResourceParser" );
        EXPECT_GT( failure.line, 0 );
        EXPECT_NE( failure.function, "" );
    }
}

TEST_F( FailurePosition, NamesThePlaceInEveryPass ) {
    struct Row {
        Fault fault;
        String position;
    };
    char const* const unexpected = "false && \"Unexpected BfResourceType\"";
    for( auto const& [ fault, position ] : {
             Row{ { "/tables/0/stage_tables/0/stage_table_type", "\"x\"", unexpected },
                  " at /tables/0/stage_tables/0/stage_table_type, table 0 \"c\"" },
             Row{ { "/tables/1/direction", removed, noMember },
                  " at /tables/1, member \"direction\", table 1 \"acl\"" },
             Row{ { "/tables/1/actions/1/indirect_resources/1/resource_name", "7", noString },
                  " at /tables/1/actions/1/indirect_resources/1/resource_name, table 1 \"acl\"" },
             Row{ { "/tables/10/match_attributes/units/1/match_attributes/stage_tables", "null", noArray },
                  " at /tables/10/match_attributes/units/1/match_attributes/stage_tables, table 10 \"lpm\"" },
             Row{ { "/tables/1/is_resource_controllable", "1", noBool },
                  " at /tables/1/is_resource_controllable, table 1 \"acl\"" },
             Row{ { "/tables/1/static_entries", "{}", "table[ \"static_entries\" ].IsArray()" },
                  " at /tables/1/static_entries, table 1 \"acl\"" },
             Row{ { "/tables/10/match_attributes/units/1/match_attributes/stage_tables/0/size", "-1",
                    noUnsigned },
                  " at /tables/10/match_attributes/units/1/match_attributes/stage_tables/0/size, "
                  "table 10 \"lpm\"" },
             Row{ { "/tables/10/match_attributes/number_partitions", removed,
                    "matAttrMatchType != \"algorithmic_tcam\"" },
                  " at /tables/10/match_attributes, member \"number_partitions\", table 10 \"lpm\"" },
             Row{ { "/tables/1/match_attributes/stage_tables/0/idletime_stage_table/precision", "null",
                    noUnsigned },
                  " at /tables/1/match_attributes/stage_tables/0/idletime_stage_table/precision, "
                  "table 1 \"acl\"" },
             Row{ { "/tables/1/logical_pipe", "7", noString },
                  " at /tables/1/logical_pipe, table 1 \"acl\"" },
             Row{ { "/tables/1/action_data_table_refs/0/how_referenced", removed, noMember },
                  " at /tables/1/action_data_table_refs/0, member \"how_referenced\", table 1 \"acl\"" },
             Row{ { "/tables/1/selection_table_refs/0/name", "7", noString },
                  " at /tables/1/selection_table_refs/0/name, table 1 \"acl\"" },
             Row{ { "/tables/1/actions/0/name", removed, noMember },
                  " at /tables/1/actions/0, member \"name\", table 1 \"acl\"" },
             Row{ { "/tables/0/how_referenced", "7", noString },
                  " at /tables/0/how_referenced, table 0 \"c\"" },
             Row{ { "/tables/6/meter_type", "7", noString }, " at /tables/6/meter_type, table 6 \"w\"" },
             Row{ { "/tables/7/dual_width_mode", "1", noBool },
                  " at /tables/7/dual_width_mode, table 7 \"direct r\"" },
             Row{ { "/tables/1/actions", removed, noMember },
                  " at /tables/1, member \"actions\", table 1 \"acl\"" },
             Row{ { "/tables/1/actions/1/handle", "null", noUnsigned },
                  " at /tables/1/actions/1/handle, table 1 \"acl\"" },
             Row{ { "/tables/0/statistics_type", removed, noMember },
                  " at /tables/0, member \"statistics_type\", table 0 \"c\"" },
             Row{ { "/tables/2/meter_granularity", "7", noString },
                  " at /tables/2/meter_granularity, table 2 \"m\"" },
             Row{ { "/tables/3/alu_width", "-1", noUnsigned }, " at /tables/3/alu_width, table 3 \"r\"" },
             Row{ { "/learn_quanta/0", "null", "lq.IsObject()" }, " at /learn_quanta/0" },
             Row{ { "/learn_quanta/0/handle", removed, noMember }, " at /learn_quanta/0, member \"handle\"" },
             Row{ { "/learn_quanta/0/name", "7", noString }, " at /learn_quanta/0/name" },
             Row{ { "/phv_allocation/1", "null", "phvStage.IsObject()" }, " at /phv_allocation/1" },
             Row{ { "/phv_allocation/0/ingress/0/records", "{}", "records.IsArray()" },
                  " at /phv_allocation/0/ingress/0/records" },
             Row{ { "/phv_allocation/1/egress", removed, noMember },
                  " at /phv_allocation/1, member \"egress\"" },
             Row{ { "/phv_allocation/0/ingress/0/records/0/is_pov", "1", noBool },
                  " at /phv_allocation/0/ingress/0/records/0/is_pov" },
             Row{ { "/phv_allocation/0/egress/0/records/-",
                    R"({ "is_pov": false, "field_name": "hdr.eth", "field_width": 7 })",
                    "perStagePhvSize[ record_field_name ] == width" },
                  " at /phv_allocation/0/egress/0/records/1/field_width" },
             Row{ { "/flexible_headers", "{}", noArray }, " at /flexible_headers" },
             Row{ { "/flexible_headers/0/name", "null", noString }, " at /flexible_headers/0/name" },
             Row{ { "/flexible_headers/-", R"({ "name": "eth", "fields": [] })",
                    "parser->bfHeaders( hdrName ) == header" },
                  " at /flexible_headers/1/fields" },
             Row{ { "/flexible_headers/0/fields/0/slice", removed, noMember },
                  " at /flexible_headers/0/fields/0, member \"slice\"" },
             Row{ { "/flexible_headers/0/fields/0/slice/bit_width", "9", "header.size() % 8 == 0" },
                  " at /flexible_headers/0/fields/0/slice/bit_width" },
             Row{ { "/dynamic_hash_calculations/0/handle", "-1", noUnsigned },
                  " at /dynamic_hash_calculations/0/handle" },
             Row{ { "/dynamic_hash_calculations/0/field_lists/0/fields", "[]", "fieldCount > 0" },
                  " at /dynamic_hash_calculations/0/field_lists/0/fields" },
             Row{ { "/dynamic_hash_calculations/0/field_lists", "[]", "fieldList.Size() == 1" },
                  " at /dynamic_hash_calculations/0/field_lists" },
             Row{ { "/dynamic_hash_calculations/0/field_lists/0", "null", noObject },
                  " at /dynamic_hash_calculations/0/field_lists/0, member \"handle\"" },
             Row{ { "/dynamic_hash_calculations/0/field_lists/0/fields/1/name", "null", noString },
                  " at /dynamic_hash_calculations/0/field_lists/0/fields/1/name" },
         } ) {
        Support::TraceCollector const quiet( "BfResourceParser", {} );
        auto context = contextOfEveryPass();
        if( fault.json )
            context.with( fault.pointer, *fault.json );
        else
            context.without( fault.pointer );
        auto const failure = failureOfLoading( context );
        EXPECT_EQ( failure.condition, fault.condition ) << fault.pointer;
        EXPECT_EQ( failure.position, file_ + position ) << fault.pointer;
    }
}

TEST_F( FailurePosition, NamesTheTableThatNoneReferencesAndTheRegisterOfTheWrongWidth ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    auto const lost = failureOfLoading( contextOfEveryPass().without( "/tables/1/statistics_table_refs" ) );
    EXPECT_EQ( lost.condition, "false && \"Table not found\"" );
    EXPECT_THAT( lost.position,
                 testing::AllOf( testing::StartsWith( file_ ), testing::EndsWith( ", table 0 \"c\"" ) ) );
    auto const wide = failureOfLoading( contextOfEveryPass().with( "/tables/7/alu_width", "16" ) );
    EXPECT_EQ( wide.condition, "width == 32" );
    EXPECT_THAT( wide.position, testing::AllOf( testing::StartsWith( file_ ),
                                                testing::EndsWith( ", table 7 \"direct r\"" ) ) );
}

TEST_F( FailurePosition, NamesTheTableOfAReferenceThatIsMissing ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    auto const failure =
        failureOfLoading( ContextBuilder().table( matchTable( "acl" ).actionData( "nowhere" ) ) );
    EXPECT_EQ( failure.condition, "parser->resourceHandlesHas( adtTblHdl )" );
    EXPECT_THAT( failure.position,
                 testing::AllOf( testing::StartsWith( file_ ), testing::EndsWith( ", table 0 \"acl\"" ) ) );
}

TEST_F( FailurePosition, IsThereInParts ) {
    auto const failure = failureOfLoading( contextOfEveryPass().without( "/tables/1/actions/0/name" ) );
    Zel::InputPlace const& place = failure.place;
    EXPECT_EQ( place.kind, "context file" );
    EXPECT_EQ( place.file, folder_.path( "context.json" ) );
    EXPECT_EQ( place.problem, Zel::InputPlace::Problem::none );
    EXPECT_EQ( place.pointer, "/tables/1/actions/0" );
    EXPECT_EQ( place.member, "name" );
    ASSERT_TRUE( place.element );
    EXPECT_EQ( place.element->kind, "table" );
    EXPECT_EQ( place.element->index, 1 );
    EXPECT_EQ( place.element->name, "acl" );
    EXPECT_EQ( place.handle, std::nullopt );
    EXPECT_EQ( failure.expected, "an object that has this member" );
    EXPECT_EQ( Zel::toText( place ), failure.position );
}

/// The signature of a step that takes parser, JSON value and context.
String step( String const& name ) {
    return "int " + name +
           "(BfResourceInfo::BfResourceParser*, const rapidjson::Value&, const BfResourceParserContext&)";
}

// Whatever function of an operation the condition is in, one that reads JSON included.
TEST_F( FailurePosition, IsInTheOperationOfItsStep ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    String const context = "void parseContextJson(BfResourceInfo::BfResourceParser*, const String&, const "
                           "BfResourceParserContext&)";
    String const preprocess =
        "void preprocessContext(BfResourceInfo::BfResourceParser*, rapidjson::Document&, "
        "const BfResourceParserContext&)";
    String const table =
        "int parseBfTable(BfResourceInfo::BfResourceParser*, const rapidjson::Value&, String, "
        "const BfResourceParserContext&)";
    String const phv =
        "int parsePhvStage(BfResourceInfo::BfResourceParser*, const rapidjson::Value&, const String&)";
    struct Row {
        char const* pointer;
        std::optional<char const*> json;
        String function;
    };
    for( auto const& [ pointer, json, function ] : {
             Row{ "/tables", "7", preprocess },
             Row{ "/tables/1/handle", "-1", preprocess },               // getHandle
             Row{ "/tables/1/match_attributes", removed, preprocess },  // findStageTables
             Row{ "/tables/1/statistics_table_refs", "7", preprocess }, // addReferences
             Row{ "/tables/0/stage_tables/0/stage_table_type", "\"x\"",
                  "BfResourceType stringToResourceType(std::string_view)" },
             Row{ "/tables/1/static_entries", "7", table }, // isRecorded
             Row{ "/tables/1/match_attributes/match_type", removed, table },
             Row{ "/tables/10/match_attributes/number_partitions", removed, table }, // maxPartitions
             Row{ "/tables/1/logical_pipe", "7", table },                            // getLogicalPipe
             Row{ "/tables/1/action_data_table_refs/0/handle", "4711", table },      // readActionData
             Row{ "/tables/1/actions", removed, step( "parseBfAction" ) },
             Row{ "/tables/1/actions/0/handle", "null", step( "parseBfAction" ) },
             Row{ "/tables/0/how_referenced", "7", step( "parseBfTableCounterInfo" ) },
             Row{ "/tables/2/meter_granularity", "7", step( "parseBfTableMeterInfo" ) },
             Row{ "/tables/7/alu_width", "16", step( "parseBfRegisterInfo" ) },
             Row{ "/tables/1/meter_table_refs", removed,
                  "U32 getTableThatReferences(BfResourceInfo::BfResourceParser*, std::string_view, U32)" },
             Row{ "/learn_quanta", "7", context },
             Row{ "/learn_quanta/0", "7", context },
             Row{ "/learn_quanta/0/name", "7", step( "parseBfLearnQuantaInfo" ) },
             Row{ "/phv_allocation", "7", context },
             Row{ "/phv_allocation/0", "7", context },
             Row{ "/phv_allocation/0/ingress", removed, phv },         // stagePhvSizes
             Row{ "/phv_allocation/0/ingress/0/records/0", "7", phv }, // addRecord
             Row{ "/flexible_headers", "7", context },
             Row{ "/flexible_headers/0/fields/0/slice/bit_width", "9", step( "parseBfHeaderInfo" ) },
             Row{ "/flexible_headers/0/fields/0/slice", "7", step( "parseBfHeaderInfo" ) }, // sizeInBits
             Row{ "/dynamic_hash_calculations", "7", context },
             Row{ "/dynamic_hash_calculations/0/field_lists", "[]", step( "parseBfDynamicHashInfo" ) },
         } ) {
        auto damaged = contextOfEveryPass();
        if( json )
            damaged.with( pointer, *json );
        else
            damaged.without( pointer );
        EXPECT_EQ( failureOfLoading( damaged ).function, function ) << pointer;
    }
}

TEST_F( FailurePosition, IsInTheLoadWhenTheFileCannotBeUsed ) {
    String const conf = folder_.conf( Support::DeviceBuilder().pipeline( folder_.write( "c", "{" ), { 0 } ) );
    auto const failure = Support::failureOf( [ & ] { bfResourceInfoIntfFactory( conf ); } );
    EXPECT_EQ( failure.function,
               "void preprocessContext(BfResourceInfo::BfResourceParser*, rapidjson::Document&, "
               "const BfResourceParserContext&)" );
}

TEST_F( FailurePosition, OfTheTopOfTheFileHasNoTable ) {
    auto const failure = failureOfLoading( ContextBuilder().without( "/tables" ) );
    EXPECT_EQ( failure.place.pointer, "" );
    EXPECT_EQ( failure.place.member, "tables" );
    EXPECT_FALSE( failure.place.element );
}

TEST_F( FailurePosition, SaysWhatAnAccessExpected ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    struct Row {
        char const* pointer;
        char const* json;
        char const* expected;
    };
    for( auto const& [ pointer, json, expected ] : {
             Row{ "/tables/1/match_attributes/stage_tables/0", "7", "an object" },
             Row{ "/tables/1/statistics_table_refs", "7", "an array" },
             Row{ "/tables/1/name", "7", "a string" },
             Row{ "/tables/1/is_resource_controllable", "7", "true or false" },
             Row{ "/tables/1/size", "-1", "an unsigned 32-bit number" },
             Row{ "/tables/1/match_attributes/stage_tables/0/stage_number", "1.5", "a signed 64-bit number" },
             Row{ "/tables/10/match_attributes/units/0/match_attributes/stage_tables", "[]",
                  "an array with more elements" },
             Row{ "/tables/1", "{}", "an object that has this member" },
             Row{ "/learn_quanta", "7", "" }, // the step's own condition says it
         } )
        EXPECT_EQ( failureOfLoading( contextOfEveryPass().with( pointer, json ) ).expected, expected )
            << pointer;
}

TEST_F( FailurePosition, CarriesTheHandleThatLeadsNowhere ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    for( char const* const list : { "statistics_table_refs", "meter_table_refs", "stateful_table_refs" } ) {
        auto const lost = failureOfLoading( contextOfEveryPass().without( String( "/tables/1/" ) + list ) );
        ASSERT_TRUE( lost.place.element );
        EXPECT_EQ( lost.place.handle, Support::handleOf( *lost.place.element->name ) ) << list;
    }
    for( char const* const list : { "action_data_table_refs", "selection_table_refs" } ) {
        String const pointer = String( "/tables/1/" ) + list + "/0/handle";
        EXPECT_EQ( failureOfLoading( contextOfEveryPass().with( pointer, "4711" ) ).place.handle, 4711 );
    }
}

TEST_F( FailurePosition, IsPartOfTheWholeText ) {
    auto const failure = failureOfLoading( ContextBuilder().table( matchTable( "acl" ).without( "/size" ) ) );
    EXPECT_EQ( Zel::toText( failure ), "BfResourceParser:" + std::to_string( failure.line ) + ": " +
                                           failure.function + ": assertion failed: false\nin " + file_ +
                                           " at /tables/0, member \"size\", table 0 \"acl\"\n" );
}

} // namespace
} // namespace BfResourceInfo
