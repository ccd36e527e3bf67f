#include "cli/terminal/Characters.h"
#include "cli/terminal/DiffText.h"
#include "cli/terminal/DiffWords.h"

#include <cctype>

namespace Bfri {

namespace {

constexpr std::size_t mostBytes = 60'000;

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

/// Writes as long as there is room, and keeps some for the end.
class MarkdownText {
  public:
    void add( String const& text ) { text_ += text; }
    /// Whether there is room for a text, besides the line that says what is left out.
    bool hasRoom( String const& text ) const {
        constexpr std::size_t end = 400;
        return text_.size() + text.size() + end <= mostBytes;
    }
    String const& text() const { return text_; }

  private:
    String text_;
};

String markdownOf( DiffLine const& line ) {
    return String( "- " ) + code( String( 1, line.mark ) + ( line.isNoticed ? "!" : "" ) ) + ' ' +
           code( line.label ) + ( line.text.empty() ? "" : ' ' + inMarkdown( line.text ) ) + '\n';
}

/// A folded section; what there is no room for is counted.
void addSection( MarkdownText& markdown, DiffSection const& section, std::size_t& leftOut ) {
    String const head = "\n<details><summary>" + inMarkdown( section.title ) + " (" +
                        std::to_string( section.lines.size() ) + ")</summary>\n\n";
    String const tail = "\n</details>\n";
    if( section.lines.empty() )
        return;
    if( !markdown.hasRoom( head + markdownOf( section.lines.front() ) + tail ) ) {
        leftOut += section.lines.size();
        return;
    }
    markdown.add( head );
    bool isFull = false;
    for( DiffLine const& line : section.lines ) {
        String const text = markdownOf( line );
        isFull = isFull || !markdown.hasRoom( text + tail );
        if( isFull )
            ++leftOut;
        else
            markdown.add( text );
    }
    markdown.add( tail );
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
        std::string_view const kind = notice.kind->code;
        if( kind == "BD107" || kind == "BD108" )
            section.lines.push_back( { '~', true, notice.name, notice.text } );
    }
    return section;
}

String totalsTable( Comparison const& comparison ) {
    RowList const totals = totalsOf( comparison );
    String head = "|";
    String rule = "|";
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
    MarkdownText markdown;
    markdown.add( verdictText( comparison, verdict ) );
    std::vector<DiffSection> sections = sectionsOf( comparison, verdict );
    if( !sections.empty() )
        markdown.add( totalsTable( comparison ) );
    for( String const& line : { renumberedLine( comparison.handles ), shiftedLine( comparison ) } ) {
        if( !line.empty() )
            markdown.add( "\n" + inMarkdown( line ) + "\n" );
    }
    sections.push_back( duplicatesSection( verdict ) );
    sections.push_back( handlesSection( comparison ) );
    sections.push_back( unreadSection( comparison ) );
    std::size_t leftOut = 0;
    for( DiffSection const& section : sections )
        addSection( markdown, section, leftOut );
    if( leftOut > 0 )
        markdown.add( "\nAnd " + std::to_string( leftOut ) + " more: bfri diff lists them all.\n" );
    out << markdown.text();
}

} // namespace Bfri
