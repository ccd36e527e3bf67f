#include "cli/commands/Answers.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/CheckReport.h"
#include "inspect/load/FaultDetails.h"
#include "inspect/load/Load.h"
#include "inspect/model/Codes.h"
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
    if( FindingKind const* const kind = codedAs( findingKinds(), word ) )
        return *kind;
    auto const suggestions = codesLike( findingKinds(), word );
    throw Failure( ExitStatus::usage,
                   fmt::format( "no finding has the code '{}'; {}", escapeForTerminal( word ),
                                suggestions.empty() ? "'--explain all' lists them" : "codes like it:" ),
                   suggestions );
}

/// The kinds in an option's codes or titles, each once; none without the option.
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
    bool const fails =
        std::any_of( checked.findings.begin(), checked.findings.end(),
                     [ & ]( Finding const& f ) { return !f.isKnown && f.kind->severity >= failOn; } );
    return fails ? ExitStatus::no : ExitStatus::done;
}

std::optional<Baseline> baselineOf( Request const& request ) {
    if( !request.has( "--baseline" ) )
        return std::nullopt;
    String const path = request.option( "--baseline" );
    auto baseline = readBaseline( path );
    if( auto const* const problem = std::get_if<String>( &baseline ) )
        throw Failure( ExitStatus::notLoadable,
                       fmt::format( "the baseline {} {}", escapeForTerminal( path ), *problem ) );
    return std::get<Baseline>( std::move( baseline ) );
}

/// The result of checking several configurations.
struct CheckAnswer {
    std::vector<Checked> checked = {};
    std::optional<std::vector<KnownFinding>> gone = {}; ///< of the baseline, where there is one
};

/// Nothing is gone of configurations that can't be loaded.
std::vector<KnownFinding> goneOf( Baseline const& baseline, std::vector<Checked> const& checked,
                                  Kinds const& ignored ) {
    auto gone = baseline.gone( ignored );
    if( std::any_of( checked.begin(), checked.end(),
                     []( Checked const& one ) { return one.fault.has_value(); } ) )
        gone.clear();
    return gone;
}

Value goneRow( KnownFinding const& known ) {
    return Row{ { "code", known.code },
                { "kind", known.kind },
                { "name", known.name },
                { "switchConf", known.switchConf },
                { "message", known.message } };
}

void printJson( CheckAnswer const& answer, bool isSummary, std::ostream& out ) {
    JsonAnswer json( out );
    json.member( "configurations",
                 listOf( answer.checked, [ & ]( Checked const& one ) { return rowOf( one, isSummary ); } ) );
    if( answer.gone )
        json.member( "gone", listOf( *answer.gone, goneRow ) );
}

void printText( CheckAnswer const& answer, ReportView const& view, Streams const& io ) {
    bool anyNew = false;
    for( Checked const& one : answer.checked ) {
        print( one, view, io );
        anyNew |= std::any_of( one.findings.begin(), one.findings.end(),
                               []( auto const& f ) { return !f.isKnown; } );
    }
    if( answer.gone )
        printGone( *answer.gone, view.all, io.out );
    if( anyNew )
        io.out << "'bfri check --explain CODE' says what a finding means, and what to do.\n";
}

ExitStatus checkAll( Request const& request, Streams const& io ) {
    Kinds const ignored = kindsOf( request, "--ignore" );
    Severity const failOn = severityOf( request.option( "--fail-on" ) ).value_or( Severity::note );
    auto baseline = baselineOf( request );
    CheckAnswer answer;
    ExitStatus worst = ExitStatus::done;
    for( String const& conf : request.words ) {
        Checked& checked = answer.checked.emplace_back( checkedOf( conf, ignored, io.err ) );
        if( baseline )
            baseline->mark( checked.findings, conf );
        worst = std::max( worst, statusOf( checked, failOn ) );
    }
    if( baseline )
        answer.gone = goneOf( *baseline, answer.checked, ignored );
    if( request.has( "--sarif" ) )
        printJsonObject( io.out,
                         sarifOf( answer.checked, BFRI_VERSION, answer.gone ? &*answer.gone : nullptr ) );
    else if( request.format == Format::json )
        printJson( answer, request.has( "--summary" ), io.out );
    else
        printText( answer, { request.has( "--summary" ), request.has( "--all" ), baseline.has_value() }, io );
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
