#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class Dump : public InFolder {
  protected:
    String text() const { return answerOf( "dump", *model, Bfri::Format::text ); }
    /// A member of the dump, in one line.
    String member( char const* name ) const { return compact( parsed( text() )[ name ] ); }

    ConfigurationPtr const model = emptyModel();
    BfResourceInfo::BfResourceParser& parser = model->parser();
};

TEST_F( Dump, OfAnEmptyModelHasEveryMember ) {
    EXPECT_EQ( text(), R"({
  "format": 1,
  "switchConf": "switch.conf",
  "contextFile": [],
  "bfrtConfig": "",
  "hitBitSmashEntries": 0,
  "bfResources": [],
  "bfTables": [],
  "bfCounters": [],
  "bfMeters": [],
  "bfWreds": [],
  "bfRegisterInfos": [],
  "bfLearnQuantaInfos": [],
  "bfActions": [],
  "bfHeaders": {},
  "bfDynamicHashInfo": {},
  "ingressPhvContainers": {},
  "egressPhvContainers": {},
  "resourceHandles": [],
  "parentTable": {},
  "multipleParentTables": []
}
)" );
}

TEST_F( Dump, HasTheConfiguration ) {
    parser.contextFileIs( BfResourceInfo::BfPipeMask( 12 ), "b.json" );
    parser.contextFileIs( BfResourceInfo::BfPipeMask( 3 ), "a.json" );
    parser.bfrtConfigIs( "bfrt.json" );
    parser.hitBitSmashEntriesIs( 4000000000 );
    EXPECT_EQ( member( "contextFile" ),
               R"([{"pipeMask":3,"path":"a.json"},{"pipeMask":12,"path":"b.json"}])" );
    EXPECT_EQ( member( "bfrtConfig" ), R"("bfrt.json")" );
    EXPECT_EQ( member( "hitBitSmashEntries" ), "4000000000" );
}

TEST_F( Dump, HasResources ) {
    parser.bfResourcesPush( { "b", 2, 12, 64, true, 3, 5 } );
    parser.bfResourcesPush( { "a", 1, 0, 0, false, 0, 0 } );
    EXPECT_EQ( member( "bfResources" ),
               R"([{"name":"b","handle":2,"type":12,"size":64,"ingress":true,"stages":3,"stageStart":5},)"
               R"({"name":"a","handle":1,"type":0,"size":0,"ingress":false,"stages":0,"stageStart":0}])" );
}

TEST_F( Dump, HasTables ) {
    parser.bfTablesPush( { "t", 1, 2, 3, true, 4, 5, 6, 7, 8, 9, false, 10, 11, 12, 13, 14, "x", "y", "z" } );
    EXPECT_EQ( member( "bfTables" ),
               R"([{"name":"t","handle":1,"size":2,"totalEntries":3,"hitBitSupported":true,)"
               R"("idleTimePrecision":4,"hitBitSmashOffset":5,"hitBitSmashLast":6,"maxEntries":7,)"
               R"("maxPartitions":8,"maxPrios":9,"hasActionProfile":false,"maxAdtEntries":10,)"
               R"("maxSelGroups":11,"maxSelEntries":12,"adtHandle":13,"selHandle":14,"adtName":"x",)"
               R"("selName":"y","logicalPipe":"z"}])" );
}

TEST_F( Dump, HasCountersMetersAndWreds ) {
    parser.bfCountersPush( { "c", 1, 2, 3, true, false, true, "t", "a" } );
    parser.bfMetersPush( { "m", 4, false, true, false, "t", "b" } );
    parser.bfWredsPush( { "w", 5, true, "a" } );
    EXPECT_EQ( member( "bfCounters" ),
               R"([{"name":"c","handle":1,"ownHandle":2,"size":3,"direct":true,"bytes":false,)"
               R"("packets":true,"associatedTable":"t","logicalPipe":"a"}])" );
    EXPECT_EQ( member( "bfMeters" ), R"([{"name":"m","handle":4,"direct":false,"pps":true,)"
                                     R"("hasPreColor":false,"associatedTable":"t","logicalPipe":"b"}])" );
    EXPECT_EQ( member( "bfWreds" ), R"([{"name":"w","handle":5,"direct":true,"logicalPipe":"a"}])" );
}

TEST_F( Dump, HasRegistersLearnQuantasAndActions ) {
    parser.bfRegisterInfosPush( { "r", 1, false, "uint64_t", 32, true } );
    parser.bfLearnQuantaInfosPush( { "q", 2 } );
    parser.bfActionsPush( { 3, "set", "t" } );
    EXPECT_EQ(
        member( "bfRegisterInfos" ),
        R"([{"name":"r","handle":1,"indirect":false,"dataType":"uint64_t","width":32,"dualWidth":true}])" );
    EXPECT_EQ( member( "bfLearnQuantaInfos" ), R"([{"name":"q","handle":2}])" );
    EXPECT_EQ( member( "bfActions" ), R"([{"handle":3,"name":"set","tableName":"t"}])" );
}

TEST_F( Dump, HasHeadersHashesAndContainersByName ) {
    parser.bfHeadersIs( "h", BfHeaderInfo( 65535 ) );
    parser.bfDynamicHashInfoIs( "d", { 1, 2, 3, { "z", "a", "z" } } );
    parser.ingressPhvContainersIs( "f", 255 );
    parser.egressPhvContainersIs( "g", 0 );
    EXPECT_EQ( member( "bfHeaders" ), R"({"h":65535})" );
    EXPECT_EQ( member( "bfDynamicHashInfo" ),
               R"({"d":{"tableHdl":1,"fieldListHdl":2,"fieldCount":3,"fieldNames":["z","a","z"]}})" );
    EXPECT_EQ( member( "ingressPhvContainers" ), R"({"f":255})" );
    EXPECT_EQ( member( "egressPhvContainers" ), R"({"g":0})" );
}

TEST_F( Dump, HasHandlesByNumberWithReferencesInTheirOrder ) {
    BfResourceInfo::BfZelResource entry;
    entry.handle = 10;
    entry.name = "t";
    entry.size = 7;
    entry.stageStart = 255;
    for( U32 const handle : { 3U, 1U, 3U } )
        entry.statReferencesEnq( handle );
    entry.meterReferencesEnq( 4 );
    entry.statefulReferencesEnq( 5 );
    parser.resourceHandlesIs( 10, entry );
    BfResourceInfo::BfZelResource nine;
    nine.handle = 9;
    parser.resourceHandlesIs( 9, nine );
    EXPECT_EQ( member( "resourceHandles" ),
               R"([{"handle":9,"name":"","size":0,"stageStart":0,"statReferences":[],)"
               R"("meterReferences":[],"statefulReferences":[]},)"
               R"({"handle":10,"name":"t","size":7,"stageStart":255,"statReferences":[3,1,3],)"
               R"("meterReferences":[4],"statefulReferences":[5]}])" );
}

TEST_F( Dump, SortsWhatIsHashedByTheBytesOfItsKey ) {
    std::vector<String> const names = { "b", "\xC3\xA9", "a", "B", "ab", "a.b", "~" };
    for( String const& name : names ) {
        parser.parentTableIs( name, "p" );
        parser.multipleParentTablesIs( name );
        parser.bfHeadersIs( name, BfHeaderInfo( 1 ) );
        parser.bfDynamicHashInfoIs( name, {} );
    }
    auto const dump = parsed( text() );
    auto const inOrder = ElementsAre( "B", "a", "a.b", "ab", "b", "~", "\xC3\xA9" );
    for( char const* const map : { "parentTable", "bfHeaders", "bfDynamicHashInfo" } )
        EXPECT_THAT( memberNames( dump[ map ] ), inOrder ) << map;
    EXPECT_EQ( compact( dump[ "multipleParentTables" ] ),
               "[\"B\",\"a\",\"a.b\",\"ab\",\"b\",\"~\",\"\xC3\xA9\"]" );
    EXPECT_EQ( compact( dump[ "parentTable" ][ "a.b" ] ), R"("p")" );
}

TEST_F( Dump, WritesNamesOfAnyBytesAsValidJson ) {
    parser.bfActionsPush( { 1, "a\xFF\x1B\"\xED\xB2\x80", "\xC3\xA9" } );
    parser.parentTableIs( "k\x80", "v\x80" );
    String const dump = text();
    EXPECT_THAT( dump, testing::HasSubstr( R"("name": "a\ufffd\u001b\"\ufffd")" ) );
    EXPECT_THAT( dump, testing::HasSubstr( "\"tableName\": \"\xC3\xA9\"" ) );
    EXPECT_THAT( dump, testing::HasSubstr( R"("k\ufffd": "v\ufffd")" ) );
}

} // namespace
