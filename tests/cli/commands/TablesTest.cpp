#include "tests/cli/Inputs.h"

namespace {

using Bfri::Format;

BfTableInfo const bare{
    "pipe.Ingress.acl", 0x1000001, 512, 512, false, 0, 0, 0, 512, 0, 255, false, 0, 0, 0, 0, 0, "", "", "" };

BfTableInfo const full{ .name = "pipe.Ingress.ipv4_lpm",
                        .handle = 0x21000002,
                        .size = 16384,
                        .totalEntries = 20000,
                        .hitBitSupported = true,
                        .idleTimePrecision = 3,
                        .hitBitSmashOffset = 0,
                        .hitBitSmashLast = 626,
                        .maxEntries = 16384,
                        .maxPartitions = 16,
                        .maxPrios = 255,
                        .hasActionProfile = true,
                        .maxAdtEntries = 1024,
                        .maxSelGroups = 2,
                        .maxSelEntries = 2048,
                        .adtHandle = 0x22000003,
                        .selHandle = 0x23000004,
                        .adtName = "members",
                        .selName = "groups",
                        .logicalPipe = "a" };

class Tables : public InFolder {
  protected:
    ConfigurationPtr const model = emptyModel();
};

TEST_F( Tables, AreOneALineWithDashesForWhatATableDoesNotHave ) {
    model->parser().bfTablesPush( full );
    model->parser().bfTablesPush( bare );
    EXPECT_EQ(
        answerOf( "tables", *model, Format::text ),
        "HANDLE       SIZE  ENTRIES  IDLE BITS  HIT FROM  HIT TO  PARTS  ACTION DATA  SELECTION   PIPE  "
        "NAME\n"
        "0x21000002  16384    20000          3         0     626     16  0x22000003   0x23000004  a     "
        "pipe.Ingress.ipv4_lpm\n"
        "0x01000001    512      512          -         -       -      0  -            -           -     "
        "pipe.Ingress.acl\n" );
}

TEST_F( Tables, AsCsvAreWholeRecords ) {
    model->parser().bfTablesPush( full );
    model->parser().bfTablesPush( bare );
    EXPECT_EQ(
        answerOf( "tables", *model, Format::csv ),
        "name,handle,size,totalEntries,hitBitSupported,idleTimePrecision,hitBitSmashOffset,"
        "hitBitSmashLast,maxEntries,maxPartitions,maxPrios,hasActionProfile,maxAdtEntries,maxSelGroups,"
        "maxSelEntries,adtHandle,selHandle,adtName,selName,logicalPipe\n"
        "pipe.Ingress.ipv4_lpm,553648130,16384,20000,true,3,0,626,16384,16,255,true,1024,2,2048,"
        "570425347,587202564,members,groups,a\n"
        "pipe.Ingress.acl,16777217,512,512,false,0,0,0,512,0,255,false,0,0,0,0,0,,,\n" );
}

TEST_F( Tables, AsJsonAreWholeRecords ) {
    model->parser().bfTablesPush( full );
    EXPECT_EQ( compact( jsonAnswerOf( "tables", *model ) ),
               R"({"format":1,"bfTables":[{"name":"pipe.Ingress.ipv4_lpm","handle":553648130,"size":16384,)"
               R"("totalEntries":20000,"hitBitSupported":true,"idleTimePrecision":3,"hitBitSmashOffset":0,)"
               R"("hitBitSmashLast":626,"maxEntries":16384,"maxPartitions":16,"maxPrios":255,)"
               R"("hasActionProfile":true,"maxAdtEntries":1024,"maxSelGroups":2,"maxSelEntries":2048,)"
               R"("adtHandle":570425347,"selHandle":587202564,"adtName":"members","selName":"groups",)"
               R"("logicalPipe":"a"}]})" );
}

TEST_F( Tables, WhenThereAreNoneLeaveTheHeader ) {
    EXPECT_TRUE( answerOf( "tables", *model, Format::text ).starts_with( "HANDLE  SIZE" ) );
    EXPECT_TRUE( answerOf( "tables", *model, Format::csv ).starts_with( "name,handle" ) );
    EXPECT_EQ( compact( jsonAnswerOf( "tables", *model ) ), R"({"format":1,"bfTables":[]})" );
}

TEST_F( Tables, KeepTheOrderOfTheModel ) {
    for( char const* const name : { "b", "a", "b" } )
        model->parser().bfTablesPush( named<BfTableInfo>( name ) );
    auto const answer = jsonAnswerOf( "tables", *model );
    ASSERT_EQ( answer[ "bfTables" ].Size(), 3U );
    EXPECT_STREQ( answer[ "bfTables" ][ 0 ][ "name" ].GetString(), "b" );
    EXPECT_STREQ( answer[ "bfTables" ][ 1 ][ "name" ].GetString(), "a" );
    EXPECT_STREQ( answer[ "bfTables" ][ 2 ][ "name" ].GetString(), "b" );
}

} // namespace
