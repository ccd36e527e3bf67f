#include "tests/cli/Inputs.h"

#include "cli/Run.h"

#include <algorithm>
#include <sstream>

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
