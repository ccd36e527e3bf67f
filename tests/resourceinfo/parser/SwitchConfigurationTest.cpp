#include "ostler/Ostler.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::DeviceBuilder;
using Support::failureOf;
using Support::SwitchConfBuilder;
using testing::ElementsAre;
using testing::Pair;

class SwitchConfiguration : public testing::Test {
  protected:
    SwitchConfiguration() {
        for( char const* name : { "a.json", "b.json", "c.json" } )
            folder_.write( name, ContextBuilder().text() );
    }

    template<class Builder>
    Zel::Ptr<BfResourceParser> parse( Builder const& conf ) const {
        return bfResourceParserFactory( folder_.conf( conf ) );
    }
    template<class Builder>
    std::vector<std::pair<U32, String>> contextFilesOf( Builder const& conf ) const {
        auto const parser = parse( conf );
        std::vector<std::pair<U32, String>> files;
        for( auto const& entry : parser->contextFile() )
            files.emplace_back( entry.key().value(), entry.value() );
        return files;
    }

    SwitchFolder folder_;
    String const a_ = folder_.path( "a.json" );
    String const b_ = folder_.path( "b.json" );
    String const c_ = folder_.path( "c.json" );
};

TEST_F( SwitchConfiguration, PipesOfAPipelineMakeOneMask ) {
    EXPECT_THAT( contextFilesOf( DeviceBuilder().pipeline( "a.json", { 0, 1, 2, 3 } ) ),
                 ElementsAre( Pair( 0xF, a_ ) ) );
}

TEST_F( SwitchConfiguration, EachPipelineHasItsEntry ) {
    EXPECT_THAT(
        contextFilesOf( DeviceBuilder().pipeline( "a.json", { 0, 1 } ).pipeline( "b.json", { 2, 3 } ) ),
        ElementsAre( Pair( 0x3, a_ ), Pair( 0xC, b_ ) ) );
}

TEST_F( SwitchConfiguration, LaterPipelineOfTheSamePipesReplacesTheEarlier ) {
    EXPECT_THAT(
        contextFilesOf( DeviceBuilder().pipeline( "a.json", { 0, 1 } ).pipeline( "b.json", { 1, 0 } ) ),
        ElementsAre( Pair( 0x3, b_ ) ) );
}

TEST_F( SwitchConfiguration, PipelineWithoutPipesHasMaskZero ) {
    EXPECT_THAT( contextFilesOf( DeviceBuilder().pipeline( "a.json", {} ) ), ElementsAre( Pair( 0, a_ ) ) );
}

TEST_F( SwitchConfiguration, PipeNumbersCountModulo32 ) {
    EXPECT_THAT( contextFilesOf( DeviceBuilder().pipeline( "a.json", { 33 } ) ),
                 ElementsAre( Pair( 2, a_ ) ) );
    EXPECT_THAT( contextFilesOf( DeviceBuilder().pipeline( "a.json", { 31, 32, 4294967295 } ) ),
                 ElementsAre( Pair( 0x80000001, a_ ) ) );
}

TEST_F( SwitchConfiguration, RepeatedPipeCountsOnce ) {
    EXPECT_THAT( contextFilesOf( DeviceBuilder().pipeline( "a.json", { 1, 1, 33 } ) ),
                 ElementsAre( Pair( 2, a_ ) ) );
}

TEST_F( SwitchConfiguration, PipelinesOfAllDevicesShareOneMap ) {
    EXPECT_THAT(
        contextFilesOf( SwitchConfBuilder()
                            .device( DeviceBuilder().pipeline( "a.json", { 0 } ).pipeline( "b.json", { 1 } ) )
                            .device( DeviceBuilder().pipeline( "c.json", { 1 } ) ) ),
        ElementsAre( Pair( 1, a_ ), Pair( 2, c_ ) ) );
}

TEST_F( SwitchConfiguration, RuntimeConfigurationIsThatOfTheFirstDevice ) {
    auto const parser =
        parse( SwitchConfBuilder()
                   .device( DeviceBuilder().runtimeConfig( "first.json" ).pipeline( "a.json", { 0 } ) )
                   .device( DeviceBuilder().runtimeConfig( "second.json" ).pipeline( "b.json", { 1 } ) ) );
    EXPECT_EQ( parser->bfrtConfig(), folder_.path( "first.json" ) );
}

TEST_F( SwitchConfiguration, RuntimeConfigurationOfAnotherDeviceIsIgnored ) {
    auto const parser =
        parse( SwitchConfBuilder()
                   .device( DeviceBuilder().pipeline( "a.json", { 0 } ) )
                   .device( DeviceBuilder().runtimeConfig( "second.json" ).pipeline( "b.json", { 1 } ) ) );
    EXPECT_EQ( parser->bfrtConfig(), "" );
}

TEST_F( SwitchConfiguration, AbsentOrEmptyRuntimeConfigurationLeavesItEmpty ) {
    auto const device = DeviceBuilder().pipeline( "a.json", { 0 } );
    EXPECT_EQ( parse( device )->bfrtConfig(), "" );
    EXPECT_EQ( parse( DeviceBuilder( device ).runtimeConfig( "" ) )->bfrtConfig(), "" );
}

TEST_F( SwitchConfiguration, RuntimeConfigurationNeedsNoFile ) {
    auto const parser = parse( DeviceBuilder().runtimeConfig( "none" ).pipeline( "a.json", { 0 } ) );
    EXPECT_EQ( parser->bfrtConfig(), folder_.path( "none" ) );
}

TEST_F( SwitchConfiguration, AbsolutePathsStandAsTheyAre ) {
    SwitchFolder const other;
    String const file = other.write( "far.json", ContextBuilder().text() );
    EXPECT_THAT( contextFilesOf( DeviceBuilder().pipeline( file, { 0 } ) ), ElementsAre( Pair( 1, file ) ) );
}

TEST_F( SwitchConfiguration, DeviceWithoutPipelinesIsFatalAtItsGivenPlace ) {
    auto const failure = failureOf( [ & ] { parse( DeviceBuilder() ); } );
    EXPECT_EQ( failure.source, "BfResourceParser" );
    EXPECT_EQ( failure.line, 283 );
    EXPECT_EQ( failure.function, "void BfResourceInfo::BfResourceParser::parseSwitchConf()" );
    EXPECT_EQ( failure.condition, "\"numPipelines > 0\" == nullptr" );
    EXPECT_EQ( failure.message, "numPipelines is 0" );
    EXPECT_EQ( failure.position, "switch configuration " + folder_.path( "switch.conf" ) );
    EXPECT_EQ( failure.place.kind, "switch configuration" );
    EXPECT_EQ( failure.place.file, folder_.path( "switch.conf" ) );
}

TEST_F( SwitchConfiguration, LaterDeviceWithoutPipelinesIsFatalBeforeAnyFileIsRead ) {
    folder_.remove( "a.json" );
    auto const failure = failureOf( [ & ] {
        parse( SwitchConfBuilder()
                   .device( DeviceBuilder().pipeline( "a.json", { 0 } ) )
                   .device( DeviceBuilder() ) );
    } );
    EXPECT_EQ( failure.condition, "\"numPipelines > 0\" == nullptr" );
    EXPECT_EQ( failure.position, "switch configuration " + folder_.path( "switch.conf" ) );
}

TEST_F( SwitchConfiguration, BadConfigurationGivesAnEmptyModelAndAStatus ) {
    struct Row {
        char const* what;
        SwitchConfBuilder conf;
    };
    auto const good =
        SwitchConfBuilder().device( DeviceBuilder().runtimeConfig( "r" ).pipeline( "a.json", { 0 } ) );
    auto const with = [ & ]( char const* pointer, char const* json ) {
        return SwitchConfBuilder( good ).with( pointer, json );
    };
    for( auto const& [ what, conf ] :
         { Row{ "no devices", SwitchConfBuilder( good ).without( "/devices" ) },
           Row{ "devices no array", with( "/devices", "{}" ) }, Row{ "device", with( "/devices/0", "1" ) },
           Row{ "pipelines", with( "/devices/0/pipelines", "null" ) },
           Row{ "pipe is text", with( "/devices/0/pipelines/0/pipes/0", "\"0\"" ) },
           Row{ "pipe is negative", with( "/devices/0/pipelines/0/pipes/0", "-1" ) },
           Row{ "pipe too big", with( "/devices/0/pipelines/0/pipes/0", "4294967296" ) },
           Row{ "context_file", with( "/devices/0/pipelines/0/context_file", "7" ) },
           Row{ "runtime_config", with( "/devices/0/runtime_config", "7" ) } } ) {
        auto const parser = parse( conf );
        EXPECT_TRUE( parser->contextFile().empty() ) << what;
        EXPECT_EQ( parser->bfrtConfig(), "" ) << what;
        EXPECT_TRUE( parser->initialized() ) << what;
        auto const& status = Ostler::sdkContext()->status;
        EXPECT_FALSE( status.ok() ) << what;
        EXPECT_EQ( status.file, folder_.path( "switch.conf" ) ) << what;
        EXPECT_GT( status.line, 0 ) << what;
    }
}

TEST_F( SwitchConfiguration, EveryMemberRemovedOrRetypedIsReadOrReported ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    Support::ThrowingAssertions const scope;
    Support::JsonTree const good =
        SwitchConfBuilder()
            .device( DeviceBuilder().runtimeConfig( "r" ).pipeline( "a.json", { 0, 1 } ) )
            .tree();
    auto const before = liveAllocations();
    for( std::string const& pointer : good.pointers() ) {
        for( char const* json :
             { "", "null", "true", "-1", "7", "1e300", "\"b.json\"", "[]", "[[]]", "{}" } ) {
            SCOPED_TRACE( pointer + " is " + json );
            Support::JsonTree tree = good;
            if( *json )
                tree.with( pointer, json );
            else
                tree.without( pointer );
            String const conf = folder_.write( "switch.conf", tree.text() );
            try {
                auto const parser = bfResourceParserFactory( conf );
                auto const* const context = Ostler::sdkContext();
                EXPECT_EQ( parser->contextFile().empty(), context->profile.numDevices == 0 );
                EXPECT_TRUE( context->status.ok() || parser->contextFile().empty() );
            } catch( Zel::AssertionError const& error ) {
                EXPECT_THAT( error.failure().condition,
                             testing::AnyOf( "\"numPipelines > 0\" == nullptr", "IsObject()" ) );
            }
            EXPECT_EQ( liveAllocations(), before );
        }
    }
}

TEST_F( SwitchConfiguration, MissingConfigurationGivesAnEmptyModelAndAStatus ) {
    auto const parser = bfResourceParserFactory( folder_.path( "absent.conf" ) );
    EXPECT_TRUE( parser->contextFile().empty() );
    EXPECT_EQ( Ostler::sdkContext()->status.text(),
               folder_.path( "absent.conf" ) + ": No such file or directory" );
}

TEST_F( SwitchConfiguration, GoodConfigurationClearsTheStatusOfABadOne ) {
    bfResourceParserFactory( folder_.path( "absent.conf" ) );
    parse( DeviceBuilder().pipeline( "a.json", { 0 } ) );
    EXPECT_TRUE( Ostler::sdkContext()->status.ok() );
}

TEST_F( SwitchConfiguration, UnknownMembersAreIgnored ) {
    EXPECT_THAT( contextFilesOf( SwitchConfBuilder()
                                     .device( DeviceBuilder()
                                                  .pipeline( "a.json", { 0 } )
                                                  .with( "/board", "{}" )
                                                  .with( "/pipelines/0/path", "1" ) )
                                     .with( "/version", "7" ) ),
                 ElementsAre( Pair( 1, a_ ) ) );
}

} // namespace
} // namespace BfResourceInfo
