#include "cli/Program.h"
#include "cli/commands/Answers.h"
#include "cli/grammar/Completion.h"
#include "cli/grammar/Help.h"
#include "cli/schema/Schemas.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/rows/JsonFormat.h"

#include <fmt/format.h>
#include <map>

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

/// Adds the keys below a schema, each with its path and its meaning; several answers may have one.
void addKeys( Row const& schema, String const& path, std::map<String, String>& keys ) {
    if( auto const* const answers = std::get_if<List>( &valueOf( schema, "anyOf" ).is ) ) {
        for( Value const& answer : *answers )
            addKeys( std::get<Row>( answer.is ), path, keys );
    }
    if( auto const* const element = std::get_if<Row>( &valueOf( schema, "items" ).is ) )
        addKeys( *element, path + "[]", keys );
    auto const* const properties = std::get_if<Row>( &valueOf( schema, "properties" ).is );
    for( Field const& key : properties ? *properties : Row() ) {
        Row const& value = std::get<Row>( key.value.is );
        String const at = path + ( path.empty() ? "" : "." ) + String( key.name );
        keys.emplace( at, valueAs<String>( value, "description" ) );
        addKeys( value, at, keys );
    }
}

void printKeys( Row const& schema, Streams const& io ) {
    std::map<String, String> keys;
    addKeys( schema, "", keys );
    RowList list{ { { "KEY", "" }, { "MEANING", "" } }, {} };
    for( auto const& [ key, meaning ] : keys )
        list.rows.push_back( { { "", key }, { "", meaning } } );
    printColumns( io.out, list, io.look );
}

} // namespace

ExitStatus help( Request const& request, Streams const& io ) {
    Command const* const command =
        request.words.empty() ? nullptr : findCommand( program(), request.words.front() );
    command ? printHelp( io.out, program(), *command ) : printHelp( io.out, program() );
    return ExitStatus::done;
}

ExitStatus manual( Request const&, Streams const& io ) {
    printManual( io.out, program() );
    return ExitStatus::done;
}

/// One completion per line; ":files" where paths will do. A name with a line break in it has no line.
ExitStatus complete( Request const& request, Streams const& io ) {
    Candidates const candidates = candidatesFor( program(), request.words );
    if( candidates.files )
        io.out << ":files\n";
    String const rest = request.words.back().substr( candidates.written.size() );
    for( String const& word : beginningLike( rest, candidates.words ) ) {
        if( word.find( '\n' ) == String::npos )
            io.out << candidates.written << word << '\n';
    }
    return ExitStatus::done;
}

ExitStatus schema( Request const& request, Streams const& io ) {
    String const& word = request.words.front();
    Command const& command = *findCommand( program(), word );
    if( !hasSchema( command ) )
        throw Failure( ExitStatus::usage, fmt::format( "'bfri {}' prints no JSON; these do:", word ),
                       wordsWithSchema() );
    if( request.has( "--keys" ) )
        printKeys( schemaOf( command ), io );
    else
        printJsonObject( io.out, schemaOf( command ) );
    return ExitStatus::done;
}

} // namespace Bfri
