#pragma once

// Ways to run a command within the process of a test, and what the tests of the inspector share.

#include "cli/Program.h"
#include "tests/inspect/Inputs.h"

/// What a command says of a model.
String answerOf( char const* word, Bfri::Configuration const& configuration, Bfri::Format format,
                 String const& name = "" );

/// The same, parsed; checks that it is one JSON object of the known format.
rapidjson::Document jsonAnswerOf( char const* word, Bfri::Configuration const& configuration,
                                  String const& name = "" );

/// Parses the text of one JSON object of the known format.
rapidjson::Document parsed( String const& text );

/// The names of an object's members, in their order.
std::vector<String> memberNames( rapidjson::Value const& object );

/// A switch of some context files, each on one pipe, in the order of the pipes.
void writeSwitch( String const& conf, std::vector<String> const& contexts, bool withRuntimeConfig = false );

struct Outcome {
    int status;
    String out;
    String err;
};

/// Runs the whole program within this process.
Outcome bfri( std::vector<char const*> arguments );
