#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/BudgetText.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

ExitStatus budget( Request const& request, Streams const& io ) {
    String const& conf = request.words[ 0 ];
    Rules const rules = loadRules( request.words[ 1 ] );
    auto const configuration = load( conf, *request.command, io.err );
    std::optional<Configuration> old;
    if( request.has( "--against" ) )
        old = load( request.option( "--against" ), *request.command, io.err );
    Budget const judged = budgetOf( rules, configuration, old ? &*old : nullptr );
    if( request.format == Format::json ) {
        JsonAnswer answer( io.out );
        answer.member( "switchConf", conf );
        answer.member( "rules", rules.path );
        answer.member( "against", old ? Value( old->path ) : Value() );
        answer.members( rowOf( judged ) );
    } else
        print( conf, rules, judged, io );
    return judged.broken( RuleLevel::error ) > 0 ? ExitStatus::no : ExitStatus::done;
}

} // namespace Bfri
