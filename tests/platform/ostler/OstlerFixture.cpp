#include "tests/platform/ostler/OstlerFixture.h"

#include <cstdlib>
#include <fstream>

OstlerFixture::OstlerFixture() {
    std::string name = ( std::filesystem::temp_directory_path() / "ostler-XXXXXX" ).string();
    folder_ = mkdtemp( name.data() );
}

OstlerFixture::~OstlerFixture() { std::filesystem::remove_all( folder_ ); }

Ostler::Status OstlerFixture::read( std::string_view text ) {
    std::ofstream( file(), std::ios::binary ) << text;
    return readPath( file() );
}

Ostler::Status OstlerFixture::readPath( std::string const& path ) {
    return Ostler::initializeDeviceProfileFromConfig( &context_, nullptr, nullptr, nullptr, path.c_str() );
}
