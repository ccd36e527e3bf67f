#include "cli/commands/Loading.h"
#include "cli/terminal/BudgetText.h"
#include "cli/terminal/Characters.h"

#include "cli/terminal/FaultText.h"

namespace Bfri {

namespace {

/// Whether `bfri check`, which reads the file again, has more to say of a fault.
bool hasMore( Fault const& fault ) { return fault.pointer || fault.line; }

[[noreturn]] void fail( String const& path, Fault const& fault ) {
    String const more = "\n'bfri check " + escapeForTerminal( path ) + "' says more";
    throw LoadFailure( faultText( fault ) + ( hasMore( fault ) ? more : "" ), fault );
}

} // namespace

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
