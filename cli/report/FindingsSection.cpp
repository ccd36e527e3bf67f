#include "cli/report/Sections.h"

namespace Bfri {

namespace {

constexpr std::size_t mostOpen = 8;

using Group = std::span<Finding const>; // of one kind

void writeFinding( Html& html, Chip const& chip, Finding const& finding ) {
    html.open( "li" ).leaf( "em", finding.what );
    if( auto const link = chip.linkOf( finding ) )
        html.open( "a", { linkTo( *link ) } );
    else
        html.open( "span", { { "class", "a" } } );
    writeName( html, finding.name );
    html.close();
    if( finding.handle )
        writeHandle( html, *finding.handle );
    html.open( "p" ).text( finding.says );
    if( chip.programs.size() > 1 && !finding.contextFile.empty() && finding.contextFile != finding.name )
        html.text( " " ).leaf( "small", finding.contextFile );
    html.close().close();
}

void writeList( Html& html, Chip const& chip, Group findings ) {
    html.open( "ul", { { "class", "fl_" } } );
    for( Finding const& finding : findings )
        writeFinding( html, chip, finding );
    html.close();
}

void writeGroup( Html& html, Chip const& chip, Group findings ) {
    FindingKind const& kind = *findings.front().kind;
    bool const isOpen = findings.size() <= mostOpen || kind.severity != Severity::note;
    Attributes attributes{ { "class", "cd" }, { "id", own( "c{}", &kind - findingKinds().data() ) } };
    if( isOpen )
        attributes.push_back( { "open", "" } );
    html.open( "details", attributes ).open( "summary" );
    writeSeverity( html, kind.severity );
    html.leaf( "code", kind.code ).leaf( "b", kind.title ).leaf( "u", grouped( findings.size() ) );
    html.leaf( "span", kind.meaning ).close();
    html.open( "p", { { "class", "do" } } ).text( kind.matters ).text( " " ).leaf( "b", "What to do:" );
    html.text( " " ).text( kind.advice ).close();
    std::size_t const shown = std::min( mostOpen, findings.size() );
    writeList( html, chip, findings.first( shown ) );
    if( shown < findings.size() ) {
        html.open( "details" ).leaf( "summary", grouped( findings.size() - shown ) + " more" );
        writeList( html, chip, findings.subspan( shown ) );
        html.close();
    }
    html.close();
}

} // namespace

void writeFindings( Html& html, ReportData const& data ) {
    Group left = data.chip.findings;
    if( left.empty() )
        html.leaf( "p", { { "class", "lead2" } }, "Nothing found." );
    while( !left.empty() ) {
        auto const end = std::find_if( left.begin(), left.end(),
                                       [ & ]( auto const& f ) { return f.kind != left.front().kind; } );
        auto const count = static_cast<std::size_t>( end - left.begin() );
        writeGroup( html, data.chip, left.first( count ) );
        left = left.subspan( count );
    }
}

} // namespace Bfri
