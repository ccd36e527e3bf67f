#include "resourceinfo/parser/context/Tables.h"

#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/ContextBuilder.h"

#include <gmock/gmock.h>

using namespace Context;

namespace BfResourceInfo {
namespace {

using Support::conditionOf;
using Support::matchTable;
using Support::StageTable;

TEST( Handles, CarryThePipeBits ) {
    struct Row {
        char const* json;
        U32 bits;
        U32 handle;
    };
    for( auto const& [ json, bits, handle ] :
         { Row{ R"({"handle":5})", 0, 5 }, Row{ R"({"handle":5})", 0x20000000, 0x20000005 },
           Row{ R"({"handle":0})", 0xF0000000, 0xF0000000 },
           Row{ R"({"handle":4294967295})", 0x10000000, 4294967295 },
           Row{ R"({"handle":268435461})", 0x10000000, 0x10000005 } } )
        EXPECT_EQ( getHandle( ParsedJson( json ).json(), { BfPipeMask( 1 ), bits } ), handle ) << json;
}

TEST( Handles, AreRequiredToBeUnsignedNumbers ) {
    struct Row {
        char const* json;
        char const* condition;
    };
    for( auto const& [ json, condition ] :
         { Row{ "{}", noMember }, Row{ "null", noObject }, Row{ "[]", noObject },
           Row{ R"({"handle":null})", noUnsigned }, Row{ R"({"handle":-1})", noUnsigned },
           Row{ R"({"handle":1.0})", noUnsigned }, Row{ R"({"handle":4294967296})", noUnsigned },
           Row{ R"({"handle":"1"})", noUnsigned }, Row{ R"({"Handle":1})", noMember } } ) {
        ParsedJson const parsed( json );
        EXPECT_EQ( conditionOf( [ & ] { getHandle( parsed.json(), {} ); } ), condition ) << json;
    }
}

TEST( LogicalPipe, IsTheMembersElseTheFileNames ) {
    struct Row {
        char const* json;
        char const* file;
        char const* pipe;
    };
    char const* const none = "{}";
    char const* const own = R"({"logical_pipe":"own"})";
    for( auto const& [ json, file, pipe ] :
         { Row{ none, "/x/context_a.json", "a" }, Row{ none, "/x/context_b.json", "b" },
           Row{ none, "/x/context.json", "" }, Row{ none, "context_a.json", "a" },
           Row{ none, "/x/my_context_b.json", "b" }, Row{ none, "/x/context_a.json.gz", "" },
           Row{ none, "/x/context_A.json", "" }, Row{ none, "/x/context_a.json/context.json", "" },
           Row{ none, "ontext_a.json", "" }, Row{ none, "", "" }, Row{ own, "/x/context_a.json", "own" },
           Row{ own, "/x/context.json", "own" }, Row{ R"({"logical_pipe":""})", "/x/context_a.json", "" } } )
        EXPECT_EQ( getLogicalPipe( ParsedJson( json ).json(), file ), pipe ) << json << file;
}

TEST( LogicalPipe, RequiresAnObjectAndAText ) {
    struct Row {
        char const* json;
        char const* condition;
    };
    for( auto const& [ json, condition ] :
         { Row{ "null", noObject }, Row{ "[]", noObject }, Row{ "\"a\"", noObject },
           Row{ R"({"logical_pipe":null})", noString }, Row{ R"({"logical_pipe":1})", noString } } ) {
        ParsedJson const parsed( json );
        EXPECT_EQ( conditionOf( [ & ] { getLogicalPipe( parsed.json(), "context_a.json" ); } ), condition )
            << json;
    }
}

U32 firstStage( StageTables const& stages ) {
    return static_cast<U32>( ( *stages.stages )[ 0 ][ "stage_number" ].GetInt64() );
}

TEST( StageTables, AreFoundInTheTableOrItsMatchAttributes ) {
    std::vector<StageTable> const two{ StageTable().number( 3 ), StageTable() };
    ParsedJson const own( Support::actionDataTable( "adt" ).stages( two ).text() );
    EXPECT_EQ( findStageTables( own.json() ).count, 2 );
    EXPECT_EQ( firstStage( findStageTables( own.json() ) ), 3 );
    ParsedJson const ofMatch( matchTable( "acl" ).stages( two ).text() );
    EXPECT_EQ( findStageTables( ofMatch.json() ).count, 2 );
    EXPECT_EQ( firstStage( findStageTables( ofMatch.json() ) ), 3 );
}

TEST( StageTables, OfUnitsAreCountedTogetherAndThoseOfTheFirstUnitFound ) {
    ParsedJson const parsed( matchTable( "lpm" )
                                 .units( { { StageTable().number( 4 ), StageTable(), StageTable() },
                                           { StageTable().number( 9 ), StageTable() } } )
                                 .text() );
    auto const stages = findStageTables( parsed.json() );
    EXPECT_EQ( stages.count, 5 );
    EXPECT_EQ( firstStage( stages ), 4 );
}

TEST( StageTables, UnitsWinOverStageTablesBesideThem ) {
    ParsedJson const parsed(
        matchTable( "lpm" )
            .with( "/match_attributes/units", R"([ { "match_attributes": { "stage_tables": [] } } ])" )
            .text() );
    EXPECT_EQ( findStageTables( parsed.json() ).count, 0 );
}

TEST( StageTables, MayBeEmpty ) {
    EXPECT_EQ( findStageTables( ParsedJson( R"({"stage_tables":[]})" ).json() ).count, 0 );
    EXPECT_EQ( findStageTables( ParsedJson( R"({"match_attributes":{"stage_tables":[]}})" ).json() ).count,
               0 );
}

TEST( StageTables, TypeOfARedMeterIsWred ) {
    struct Row {
        char const* table;
        char const* stage;
        char const* type;
    };
    for( auto const& [ table, stage, type ] :
         { Row{ "{}", R"({"stage_table_type":"hash_match"})", "hash_match" },
           Row{ R"({"meter_type":"red"})", R"({"stage_table_type":"meter"})", "wred" },
           Row{ R"({"meter_type":"standard"})", R"({"stage_table_type":"meter"})", "meter" },
           Row{ R"({"meter_type":"red"})", R"({"stage_table_type":"stateful"})", "stateful" } } ) {
        ParsedJson const tableJson( table );
        ParsedJson const stageJson( stage );
        EXPECT_EQ( stageTableType( tableJson.json(), stageJson.json() ), type ) << table << stage;
    }
}

} // namespace
} // namespace BfResourceInfo
