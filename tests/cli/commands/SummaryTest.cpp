#include "tests/cli/Inputs.h"

namespace {

using Bfri::Format;

class Summary : public InFolder {
  protected:
    ConfigurationPtr const model = emptyModel();
    BfResourceInfo::BfResourceParser& parser = model->parser();
};

TEST_F( Summary, OfAnEmptyConfigurationIsAllZeros ) {
    EXPECT_EQ( answerOf( "summary", *model, Format::text ), R"(switch configuration    switch.conf
run-time configuration  -

PIPE MASK  PIPES  CONTEXT FILE

COUNT  OF
    0  hardware resources
    0  match tables
    0  counters
    0  meters
    0  WRED tables
    0  registers
    0  learn quantas
    0  actions
    0  flexible headers
    0  dynamic hash calculations
    0  ingress fields in PHV
    0  egress fields in PHV
    0  placed tables, by handle
    0  resources with one parent table
    0  resources with several
    0  slots of the hit-bit space
)" );
}

/// Puts a different number of elements into each collection.
void fill( BfResourceInfo::BfResourceParser& parser ) {
    auto const times = []( unsigned count, auto const& add ) {
        for( unsigned i = 0; i < count; ++i )
            add( std::to_string( i ) );
    };
    times( 1, [ & ]( String const& name ) { parser.bfResourcesPush( named<BfResource>( name ) ); } );
    times( 2, [ & ]( String const& name ) { parser.bfTablesPush( named<BfTableInfo>( name ) ); } );
    times( 3, [ & ]( String const& name ) { parser.bfCountersPush( named<BfTableCounterInfo>( name ) ); } );
    times( 4, [ & ]( String const& name ) { parser.bfMetersPush( named<BfTableMeterInfo>( name ) ); } );
    times( 5, [ & ]( String const& name ) { parser.bfWredsPush( named<BfTableWredInfo>( name ) ); } );
    times( 6, [ & ]( String const& name ) { parser.bfRegisterInfosPush( named<BfRegisterInfo>( name ) ); } );
    times( 7, [ & ]( String const& name ) {
        parser.bfLearnQuantaInfosPush( named<BfLearnQuantaInfo>( name ) );
    } );
    times( 8, [ & ]( String const& name ) { parser.bfActionsPush( named<BfActionInfo>( name ) ); } );
    times( 9, [ & ]( String const& name ) { parser.bfHeadersIs( name, BfHeaderInfo( 1 ) ); } );
    times( 10, [ & ]( String const& name ) { parser.bfDynamicHashInfoIs( name, {} ); } );
    times( 11, [ & ]( String const& name ) { parser.ingressPhvContainersIs( name, 1 ); } );
    times( 12, [ & ]( String const& name ) { parser.egressPhvContainersIs( name, 1 ); } );
    times( 13, [ & ]( String const& name ) {
        parser.resourceHandlesIs( static_cast<U32>( std::stoul( name ) ), {} );
    } );
    times( 14, [ & ]( String const& name ) { parser.parentTableIs( name, "t" ); } );
    times( 15, [ & ]( String const& name ) { parser.multipleParentTablesIs( name ); } );
    parser.hitBitSmashEntriesIs( 1600 );
    parser.bfrtConfigIs( "bfrt.json" );
    parser.contextFileIs( BfResourceInfo::BfPipeMask( 0x80000000 ), "b/context.json" );
    parser.contextFileIs( BfResourceInfo::BfPipeMask( 5 ), "a/context.json" );
}

TEST_F( Summary, CountsEveryKind ) {
    fill( parser );
    EXPECT_EQ( answerOf( "summary", *model, Format::text ), R"(switch configuration    switch.conf
run-time configuration  bfrt.json

PIPE MASK   PIPES  CONTEXT FILE
0x00000005  0 2    a/context.json
0x80000000  31     b/context.json

COUNT  OF
    1  hardware resource
    2  match tables
    3  counters
    4  meters
    5  WRED tables
    6  registers
    7  learn quantas
    8  actions
    9  flexible headers
   10  dynamic hash calculations
   11  ingress fields in PHV
   12  egress fields in PHV
   13  placed tables, by handle
   14  resources with one parent table
   15  resources with several
 1600  slots of the hit-bit space
)" );
}

TEST_F( Summary, AsJsonNamesTheCollections ) {
    fill( parser );
    EXPECT_EQ( compact( jsonAnswerOf( "summary", *model ) ),
               R"({"format":1,"switchConf":"switch.conf","bfrtConfig":"bfrt.json",)"
               R"("contextFile":[{"pipeMask":5,"pipes":[0,2],"path":"a/context.json"},)"
               R"({"pipeMask":2147483648,"pipes":[31],"path":"b/context.json"}],)"
               R"("hitBitSmashEntries":1600,"counts":{"bfResources":1,"bfTables":2,"bfCounters":3,)"
               R"("bfMeters":4,"bfWreds":5,"bfRegisterInfos":6,"bfLearnQuantaInfos":7,"bfActions":8,)"
               R"("bfHeaders":9,"bfDynamicHashInfo":10,"ingressPhvContainers":11,)"
               R"("egressPhvContainers":12,"resourceHandles":13,"parentTable":14,)"
               R"("multipleParentTables":15}})" );
}

} // namespace
