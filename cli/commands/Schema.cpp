#include "cli/CommandTable.h"
#include "cli/commands/Answers.h"
#include "cli/schema/Schemas.h"
#include "inspect/rows/JsonFormat.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

std::vector<String> wordsWithSchema() {
    std::vector<String> words;
    for( Command const& command : program().commands ) {
        if( hasSchema( command ) )
            words.emplace_back( command.word );
    }
    return words;
}

} // namespace

ExitStatus schema( Request const& request, Streams const& io ) {
    String const& word = request.words.front();
    Command const& command = *findCommand( program(), word );
    if( !hasSchema( command ) )
        throw Failure( ExitStatus::usage, fmt::format( "'bfri {}' prints no JSON; these do:", word ),
                       wordsWithSchema() );
    printJsonObject( io.out, schemaOf( command ) );
    return ExitStatus::done;
}

} // namespace Bfri
