#include "cli/commands/Answers.h"
#include "cli/commands/Meant.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/CheckReport.h"
#include "inspect/load/Load.h"
#include "inspect/model/Codes.h"
#include "inspect/rows/JsonFormat.h"

#include <algorithm>
#include <fmt/format.h>
#include <sstream>

namespace Bfri {

namespace {

/// The parts of a text between commas, without blanks around them; the empty ones, too.
std::vector<String> partsOf( String const& text ) {
    std::vector<String> parts;
    std::istringstream rest( text + ',' );
    for( String part; std::getline( rest, part, ',' ); ) {
        part.erase( 0, part.find_first_not_of( ' ' ) );
        part.erase( part.find_last_not_of( ' ' ) + 1 );
        parts.push_back( part );
    }
    return parts;
}

using Kinds = std::vector<FindingKind const*>;

/// The kinds in an option's codes or titles, each once; none without the option.
Kinds kindsOf( Request const& request, char const* option ) {
    Kinds kinds;
    if( !request.has( option ) )
        return kinds;
    for( String const& word : partsOf( request.option( option ) ) ) {
        if( word.empty() )
            throw Failure( ExitStatus::usage, String( option ) +
                                                  " takes codes or titles with commas between, not '" +
                                                  escapeForTerminal( request.option( option ) ) + "'" );
        FindingKind const* const kind = codedAs( findingKinds(), word );
        if( !kind )
            refuseCode( "finding", word, codesLike( findingKinds(), word ) );
        if( std::ranges::find( kinds, kind ) == kinds.end() )
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
        return std::ranges::find( ignored, finding.kind ) != ignored.end();
    } );
    return checked;
}

ExitStatus statusOf( Checked const& checked, Severity failOn ) {
    if( checked.fault )
        return ExitStatus::notLoadable;
    bool const fails = std::ranges::any_of( checked.findings, [ & ]( Finding const& finding ) {
        return !finding.isKnown && finding.kind->severity >= failOn;
    } );
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

using Gone = std::optional<std::vector<KnownFinding>>; ///< of the baseline, where there is one

Value goneRow( KnownFinding const& known ) {
    return Row{ { "code", known.code },
                { "kind", known.kind },
                { "name", known.name },
                { "switchConf", known.switchConf },
                { "message", known.message } };
}

void printJson( std::vector<Checked> const& all, Gone const& gone, bool isSummary, std::ostream& out ) {
    JsonAnswer json( out );
    json.member( "configurations",
                 listOf( all, [ & ]( Checked const& one ) { return rowOf( one, isSummary ); } ) );
    if( gone )
        json.member( "gone", listOf( *gone, goneRow ) );
}

void printText( std::vector<Checked> const& all, Gone const& gone, ReportView const& view,
                Streams const& io ) {
    bool anyNew = false;
    for( Checked const& one : all ) {
        print( one, view, io );
        anyNew |= !std::ranges::all_of( one.findings, &Finding::isKnown );
    }
    if( gone )
        printGone( *gone, view.all, io.out );
    if( anyNew )
        io.out << "'bfri check --explain CODE' says what a finding means, and what to do.\n";
}

ExitStatus checkAll( Request const& request, Streams const& io ) {
    Kinds const ignored = kindsOf( request, "--ignore" );
    Severity const failOn = severityOf( request.option( "--fail-on" ) ).value_or( Severity::note );
    bool const isSummary = request.has( "--summary" );
    auto baseline = baselineOf( request );
    std::vector<Checked> all;
    ExitStatus worst = ExitStatus::done;
    for( String const& conf : request.words ) {
        Checked& checked = all.emplace_back( checkedOf( conf, ignored, io.err ) );
        if( baseline )
            baseline->mark( checked.findings, conf );
        worst = std::max( worst, statusOf( checked, failOn ) );
    }
    Gone gone;
    if( baseline ) // nothing is gone of configurations that can't be loaded
        gone = worst == ExitStatus::notLoadable ? std::vector<KnownFinding>() : baseline->gone( ignored );
    if( request.has( "--sarif" ) )
        printJsonObject( io.out, sarifOf( all, BFRI_VERSION, gone ? &*gone : nullptr ) );
    else if( request.format == Format::json )
        printJson( all, gone, isSummary, io.out );
    else
        printText( all, gone, { isSummary, request.has( "--all" ), baseline.has_value() }, io );
    return worst;
}

Row explanationRow( FindingKind const* kind ) {
    return {
        { "code", kind->code },       { "title", kind->title },     { "severity", wordOf( kind->severity ) },
        { "meaning", kind->meaning }, { "matters", kind->matters }, { "advice", kind->advice } };
}

void explain( Request const& request, std::ostream& out ) {
    auto const words = partsOf( request.option( "--explain" ) );
    bool const areAll = std::ranges::find( words, "all" ) != words.end();
    Kinds kinds;
    if( areAll )
        for( FindingKind const& kind : findingKinds() )
            kinds.push_back( &kind );
    else
        kinds = kindsOf( request, "--explain" );
    if( request.format == Format::json || !areAll )
        return printExplanations( listOf( kinds, explanationRow ), request.format, out );
    for( FindingKind const* const kind : kinds )
        out << kind->code << "  " << kind->title << "\n       " << kind->meaning << '\n';
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
