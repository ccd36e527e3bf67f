#include "cli/terminal/CheckReport.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/FaultText.h"
#include "cli/terminal/TextFormat.h"

#include <algorithm>
#include <fmt/ostream.h>
#include <span>

namespace Bfri {

namespace {

/// " in 33 match tables, 62 hardware resources, ...": what there is none of is left out.
String countsText( std::vector<Count> const& counts ) {
    std::vector<String> texts;
    for( Count const& count : counts ) {
        if( count.number )
            texts.push_back( countText( count.number, count.noun, count.nouns ) );
    }
    return texts.empty() ? ", without a context file to look into"
                         : fmt::format( " in {}", fmt::join( texts, ", " ) );
}

/// "3 findings (1 error, 2 notes)"; with a baseline "3 new findings (1 error, 2 notes), 9 known".
String totalsText( std::vector<Finding> const& fresh, std::size_t known, bool hasBaseline ) {
    std::vector<String> texts;
    for( Severity const severity : { Severity::error, Severity::warning, Severity::note } ) {
        auto const count = std::count_if( fresh.begin(), fresh.end(),
                                          [ & ]( auto const& f ) { return f.kind->severity == severity; } );
        if( count > 0 )
            texts.push_back( countText( static_cast<std::size_t>( count ), wordOf( severity ) ) );
    }
    String const before = hasBaseline ? fmt::format( ", {} known", known ) : "";
    if( fresh.empty() )
        return ( hasBaseline ? "nothing new" : "sound" ) + before;
    return fmt::format( "{} ({}){}", countText( fresh.size(), hasBaseline ? "new finding" : "finding" ),
                        fmt::join( texts, ", " ), before );
}

/// A pipeline is called by its context file.
String subjectIn( Finding const& finding, bool severalFiles ) {
    bool const tells = severalFiles && !finding.contextFile.empty() && finding.contextFile != finding.name;
    return finding.subject() + ( tells ? " in " + finding.contextFile : "" );
}

String headOf( CodeCount const& count ) {
    return fmt::format( "  {} {}, {}: {}", count.kind->code, wordOf( count.kind->severity ),
                        count.kind->title, count.number );
}

/// How many findings of each kind have a line, so that all have room.
std::size_t mostOfAKind( std::vector<Finding> const& findings, ReportView const& view,
                         TerminalStyle const& look ) {
    constexpr std::size_t lines = 50;
    auto const counts = codeCountsOf( findings );
    auto const taken = [ & ]( std::size_t most ) {
        std::size_t sum = counts.size();
        for( CodeCount const& count : counts )
            sum += std::min( most, count.number ) + ( most > 0 && count.number > most ? 1 : 0 );
        return sum;
    };
    if( view.all || ( look.columns == 0 && taken( findings.size() ) <= lines ) )
        return findings.size();
    std::size_t most = 10;
    while( most > 0 && taken( most ) > lines )
        --most;
    return most;
}

/// The findings of a kind are together. What they have in common is printed once.
void printFindings( std::vector<Finding> const& findings, bool severalFiles, ReportView const& view,
                    Streams const& io ) {
    auto const most = mostOfAKind( findings, view, io.look );
    bool areAll = true;
    std::span<Finding const> left( findings );
    for( CodeCount const& count : codeCountsOf( findings ) ) {
        auto const ofKind = left.first( count.number );
        left = left.subspan( count.number );
        bool const alike = count.number > 1 &&
                           std::all_of( ofKind.begin(), ofKind.end(),
                                        [ & ]( auto const& f ) { return f.says == ofKind.front().says; } );
        fmt::print( io.out, "{}{}\n", headOf( count ),
                    alike ? " (" + escapeForTerminal( ofKind.front().says ) + ")" : "" );
        for( Finding const& finding : ofKind.first( std::min( most, count.number ) ) )
            fmt::print( io.out, "    {}\n",
                        escapeForTerminal( subjectIn( finding, severalFiles ) +
                                           ( alike ? "" : ": " + finding.says ) ) );
        if( count.number > most && most > 0 )
            fmt::print( io.out, "    and {} more\n", count.number - most );
        areAll &= count.number <= most;
    }
    if( !areAll )
        io.out << "  --all shows all of them\n";
}

} // namespace

void print( Checked const& checked, ReportView const& view, Streams const& io ) {
    io.out << escapeForTerminal( checked.switchConf ) << ": ";
    if( checked.fault ) {
        io.out << "can't be loaded\n" << faultLines( *checked.fault );
        return;
    }
    std::vector<Finding> fresh = checked.findings;
    auto const known = std::erase_if( fresh, []( Finding const& finding ) { return finding.isKnown; } );
    io.out << totalsText( fresh, known, view.hasBaseline ) << countsText( checked.counts ) << '\n';
    if( !view.summary )
        return printFindings( fresh, checked.counts.front().number > 1, view, io );
    for( CodeCount const& count : codeCountsOf( fresh ) )
        io.out << headOf( count ) << '\n';
}

void printGone( std::vector<KnownFinding> const& gone, bool all, std::ostream& out ) {
    std::size_t const most = all ? gone.size() : 5;
    if( gone.empty() )
        return;
    out << countText( gone.size(), "finding" ) << " of the baseline " << ( gone.size() == 1 ? "is" : "are" )
        << " gone:\n";
    for( KnownFinding const& known : std::span( gone ).first( std::min( most, gone.size() ) ) )
        out << "  " << escapeForTerminal( known.code + ' ' + known.message ) << '\n';
    if( gone.size() > most )
        out << "  and " << gone.size() - most << " more\n";
}

} // namespace Bfri
