#include "tests/inspect/Inputs.h"

#include <fstream>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <sstream>
#include <unistd.h>

namespace {

std::filesystem::path newFolder() {
    String path = ( std::filesystem::temp_directory_path() / "bfri-XXXXXX" ).string();
    if( !mkdtemp( path.data() ) )
        throw std::runtime_error( "no temporary folder" );
    return path;
}

} // namespace

InFolder::InFolder() : former_( std::filesystem::current_path() ), folder_( newFolder() ) {
    std::filesystem::current_path( folder_ );
}

InFolder::~InFolder() {
    std::filesystem::current_path( former_ );
    std::filesystem::remove_all( folder_ );
}

void writeFile( String const& path, String const& text ) {
    std::ofstream file( path, std::ios::binary );
    file << text;
    if( !file.flush() )
        throw std::runtime_error( "can't write " + path );
}

void writeSwitchConf( String const& contextFile ) {
    writeFile( "switch.conf", R"({ "devices": [ { "pipelines": [ { "context_file": ")" + contextFile +
                                  R"(", "pipes": [ 0, 1 ] } ] } ] })" );
}

String contextOf( String const& tables ) {
    return R"({ "tables": [ )" + tables +
           R"( ], "learn_quanta": [], "phv_allocation": [], "dynamic_hash_calculations": [] })";
}

String matchTable( String const& name, unsigned handle, String const& more ) {
    return R"({ "name": ")" + name + R"(", "handle": )" + std::to_string( handle ) +
           R"(, "table_type": "match", "size": 64, "direction": "ingress", "is_resource_controllable": true,
                "actions": [], "match_attributes": { "match_type": "exact", "stage_tables": [
                    { "stage_number": 3, "stage_table_type": "hash_match" } ] })" +
           more + " }";
}

Support::ContextBuilder completeContext() {
    using namespace Support;
    return ContextBuilder()
        .table( Support::matchTable( "pipe.acl" )
                    .action( "count", { "counter" } )
                    .statistics( "hits" )
                    .meter( "police" )
                    .stateful( "seen" ) )
        .table( statisticsTable( "counter" ) )
        .table( statisticsTable( "hits" ).with( "/how_referenced", "\"direct\"" ) )
        .table( meterTable( "police" ).with( "/how_referenced", "\"direct\"" ) )
        .table( wredTable( "wred" ) )
        .table( statefulTable( "seen" ).with( "/how_referenced", "\"direct\"" ) )
        .learnQuanta( "learn" )
        .phvStage( "hdr.mac", 6 )
        .flexibleHeader( "header", 16 )
        .dynamicHash( "hash", { "hdr.a", "hdr.b" } );
}

/// A context file with everything that can refer to a table.
Support::ContextBuilder referringContext() {
    using namespace Support;
    return ContextBuilder()
        .table( Support::matchTable( "pipe.acl" )
                    .action( "count", { "counter", "bucket", "cells" } )
                    .actionData( "members" )
                    .statistics( "hits" )
                    .meter( "police" )
                    .stateful( "seen" ) )
        .table( actionDataTable( "members" ) )
        .table( statisticsTable( "counter" ) )
        .table( statisticsTable( "hits" ).referenced( "direct" ) )
        .table( meterTable( "police" ).referenced( "direct" ) )
        .table( wredTable( "bucket" ) )
        .table( statefulTable( "seen" ).referenced( "direct" ) )
        .table( statefulTable( "cells" ) )
        .learnQuanta( "learn" )
        .dynamicHash( "hash", { "hdr.a" } );
}

ConfigurationPtr loaded() {
    std::ostringstream trace;
    return std::make_shared<TestConfiguration>( TestConfiguration{ std::get<Bfri::Configuration>(
        Bfri::loadConfiguration( "switch.conf", Bfri::Survey::facts, trace ) ) } );
}

ConfigurationPtr emptyModel() {
    writeFile( "switch.conf", R"({ "devices": [] })" );
    return loaded();
}

ConfigurationPtr modelOf( Support::ContextBuilder const& context ) {
    writeSwitchConf( "context.json" );
    writeFile( "context.json", context.text() );
    return loaded();
}

String compact( rapidjson::Value const& value ) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer( buffer );
    value.Accept( writer );
    return buffer.GetString();
}
