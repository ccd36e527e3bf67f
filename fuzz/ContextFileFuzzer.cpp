// Any bytes as a context file, plain or gzip, of two programs: so what they say meets itself under other
// handles.

#include "fuzz/JsonMutator.h"
#include "fuzz/Load.h"
#include "fuzz/Target.h"
#include "resourceinfo/parser/context/MemberNames.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using namespace Context;

namespace {

/// The files of the seed corpus.
std::vector<std::string> readSeeds() {
    std::vector<std::string> seeds;
    for( auto const& entry : std::filesystem::directory_iterator( FUZZ_SEEDS ) ) {
        std::ifstream file( entry.path(), std::ios::binary );
        seeds.emplace_back( std::istreambuf_iterator<char>( file ), std::istreambuf_iterator<char>() );
    }
    return seeds;
}

/// Puts a seed into the buffer. What a corpus grows to is mostly wrong in its first table, so that changes of
/// it do not get far.
std::size_t startAnew( std::uint8_t* data, std::size_t maxSize, unsigned choice ) {
    static std::vector<std::string> const seeds = readSeeds();
    std::string const& seed = seeds.at( choice % seeds.size() );
    return seed.copy( reinterpret_cast<char*>( data ), maxSize );
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    static FuzzFolder const folder;
    static std::string_view const switchConf =
        R"({"devices":[{"runtime_config":"r","pipelines":[{"context_file":"context_a.json","pipes":[1]},)"
        R"({"context_file":"context_a.json","pipes":[2,3]}]}]})";
    static String const configuration = folder.write( "switch.conf", switchConf.data(), switchConf.size() );
    folder.write( "context_a.json", data, size );
    load( configuration );
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    if( seed % 4 == 1 )
        size = startAnew( data, maxSize, seed / 4 );
    return JsonMutator( memberNames ).mutate( data, size, maxSize, seed );
}
