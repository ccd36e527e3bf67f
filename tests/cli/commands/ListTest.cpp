#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using BfResourceInfo::BfResourceParser;
using Bfri::Format;
using testing::StartsWith;

struct ListedKind {
    char const* word;
    void ( *fill )( BfResourceParser& parser );
    char const* text;
    char const* csv;
    char const* json; ///< the rows
};

std::ostream& operator<<( std::ostream& os, ListedKind const& row ) { return os << row.word; }

class ListOf : public InFolder, public testing::WithParamInterface<ListedKind> {
  protected:
    String answer( Format format ) { return answerOf( GetParam().word, *model, format ); }

    ConfigurationPtr const model = emptyModel();
};

TEST_P( ListOf, AKindOfRecordIsForPeopleAndForMachines ) {
    GetParam().fill( model->parser() );
    EXPECT_EQ( answer( Format::text ), GetParam().text );
    EXPECT_EQ( answer( Format::csv ), GetParam().csv );
    auto const json = parsed( answer( Format::json ) );
    ASSERT_EQ( json.MemberCount(), 2U );
    EXPECT_EQ( compact( ( json.MemberBegin() + 1 )->value ), GetParam().json );
}

TEST_P( ListOf, NothingIsTheTitlesOrAnEmptyArray ) {
    String const text = answer( Format::text );
    EXPECT_EQ( std::count( text.begin(), text.end(), '\n' ), 1 );
    EXPECT_THAT( GetParam().csv, StartsWith( answer( Format::csv ) ) );
    auto const json = parsed( answer( Format::json ) );
    EXPECT_EQ( compact( ( json.MemberBegin() + 1 )->value ), "[]" );
}

void addResources( BfResourceParser& parser ) {
    parser.bfResourcesPush( { "pipe.lpm", 0x1000001, 1, 1024, true, 3, 2 } );
    parser.bfResourcesPush( { "pipe.wred", 0x6000002, 12, 8, false, 1, 11 } );
    parser.bfResourcesPush( { "odd", 3, 11, 0, false, 0, 0 } ); // no type has this number
    parser.bfResourcesPush( { "odder", 4, 13, 0, false, 0, 0 } );
}

void addCounters( BfResourceParser& parser ) {
    parser.bfCountersPush( { "hits", 0x1000001, 0x5000002, 512, true, true, false, "pipe.acl", "a" } );
    parser.bfCountersPush( { "free", 0x5000003, 0x5000003, 64, false, false, true, "", "" } );
    parser.multipleParentTablesIs( "free" );
}

void addMeters( BfResourceParser& parser ) {
    parser.bfMetersPush( { "police", 0x1000001, true, false, true, "pipe.acl", "a" } );
    parser.bfMetersPush( { "free", 0x6000003, false, true, false, "", "" } );
    parser.bfMetersPush( { "shared", 0x6000004, false, true, false, "", "" } );
    parser.multipleParentTablesIs( "shared" );
}

BfResourceInfo::BfZelResource placed( String const& name ) {
    BfResourceInfo::BfZelResource entry;
    entry.name = name;
    return entry;
}

void addWreds( BfResourceParser& parser ) {
    parser.bfWredsPush( { "queue", 0x6000001, false, "b" } );
    parser.bfWredsPush( { "port", 0x1000002, true, "" } );
    parser.bfWredsPush( { "shared", 0x6000003, false, "" } );
    parser.parentTableIs( "queue", "pipe.acl" );
    parser.resourceHandlesIs( 0x1000002, placed( "pipe.lpm" ) );
    parser.multipleParentTablesIs( "shared" );
}

void addRegisters( BfResourceParser& parser ) {
    parser.bfRegisterInfosPush( { "seen", 0x1000001, false, "uint8_t", 1, false } );
    parser.bfRegisterInfosPush( { "stamp", 0x7000002, true, "uint64_t", 32, true } );
    parser.resourceHandlesIs( 0x1000001, placed( "pipe.acl" ) );
}

void addHeaders( BfResourceParser& parser ) {
    parser.bfHeadersIs( "hdr.fabric", BfHeaderInfo( 40 ) );
    parser.bfHeadersIs( "hdr.cpu", BfHeaderInfo( 8191 ) );
}

void addHashes( BfResourceParser& parser ) {
    parser.bfDynamicHashInfoIs( "lag", { 0xA000001, 0xB000002, 1, { "hdr.x" } } );
    parser.bfDynamicHashInfoIs( "ecmp", { 0xA000003, 0xB000004, 2, { "hdr.z", "hdr.a" } } );
}

void addPhv( BfResourceParser& parser ) {
    parser.ingressPhvContainersIs( "hdr.mac", 6 );
    parser.ingressPhvContainersIs( "ig.port", 2 );
    parser.egressPhvContainersIs( "eg.port", 0 );
    parser.egressPhvContainersIs( "hdr.mac", 31 );
}

INSTANTIATE_TEST_SUITE_P(
    Tables, ListOf,
    testing::Values(
        ListedKind{
            "resources", addResources,
            "HANDLE      SIZE  TYPE           DIRECTION  FIRST STAGE  STAGE TABLES  NAME\n"
            "0x01000001  1024  ternary_match  ingress              2             3  pipe.lpm\n"
            "0x06000002     8  wred           egress              11             1  pipe.wred\n"
            "0x00000003     0  11             egress               0             0  odd\n"
            "0x00000004     0  13             egress               0             0  odder\n",
            "name,handle,type,typeName,size,ingress,stages,stageStart\n"
            "pipe.lpm,16777217,1,ternary_match,1024,true,3,2\n"
            "pipe.wred,100663298,12,wred,8,false,1,11\n"
            "odd,3,11,11,0,false,0,0\nodder,4,13,13,0,false,0,0\n",
            R"([{"name":"pipe.lpm","handle":16777217,"type":1,"typeName":"ternary_match","size":1024,)"
            R"("ingress":true,"stages":3,"stageStart":2},)"
            R"({"name":"pipe.wred","handle":100663298,"type":12,"typeName":"wred","size":8,)"
            R"("ingress":false,"stages":1,"stageStart":11},{"name":"odd","handle":3,"type":11,"typeName":"11","size":0,)"
            R"("ingress":false,"stages":0,"stageStart":0},{"name":"odder","handle":4,"type":13,"typeName":"13","size":0,)"
            R"("ingress":false,"stages":0,"stageStart":0}])" },
        ListedKind{
            "counters", addCounters,
            "HANDLE      OWN HANDLE  SIZE  DIRECT  BYTES  PACKETS  PIPE  NAME  TABLE\n"
            "0x01000001  0x05000002   512  yes     yes    no       a     hits  pipe.acl\n"
            "0x05000003  0x05000003    64  no      no     yes      -     free  (several)\n",
            "name,handle,ownHandle,size,direct,bytes,packets,associatedTable,logicalPipe,"
            "severalParents\n"
            "hits,16777217,83886082,512,true,true,false,pipe.acl,a,false\n"
            "free,83886083,83886083,64,false,false,true,,,true\n",
            R"([{"name":"hits","handle":16777217,"ownHandle":83886082,"size":512,"direct":true,)"
            R"("bytes":true,"packets":false,"associatedTable":"pipe.acl","logicalPipe":"a",)"
            R"("severalParents":false},)"
            R"({"name":"free","handle":83886083,"ownHandle":83886083,"size":64,"direct":false,)"
            R"("bytes":false,"packets":true,"associatedTable":"","logicalPipe":"","severalParents":true}])" },
        ListedKind{ "meters", addMeters,
                    "HANDLE      DIRECT  PPS  PRE-COLOR  PIPE  NAME    TABLE\n"
                    "0x01000001  yes     no   yes        a     police  pipe.acl\n"
                    "0x06000003  no      yes  no         -     free    -\n"
                    "0x06000004  no      yes  no         -     shared  (several)\n",
                    "name,handle,direct,pps,hasPreColor,associatedTable,logicalPipe,severalParents\n"
                    "police,16777217,true,false,true,pipe.acl,a,false\n"
                    "free,100663299,false,true,false,,,false\n"
                    "shared,100663300,false,true,false,,,true\n",
                    R"([{"name":"police","handle":16777217,"direct":true,"pps":false,"hasPreColor":true,)"
                    R"("associatedTable":"pipe.acl","logicalPipe":"a","severalParents":false},)"
                    R"({"name":"free","handle":100663299,"direct":false,"pps":true,"hasPreColor":false,)"
                    R"("associatedTable":"","logicalPipe":"","severalParents":false},)"
                    R"({"name":"shared","handle":100663300,"direct":false,"pps":true,"hasPreColor":false,)"
                    R"("associatedTable":"","logicalPipe":"","severalParents":true}])" },
        ListedKind{ "wreds", addWreds,
                    "HANDLE      DIRECT  PIPE  NAME    TABLE\n"
                    "0x06000001  no      b     queue   pipe.acl\n"
                    "0x01000002  yes     -     port    pipe.lpm\n"
                    "0x06000003  no      -     shared  (several)\n",
                    "name,handle,direct,logicalPipe,parent,severalParents\n"
                    "queue,100663297,false,b,pipe.acl,false\nport,16777218,true,,pipe.lpm,false\n"
                    "shared,100663299,false,,,true\n",
                    R"([{"name":"queue","handle":100663297,"direct":false,"logicalPipe":"b",)"
                    R"("parent":"pipe.acl","severalParents":false},)"
                    R"({"name":"port","handle":16777218,"direct":true,"logicalPipe":"",)"
                    R"("parent":"pipe.lpm","severalParents":false},)"
                    R"({"name":"shared","handle":100663299,"direct":false,"logicalPipe":"",)"
                    R"("parent":null,"severalParents":true}])" },
        ListedKind{ "registers", addRegisters,
                    "HANDLE      INDIRECT  TYPE      WIDTH  DUAL  NAME   TABLE\n"
                    "0x01000001  no        uint8_t       1  no    seen   pipe.acl\n"
                    "0x07000002  yes       uint64_t     32  yes   stamp  -\n",
                    "name,handle,indirect,dataType,width,dualWidth,parent,severalParents\n"
                    "seen,16777217,false,uint8_t,1,false,pipe.acl,false\n"
                    "stamp,117440514,true,uint64_t,32,true,,false\n",
                    R"([{"name":"seen","handle":16777217,"indirect":false,"dataType":"uint8_t","width":1,)"
                    R"("dualWidth":false,"parent":"pipe.acl","severalParents":false},)"
                    R"({"name":"stamp","handle":117440514,"indirect":true,"dataType":"uint64_t","width":32,)"
                    R"("dualWidth":true,"parent":null,"severalParents":false}])" },
        ListedKind{ "actions",
                    []( BfResourceParser& parser ) {
                        parser.bfActionsPush( { 0x8000002, "set", "pipe.lpm" } );
                        parser.bfActionsPush( { 0x8000001, "drop", "pipe.acl" } );
                    },
                    "HANDLE      NAME  TABLE\n"
                    "0x08000002  set   pipe.lpm\n"
                    "0x08000001  drop  pipe.acl\n",
                    "handle,name,tableName\n134217730,set,pipe.lpm\n134217729,drop,pipe.acl\n",
                    R"([{"handle":134217730,"name":"set","tableName":"pipe.lpm"},)"
                    R"({"handle":134217729,"name":"drop","tableName":"pipe.acl"}])" } ) );

INSTANTIATE_TEST_SUITE_P(
    BesideTheTables, ListOf,
    testing::Values( ListedKind{ "learn-quantas",
                                 []( BfResourceParser& parser ) {
                                     parser.bfLearnQuantaInfosPush( { "mac", 0x9000002 } );
                                     parser.bfLearnQuantaInfosPush( { "arp", 0x9000001 } );
                                 },
                                 "HANDLE      NAME\n"
                                 "0x09000002  mac\n"
                                 "0x09000001  arp\n",
                                 "name,handle\nmac,150994946\narp,150994945\n",
                                 R"([{"name":"mac","handle":150994946},{"name":"arp","handle":150994945}])" },
                     ListedKind{ "headers", addHeaders,
                                 "NAME        BYTES\n"
                                 "hdr.cpu      8191\n"
                                 "hdr.fabric     40\n",
                                 "name,size\nhdr.cpu,8191\nhdr.fabric,40\n",
                                 R"([{"name":"hdr.cpu","size":8191},{"name":"hdr.fabric","size":40}])" },
                     ListedKind{
                         "hashes", addHashes,
                         "NAME  HANDLE      FIELD LIST  FIELDS  FIELD NAMES\n"
                         "ecmp  0x0a000003  0x0b000004       2  hdr.z hdr.a\n"
                         "lag   0x0a000001  0x0b000002       1  hdr.x\n",
                         "name,tableHdl,fieldListHdl,fieldCount,fieldNames\n"
                         "ecmp,167772163,184549380,2,hdr.z hdr.a\nlag,167772161,184549378,1,hdr.x\n",
                         R"([{"name":"ecmp","tableHdl":167772163,"fieldListHdl":184549380,"fieldCount":2,)"
                         R"("fieldNames":["hdr.z","hdr.a"]},{"name":"lag","tableHdl":167772161,)"
                         R"("fieldListHdl":184549378,"fieldCount":1,"fieldNames":["hdr.x"]}])" },
                     ListedKind{ "phv", addPhv,
                                 "FIELD    INGRESS BYTES  EGRESS BYTES\n"
                                 "eg.port              -             0\n"
                                 "hdr.mac              6            31\n"
                                 "ig.port              2             -\n",
                                 "name,ingressBytes,egressBytes\neg.port,,0\nhdr.mac,6,31\nig.port,2,\n",
                                 R"([{"name":"eg.port","ingressBytes":null,"egressBytes":0},)"
                                 R"({"name":"hdr.mac","ingressBytes":6,"egressBytes":31},)"
                                 R"({"name":"ig.port","ingressBytes":2,"egressBytes":null}])" } ) );

/// What holds of every list, those with tests of their own included.
class FilteredList : public InFolder {};

TEST_F( FilteredList, SaysThatNoNameMatches ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", contextOf( matchTable( "acl", 1 ) ) );
    EXPECT_EQ( bfri( { "tables", "switch.conf", "--filter", "lpm", "--csv" } ).err,
               "bfri: no name matches 'lpm'\n" );
    for( std::vector<char const*> const& line : { std::vector{ "tables", "switch.conf", "--filter", "a" },
                                                  { "tables", "switch.conf", "-n", "0" },
                                                  { "counters", "switch.conf", "--filter", "a" } } )
        EXPECT_EQ( bfri( line ).err, "" );
}

} // namespace
