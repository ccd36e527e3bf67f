#include "cli/terminal/BudgetText.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/TextFormat.h"

#include <fmt/ostream.h>
#include <set>

namespace Bfri {

namespace {

String outcomeOf( Budget const& budget ) {
    std::vector<String> outcome;
    for( RuleLevel const level : { RuleLevel::error, RuleLevel::warn } ) {
        if( std::size_t const broken = budget.broken( level ) )
            outcome.push_back( countText( broken, level == RuleLevel::error ? "error" : "warning" ) );
    }
    return outcome.empty() ? "within the budget" : fmt::format( "{}", fmt::join( outcome, ", " ) );
}

/// "pipe_a/context.json, stage 4: ingress hash_match entries".
String whatOf( Use const& use ) {
    String const stage = use.stage ? fmt::format( ", stage {}", *use.stage ) : "";
    return ( use.contextFile.empty() ? "" : use.contextFile + stage + ": " ) + use.what +
           ( use.unstated ? fmt::format( " (and {} not stated)", countText( use.unstated, "stage table" ) )
                          : "" );
}

/// Each broken rule once, with its reason.
void printReasons( Budget const& budget, std::ostream& out ) {
    std::set<Rule const*> told;
    for( Use const& use : budget.uses ) {
        if( use.isOver() && told.insert( use.rule ).second )
            fmt::print( out, "{}line {}: {}\n", told.size() == 1 ? "\n" : "", use.rule->line,
                        escapeForTerminal( use.rule->reason ) );
    }
}

} // namespace

void print( String const& conf, Rules const& rules, Budget const& budget, Streams const& io ) {
    constexpr std::size_t enough = 20;
    fmt::print( io.out, "{}: {}\n", escapeForTerminal( conf ), outcomeOf( budget ) );
    for( RuleProblem const& problem : budget.problems )
        fmt::print( io.out, "  {}:{}: {}{}\n", escapeForTerminal( rules.path ), problem.rule->line,
                    problem.level == RuleLevel::warn ? "warning: " : "",
                    escapeForTerminal( problem.problem ) );
    if( budget.notJudged > 0 )
        io.out << "  --against OLD gives the older configuration\n";
    TextList list{ "IS", "USED", "AVAILABLE", "PERCENT", "SLACK", "LINE", "OF" };
    for( Use const& use : budget.uses ) {
        if( use.isOver() || list.rows.size() < enough )
            list.add( { use.isOver() ? wordOf( use.rule->level ) : "ok", use.used, use.available,
                        use.percent() ? fmt::format( "{}%", *use.percent() ) : "-", use.slack(),
                        use.rule->line, whatOf( use ) } );
    }
    if( list.rows.empty() )
        return;
    io.out << '\n';
    printColumns( io.out, list, io.look );
    if( budget.uses.size() > list.rows.size() )
        fmt::print( io.out, "and {} more within the budget; --json has all\n",
                    budget.uses.size() - list.rows.size() );
    printReasons( budget, io.out );
}

String mistakeText( RulesMistake const& mistake ) {
    String const place = mistake.line ? fmt::format( ":{}:{}", mistake.line, mistake.column ) : "";
    return escapeForTerminal( mistake.path ) + place + ": " + escapeForTerminal( mistake.problem );
}

} // namespace Bfri
