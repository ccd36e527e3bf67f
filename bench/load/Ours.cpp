#include "bench/load/Measure.h"

#include "resourceinfo/BfResourceInfoIntf.h"

int main( int argc, char** argv ) {
    auto const load = []( Input const& input ) {
        return BfResourceInfo::bfResourceInfoIntfFactory( input.switchConf );
    };
    return measure( argc, argv, load, []( auto const& model ) { return answerOf( contentOf( *model ) ); } );
}
