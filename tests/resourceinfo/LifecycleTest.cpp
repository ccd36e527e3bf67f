#include "resourceinfo/model/TypeModules.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <stdexcept>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::DeviceBuilder;
using Support::failureOf;
using Support::matchTable;
using Support::ThrowingAssertions;
using Support::TraceCollector;
using testing::ElementsAre;

class Lifecycle : public testing::Test {
  protected:
    /// A configuration of its own folder, with a match table of that name.
    static String confWith( SwitchFolder const& folder, std::string_view table ) {
        return folder.conf( ContextBuilder().table( matchTable( table ) ) );
    }

    SwitchFolder folder_;
    SwitchFolder otherFolder_;
};

TEST_F( Lifecycle, InterfaceIsCompleteWhenTheFactoryReturns ) {
    String const conf = confWith( folder_, "acl" );
    auto const info = bfResourceInfoIntfFactory( conf );
    EXPECT_EQ( info->switchConf(), conf );
    EXPECT_TRUE( info->notifications() );
    EXPECT_EQ( info->bfTablesNum(), 1 );
    EXPECT_EQ( info->references(), 1 );
    ASSERT_TRUE( info->parser() );
    EXPECT_EQ( info->parser()->switchConf(), conf );
    EXPECT_TRUE( info->parser()->notifications() );
    EXPECT_TRUE( info->parser()->initialized() );
}

TEST_F( Lifecycle, InterfaceLeavesItsInitializedAttributeFalse ) {
    EXPECT_FALSE( bfResourceInfoIntfFactory( confWith( folder_, "acl" ) )->initialized() );
}

TEST_F( Lifecycle, CreatorAndFactoryAndFrameworkMakeTheSame ) {
    String const conf = confWith( folder_, "acl" );
    auto const entity =
        Zel::construct( interfaceTypeModule().typeId( bfResourceInfoIntfType ), std::array{ conf } );
    auto* const constructed = dynamic_cast<BfResourceInfoIntf*>( entity.get() );
    ASSERT_NE( constructed, nullptr );
    EXPECT_EQ( constructed->switchConf(), conf );
    EXPECT_TRUE( constructed->notifications() );
    EXPECT_EQ( constructed->bfTableName( 0 ), "acl" );
    auto const created = BfResourceInfoIntf::BfResourceInfoIntfIs( conf );
    EXPECT_EQ( created->switchConf(), conf );
    EXPECT_TRUE( created->notifications() );
    EXPECT_EQ( created->bfTableName( 0 ), "acl" );
}

TEST_F( Lifecycle, FrameworkConstructsAParserFromOneArgument ) {
    String const conf = confWith( folder_, "acl" );
    auto const entity =
        Zel::construct( parserTypeModule().typeId( bfResourceParserType ), std::array{ conf } );
    auto* const parser = dynamic_cast<BfResourceParser*>( entity.get() );
    ASSERT_NE( parser, nullptr );
    EXPECT_EQ( parser->switchConf(), conf );
    EXPECT_EQ( parser->bfTables().size(), 1 );
    EXPECT_TRUE( parser->notifications() );
}

TEST_F( Lifecycle, FrameworkRefusesAnotherNumberOfArguments ) {
    for( auto const type : { interfaceTypeModule().typeId( bfResourceInfoIntfType ),
                             parserTypeModule().typeId( bfResourceParserType ) } ) {
        EXPECT_THROW( Zel::construct( type, {} ), std::invalid_argument );
        EXPECT_THROW( Zel::construct( type, std::array<String, 2>{} ), std::invalid_argument );
    }
}

TEST_F( Lifecycle, ParserIsWithThePresentPathKeepsTheParserAndReadsNothing ) {
    String const conf = confWith( folder_, "acl" );
    auto const info = bfResourceInfoIntfFactory( conf );
    auto const parser = info->parser();
    folder_.remove( "switch.conf" );
    folder_.remove( "context.json" );
    TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    EXPECT_EQ( info->parserIs( conf ), parser );
    EXPECT_EQ( info->parserIs( String( conf ) ), parser );
    EXPECT_EQ( info->parser(), parser );
    EXPECT_THAT( trace.texts(), ElementsAre() );
    EXPECT_EQ( info->bfTableName( 0 ), "acl" );
}

TEST_F( Lifecycle, ParserIsComparesThePathsByteForByte ) {
    confWith( folder_, "acl" );
    auto const info = bfResourceInfoIntfFactory( folder_.path( "switch.conf" ) );
    auto const former = info->parser();
    String const sameFile = folder_.path( "./switch.conf" );
    auto const parser = info->parserIs( sameFile );
    EXPECT_NE( parser, former );
    EXPECT_EQ( info->parser()->switchConf(), sameFile );
}

TEST_F( Lifecycle, ParserIsWithAnotherPathReplacesTheParser ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    String const other = confWith( otherFolder_, "nat" );
    auto const parser = info->parserIs( other );
    EXPECT_EQ( info->parser(), parser );
    EXPECT_TRUE( parser->notifications() );
    EXPECT_EQ( parser->switchConf(), other );
    EXPECT_EQ( info->bfTableName( 0 ), "nat" );
    EXPECT_EQ( info->bfTablesNum(), 1 ) << "the former model is not added to";
}

TEST_F( Lifecycle, HolderOfTheFormerParserStillSeesItsModel ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    auto const former = info->parser();
    info->parserIs( confWith( otherFolder_, "nat" ) );
    EXPECT_EQ( former->references(), 1 );
    EXPECT_EQ( former->bfTables().at( 0 ).name, "acl" );
}

TEST_F( Lifecycle, FormerParserAnswersUntilTheNewOneIsComplete ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    String const other = confWith( otherFolder_, "nat" );
    auto& handle = Zel::TraceHandle::byName( "BfResourceParser" );
    handle.levelIs( 6, true );
    std::vector<String> answers;
    auto const formerSink =
        Zel::traceSinkIs( [ & ]( Zel::TraceLine const& ) { answers.push_back( info->bfTableName( 0 ) ); } );
    info->parserIs( other );
    Zel::traceSinkIs( formerSink );
    handle.levelIs( 6, false );
    EXPECT_GE( answers.size(), 5 );
    EXPECT_THAT( answers, testing::Each( "acl" ) );
}

TEST_F( Lifecycle, FormerParserDiesAfterTheNewOneHasRead ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    String const other = confWith( otherFolder_, "nat" );
    TraceCollector const trace( "BfResourceParser", { 5, 6 } );
    info->parserIs( other );
    auto const texts = trace.texts();
    ASSERT_GE( texts.size(), 2 );
    EXPECT_EQ( texts.front(), "void BfResourceInfo::BfResourceParser::handleInitialized()" );
    EXPECT_EQ( texts.back(), "void BfResourceInfo::BfResourceParser::doPrepareToDie()" );
    EXPECT_EQ( std::count( texts.begin(), texts.end(), texts.back() ), 1 );
}

TEST_F( Lifecycle, FailureOfTheNewParserLeavesTheFormerOne ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    auto const former = info->parser();
    String const bad = otherFolder_.conf( ContextBuilder().without( "/phv_allocation" ) );
    auto const before = liveAllocations();
    failureOf( [ & ] { info->parserIs( bad ); } );
    EXPECT_EQ( info->parser(), former );
    EXPECT_EQ( info->bfTableName( 0 ), "acl" );
    EXPECT_EQ( liveAllocations(), before );
}

TEST_F( Lifecycle, ParserDelHandsTheParserOver ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    auto const parser = info->parser();
    EXPECT_EQ( info->parserDel(), parser );
    EXPECT_FALSE( info->parser() );
    EXPECT_EQ( parser->references(), 1 );
    EXPECT_EQ( parser->bfTables().at( 0 ).name, "acl" );
}

TEST_F( Lifecycle, ParserDelWithoutAParserIsEmpty ) {
    auto const info = emptyInterface();
    info->parserDel();
    EXPECT_FALSE( info->parserDel() );
}

TEST_F( Lifecycle, ParserDelReleasesAParserThatNobodyHolds ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    TraceCollector const trace( "BfResourceParser", { 5 } );
    info->parserDel();
    EXPECT_THAT( trace.texts(), ElementsAre( "void BfResourceInfo::BfResourceParser::doPrepareToDie()" ) );
}

TEST_F( Lifecycle, ParserIsAfterParserDelReadsAgain ) {
    auto const info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    info->parserDel();
    confWith( folder_, "nat" );
    info->parserIs( info->switchConf() );
    EXPECT_EQ( info->bfTableName( 0 ), "nat" );
}

TEST_F( Lifecycle, QueryWithoutAParserFailsLoudly ) {
    auto const info = emptyInterface();
    info->parserDel();
    std::map<String, std::function<void()>> const queries{
        { "bfResourcesNum", [ & ] { info->bfResourcesNum(); } },
        { "bfResourceIndex", [ & ] { info->bfResourceIndex( "x" ); } },
        { "bfResource", [ & ] { info->bfResource( 0 ); } },
        { "bfResourceField", [ & ] { info->bfResourceField( "x", resourceSize ); } },
        { "bfResourceStageStart", [ & ] { info->bfResourceStageStart( "x" ); } },
        { "bfResourceByHandle", [ & ] { info->bfResourceByHandle( 1 ); } },
        { "bfTablesNum", [ & ] { info->bfTablesNum(); } },
        { "bfTablesHitBitSmashSize", [ & ] { info->bfTablesHitBitSmashSize(); } },
        { "bfTableIndex", [ & ] { info->bfTableIndex( "x" ); } },
        { "bfTable", [ & ] { info->bfTable( 0 ); } },
        { "bfTableField", [ & ] { info->bfTableField( "x", tableSize ); } },
        { "bfTableString", [ & ] { info->bfTableString( "x", tableAdtName ); } },
        { "bfTableByHandle", [ & ] { info->bfTableByHandle( 1 ); } },
        { "bfTableName", [ & ] { info->bfTableName( 0 ); } },
        { "bfTableCountersNum", [ & ] { info->bfTableCountersNum(); } },
        { "bfTableCounterIndex", [ & ] { info->bfTableCounterIndex( "x" ); } },
        { "bfTableCounter", [ & ] { info->bfTableCounter( 0 ); } },
        { "bfTableCounterField", [ & ] { info->bfTableCounterField( "x", counterSize ); } },
        { "bfTableMetersNum", [ & ] { info->bfTableMetersNum(); } },
        { "bfTableMeterIndex", [ & ] { info->bfTableMeterIndex( "x" ); } },
        { "bfTableMeter", [ & ] { info->bfTableMeter( 0 ); } },
        { "bfTableMeterField", [ & ] { info->bfTableMeterField( "x", meterHandle ); } },
        { "bfTableWredNum", [ & ] { info->bfTableWredNum(); } },
        { "bfTableWredIndex", [ & ] { info->bfTableWredIndex( "x" ); } },
        { "bfTableWred", [ & ] { info->bfTableWred( 0 ); } },
        { "bfTableWredField", [ & ] { info->bfTableWredField( "x", wredHandle ); } },
        { "bfAssociatedTable", [ & ] { info->bfAssociatedTable( "x" ); } },
        { "bfRegistersNum", [ & ] { info->bfRegistersNum(); } },
        { "bfRegisterIndex", [ & ] { info->bfRegisterIndex( "x" ); } },
        { "bfRegister", [ & ] { info->bfRegister( 0 ); } },
        { "bfLearnQuantasNum", [ & ] { info->bfLearnQuantasNum(); } },
        { "bfLearnQuantaIndex", [ & ] { info->bfLearnQuantaIndex( "x" ); } },
        { "bfLearnQuanta", [ & ] { info->bfLearnQuanta( 0 ); } },
        { "bfActionsNum", [ & ] { info->bfActionsNum(); } },
        { "bfActionIndex", [ & ] { info->bfActionIndex( "x" ); } },
        { "bfAction", [ & ] { info->bfAction( 0 ); } },
    };
    for( auto const& [ name, query ] : queries ) {
        auto const failure = failureOf( query );
        EXPECT_EQ( failure.condition, "parser" ) << name;
        EXPECT_EQ( failure.source, "BfResourceInfoIntf" ) << name;
        EXPECT_EQ( failure.message, "query without a parser" ) << name;
        EXPECT_THAT( failure.function, testing::MatchesRegex( "(.*::)?" + name + "(\\(.*)?" ) );
    }
}

TEST_F( Lifecycle, ReleaseOfTheInterfaceGivesEverythingBack ) {
    String const conf = confWith( folder_, "acl" );
    auto const before = liveAllocations();
    {
        auto const info = bfResourceInfoIntfFactory( conf );
        auto const during = liveAllocations();
        for( auto const& type : { &typeid( BfResourceInfoIntf ), &typeid( BfResourceParser ),
                                  &typeid( ZelContextFile ), &typeid( BfTableInfo ) } )
            EXPECT_GT( during.at( type->name() ), before.at( type->name() ) ) << type->name();
    }
    EXPECT_EQ( liveAllocations(), before );
}

TEST_F( Lifecycle, HeldParserOutlivesTheInterface ) {
    auto info = bfResourceInfoIntfFactory( confWith( folder_, "acl" ) );
    auto const parser = info->parser();
    TraceCollector const trace( "BfResourceParser", { 5 } );
    info = nullptr;
    EXPECT_THAT( trace.texts(), ElementsAre() );
    EXPECT_EQ( parser->bfTables().at( 0 ).name, "acl" );
}

TEST_F( Lifecycle, CopiesOutliveTheModel ) {
    auto info = bfResourceInfoIntfFactory( confWith( folder_, "acl with a name of some length" ) );
    BfTableInfo const table = info->bfTable( 0 );
    String const name = info->bfTableName( 0 );
    info = nullptr;
    EXPECT_EQ( table.name, "acl with a name of some length" );
    EXPECT_EQ( name, table.name );
}

TEST_F( Lifecycle, FailureInTheConstructorLeavesNothing ) {
    String const conf = folder_.conf(
        ContextBuilder()
            .table( matchTable( "acl" ).statistics( "counter" ).action( "count", { "some.resource" } ) )
            .phvStage( "hdr.eth", 6 )
            .flexibleHeader( "eth", 112 )
            .without( "/dynamic_hash_calculations" ) );
    auto const before = liveAllocations();
    EXPECT_EQ( failureOf( [ & ] { bfResourceInfoIntfFactory( conf ); } ).condition, "false" );
    EXPECT_EQ( liveAllocations(), before );
    EXPECT_EQ( failureOf( [ & ] { bfResourceParserFactory( conf ); } ).condition, "false" );
    EXPECT_EQ( liveAllocations(), before );
}

TEST_F( Lifecycle, FailureInTheConstructorReachesTheCallerOfEveryCreator ) {
    String const conf = folder_.conf( DeviceBuilder() );
    ThrowingAssertions const scope;
    EXPECT_THROW( bfResourceInfoIntfFactory( conf ), Zel::AssertionError );
    EXPECT_THROW( BfResourceInfoIntf::BfResourceInfoIntfIs( conf ), Zel::AssertionError );
    EXPECT_THROW( bfResourceParserFactory( conf ), Zel::AssertionError );
    EXPECT_THROW( BfResourceParser::BfResourceParserIs( conf ), Zel::AssertionError );
    EXPECT_THROW(
        Zel::construct( interfaceTypeModule().typeId( bfResourceInfoIntfType ), std::array{ conf } ),
        Zel::AssertionError );
}

TEST_F( Lifecycle, ConfigurationWithoutContextFilesGivesAnEmptyModel ) {
    auto const info = bfResourceInfoIntfFactory( folder_.conf( Support::SwitchConfBuilder() ) );
    EXPECT_EQ( info->bfTablesNum(), 0 );
    EXPECT_EQ( info->bfResourcesNum(), 0 );
    EXPECT_EQ( info->bfTablesHitBitSmashSize(), 0 );
    EXPECT_EQ( info->bfTableIndex( "x" ), BfResourceInfoIndexInvalid );
    EXPECT_EQ( info->bfResourceIndex( "x" ), BfResourceInfoIndexInvalid );
}

} // namespace
} // namespace BfResourceInfo
