#include "cli/commands/Loading.h"
#include "cli/terminal/BudgetText.h"
#include "cli/terminal/Characters.h"

#include "cli/terminal/FaultText.h"
#include "inspect/check/Checked.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

/// Whether `bfri check`, which reads the file again, has more to say of a fault.
bool hasMore( Fault const& fault ) { return fault.pointer || fault.line; }

[[noreturn]] void fail( String const& path, Fault const& fault ) {
    String const more = "\n'bfri check " + escapeForTerminal( path ) + "' says more";
    throw LoadFailure( faultText( fault ) + ( hasMore( fault ) ? more : "" ), fault );
}

/// The parts are those of `bfri check`, which reads the file again for some of them.
Row loadFailureRow( LoadFailure const& failure ) {
    String const place = placeText( failure.fault );
    Fault fault = failure.fault;
    addEvidence( fault );
    String const error = sentenceOf( fault ) + ( place.empty() ? "" : " (" + place + ")" ) +
                         ( fault.found.empty() || !fault.problem.empty() ? "" : ", found " + fault.found );
    return { { "error", error }, { "suggestions", List() }, { "failure", rowOf( fault ) } };
}

} // namespace

Row rowOf( Failure const& failure ) {
    if( auto const* const load = dynamic_cast<LoadFailure const*>( &failure ) )
        return loadFailureRow( *load );
    char const* const space = failure.suggestions.empty() ? "" : " ";
    return {
        { "error", fmt::format( "{}{}{}", failure.what(), space, fmt::join( failure.suggestions, ", " ) ) },
        { "suggestions", listOf( failure.suggestions, []( String const& name ) { return name; } ) } };
}

Configuration load( String const& path, Command const& command, std::ostream& err, Survey survey ) {
    auto result = command.onBadData == OnBadData::explain ? loadConfiguration( path, survey, err )
                                                          : loadOrAbort( path );
    if( auto const* const fault = std::get_if<Fault>( &result ) )
        fail( path, *fault );
    auto const& configuration = std::get<Configuration>( result );
    for( String const& file : unreadContextFiles( configuration ) )
        err << "bfri: " << escapeForTerminal( file ) << " is not read: a later pipeline has the same pipes\n";
    return std::get<Configuration>( std::move( result ) );
}

Rules loadRules( String const& path ) {
    auto rules = readRules( path );
    if( auto const* const mistake = std::get_if<RulesMistake>( &rules ) )
        throw Failure( ExitStatus::notLoadable, mistakeText( *mistake ) );
    return std::get<Rules>( std::move( rules ) );
}

} // namespace Bfri
