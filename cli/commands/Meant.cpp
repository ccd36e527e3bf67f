#include "cli/commands/Meant.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/ActionWord.h"
#include "inspect/rows/JsonFormat.h"

#include <fmt/ostream.h>

namespace Bfri {

void refuse( Configuration const& configuration, String const& word, Meaning const& meaning,
             Named const& named ) {
    String const shown = escapeForTerminal( word );
    String const missing = fmt::format( "no {} '{}'", named.one, shown );
    auto const refuseWith = []( String const& message, std::vector<String> const& names = {} ) {
        throw Failure( ExitStatus::no, message, names );
    };
    if( !isMissing( meaning ) )
        refuseWith( fmt::format( "'{}' is the end of several {}' names:", shown, named.many ),
                    meaning.names );
    if( String const why = whyMissing( configuration, word ); !why.empty() )
        refuseWith( missing + ": " + escapeForTerminal( why ) );
    auto const actions = named.actions ? actionsLike( configuration.parser(), word ) : std::vector<String>();
    if( !actions.empty() )
        refuseWith( fmt::format( "no action '{}'; actions like it:", shown ), actions );
    if( meaning.names.empty() )
        refuseWith( fmt::format( "{}; 'bfri {}' lists them all", missing, named.lister ) );
    bool const areAll = meaning.names.size() == meaning.similar;
    throw Failure( ExitStatus::no,
                   areAll ? missing + "; names like it:"
                          : fmt::format( "{}; the nearest of {} names like it:", missing, meaning.similar ),
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

void refuseCode( char const* noun, String const& word, std::vector<String> const& suggestions ) {
    throw Failure( ExitStatus::usage,
                   fmt::format( "no {} has the code '{}'; {}", noun, escapeForTerminal( word ),
                                suggestions.empty() ? "'--explain all' lists them" : "codes like it:" ),
                   suggestions );
}

void printExplanations( List const& rows, Format format, std::ostream& out ) {
    if( format == Format::json )
        return JsonAnswer( out ).member( "codes", rows );
    for( Value const& value : rows ) {
        Row const& row = std::get<Row>( value.is );
        auto const text = [ & ]( char const* field ) { return textOf( valueOf( row, field ) ); };
        fmt::print( out, "{}{} {} ({})\n\n{}\n\n", &value == &rows.front() ? "" : "\n\n", text( "code" ),
                    text( "title" ), textOf( row[ 2 ].value ), text( "meaning" ) );
        if( text( "matters" ) != "-" )
            fmt::print( out, "Why it matters: {}\n\n", text( "matters" ) );
        fmt::print( out, "What to do: {}\n", text( "advice" ) );
    }
}

} // namespace Bfri
