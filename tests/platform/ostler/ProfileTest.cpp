// Switch configurations that can be read, and the profiles that they give.

#include "tests/platform/ostler/OstlerFixture.h"

#include <fstream>

namespace {

using Ostler::Device;
using Ostler::DeviceProfile;
using Ostler::Pipeline;
using Pipes = std::vector<Ostler::U32>;

class Profile : public OstlerFixture {
  protected:
    DeviceProfile const& profile() const { return context_.profile; }
    std::string inFolder( char const* path ) const { return ( folder_ / path ).string(); }
};

constexpr char const* fullConfiguration = R"({
  "devices": [
    { "runtime_config": "bfrt.json",
      "pipelines": [
        { "context_file": "pipe_a/context.json", "pipes": [ 0, 1 ] },
        { "context_file": "pipe_b/context.json", "pipes": [ 2, 3 ] } ] },
    { "pipelines": [ { "context_file": "c.json.gz", "pipes": [ 33 ] } ] }
  ]
}
)";

TEST_F( Profile, HoldsEveryDeviceAndPipelineInOrder ) {
    ASSERT_EQ( read( fullConfiguration ).text(), "" );
    ASSERT_EQ( profile().numDevices, 2 );
    ASSERT_EQ( profile().devices.size(), 2U );

    Device const& first = profile().devices[ 0 ];
    EXPECT_EQ( first.runtimeConfig, inFolder( "bfrt.json" ) );
    ASSERT_EQ( first.numPipelines, 2 );
    ASSERT_EQ( first.pipelines.size(), 2U );
    EXPECT_EQ( first.pipelines[ 0 ].contextFile, inFolder( "pipe_a/context.json" ) );
    EXPECT_EQ( first.pipelines[ 0 ].numPipesInScope, 2 );
    EXPECT_EQ( first.pipelines[ 0 ].pipeScope, ( Pipes{ 0, 1 } ) );
    EXPECT_EQ( first.pipelines[ 1 ].contextFile, inFolder( "pipe_b/context.json" ) );
    EXPECT_EQ( first.pipelines[ 1 ].pipeScope, ( Pipes{ 2, 3 } ) );

    Device const& second = profile().devices[ 1 ];
    EXPECT_EQ( second.runtimeConfig, std::nullopt );
    ASSERT_EQ( second.numPipelines, 1 );
    EXPECT_EQ( second.pipelines[ 0 ].contextFile, inFolder( "c.json.gz" ) );
    EXPECT_EQ( second.pipelines[ 0 ].numPipesInScope, 1 );
    EXPECT_EQ( second.pipelines[ 0 ].pipeScope, Pipes{ 33 } );
}

TEST_F( Profile, HasTheWidthsThatItsReadersCountOn ) {
    EXPECT_TRUE( (std::is_same_v<decltype( DeviceProfile::numDevices ), std::uint8_t>));
    EXPECT_TRUE( (std::is_same_v<decltype( Device::numPipelines ), std::uint8_t>));
    EXPECT_TRUE( (std::is_same_v<decltype( Pipeline::numPipesInScope ), std::int32_t>));
    EXPECT_TRUE( (std::is_same_v<decltype( Pipeline::pipeScope )::value_type, std::uint32_t>));
}

TEST_F( Profile, EmptyListsAreLists ) {
    ASSERT_EQ( read( R"({"devices":[]})" ).text(), "" );
    EXPECT_EQ( profile().numDevices, 0 );
    ASSERT_EQ( read( R"({"devices":[{"pipelines":[]}]})" ).text(), "" );
    ASSERT_EQ( profile().numDevices, 1 );
    EXPECT_EQ( profile().devices[ 0 ].numPipelines, 0 );
    ASSERT_EQ( read( R"({"devices":[{"pipelines":[{"context_file":"c","pipes":[]}]}]})" ).text(), "" );
    EXPECT_EQ( profile().devices[ 0 ].pipelines[ 0 ].numPipesInScope, 0 );
    EXPECT_TRUE( profile().devices[ 0 ].pipelines[ 0 ].pipeScope.empty() );
}

TEST_F( Profile, PipesAreAllUnsigned32BitNumbersInTheirOrder ) {
    ASSERT_EQ( read( R"({"devices":[{"pipelines":[{"context_file":"c",
                         "pipes":[4294967295,0,7,7,2147483648,-0]}]}]})" )
                   .text(),
               "" );
    EXPECT_EQ( profile().devices[ 0 ].pipelines[ 0 ].pipeScope,
               ( Pipes{ 4294967295, 0, 7, 7, 2147483648, 0 } ) );
    EXPECT_EQ( profile().devices[ 0 ].pipelines[ 0 ].numPipesInScope, 6 );
}

std::string repeated( char const* item, int count ) {
    std::string result;
    for( int i = 0; i < count; ++i )
        result += ( i ? "," : "" ) + std::string( item );
    return result;
}

TEST_F( Profile, TakesAsManyDevicesAndPipelinesAsAByteCounts ) {
    ASSERT_EQ( read( R"({"devices":[)" + repeated( R"({"pipelines":[]})", 255 ) + "]}" ).text(), "" );
    EXPECT_EQ( profile().numDevices, 255 );
    EXPECT_EQ( profile().devices.size(), 255U );

    std::string const pipelines = repeated( R"({"context_file":"c","pipes":[1]})", 255 );
    ASSERT_EQ( read( R"({"devices":[{"pipelines":[)" + pipelines + "]}]}" ).text(), "" );
    EXPECT_EQ( profile().devices[ 0 ].numPipelines, 255 );
    EXPECT_EQ( profile().devices[ 0 ].pipelines.size(), 255U );
}

TEST_F( Profile, IgnoresMembersThatItDoesNotKnow ) {
    ASSERT_EQ( read( R"({ "comment": { "devices": 3 }, "chip": [ 1, "a", null, true, 1.5, -1 ],
        "devices\u0000": 7, "Devices": 8,
        "devices": [ { "board": { "pipelines": 1 }, "runtime_config\u0000x": null, "pipelines": [
            { "pipe": 1, "context_file": "c", "pipes\u0000": 0, "pipes": [ 1 ], "x": { "pipes": {} } } ] } ],
        "last": false })" )
                   .text(),
               "" );
    ASSERT_EQ( profile().numDevices, 1 );
    EXPECT_EQ( profile().devices[ 0 ].runtimeConfig, std::nullopt );
    EXPECT_EQ( profile().devices[ 0 ].pipelines[ 0 ].pipeScope, Pipes{ 1 } );
}

TEST_F( Profile, TheFirstOfTwoMembersOfOneNameCounts ) {
    ASSERT_EQ( read( R"({"devices":[{"pipelines":[]}],"devices":[]})" ).text(), "" );
    EXPECT_EQ( profile().numDevices, 1 );
}

TEST_F( Profile, TextsEndAtTheirFirstNul ) {
    ASSERT_EQ( read( R"({"devices":[{"runtime_config":"\u0000b",
                         "pipelines":[{"context_file":"/c\u0000d","pipes":[]}]}]})" )
                   .text(),
               "" );
    EXPECT_EQ( profile().devices[ 0 ].runtimeConfig, "" );
    EXPECT_EQ( profile().devices[ 0 ].pipelines[ 0 ].contextFile, "/c" );
}

TEST_F( Profile, EscapesInPathsAreResolved ) {
    ASSERT_EQ( read( R"({"devices":[{"pipelines":[{"context_file":"/a\/\u0062\"\\","pipes":[]}]}]})" ).text(),
               "" );
    EXPECT_EQ( profile().devices[ 0 ].pipelines[ 0 ].contextFile, "/a/b\"\\" );
}

TEST_F( Profile, PathsAreResolvedAgainstTheFolderOfTheFile ) {
    struct {
        char const* path;
        std::string resolved;
    } const rows[] = {
        { "context.json", inFolder( "context.json" ) },
        { "a/b/context.json", inFolder( "a/b/context.json" ) },
        { "./context.json", inFolder( "./context.json" ) },
        { "../context.json", inFolder( "../context.json" ) },
        { "/context.json", "/context.json" },
        { "/a/../context.json", "/a/../context.json" },
        { "", "" },
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.path );
        std::string const quoted = "\"" + std::string( row.path ) + "\"";
        ASSERT_EQ( read( R"({"devices":[{"runtime_config":)" + quoted + R"(,"pipelines":[{"context_file":)" +
                         quoted + R"(,"pipes":[]}]}]})" )
                       .text(),
                   "" );
        EXPECT_EQ( profile().devices[ 0 ].runtimeConfig, row.resolved );
        EXPECT_EQ( profile().devices[ 0 ].pipelines[ 0 ].contextFile, row.resolved );
    }
}

TEST_F( Profile, AFileNamedWithoutAFolderLeavesRelativePathsAsTheyAre ) {
    auto const former = std::filesystem::current_path();
    std::filesystem::current_path( folder_ );
    std::ofstream( "switch.conf" ) << R"({"devices":[{"pipelines":[{"context_file":"a/c","pipes":[]}]}]})";
    auto const bare = readPath( "switch.conf" );
    std::string const fromBare = profile().devices.at( 0 ).pipelines.at( 0 ).contextFile;
    std::filesystem::create_directory( "conf" );
    std::filesystem::rename( "switch.conf", "conf/switch.conf" );
    auto const inConf = readPath( "conf/switch.conf" );
    std::string const fromConf = profile().devices.at( 0 ).pipelines.at( 0 ).contextFile;
    std::filesystem::current_path( former );
    EXPECT_EQ( bare.text() + inConf.text(), "" );
    EXPECT_EQ( fromBare, "a/c" );
    EXPECT_EQ( fromConf, "conf/a/c" );
}

TEST_F( Profile, AReadingReplacesTheFormerOne ) {
    ASSERT_TRUE( read( fullConfiguration ).ok() );
    ASSERT_TRUE( read( R"({"devices":[{"pipelines":[]}]})" ).ok() );
    EXPECT_EQ( profile().numDevices, 1 );
    EXPECT_EQ( profile().devices.size(), 1U );
    EXPECT_EQ( profile().devices[ 0 ].runtimeConfig, std::nullopt );
}

} // namespace
