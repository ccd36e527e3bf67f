#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/CheckReport.h"
#include "inspect/load/FaultDetails.h"
#include "inspect/load/Load.h"
#include "inspect/rows/JsonFormat.h"

#include <algorithm>
#include <fmt/format.h>

namespace Bfri {

namespace {

String withoutBlanksAround( String const& word ) {
    auto const first = word.find_first_not_of( ' ' );
    return first == String::npos ? "" : word.substr( first, word.find_last_not_of( ' ' ) + 1 - first );
}

/// The parts of a text between commas, the empty ones, too.
std::vector<String> partsOf( String const& text ) {
    std::vector<String> parts;
    for( std::size_t from = 0; from <= text.size(); from += parts.back().size() + 1 )
        parts.push_back( text.substr( from, text.find( ',', from ) - from ) );
    return parts;
}

using Kinds = std::vector<FindingKind const*>;

FindingKind const& kindMeant( String const& word ) {
    if( FindingKind const* const kind = findingKindOf( word ) )
        return *kind;
    auto const suggestions = findingsLike( word );
    throw Failure( ExitStatus::usage,
                   fmt::format( "no finding has the code '{}'; {}", escapeForTerminal( word ),
                                suggestions.empty() ? "'--explain all' lists them" : "codes like it:" ),
                   suggestions );
}

/// Of an option's codes or titles, each once; none where the option is not given.
Kinds kindsOf( Request const& request, char const* option ) {
    Kinds kinds;
    if( !request.has( option ) )
        return kinds;
    for( String const& part : partsOf( request.option( option ) ) ) {
        String const word = withoutBlanksAround( part );
        if( word.empty() )
            throw Failure( ExitStatus::usage, String( option ) +
                                                  " takes codes or titles with commas between, not '" +
                                                  escapeForTerminal( request.option( option ) ) + "'" );
        FindingKind const* const kind = &kindMeant( word );
        if( std::find( kinds.begin(), kinds.end(), kind ) == kinds.end() )
            kinds.push_back( kind );
    }
    return kinds;
}

Checked checkedOf( String const& conf, Kinds const& ignored, std::ostream& err ) {
    auto loaded = loadConfiguration( conf, Survey::facts, err );
    if( auto* const fault = std::get_if<Fault>( &loaded ) ) {
        addEvidence( *fault );
        return { conf, std::move( *fault ) };
    }
    auto const& configuration = std::get<Configuration>( loaded );
    Checked checked{ conf, {}, countsOf( configuration ), findingsOf( configuration ) };
    std::erase_if( checked.findings, [ & ]( Finding const& finding ) {
        return std::find( ignored.begin(), ignored.end(), finding.kind ) != ignored.end();
    } );
    return checked;
}

ExitStatus statusOf( Checked const& checked, Severity failOn ) {
    if( checked.fault )
        return ExitStatus::notLoadable;
    bool const fails = std::any_of( checked.findings.begin(), checked.findings.end(),
                                    [ & ]( Finding const& f ) { return f.kind->severity >= failOn; } );
    return fails ? ExitStatus::no : ExitStatus::done;
}

ExitStatus checkAll( Request const& request, Streams const& io ) {
    Kinds const ignored = kindsOf( request, "--ignore" );
    Severity const failOn = severityOf( request.option( "--fail-on" ) ).value_or( Severity::note );
    std::optional<JsonAnswer> json;
    if( request.format == Format::json )
        json.emplace( io.out );
    List configurations;
    ExitStatus worst = ExitStatus::done;
    bool anyFinding = false;
    for( String const& conf : request.words ) {
        Checked const checked = checkedOf( conf, ignored, io.err );
        worst = std::max( worst, statusOf( checked, failOn ) );
        anyFinding |= !checked.findings.empty();
        if( json )
            configurations.emplace_back( rowOf( checked ) );
        else
            print( checked, io );
    }
    if( json )
        json->member( "configurations", std::move( configurations ) );
    else if( anyFinding )
        io.out << "'bfri check --explain CODE' says what a finding means, and what to do.\n";
    return worst;
}

Row explanationRow( FindingKind const* kind ) {
    return {
        { "code", kind->code },       { "title", kind->title },     { "severity", wordOf( kind->severity ) },
        { "meaning", kind->meaning }, { "matters", kind->matters }, { "advice", kind->advice } };
}

void printExplanation( FindingKind const& kind, std::ostream& out ) {
    out << kind.code << ' ' << kind.title << " (" << wordOf( kind.severity ) << ")\n\n"
        << kind.meaning << "\n\nWhy it matters: " << kind.matters << "\n\nWhat to do: " << kind.advice
        << '\n';
}

void printOverview( std::ostream& out ) {
    for( FindingKind const& kind : findingKinds() )
        out << kind.code << "  " << kind.title << '\n' << "       " << kind.meaning << '\n';
}

Kinds allKinds() {
    Kinds kinds;
    for( FindingKind const& kind : findingKinds() )
        kinds.push_back( &kind );
    return kinds;
}

void explain( Request const& request, std::ostream& out ) {
    auto const words = partsOf( request.option( "--explain" ) );
    bool const all = std::find( words.begin(), words.end(), "all" ) != words.end();
    Kinds const kinds = all ? allKinds() : kindsOf( request, "--explain" );
    if( request.format == Format::json ) {
        JsonAnswer( out ).member( "codes", listOf( kinds, explanationRow ) );
        return;
    }
    if( all )
        return printOverview( out );
    for( FindingKind const* const kind : kinds ) {
        out << ( kind == kinds.front() ? "" : "\n\n" );
        printExplanation( *kind, out );
    }
}

} // namespace

ExitStatus check( Request const& request, Streams const& io ) {
    bool const explains = request.has( "--explain" );
    if( explains != request.words.empty() )
        throw Failure( ExitStatus::usage, explains ? "--explain goes without CONF"
                                                   : "check takes one CONF or more, or --explain CODES" );
    if( !explains )
        return checkAll( request, io );
    explain( request, io.out );
    return ExitStatus::done;
}

} // namespace Bfri
