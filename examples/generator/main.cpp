#include <exception>
#include <iostream>

#include "LeafExample.h"
#include "Options.h"
#include "ProgramInventor.h"
#include "SwitchWriter.h"

namespace {

void generate( bfgen::Options const& options ) {
    bool const example = !options.example.empty();
    bfgen::SwitchLayout const layout{ .folder = options.folder,
                                      .pipelines = example ? bfgen::leafPipelines : options.pipelines,
                                      .gzip = options.gzip,
                                      .compact = options.compact,
                                      .runtimeConfig = options.runtimeConfig,
                                      .seed = options.seed,
                                      .bulkPercent = options.bulkPercent.value_or( example ? 10 : 100 ) };
    bfgen::Invention const invention{ options.seed, options.stages, options.tables, options.flexibleHeaders };
    bfgen::writeSwitch( layout, [ & ]( uint32_t pipeline ) {
        return example ? bfgen::makeLeafProgram( pipeline ) : bfgen::inventProgram( invention, pipeline );
    } );
}

} // namespace

int main( int argc, char** argv ) {
    bfgen::Options options;
    if( std::optional<int> const status = bfgen::readOptions( argc, argv, options ) ) {
        return *status;
    }
    try {
        generate( options );
    } catch( std::exception const& error ) {
        std::cerr << "bfgen: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
