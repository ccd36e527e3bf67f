#include "ostler/Ostler.h"
#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "zel/Assert.h"

namespace BfResourceInfo {

namespace {

BfPipeMask pipeMask( Ostler::Pipeline const& pipeline ) {
    U32 mask = 0;
    for( int k = 0; k < pipeline.numPipesInScope; ++k )
        mask |= 1U << pipeline.pipeScope[ static_cast<std::size_t>( k ) ] % 32;
    return BfPipeMask( mask );
}

/// As long as it lives, the failures of its thread say the file.
class ConfigurationScope : private Zel::InputScope {
  public:
    explicit ConfigurationScope( String const& path ) : path_( path ) {}

  private:
    void locate( Zel::InputPlace& place ) const override {
        place.kind = "switch configuration";
        place.file = path_;
    }

    String const& path_;
};

/// A program without pipelines cannot run; the place and the texts are what operators look for.
void requirePipelines( Ostler::Device const& device ) {
    if( device.numPipelines == 0 )
        Zel::AssertionSite{ ZEL_SOURCE, 283, "void BfResourceInfo::BfResourceParser::parseSwitchConf()",
                            "\"numPipelines > 0\" == nullptr" }
            .fail( "numPipelines is 0" );
}

} // namespace

void BfResourceParser::parseSwitchConf() {
    ConfigurationScope const scope( switchConf_ );
    OstlerContext* const context = Ostler::sdkContext();
    // How it ends is for the agent to report; without devices the model stays empty.
    Ostler::initializeDeviceProfileFromConfig( context, nullptr, nullptr, nullptr, switchConf_.c_str() );
    Ostler::DeviceProfile const& profile = context->profile;
    for( unsigned d = 0; d < profile.numDevices; ++d ) {
        Ostler::Device const& device = profile.devices[ d ];
        requirePipelines( device );
        for( unsigned p = 0; p < device.numPipelines; ++p )
            contextFileIs( pipeMask( device.pipelines[ p ] ), device.pipelines[ p ].contextFile );
        if( d == 0 && device.runtimeConfig )
            bfrtConfigIs( *device.runtimeConfig );
    }
}

} // namespace BfResourceInfo
