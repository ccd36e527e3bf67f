#include "cli/terminal/DiffText.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/DiffWords.h"
#include "cli/terminal/TextFormat.h"

#include <cctype>
#include <fmt/ostream.h>
#include <sstream>

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

void printHandles( std::ostream& out, TerminalStyle const& look, Comparison const& comparison ) {
    Handles const& handles = comparison.handles;
    auto const reused = reusedHandles( comparison );
    if( String const renumbered = renumberedLine( handles ); !renumbered.empty() ) {
        out << renumbered << '\n';
        printFew( out, handles.renumbered,
                  []( Renumbering const& one ) { return escapeForTerminal( lineOf( one ) ); } );
    }
    if( reused.empty() )
        return;
    out << "handles that now belong to another record: " << reused.size() << '\n';
    printFew( out, reused, [ & ]( ReusedHandle const& one ) {
        return painted( look, Paint::red, escapeForTerminal( lineOf( one ) ) );
    } );
}

void printDuplicates( std::ostream& out, TerminalStyle const& look, Verdict const& verdict ) {
    for( Notice const& notice : verdict.notices ) {
        if( !isDuplicate( notice ) )
            continue;
        Hex const* const handle = std::get_if<Hex>( &notice.to.is );
        out << painted(
                   look, Paint::red,
                   fmt::format( "! {}{}", handle ? hexText( handle->value ) + ' ' : "",
                                escapeForTerminal( fmt::format( "{} {}{} {}: {}", notice.what, notice.name,
                                                                notice.table ? " of " + *notice.table : "",
                                                                notice.kind->counted, notice.text ) ) ) )
            << '\n';
    }
}

/// What has no lines of its own in the sections.
String foldedText( TerminalStyle const& look, Comparison const& comparison, Verdict const& verdict,
                   bool allUnread ) {
    std::ostringstream out;
    printHandles( out, look, comparison );
    printDuplicates( out, look, verdict );
    if( String const line = shiftedLine( comparison ); !line.empty() )
        out << line << '\n';
    if( Unread const unread = unreadValues( comparison ); unread.differs() && !allUnread )
        fmt::print( out, "not read by the library: {} ({}); --unread lists all\n", unreadCounts( unread ),
                    escapeForTerminal( unreadNames( unread ) ) );
    return out.str();
}

} // namespace

void printDiff( std::ostream& out, TerminalStyle const& look, Comparison const& comparison,
                Verdict const& verdict, bool allUnread ) {
    Unread const unread = unreadValues( comparison );
    if( String const same = sameness( comparison ); !same.empty() ) {
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
    String const folded = foldedText( look, comparison, verdict, allUnread );
    out << folded << ( folded.empty() ? "" : "\n" );
    if( unread.differs() && allUnread )
        printSection( out, look, unreadSection( comparison ) );
    printColumns( out, totalsOf( comparison ), look );
    out << '\n'
        << painted( look, verdict.byName ? Paint::green : Paint::red, byNameSentence( verdict ) ) << '\n'
        << painted( look, verdict.byHandle ? Paint::green : Paint::red, byHandleSentence( verdict ) ) << '\n';
}

// For a pull request.

namespace {

/// A text that is nothing but text: what could be markup, a link or a mention is an entity, which never is.
String inMarkdown( String const& text ) {
    String result;
    for( char const c : escapeForTerminal( text ) ) {
        bool const isPlain = std::isalnum( static_cast<unsigned char>( c ) ) || ( c & 0x80 ) ||
                             std::string_view( " ,;()-" ).find( c ) != std::string_view::npos;
        bool const isDotOfName = c == '.' && !result.empty() && result.back() != 'w' && result.back() != 'W';
        if( isPlain || isDotOfName )
            result += c;
        else
            result += "&#" + std::to_string( static_cast<int>( c ) ) + ';';
    }
    return result;
}

String code( String const& text ) { return "<code>" + inMarkdown( text ) + "</code>"; }

/// Whether there is room for a text, besides the line that says what is left out.
bool hasRoom( String const& markdown, String const& text ) {
    constexpr std::size_t most = 60'000, end = 400;
    return markdown.size() + text.size() + end <= most;
}

String markdownOf( DiffLine const& line ) {
    return String( "- " ) + code( String( 1, line.mark ) + ( line.isNoticed ? "!" : "" ) ) + ' ' +
           code( line.label ) + ( line.text.empty() ? "" : ' ' + inMarkdown( line.text ) ) + '\n';
}

/// A folded section; what there is no room for is counted.
void addSection( String& markdown, DiffSection const& section, std::size_t& leftOut ) {
    String const head = "\n<details><summary>" + inMarkdown( section.title ) + " (" +
                        std::to_string( section.lines.size() ) + ")</summary>\n\n";
    String const tail = "\n</details>\n";
    std::size_t written = 0;
    for( DiffLine const& line : section.lines ) {
        String const text = ( written == 0 ? head : "" ) + markdownOf( line );
        if( !hasRoom( markdown, text + tail ) )
            break;
        markdown += text;
        ++written;
    }
    leftOut += section.lines.size() - written;
    if( written > 0 )
        markdown += tail;
}

DiffSection handlesSection( Comparison const& comparison ) {
    DiffSection section{ "handles", {} };
    for( ReusedHandle const& one : reusedHandles( comparison ) )
        section.lines.push_back( { '~', false, Bfri::lineOf( one ), "" } );
    for( Renumbering const& one : comparison.handles.renumbered )
        section.lines.push_back( { '~', false, Bfri::lineOf( one ), "" } );
    return section;
}

DiffSection duplicatesSection( Verdict const& verdict ) {
    DiffSection section{ "duplicates", {} };
    for( Notice const& notice : verdict.notices ) {
        if( isDuplicate( notice ) )
            section.lines.push_back( { '~', true, notice.name, notice.text } );
    }
    return section;
}

String totalsTable( Comparison const& comparison ) {
    RowList const totals = totalsOf( comparison );
    String head = "|", rule = "|";
    for( Field const& field : totals.header ) {
        head += ' ' + String( field.name ) + " |";
        rule += " --- |";
    }
    String text = '\n' + head + '\n' + rule + '\n';
    for( std::size_t i = 0; i < totals.rows.size(); ++i ) {
        if( !comparison.kinds[ i ].differs() )
            continue;
        text += '|';
        for( Field const& field : totals.rows[ i ] ) {
            U32 const* const number = std::get_if<U32>( &field.value.is );
            String const* const word = std::get_if<String>( &field.value.is );
            text += ' ' + ( number ? std::to_string( *number ) : word ? *word : String() ) + " |";
        }
        text += '\n';
    }
    return text;
}

String verdictText( Comparison const& comparison, Verdict const& verdict ) {
    if( String const same = sameness( comparison ); !same.empty() )
        return "**" + inMarkdown( same ) + "**\n";
    String const word = !verdict.byName ? "Breaking" : !verdict.byHandle ? "Handles change" : "Compatible";
    return "**" + word + "**: " + byNameSentence( verdict ) + "; " + byHandleSentence( verdict ) + ".\n";
}

} // namespace

void printMarkdown( std::ostream& out, Comparison const& comparison, Verdict const& verdict ) {
    String markdown = verdictText( comparison, verdict );
    std::vector<DiffSection> sections = sectionsOf( comparison, verdict );
    if( !sections.empty() )
        markdown += totalsTable( comparison );
    for( String const& line : { renumberedLine( comparison.handles ), shiftedLine( comparison ) } ) {
        if( !line.empty() )
            markdown += "\n" + inMarkdown( line ) + "\n";
    }
    sections.push_back( duplicatesSection( verdict ) );
    sections.push_back( handlesSection( comparison ) );
    sections.push_back( unreadSection( comparison ) );
    std::size_t leftOut = 0;
    for( DiffSection const& section : sections )
        addSection( markdown, section, leftOut );
    if( leftOut > 0 )
        markdown += "\nAnd " + std::to_string( leftOut ) + " more: bfri diff lists them all.\n";
    out << markdown;
}

} // namespace Bfri
