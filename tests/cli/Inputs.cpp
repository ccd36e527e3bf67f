#include "tests/cli/Inputs.h"

#include "cli/commands/Loading.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace {

/// For the test of the schemas: where it asks for that, every JSON answer is kept in a file, with its command
/// in the name.
void keepAnswer( String const& command, String const& text ) {
    static int kept = 0;
    char const* const folder = std::getenv( "BFRI_ANSWERS" );
    if( folder && text.starts_with( "{\n  \"format\"" ) )
        writeFile( folder + String( "/" ) + std::to_string( ++kept ) + "." + command + ".json", text );
}

} // namespace

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
    else if( command->rows )
        command->print( { command->rows( configuration, request ) }, request, { out, err } );
    else
        command->run( request, { out, err } );
    if( format == Bfri::Format::json || word == String( "dump" ) )
        keepAnswer( word, out.str() );
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

std::vector<String> memberNames( rapidjson::Value const& object ) {
    std::vector<String> names;
    for( auto const& member : object.GetObject() )
        names.emplace_back( member.name.GetString() );
    return names;
}

Outcome bfri( std::vector<char const*> arguments ) {
    std::ostringstream out;
    std::ostringstream err;
    auto const word = std::find_if( arguments.begin(), arguments.end(), []( char const* argument ) {
        return Bfri::findCommand( Bfri::program(), argument );
    } );
    String const command = word == arguments.end() ? "" : *word;
    arguments.insert( arguments.begin(), "bfri" );
    auto const status = Bfri::run( static_cast<int>( arguments.size() ), arguments.data(), { out, err } );
    if( !command.empty() )
        keepAnswer( command, out.str() );
    return { static_cast<int>( status ), out.str(), err.str() };
}

void writeSwitch( String const& conf, std::vector<String> const& contexts, bool withRuntimeConfig ) {
    Support::DeviceBuilder device;
    if( withRuntimeConfig )
        device.runtimeConfig( "bfrt.json" );
    for( std::size_t pipe = 0; pipe < contexts.size(); ++pipe ) {
        String const file = conf + std::to_string( pipe ) + ".json";
        writeFile( file, contexts[ pipe ] );
        device.pipeline( file, { static_cast<std::uint32_t>( pipe ) } );
    }
    writeFile( conf, Support::SwitchConfBuilder().device( device ).text() );
}
