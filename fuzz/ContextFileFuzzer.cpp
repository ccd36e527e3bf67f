// Any bytes as a context file, plain or gzip.

#include "fuzz/Target.h"

#include <string_view>

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    static FuzzFolder const folder;
    static std::string_view const switchConf =
        R"({"devices":[{"runtime_config":"r","pipelines":[{"context_file":"context.json","pipes":[1]}]}]})";
    static String const configuration = folder.write( "switch.conf", switchConf.data(), switchConf.size() );
    folder.write( "context.json", data, size );
    loadWithoutRemains( configuration );
    return 0;
}
