#include "cli/terminal/BudgetText.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/Paint.h"
#include "cli/terminal/TextFormat.h"

#include <algorithm>
#include <fmt/ostream.h>

namespace Bfri {

namespace {

String numbered( std::size_t count, char const* what ) {
    return fmt::format( "{} {}{}", count, what, count == 1 ? "" : "s" );
}

String outcomeOf( Budget const& budget ) {
    std::size_t const errors = budget.broken( RuleLevel::error );
    std::size_t const warnings = budget.broken( RuleLevel::warn );
    if( errors + warnings == 0 )
        return "within the budget";
    return ( errors ? numbered( errors, "error" ) : "" ) + ( errors && warnings ? ", " : "" ) +
           ( warnings ? numbered( warnings, "warning" ) : "" );
}

String verdictOf( Use const& use ) { return use.isOver() ? wordOf( use.rule->level ) : "ok"; }

String percentOf( Use const& use ) { return use.percent() ? fmt::format( "{}%", *use.percent() ) : "-"; }

/// "pipe_a/context.json, stage 4: ingress hash_match entries".
String whatOf( Use const& use ) {
    String const stage = use.stage ? fmt::format( ", stage {}", *use.stage ) : "";
    return ( use.contextFile.empty() ? "" : use.contextFile + stage + ": " ) + use.what +
           ( use.unstated ? fmt::format( " (and {} not stated)", numbered( use.unstated, "stage table" ) )
                          : "" );
}

Row columnsOf( Use const& use ) {
    return { { "", verdictOf( use ) }, { "", use.used },    { "", use.available },
             { "", percentOf( use ) }, { "", use.slack() }, { "", use.rule->line },
             { "", whatOf( use ) } };
}

/// Each broken rule once, with its reason.
void printReasons( std::vector<Use> const& over, std::ostream& out ) {
    std::vector<Rule const*> told;
    for( Use const& use : over ) {
        if( std::find( told.begin(), told.end(), use.rule ) != told.end() )
            continue;
        told.push_back( use.rule );
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
    std::vector<Use> over;
    RowList list{ { { "IS", {} },
                    { "USED", {} },
                    { "AVAILABLE", {} },
                    { "PERCENT", {} },
                    { "SLACK", {} },
                    { "LINE", {} },
                    { "OF", {} } },
                  {} };
    for( Use const& use : budget.uses ) {
        if( use.isOver() )
            over.push_back( use );
        if( use.isOver() || list.rows.size() < enough )
            list.rows.push_back( columnsOf( use ) );
    }
    if( list.rows.empty() )
        return;
    io.out << '\n';
    printColumns( io.out, list, io.look );
    if( budget.uses.size() > list.rows.size() )
        fmt::print( io.out, "and {} more within the budget; --json has all\n",
                    budget.uses.size() - list.rows.size() );
    printReasons( over, io.out );
}

String mistakeText( RulesMistake const& mistake ) {
    String const place = mistake.line ? fmt::format( ":{}:{}", mistake.line, mistake.column ) : "";
    return escapeForTerminal( mistake.path ) + place + ": " + escapeForTerminal( mistake.problem );
}

} // namespace Bfri
