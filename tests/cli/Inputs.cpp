#include "tests/cli/Inputs.h"

#include "cli/Run.h"

#include <algorithm>
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

String answerOf( char const* word, Bfri::Configuration const& configuration, Bfri::Format format,
                 String const& name ) {
    Bfri::Command const* const command = Bfri::findCommand( Bfri::program(), word );
    if( !command )
        throw std::runtime_error( "no command " + String( word ) );
    std::ostringstream out;
    std::ostringstream err;
    Bfri::Request const request{ command, { "switch.conf", name }, format };
    if( command->show )
        command->show( configuration, request, { out, err } );
    else
        command->run( request, { out, err } );
    return out.str();
}

rapidjson::Document jsonAnswerOf( char const* word, Bfri::Configuration const& configuration,
                                  String const& name ) {
    return parsed( answerOf( word, configuration, Bfri::Format::json, name ) );
}

rapidjson::Document parsed( String const& text ) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag>( text.c_str() );
    EXPECT_FALSE( document.HasParseError() ) << text;
    EXPECT_EQ( text.substr( 0, 16 ), "{\n  \"format\": 1," );
    return document;
}

String compact( rapidjson::Value const& value ) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer( buffer );
    value.Accept( writer );
    return buffer.GetString();
}

std::vector<String> memberNames( rapidjson::Value const& object ) {
    std::vector<String> names;
    for( auto const& member : object.GetObject() )
        names.emplace_back( member.name.GetString() );
    return names;
}

Outcome bfri( std::vector<char const*> arguments ) {
    std::ostringstream out;
    std::ostringstream err;
    arguments.insert( arguments.begin(), "bfri" );
    auto const status = Bfri::run( static_cast<int>( arguments.size() ), arguments.data(), { out, err } );
    return { static_cast<int>( status ), out.str(), err.str() };
}
