#include "cli/terminal/CheckReport.h"

#include "cli/terminal/Characters.h"

#include <algorithm>
#include <span>

namespace Bfri {

namespace {

String counted( std::size_t number, String const& one, String const& several ) {
    return std::to_string( number ) + " " + ( number == 1 ? one : several );
}

String counted( std::size_t number, String const& one ) { return counted( number, one, one + "s" ); }

/// " in 33 match tables, 62 hardware resources, ...": what there is none of is left out.
String countsText( std::vector<Count> const& counts ) {
    String text;
    for( Count const& count : counts ) {
        if( count.number )
            text += ( text.empty() ? "" : ", " ) + counted( count.number, count.noun, count.nouns );
    }
    return text.empty() ? ", without a context file to look into" : " in " + text;
}

void printLine( std::ostream& out, String const& label, String const& text ) {
    if( !text.empty() )
        out << "  " << label << String( 11 - label.size(), ' ' ) << escapeForTerminal( text ) << '\n';
}

String placeOf( Fault const& fault ) {
    String place;
    if( fault.pointer )
        place = fault.pointer->empty() ? "the top of the file" : *fault.pointer;
    if( fault.pointer && !fault.member.empty() )
        place += ", member \"" + fault.member + '"';
    if( fault.line && !fault.column )
        place += ", line " + std::to_string( *fault.line );
    return place;
}

void printFault( Fault const& fault, std::ostream& out ) {
    printLine( out, "file:", fault.file );
    printLine( out, "problem:", problemOf( fault ) );
    if( !fault.problem.empty() || !fault.column )
        printLine( out, "where:", placeOf( fault ) );
    else
        printLine( out, "where:",
                   "line " + std::to_string( *fault.line ) + ", column " + std::to_string( *fault.column ) );
    if( fault.column ) {
        printLine( out, "", fault.excerpt.empty() ? " " : fault.excerpt );
        String const front = escapeForTerminal( fault.excerpt.substr( 0, fault.caret ) );
        out << String( 13 + width( front ), ' ' ) << "^\n";
    }
    if( fault.tableIndex )
        printLine( out, "table:",
                   std::to_string( *fault.tableIndex ) +
                       ( fault.table.empty() ? "" : " \"" + fault.table + '"' ) );
    printLine( out, "expected:", fault.expected );
    printLine( out, "handle:", handleOf( fault ) );
    printLine( out, "found:", fault.found );
    printLine( out, "hint:", fault.hint );
    for( String const& text : fault.reported )
        printLine( out, "reported:", text );
    printLine( out, "condition:", conditionOf( fault ) );
}

/// "3 findings (1 error, 2 notes)"; with a baseline "3 new findings (1 error, 2 notes), 9 known".
String totalsText( std::vector<Finding> const& fresh, std::size_t known, bool hasBaseline ) {
    String text;
    for( Severity const severity : { Severity::error, Severity::warning, Severity::note } ) {
        auto const count = std::count_if( fresh.begin(), fresh.end(),
                                          [ & ]( auto const& f ) { return f.kind->severity == severity; } );
        if( count > 0 )
            text += ( text.empty() ? "" : ", " ) +
                    counted( static_cast<std::size_t>( count ), wordOf( severity ) );
    }
    String const before = hasBaseline ? ", " + std::to_string( known ) + " known" : "";
    if( fresh.empty() )
        return hasBaseline ? "nothing new" + before : "sound";
    return counted( fresh.size(), hasBaseline ? "new finding" : "finding" ) + " (" + text + ")" + before;
}

/// A pipeline is called by its context file.
String subjectIn( Finding const& finding, bool severalFiles ) {
    bool const tells = severalFiles && !finding.contextFile.empty() && finding.contextFile != finding.name;
    return finding.subject() + ( tells ? " in " + finding.contextFile : "" );
}

String headOf( FindingKind const& kind, std::size_t count ) {
    return String( "  " ) + kind.code + ' ' + wordOf( kind.severity ) + ", " + kind.title + ": " +
           std::to_string( count );
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
    for( auto first = findings.begin(); first != findings.end(); ) {
        FindingKind const& kind = *first->kind;
        auto const end =
            std::find_if( first, findings.end(), [ & ]( auto const& f ) { return f.kind != &kind; } );
        auto const count = static_cast<std::size_t>( end - first );
        bool const alike =
            count > 1 && std::all_of( first, end, [ & ]( auto const& f ) { return f.says == first->says; } );
        io.out << headOf( kind, count ) << ( alike ? " (" + escapeForTerminal( first->says ) + ")" : "" )
               << '\n';
        for( auto const& finding : std::span( first, std::min( most, count ) ) )
            io.out << "    "
                   << escapeForTerminal( subjectIn( finding, severalFiles ) +
                                         ( alike ? "" : ": " + finding.says ) )
                   << '\n';
        if( count > most && most > 0 )
            io.out << "    and " << count - most << " more\n";
        areAll &= count <= most;
        first = end;
    }
    if( !areAll )
        io.out << "  --all shows all of them\n";
}

void printSummary( std::vector<Finding> const& findings, std::ostream& out ) {
    for( CodeCount const& count : codeCountsOf( findings ) )
        out << headOf( *count.kind, count.number ) << '\n';
}

} // namespace

void print( Checked const& checked, ReportView const& view, Streams const& io ) {
    io.out << escapeForTerminal( checked.switchConf ) << ": ";
    if( checked.fault ) {
        io.out << "can't be loaded\n";
        printFault( *checked.fault, io.out );
        return;
    }
    std::vector<Finding> fresh = checked.findings;
    auto const known = std::erase_if( fresh, []( Finding const& finding ) { return finding.isKnown; } );
    io.out << totalsText( fresh, known, view.hasBaseline ) << countsText( checked.counts ) << '\n';
    if( view.summary )
        printSummary( fresh, io.out );
    else
        printFindings( fresh, checked.counts.front().number > 1, view, io );
}

void printGone( std::vector<KnownFinding> const& gone, bool all, std::ostream& out ) {
    std::size_t const most = all ? gone.size() : 5;
    if( gone.empty() )
        return;
    out << counted( gone.size(), "finding" ) << " of the baseline " << ( gone.size() == 1 ? "is" : "are" )
        << " gone:\n";
    for( KnownFinding const& known : std::span( gone ).first( std::min( most, gone.size() ) ) )
        out << "  " << escapeForTerminal( known.code + ' ' + known.message ) << '\n';
    if( gone.size() > most )
        out << "  and " << gone.size() - most << " more\n";
}

} // namespace Bfri
