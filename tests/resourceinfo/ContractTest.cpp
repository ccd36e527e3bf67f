#include "resourceinfo/BfResourceInfoIntf.h"
#include "tests/support/Assertions.h"
#include "tests/support/ContextBuilder.h"
#include "tests/support/TemporaryFolder.h"
#include "vessa/VectorException.h"
#include "zel/Log.h"

#include <gtest/gtest.h>

// Against the shared library itself, with what it exports and nothing else.

namespace {

using namespace BfResourceInfo;
using Support::ContextBuilder;
using Support::matchTable;

class Contract : public testing::Test {
  protected:
    String confWith( ContextBuilder const& context ) const {
        folder_.write( "pipe/context_b.json", context.text() );
        return folder_.write( "switch.conf", Support::SwitchConfBuilder()
                                                 .device( Support::DeviceBuilder()
                                                              .runtimeConfig( "bfrt.json" )
                                                              .pipeline( "pipe/context_b.json", { 2, 3 } ) )
                                                 .text() );
    }

    Support::TemporaryFolder folder_;
};

TEST_F( Contract, AgentAsksForATable ) {
    auto const info = bfResourceInfoIntfFactory(
        confWith( ContextBuilder()
                      .table( Support::actionDataTable( "acl.adt" ).size( 64 ) )
                      .table( matchTable( "acl" ).size( 512 ).idleTime( 3 ).actionData( "acl.adt" ) ) ) );
    EXPECT_EQ( info->bfTablesNum(), 1 );
    EXPECT_EQ( info->bfTableField( "acl", tableMaxEntries ), 512 );
    EXPECT_EQ( info->bfTableField( "acl", tableIdleTimePrecision ), 3 );
    EXPECT_EQ( info->bfTableField( "acl", tableMaxAdtEntries ), 64 );
    EXPECT_EQ( info->bfTableField( "acl", tableHandle ), Support::handleOf( "acl" ) | 0x20000000 );
    EXPECT_EQ( info->bfTableString( "acl", tableAdtName ), "acl.adt" );
    EXPECT_EQ( info->bfTableString( "acl", tableLogicalPipe ), "b" );
    EXPECT_EQ( info->bfTablesHitBitSmashSize(), 512 / 32 + 2 );
    EXPECT_EQ( info->bfTableByHandle( Support::handleOf( "acl" ) | 0x20000000 ).name, "acl" );
}

TEST_F( Contract, AgentAsksForWhatIsAttachedToTables ) {
    auto const info = bfResourceInfoIntfFactory(
        confWith( ContextBuilder()
                      .table( matchTable( "acl" ).action( "permit", { "hits", "police" } ) )
                      .table( Support::statisticsTable( "hits" ) )
                      .table( Support::meterTable( "police" ) )
                      .table( Support::wredTable( "queue" ) )
                      .table( Support::statefulTable( "flows" ) )
                      .learnQuanta( "macs" ) ) );
    U32 const pipeBits = 0x20000000;
    EXPECT_EQ( info->bfResource( info->bfResourceIndex( "acl" ) ).stages, 1 );
    EXPECT_EQ( info->bfTableCounterField( "hits", counterHandle ), Support::handleOf( "hits" ) | pipeBits );
    EXPECT_EQ( info->bfTableMeterField( "police", meterPps ), 0 );
    EXPECT_EQ( info->bfAssociatedTable( "police" ), "acl" );
    EXPECT_EQ( info->bfTableWredField( "queue", wredHandle ), Support::handleOf( "queue" ) | pipeBits );
    EXPECT_EQ( info->bfRegister( info->bfRegisterIndex( "flows" ) ).width, 32 );
    EXPECT_EQ( info->bfLearnQuanta( 0 ).handle, Support::handleOf( "macs" ) | pipeBits );
    EXPECT_EQ( info->bfAction( info->bfActionIndex( "permit" ) ).tableName, "acl" );
}

TEST_F( Contract, AgentAsksForHeadersAndHashes ) {
    auto const info = bfResourceInfoIntfFactory( confWith(
        ContextBuilder().flexibleHeader( "ipv6", 320 ).dynamicHash( "lag", { "ip.src", "ip.dst" } ) ) );
    EXPECT_EQ( info->bfHeaderSize( "ipv6" ), 40 );
    EXPECT_EQ( info->bfDynHashFieldCount( "lag" ), 2 );
    EXPECT_EQ( info->bfDynHashFieldId( "lag", "ip.dst" ), 1 );
    EXPECT_EQ( info->bfDynHashTableHdl( "ecmp" ), BfResourceInfoIndexInvalid );
}

TEST_F( Contract, AgentReadsTheParser ) {
    auto const parser = bfResourceParserFactory( confWith( ContextBuilder().table( matchTable( "acl" ) ) ) );
    EXPECT_EQ( parser->contextFile( BfPipeMask( 0xC ) ), folder_.path( "pipe/context_b.json" ) );
    EXPECT_EQ( parser->bfrtConfig(), folder_.path( "bfrt.json" ) );
    U32 const handle = Support::handleOf( "acl" ) | 0x20000000;
    EXPECT_EQ( parser->resourceHandles( handle ).name, "acl" );
    EXPECT_EQ( parser->normalizeFieldName( "ip.src$1" ), "ip_src_1_" );
}

TEST_F( Contract, FailuresCrossTheLibraryAsExceptions ) {
    String const bad = confWith( ContextBuilder().with( "/tables", "5" ) );
    EXPECT_EQ( Support::conditionOf( [ & ] { bfResourceInfoIntfFactory( bad ); } ),
               "d[ \"tables\" ].IsArray()" );
    auto const info = bfResourceInfoIntfFactory( confWith( ContextBuilder() ) );
    EXPECT_THROW( info->bfTable( 0 ), Vessa::VectorOutOfRange );
    EXPECT_EQ( Support::conditionOf( [ & ] { info->bfTableField( "x", tableSize ); } ),
               "index != BfResourceInfoIndexInvalid" );
}

TEST_F( Contract, ValueTypesAndIdentifiersHaveTheirStringForms ) {
    EXPECT_EQ( stringValue( tableSelHandle ), "tableSelHandle" );
    EXPECT_EQ( BfTableFieldIdInstance( "tableSize" ), tableSize );
    EXPECT_EQ( valueToStrep( BfPipeMask( 3 ) ), "3" );
    EXPECT_EQ( valueToStrep( BfHeaderInfo( 14 ) ), "14" );
    EXPECT_FALSE( BfZelResource() );
}

TEST_F( Contract, LoadingTheLibraryRegistersItsTypesAndItsMessage ) {
    EXPECT_NE( Zel::logHandle( "BFN_SWITCH_CONF_ERROR" ), nullptr );
    auto const info = bfResourceInfoIntfFactory( "" );
    EXPECT_EQ( info->fwkType().index, 6 );
    EXPECT_EQ( info->parser()->fwkType().index, 3 );
}

} // namespace
