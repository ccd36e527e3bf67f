#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/PageText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

std::vector<HandleWord> handlesMeant( BfResourceInfo::BfResourceParser const& parser,
                                      std::span<String const> words ) {
    std::vector<HandleWord> handles;
    for( String const& word : words ) {
        auto const handle = handleIn( word );
        if( !handle ) {
            auto const meant = handleWithout0x( parser, word );
            throw Failure(
                ExitStatus::usage,
                "'" + escapeForTerminal( word ) +
                    "' is not a handle: a number up to 0xffffffff, decimal, or hexadecimal with 0x" +
                    ( meant ? "; did you mean " + hexText( *meant ) + "?" : "" ) );
        }
        handles.push_back( { word, *handle } );
    }
    return handles;
}

} // namespace

ExitStatus lookup( Configuration const& configuration, Request const& request, Streams const& io ) {
    auto const& parser = configuration.parser();
    auto const words = handlesMeant( parser, std::span( request.words ).subspan( 1 ) );
    auto const answers = lookUp( configuration, words );
    switch( request.format ) {
    case Format::text:
        printHandles( io.out, io.look, answers );
        break;
    case Format::csv:
        printCsv( io, { blankUse(), rowsOf( answers ) } );
        break;
    case Format::json:
        JsonAnswer( io.out ).member( "handles", objectsOf( answers ) );
        break;
    }
    ExitStatus status = ExitStatus::done;
    for( std::size_t i = 0; i < answers.size(); ++i ) {
        printRemarks( io.err, words[ i ].word, answers[ i ], !parser.bfrtConfig().empty() );
        if( answers[ i ].uses.empty() )
            status = ExitStatus::no;
    }
    return status;
}

} // namespace Bfri
