#include "cli/terminal/DiffText.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/DiffWords.h"
#include "cli/terminal/Paint.h"
#include "cli/terminal/TextFormat.h"

namespace Bfri {

namespace {

void printSection( std::ostream& out, TerminalStyle const& look, DiffSection const& section ) {
    out << section.title << '\n';
    for( DiffLine const& line : section.lines ) {
        Paint const paint = line.mark == '-' ? Paint::red : line.mark == '+' ? Paint::green : Paint::yellow;
        String const text = line.label + ( line.text.empty() ? "" : "  " + line.text );
        out << painted( look, paint,
                        String( "  " ) + line.mark + ( line.isNoticed ? '!' : ' ' ) + ' ' +
                            escapeForTerminal( text ) )
            << '\n';
    }
    out << '\n';
}

/// The front of a list of lines, and how many more there are.
template<class Elements, class ToText>
void printFew( std::ostream& out, Elements const& elements, ToText text ) {
    constexpr std::size_t most = 3;
    std::size_t count = 0;
    for( auto const& element : elements ) {
        if( count++ < most )
            out << "  " << text( element ) << '\n';
    }
    if( count > most )
        out << "  and " << count - most << " more; --json has all\n";
}

/// Lines of what is folded, and whether there are any.
bool printHandles( std::ostream& out, TerminalStyle const& look, Comparison const& comparison ) {
    Handles const& handles = comparison.handles;
    String const renumbered = renumberedLine( handles );
    if( !renumbered.empty() ) {
        out << renumbered << '\n';
        printFew( out, handles.renumbered,
                  []( Renumbering const& one ) { return escapeForTerminal( lineOf( one ) ); } );
    }
    auto const reused = reusedHandles( comparison );
    if( !reused.empty() ) {
        out << "handles that now belong to another record: " << reused.size() << '\n';
        printFew( out, reused, [ & ]( ReusedHandle const& one ) {
            return painted( look, Paint::red, escapeForTerminal( lineOf( one ) ) );
        } );
    }
    return !renumbered.empty() || !reused.empty();
}

bool printDuplicates( std::ostream& out, TerminalStyle const& look, Verdict const& verdict ) {
    bool isAny = false;
    for( Notice const& notice : verdict.notices ) {
        std::string_view const code = notice.kind->code;
        if( code != "BD107" && code != "BD108" )
            continue;
        isAny = true;
        String const handle =
            code == "BD108" ? hexText( std::get<Hex>( notice.to.is ).value ) + ' ' : String();
        out << painted( look, Paint::red,
                        "! " + handle +
                            escapeForTerminal( notice.what + ' ' + notice.name +
                                               ( notice.table ? " of " + *notice.table : "" ) + ' ' +
                                               notice.kind->counted + ": " + notice.text ) )
            << '\n';
    }
    return isAny;
}

void printFolded( std::ostream& out, TerminalStyle const& look, Comparison const& comparison,
                  Verdict const& verdict, bool allUnread ) {
    bool isAny = printHandles( out, look, comparison );
    isAny |= printDuplicates( out, look, verdict );
    if( String const line = shiftedLine( comparison ); !line.empty() ) {
        out << line << '\n';
        isAny = true;
    }
    Unread const unread = unreadValues( comparison );
    if( unread.differs() && !allUnread ) {
        out << "not read by the library: " << unreadCounts( unread ) << " ("
            << escapeForTerminal( unreadNames( unread ) ) << "); --unread lists all\n";
        isAny = true;
    }
    if( isAny )
        out << '\n';
    if( unread.differs() && allUnread )
        printSection( out, look, unreadSection( comparison ) );
}

} // namespace

void printDiff( std::ostream& out, TerminalStyle const& look, Comparison const& comparison,
                Verdict const& verdict, bool allUnread ) {
    if( String const same = sameness( comparison ); !same.empty() ) {
        Unread const& unread = comparison.unread;
        out << same;
        if( unread.differs() )
            out << ( allUnread ? ":" : ": " + escapeForTerminal( unreadNames( unread ) ) );
        out << '\n';
        if( unread.differs() && allUnread )
            printSection( out, look, unreadSection( comparison ) );
        return;
    }
    for( DiffSection const& section : sectionsOf( comparison, verdict ) )
        printSection( out, look, section );
    printFolded( out, look, comparison, verdict, allUnread );
    printColumns( out, totalsOf( comparison ), look );
    out << '\n'
        << painted( look, verdict.byName ? Paint::green : Paint::red, byNameSentence( verdict ) ) << '\n'
        << painted( look, verdict.byHandle ? Paint::green : Paint::red, byHandleSentence( verdict ) ) << '\n';
}

} // namespace Bfri
