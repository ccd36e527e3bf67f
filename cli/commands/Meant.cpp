#include "cli/commands/Meant.h"
#include "cli/terminal/Characters.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

[[noreturn]] void refuseMissing( Configuration const& configuration, String const& word,
                                 Meaning const& meaning, Named const& named ) {
    String const missing = fmt::format( "no {} '{}'", named.one, escapeForTerminal( word ) );
    if( String const why = whyMissing( configuration, word ); !why.empty() )
        throw Failure( ExitStatus::no, missing + ": " + escapeForTerminal( why ) );
    if( auto const actions =
            named.actions ? actionsLike( configuration.parser(), word ) : std::vector<String>();
        !actions.empty() )
        throw Failure( ExitStatus::no,
                       fmt::format( "no action '{}'; actions like it:", escapeForTerminal( word ) ),
                       actions );
    if( meaning.names.empty() )
        throw Failure( ExitStatus::no, fmt::format( "{}; 'bfri {}' lists them all", missing, named.lister ) );
    bool const areAll = meaning.names.size() == meaning.similar;
    throw Failure( ExitStatus::no,
                   areAll ? missing + "; names like it:"
                          : fmt::format( "{}; the nearest of {} names like it:", missing, meaning.similar ),
                   meaning.names );
}

} // namespace

void refuse( Configuration const& configuration, String const& word, Meaning const& meaning,
             Named const& named ) {
    if( isMissing( meaning ) )
        refuseMissing( configuration, word, meaning, named );
    throw Failure(
        ExitStatus::no,
        fmt::format( "'{}' is the end of several {}' names:", escapeForTerminal( word ), named.many ),
        meaning.names );
}

void refuse( String const& word, SeveralRecords const& several ) {
    String const means =
        fmt::format( "'{}' means {} {}", escapeForTerminal( word ), several.count, several.kind->nouns );
    throw Failure( ExitStatus::no,
                   several.tellApart
                       ? means + "; say which:"
                       : fmt::format( "{}, and no word tells all of them apart; 'bfri {}' lists them:", means,
                                      several.kind->many ),
                   several.words );
}

} // namespace Bfri
