// The load of one context file into the model beside its bare parse into a whole RapidJSON document. The
// configuration comes from bfgen, for example:
//     bfgen /tmp/switch --tables 500 && LoadBenchmark /tmp/switch/switch.conf
// The number of recorded tables is counted in the whole document first, and must agree.

#include "resourceinfo/BfResourceInfoIntf.h"

#include <benchmark/benchmark.h>

#include <rapidjson/document.h>
#include <rapidjson/filereadstream.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>

namespace {

rapidjson::Document wholeDocument( String const& path ) {
    std::unique_ptr<std::FILE, int ( * )( std::FILE* )> const file( std::fopen( path.c_str(), "rb" ),
                                                                    std::fclose );
    rapidjson::Document document;
    if( file ) {
        char buffer[ 65536 ];
        rapidjson::FileReadStream stream( file.get(), buffer, sizeof buffer );
        document.ParseStream( stream );
    }
    return document;
}

bool isRecorded( rapidjson::Value const& table ) {
    return table[ "table_type" ] == "match" && table[ "is_resource_controllable" ].GetBool() &&
           ( !table.HasMember( "static_entries" ) || table[ "static_entries" ].Empty() );
}

U32 recordedTables( String const& path ) {
    rapidjson::Document const document = wholeDocument( path );
    if( !document.IsObject() ) {
        std::cerr << path << ": not a plain JSON context file\n";
        std::exit( 2 );
    }
    U32 count = 0;
    for( auto const& table : document[ "tables" ].GetArray() )
        count += isRecorded( table );
    return count;
}

void loadModel( benchmark::State& state, String const& switchConf ) {
    for( auto _ : state )
        benchmark::DoNotOptimize( BfResourceInfo::bfResourceInfoIntfFactory( switchConf ) );
}

void parseDocument( benchmark::State& state, std::vector<String> const& paths ) {
    for( auto _ : state ) {
        for( String const& path : paths )
            benchmark::DoNotOptimize( wholeDocument( path ) );
    }
}

} // namespace

int main( int argc, char** argv ) {
    benchmark::Initialize( &argc, argv );
    if( argc != 2 ) {
        std::cerr << "usage: LoadBenchmark SWITCH_CONF [--benchmark_...]\n";
        return 2;
    }
    String const switchConf = argv[ 1 ];
    auto const interface = BfResourceInfo::bfResourceInfoIntfFactory( switchConf );
    std::vector<String> paths;
    U32 expected = 0;
    for( auto const& entry : interface->parser()->contextFile() ) {
        paths.push_back( entry.value() );
        expected += recordedTables( entry.value() );
    }
    if( expected == 0 || interface->bfTablesNum() != expected ) {
        std::cerr << interface->bfTablesNum() << " tables in the model, " << expected << " in the files\n";
        return 1;
    }
    benchmark::RegisterBenchmark( "model", loadModel, switchConf )->Unit( benchmark::kMillisecond );
    benchmark::RegisterBenchmark( "whole RapidJSON document", parseDocument, paths )
        ->Unit( benchmark::kMillisecond );
    benchmark::RunSpecifiedBenchmarks();
}
