// Runs a fuzz target over the files given, or over those in the folders given. An empty corpus is a failure:
// it would prove nothing.

#include "fuzz/Target.h"

#include <iterator>
#include <vector>

namespace {

void replay( std::filesystem::path const& path ) {
    std::ifstream file( path, std::ios::binary );
    std::vector<char> const bytes( std::istreambuf_iterator<char>( file ), {} );
    LLVMFuzzerTestOneInput( reinterpret_cast<std::uint8_t const*>( bytes.data() ), bytes.size() );
}

} // namespace

int main( int argc, char** argv ) {
    unsigned count = 0;
    for( int i = 1; i < argc; ++i ) {
        if( std::filesystem::is_regular_file( argv[ i ] ) ) {
            replay( argv[ i ] );
            ++count;
            continue;
        }
        for( auto const& entry : std::filesystem::directory_iterator( argv[ i ] ) ) {
            replay( entry.path() );
            ++count;
        }
    }
    std::printf( "%u inputs replayed\n", count );
    return count > 0 ? 0 : 1;
}
