// Any bytes as a switch configuration. Context files that it may name are not there.

#include "fuzz/Target.h"

#include "zel/Trace.h"

int LLVMFuzzerTestOneInput( std::uint8_t const* data, std::size_t size ) {
    static FuzzFolder const folder;
    static auto const quiet = Zel::traceSinkIs( []( Zel::TraceLine const& ) {} );
    loadWithoutRemains( folder.write( "switch.conf", data, size ) );
    return 0;
}
