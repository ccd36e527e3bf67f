#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::DeviceBuilder;
using Support::handleOf;
using Support::matchTable;
using Support::TraceCollector;
using testing::ElementsAre;

String const handleInitialized = "void BfResourceInfo::BfResourceParser::handleInitialized()";
String const doPrepareToDie = "void BfResourceInfo::BfResourceParser::doPrepareToDie()";
String const parseContextJson = "void parseContextJson(BfResourceInfo::BfResourceParser*, const String&, "
                                "const BfResourceParserContext&)";
String const preprocessContext = "void preprocessContext(BfResourceInfo::BfResourceParser*, "
                                 "rapidjson::Document&, const BfResourceParserContext&)";

class ParserLifecycle : public testing::Test {
  protected:
    /// A context file of that name whose only table is named after it.
    void context( std::string_view name ) const {
        folder_.write( name, ContextBuilder().table( matchTable( name ) ).text() );
    }
    /// The handles of the tables of a parser, by index.
    static std::vector<U32> handlesOf( BfResourceParser const& parser ) {
        std::vector<U32> handles;
        for( BfTableInfo const& table : parser.bfTables() )
            handles.push_back( table.handle );
        return handles;
    }

    SwitchFolder folder_;
};

TEST_F( ParserLifecycle, ProfileWithoutDevicesGivesAnInitialisedEmptyParser ) {
    String const conf = folder_.conf( Support::SwitchConfBuilder() );
    auto const parser = bfResourceParserFactory( conf );
    EXPECT_TRUE( parser->initialized() );
    EXPECT_EQ( parser->switchConf(), conf );
    EXPECT_EQ( parser->bfrtConfig(), "" );
    EXPECT_TRUE( parser->contextFile().empty() );
    EXPECT_EQ( modelText( *parser ),
               "hitBitSmashEntries 0\nbfResources\nbfTables\nbfCounters\nbfMeters\nbfWreds\nbfRegisterInfos\n"
               "bfLearnQuantaInfos\nbfActions\nbfHeaders\nbfDynamicHashInfo\ningressPhvContainers\n"
               "egressPhvContainers\nresourceHandles\nparentTable\nmultipleParentTables\n" );
}

TEST_F( ParserLifecycle, CreatorsSwitchNotificationsOn ) {
    EXPECT_TRUE( bfResourceParserFactory( "" )->notifications() );
    EXPECT_TRUE( BfResourceParser::BfResourceParserIs( "" )->notifications() );
}

TEST_F( ParserLifecycle, ContextFilesAreReadByAscendingMask ) {
    context( "high" );
    context( "low" );
    auto const parser = bfResourceParserFactory(
        folder_.conf( DeviceBuilder().pipeline( "high", { 2, 3 } ).pipeline( "low", { 0, 1 } ) ) );
    ASSERT_EQ( parser->bfTables().size(), 2 );
    EXPECT_EQ( parser->bfTables().at( 0 ).name, "low" );
    EXPECT_EQ( parser->bfTables().at( 1 ).name, "high" );
}

TEST_F( ParserLifecycle, HandlesCarryTheLowestPipeWhenThereIsARuntimeConfiguration ) {
    struct Row {
        std::initializer_list<U32> pipes;
        U32 bits;
    };
    context( "t" );
    for( Row const& row : { Row{ { 0, 1 }, 0 }, Row{ { 2, 3 }, 0x20000000 }, Row{ { 3, 2 }, 0x20000000 },
                            Row{ { 3 }, 0x30000000 }, Row{ { 15 }, 0xF0000000 }, Row{ {}, 0 } } ) {
        auto const device = DeviceBuilder().pipeline( "t", row.pipes );
        auto const with =
            bfResourceParserFactory( folder_.conf( DeviceBuilder( device ).runtimeConfig( "r" ) ) );
        EXPECT_THAT( handlesOf( *with ), ElementsAre( handleOf( "t" ) | row.bits ) ) << row.bits;
        auto const without = bfResourceParserFactory( folder_.conf( device ) );
        EXPECT_THAT( handlesOf( *without ), ElementsAre( handleOf( "t" ) ) ) << row.bits;
    }
}

TEST_F( ParserLifecycle, PipeBitsWrapAt32Bits ) {
    context( "t" );
    for( auto const& [ pipe, bits ] :
         { std::pair( 16U, 0U ), std::pair( 17U, 0x10000000U ), std::pair( 31U, 0xF0000000U ) } ) {
        auto const parser = bfResourceParserFactory(
            folder_.conf( DeviceBuilder().runtimeConfig( "r" ).pipeline( "t", { pipe } ) ) );
        EXPECT_THAT( handlesOf( *parser ), ElementsAre( handleOf( "t" ) | bits ) ) << pipe;
    }
}

TEST_F( ParserLifecycle, EachFileHasItsOwnPipeBits ) {
    context( "first" );
    context( "second" );
    auto const device = DeviceBuilder().pipeline( "first", { 0, 1 } ).pipeline( "second", { 2, 3 } );
    EXPECT_THAT(
        handlesOf( *bfResourceParserFactory( folder_.conf( DeviceBuilder( device ).runtimeConfig( "r" ) ) ) ),
        ElementsAre( handleOf( "first" ), handleOf( "second" ) | 0x20000000 ) );
    EXPECT_THAT( handlesOf( *bfResourceParserFactory( folder_.conf( device ) ) ),
                 ElementsAre( handleOf( "first" ), handleOf( "second" ) ) );
}

TEST_F( ParserLifecycle, MaskZeroIsReadFirstAndWithoutPipeBits ) {
    context( "none" );
    context( "some" );
    auto const parser = bfResourceParserFactory( folder_.conf(
        DeviceBuilder().runtimeConfig( "r" ).pipeline( "some", { 1 } ).pipeline( "none", {} ) ) );
    EXPECT_THAT( handlesOf( *parser ), ElementsAre( handleOf( "none" ), handleOf( "some" ) | 0x10000000 ) );
}

TEST_F( ParserLifecycle, MajorOperationsAreTracedAtLevelFive ) {
    context( "low" );
    context( "high" );
    String const conf =
        folder_.conf( DeviceBuilder().pipeline( "high", { 2, 3 } ).pipeline( "low", { 0, 1 } ) );
    TraceCollector const trace( "BfResourceParser", { 5 } );
    bfResourceParserFactory( conf );
    EXPECT_THAT( trace.texts(), ElementsAre( handleInitialized, parseContextJson + folder_.path( "low" ),
                                             preprocessContext, parseContextJson + folder_.path( "high" ),
                                             preprocessContext, doPrepareToDie ) );
}

TEST_F( ParserLifecycle, StartAndEndAreTracedAtTheirGivenPlaces ) {
    TraceCollector const trace( "BfResourceParser", { 5 } );
    emptyParser();
    ASSERT_EQ( trace.lines().size(), 2 );
    Zel::TraceLine const& start = trace.lines()[ 0 ];
    EXPECT_EQ( start.source, "BfResourceParser" );
    EXPECT_EQ( start.level, 5 );
    EXPECT_EQ( start.line, 100 );
    EXPECT_EQ( start.function, "handleInitialized" );
    EXPECT_EQ( start.text, handleInitialized );
    Zel::TraceLine const& end = trace.lines()[ 1 ];
    EXPECT_EQ( end.source, "BfResourceParser" );
    EXPECT_EQ( end.level, 5 );
    EXPECT_EQ( end.line, 391 );
    EXPECT_EQ( end.function, "doPrepareToDie" );
    EXPECT_EQ( end.text, doPrepareToDie );
}

TEST_F( ParserLifecycle, NothingIsTracedWhenTheLevelIsOff ) {
    TraceCollector const trace( "BfResourceParser", { 0 } );
    String const conf = folder_.conf( ContextBuilder().table( matchTable( "acl" ) ) );
    bfResourceParserFactory( conf );
    EXPECT_THAT( trace.texts(), ElementsAre() );
}

TEST_F( ParserLifecycle, FailureInTheSecondFileLeavesNothingOfTheFirst ) {
    context( "first" );
    folder_.write( "second", "null" );
    String const conf =
        folder_.conf( DeviceBuilder().pipeline( "first", { 0 } ).pipeline( "second", { 1 } ) );
    auto const before = liveAllocations();
    TraceCollector const trace( "BfResourceParser", { 5, 7 } );
    EXPECT_EQ( Support::conditionOf( [ & ] { bfResourceParserFactory( conf ); } ), "IsObject()" );
    EXPECT_THAT( trace.texts(), testing::Contains( "Parsed table first" ) );
    EXPECT_THAT( trace.texts(), testing::Not( testing::Contains( doPrepareToDie ) ) )
        << "a parser that never was complete has nothing to prepare";
    EXPECT_EQ( liveAllocations(), before );
}

TEST_F( ParserLifecycle, ParsersAreIndependent ) {
    auto const first = bfResourceParserFactory( folder_.conf( ContextBuilder().table( matchTable( "a" ) ) ) );
    auto const second =
        bfResourceParserFactory( folder_.conf( ContextBuilder().table( matchTable( "b" ) ) ) );
    EXPECT_EQ( first->bfTables().at( 0 ).name, "a" );
    EXPECT_EQ( second->bfTables().at( 0 ).name, "b" );
    EXPECT_EQ( second->bfTables().size(), 1 );
}

} // namespace
} // namespace BfResourceInfo
