#include "SwitchWriter.h"

#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "Bulk.h"
#include "JsonWriter.h"
#include "SectionWriter.h"
#include "TableWriter.h"

namespace bfgen {

namespace {

constexpr char const* runtimeConfigName = "bfrt.json";

std::string contextFileName( SwitchLayout const& layout, uint32_t pipeline ) {
    return pipelineName( pipeline ) + ( layout.gzip ? "/context.json.gz" : "/context.json" );
}

/// Four pipes, shared out as evenly as they can be; the later pipelines get the larger shares.
std::vector<uint32_t> pipesOf( uint32_t pipeline, uint32_t pipelines ) {
    constexpr uint32_t pipes = 4;
    std::vector<uint32_t> share;
    for( uint32_t pipe = pipes * pipeline / pipelines; pipe < pipes * ( pipeline + 1 ) / pipelines; ++pipe ) {
        share.push_back( pipe );
    }
    return share;
}

void createFolder( std::filesystem::path const& folder ) {
    std::error_code error;
    std::filesystem::create_directories( folder, error );
    if( error ) {
        throw std::runtime_error( "can't make " + folder.string() + ": " + error.message() );
    }
}

template<typename Body>
void writeFile( std::filesystem::path const& path, bool gzip, bool compact, Body&& members ) {
    createFolder( path.parent_path() );
    OutputFile file( path, gzip );
    JsonWriter json( file, compact );
    json.object( [ & ] { members( json ); } );
    file.close();
}

void writeContext( JsonWriter& json, Bulk& bulk, Program const& program ) {
    json.field( "program", program.name );
    json.field( "stages", program.stages );
    json.object( "parse_graph", [ & ] {
        writeParseGraph( json, bulk, true );
        writeParseGraph( json, bulk, false );
    } );
    json.objects( "tables", program.tables,
                  [ & ]( Table const& table ) { writeTable( json, bulk, table ); } );
    writeLearnQuanta( json, program );
    writePhvAllocation( json, program );
    writeFlexibleHeaders( json, program );
    writeHashCalculations( json, program );
}

void writeSwitchConfiguration( JsonWriter& json, SwitchLayout const& layout ) {
    json.repeat( "devices", 1, [ & ]( uint32_t ) {
        if( layout.runtimeConfig ) {
            json.field( "runtime_config", runtimeConfigName );
        }
        json.repeat( "pipelines", layout.pipelines, [ & ]( uint32_t pipeline ) {
            json.field( "context_file", contextFileName( layout, pipeline ) );
            std::vector<uint32_t> const pipes = pipesOf( pipeline, layout.pipelines );
            json.values( "pipes", static_cast<uint32_t>( pipes.size() ),
                         [ & ]( uint32_t i ) { return pipes[ i ]; } );
        } );
    } );
}

void writeRuntimeConfig( JsonWriter& json, SwitchLayout const& layout ) {
    json.field( "version", 1U );
    json.repeat( "programs", layout.pipelines,
                 [ & ]( uint32_t pipeline ) { json.field( "pipeline", pipelineName( pipeline ) ); } );
}

} // namespace

void writeSwitch( SwitchLayout const& layout, std::function<Program( uint32_t )> const& programOf ) {
    for( uint32_t pipeline = 0; pipeline < layout.pipelines; ++pipeline ) {
        Program const program = programOf( pipeline );
        // The streams of the pipelines' bulk lie beyond those of the programs: more bulk is still the same
        // program.
        Bulk bulk{ Random( layout.seed, 256 + pipeline ), layout.bulkPercent };
        writeFile( layout.folder / contextFileName( layout, pipeline ), layout.gzip, layout.compact,
                   [ & ]( JsonWriter& json ) { writeContext( json, bulk, program ); } );
    }
    if( layout.runtimeConfig ) {
        writeFile( layout.folder / runtimeConfigName, false, layout.compact,
                   [ & ]( JsonWriter& json ) { writeRuntimeConfig( json, layout ); } );
    }
    // Last, so that a configuration that is there names files that are there too.
    writeFile( layout.folder / "switch.conf", false, layout.compact,
               [ & ]( JsonWriter& json ) { writeSwitchConfiguration( json, layout ); } );
}

} // namespace bfgen
