#include "cli/Answers.h"
#include "cli/CheckReport.h"
#include "cli/Evidence.h"
#include "cli/JsonFormat.h"
#include "cli/Load.h"

#include <algorithm>
#include <sstream>

namespace Bfri {

namespace {

std::vector<Count> countsOf( Model const& model ) {
    auto const& parser = *model.parser();
    return { { "contextFile", "context file", parser.contextFile().size() },
             { "bfTables", "match table", parser.bfTables().size() },
             { "bfResources", "hardware resource", parser.bfResources().size() },
             { "bfCounters", "counter", parser.bfCounters().size() },
             { "bfMeters", "meter", parser.bfMeters().size() },
             { "bfWreds", "WRED table", parser.bfWreds().size() },
             { "bfRegisterInfos", "register", parser.bfRegisterInfos().size() },
             { "bfActions", "action", parser.bfActions().size() },
             { "bfLearnQuantaInfos", "learn quanta", parser.bfLearnQuantaInfos().size() },
             { "bfHeaders", "flexible header", parser.bfHeaders().size() },
             { "bfDynamicHashInfo", "hash", parser.bfDynamicHashInfo().size() } };
}

String withoutBlanksAround( String const& word ) {
    auto const first = word.find_first_not_of( ' ' );
    return first == String::npos ? "" : word.substr( first, word.find_last_not_of( ' ' ) + 1 - first );
}

/// The kinds of a list of codes or titles.
std::vector<FindingKind const*> kindsOf( String const& codes ) {
    std::vector<FindingKind const*> kinds;
    std::istringstream words( codes );
    for( String word; std::getline( words, word, ',' ); )
        kinds.push_back( &findingKindOf( withoutBlanksAround( word ) ) );
    return kinds;
}

Checked checkedOf( String const& conf, std::vector<FindingKind const*> const& ignored, std::ostream& err ) {
    try {
        auto const model = loadSilently( conf, OnBadData::explain, err );
        Checked checked{ conf, {}, countsOf( *model ), findingsOf( *model ) };
        std::erase_if( checked.findings, [ & ]( Finding const& finding ) {
            return std::find( ignored.begin(), ignored.end(), finding.kind ) != ignored.end();
        } );
        return checked;
    } catch( LoadFailure const& failure ) {
        Checked checked{ conf, failure.fault };
        addEvidence( *checked.fault );
        return checked;
    }
}

ExitStatus statusOf( Checked const& checked, Severity failOn ) {
    if( checked.fault )
        return ExitStatus::notLoadable;
    bool const fails = std::any_of( checked.findings.begin(), checked.findings.end(),
                                    [ & ]( Finding const& f ) { return f.kind->severity >= failOn; } );
    return fails ? ExitStatus::no : ExitStatus::done;
}

ExitStatus checkAll( Request const& request, Streams const& io ) {
    auto const ignored = kindsOf( request.option( "--ignore" ) );
    Severity const failOn =
        request.has( "--fail-on" ) ? severityOf( request.option( "--fail-on" ) ) : Severity::note;
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

Row explanationRow( FindingKind const& kind ) {
    return {
        { "code", kind.code },       { "title", kind.title },     { "severity", wordOf( kind.severity ) },
        { "meaning", kind.meaning }, { "matters", kind.matters }, { "advice", kind.advice } };
}

void printExplanation( FindingKind const& kind, std::ostream& out ) {
    out << kind.code << ' ' << kind.title << " (" << wordOf( kind.severity ) << ")\n\n"
        << kind.meaning << "\n\nWhy it matters: " << kind.matters << "\n\nWhat to do: " << kind.advice
        << '\n';
}

void explain( std::span<FindingKind const> kinds, Request const& request, std::ostream& out ) {
    if( request.format == Format::json ) {
        JsonAnswer( out ).member( "codes", listOf( kinds, explanationRow ) );
        return;
    }
    if( kinds.size() == 1 )
        return printExplanation( kinds.front(), out );
    for( FindingKind const& kind : kinds )
        out << kind.code << "  " << kind.title << '\n' << "       " << kind.meaning << '\n';
}

} // namespace

ExitStatus check( Request const& request, Streams const& io ) {
    bool const explains = request.has( "--explain" );
    if( explains != request.words.empty() )
        throw Failure( ExitStatus::usage, explains ? "--explain goes without CONF"
                                                   : "check takes one CONF or more, or --explain CODE" );
    if( !explains )
        return checkAll( request, io );
    String const word = request.option( "--explain" );
    explain( word == "all" ? findingKinds() : std::span( &findingKindOf( word ), 1 ), request, io.out );
    return ExitStatus::done;
}

} // namespace Bfri
