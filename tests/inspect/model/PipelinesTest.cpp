#include "inspect/model/Pipelines.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::Kind;
using testing::ElementsAre;

class ProgramsOf : public InFolder {
  protected:
    /// A pipeline for each context file, with handles that tell them apart.
    static ConfigurationPtr loadedFrom( std::vector<Support::ContextBuilder> const& contexts ) {
        Support::DeviceBuilder device;
        device.runtimeConfig( "bfrt.json" );
        for( U32 pipe = 0; pipe < contexts.size(); ++pipe ) {
            String const file = std::to_string( pipe ) + ".json";
            writeFile( file, contexts[ pipe ].text() );
            device.pipeline( file, { pipe } );
        }
        writeFile( "switch.conf", Support::SwitchConfBuilder().device( device ).text() );
        return loaded();
    }
    /// The name of each record, with the context files of its programs.
    static std::vector<String> recordsOf( Bfri::Configuration const& configuration, Kind kind ) {
        std::vector<String> texts;
        auto const programs = Bfri::programsOf( configuration, kind );
        auto const rows = Bfri::kindOf( kind ).rows( configuration.parser() );
        for( std::size_t i = 0; i < rows.size(); ++i ) {
            String text = Bfri::valueAs<String>( rows[ i ], "name" );
            for( auto const* const program : programs.at( i ) )
                text += " " + program->path;
            texts.push_back( text );
        }
        return texts;
    }
};

TEST_F( ProgramsOf, RecordsAreKnownForEveryKind ) {
    auto const configuration = loadedFrom( { completeContext() } );
    for( auto const& kind : Bfri::recordKinds() ) {
        auto const programs = Bfri::programsOf( *configuration, kind.kind );
        EXPECT_EQ( programs.size(), kind.rows( configuration->parser() ).size() ) << kind.many;
        EXPECT_FALSE( programs.empty() ) << kind.many;
        for( auto const& one : programs )
            EXPECT_THAT( one, ElementsAre( &configuration->files.at( 0 ) ) ) << kind.many;
    }
}

TEST_F( ProgramsOf, RecordsOfOneNameAreToldApart ) {
    auto const one = Support::ContextBuilder().table( Support::matchTable( "a" ).action( "drop" ) );
    auto const other = Support::ContextBuilder()
                           .table( Support::meterTable( "m" ) )
                           .table( Support::wredTable( "w" ) )
                           .table( Support::matchTable( "a" ) );
    auto const configuration = loadedFrom( { one, other } );
    EXPECT_THAT( recordsOf( *configuration, Kind::tables ), ElementsAre( "a 0.json", "a 1.json" ) );
    EXPECT_THAT( recordsOf( *configuration, Kind::handles ),
                 testing::UnorderedElementsAre( "a 0.json", "a 1.json", "m 1.json", "w 1.json" ) );
    EXPECT_THAT( recordsOf( *configuration, Kind::wreds ), ElementsAre( "w 1.json" ) );
    auto const actions = recordsOf( *configuration, Kind::actions );
    EXPECT_EQ( actions.at( 1 ), "drop 0.json" );
    EXPECT_THAT( actions.back(), testing::EndsWith( " 1.json" ) );
}

TEST_F( ProgramsOf, RecordsThatFilesShareAreAll ) {
    auto const context = Support::ContextBuilder().flexibleHeader( "both", 16 ).phvStage( "field", 4 );
    auto const configuration =
        loadedFrom( { context, Support::ContextBuilder( context ).flexibleHeader( "second", 8 ) } );
    EXPECT_THAT( recordsOf( *configuration, Kind::headers ),
                 ElementsAre( "both 0.json 1.json", "second 1.json" ) );
    EXPECT_THAT( recordsOf( *configuration, Kind::phvFields ), ElementsAre( "field 0.json 1.json" ) );
}

} // namespace
