// Any bytes as a switch configuration. Of the context files that it may name, one is there: "context".

#include "fuzz/JsonMutator.h"
#include "fuzz/Load.h"
#include "fuzz/Target.h"
#include "ostler/Ostler.h"

#include <algorithm>
#include <map>

namespace {

constexpr std::string_view context =
    R"({"tables":[],"learn_quanta":[],"phv_allocation":[],"dynamic_hash_calculations":[]})";

/// A configuration gives a profile or a reason, and the reason is of a place in it.
void checkStatus( Ostler::Status const& status, std::string_view text ) {
    OstlerContext const& read = *Ostler::sdkContext();
    require( status.ok() || read.profile.devices.empty(), "devices of a bad configuration" );
    require( read.profile.numDevices == read.profile.devices.size(), "number of devices" );
    if( status.ok() )
        return;
    auto const lines = std::count( text.begin(), text.end(), '\n' ) + 1;
    require( status.line >= 1 && status.line <= lines, "line that is not there" );
    require( status.column >= 1 && status.column <= text.size() + 1, "column that is not there" );
}

/// The context file of every set of pipes, the last one of several.
std::map<U32, String> expectedFiles() {
    std::map<U32, String> files;
    for( Ostler::Device const& device : Ostler::sdkContext()->profile.devices ) {
        for( Ostler::Pipeline const& pipeline : device.pipelines ) {
            std::uint64_t mask = 0;
            for( U32 const pipe : pipeline.pipeScope )
                mask |= std::uint64_t{ 1 } << ( pipe & 31U );
            files[ static_cast<U32>( mask ) ] = pipeline.contextFile;
        }
    }
    return files;
}

void checkFiles( BfResourceInfo::BfResourceParser const& parser ) {
    std::map<U32, String> files;
    for( auto const& entry : parser.contextFile() )
        files[ entry.key().value() ] = entry.value();
    require( files == expectedFiles(), "context files" );
}

} // namespace

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    static FuzzFolder const folder;
    static String const contextFile = folder.write( "context", context.data(), context.size() );
    String const switchConf = folder.write( "switch.conf", data, size );
    load( switchConf, checkFiles );
    checkStatus( Ostler::sdkContext()->status, { reinterpret_cast<char const*>( data ), size } );
    return 0;
}

std::size_t LLVMFuzzerCustomMutator( std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                     unsigned seed ) {
    static constexpr std::string_view names[] = { "devices", "runtime_config", "pipelines", "context_file",
                                                  "pipes" };
    return JsonMutator( names ).mutate( data, size, maxSize, seed );
}
