#include "cli/report/Sections.h"

namespace Bfri {

namespace {

struct PageContext {
    Html& html;
    ReportData const& data;
    ChipTable const& table;
    ChipResource const* place;
};

void writeHeading( Html& html, char const* title, String const& detail = {} ) {
    html.open( "h4" ).text( title );
    if( !detail.empty() )
        html.text( " " ).leaf( "small", detail );
    html.close();
}

void writeKicker( PageContext const& page ) {
    ChipProgram const& program = page.data.chip.programs[ page.table.program ];
    page.html.open( "p" );
    if( page.place ) {
        writeSwatch( page.html, page.place->type );
        page.html.text( styleOf( page.place->type ).word.view() ).text( ", " );
        page.html.text( directionWord( page.place->ingress ).view() );
    } else
        page.html.text( "not placed" );
    page.html.text( program.pipes.size() == 1 ? ", pipe" : ", pipes" );
    for( U32 const pipe : program.pipes )
        page.html.text( " " + std::to_string( pipe ) );
    page.html.close();
}

/// Entries by stage, as bars; where it was before has a dashed edge.
void writePageStages( PageContext const& page ) {
    std::uint64_t most = 1;
    for( StageEntries const& one : page.place->stages )
        most = std::max( most, one.drawn );
    Chip const& chip = page.data.chip;
    page.html.open( "ol", { { "class", own( "z{}", styleOf( page.place->type ).css ) } } );
    for( StageEntries const& one : page.place->stages ) {
        page.html.open( "li", { { "style", own( "--s:{};--h:{}%", chip.columnOf( one.stage ) + 1,
                                                std::max<std::uint64_t>( 8, 100 * one.drawn / most ) ) } } );
        page.html.text( std::to_string( one.stage ) ).leaf( "u", rounded( one.drawn ) ).close();
    }
    for( StageEntries const& one : page.place->old ? page.place->old->stages : std::vector<StageEntries>() ) {
        if( page.place->isIn( one.stage ) )
            continue;
        page.html.open(
            "li", { { "class", "was" }, { "style", own( "--s:{}", chip.columnOf( one.stage ) + 1 ) } } );
        page.html.text( std::to_string( one.stage ) ).leaf( "u", "" ).close();
    }
    page.html.close();
}

/// A field of the record, with its old value struck out.
void writeField( PageContext const& page, char const* label, U32 BfTableInfo::*field, bool isShown = true,
                 char const* unit = "" ) {
    U32 const now = page.table.record->*field;
    if( !isShown )
        return;
    page.html.leaf( "dt", label ).open( "dd" ).text( grouped( now ) + unit );
    if( page.table.old && page.table.old->record->*field != now )
        page.html.text( " " ).leaf( "del", grouped( page.table.old->record->*field ) );
    page.html.close();
}

void writeText( PageContext const& page, char const* label, String const& text ) {
    if( !text.empty() )
        page.html.leaf( "dt", label ).leaf( "dd", text );
}

void writeHitBitField( PageContext const& page ) {
    BfTableInfo const& record = *page.table.record;
    page.html.leaf( "dt", "Hit bits" ).open( "dd" );
    page.html.leaf( "a", { { "href", "#hitbits" } },
                    grouped( record.hitBitSmashOffset ) + "–" + grouped( record.hitBitSmashLast ) );
    page.html.text( " " )
        .leaf( "small", counted( record.hitBitSmashLast - record.hitBitSmashOffset + 1, "slot" ) )
        .close();
}

void writeRecord( PageContext const& page ) {
    BfTableInfo const& record = *page.table.record;
    page.html.open( "dl" ).leaf( "dt", "Handle" ).open( "dd" );
    writeHandle( page.html, record.handle );
    page.html.text( " " ).leaf( "small", std::to_string( record.handle ) ).close();
    writeField( page, "Entries", &BfTableInfo::size );
    writeField( page, "Total entries", &BfTableInfo::totalEntries, record.totalEntries != record.size );
    writeField( page, "Partitions", &BfTableInfo::maxPartitions, record.maxPartitions > 0 );
    writeField( page, "Idle time", &BfTableInfo::idleTimePrecision, record.hitBitSupported,
                record.idleTimePrecision == 1 ? " bit" : " bits" );
    if( record.hitBitSupported )
        writeHitBitField( page );
    writeField( page, "Action data", &BfTableInfo::maxAdtEntries, record.maxAdtEntries > 0 );
    writeField( page, "Selector", &BfTableInfo::maxSelEntries, record.maxSelEntries > 0 );
    writeText( page, "Action profile", record.hasActionProfile ? "yes" : "" );
    writeText( page, "Logical pipe", record.logicalPipe );
    page.html.close();
}

void writeAttachedOnes( PageContext const& page ) {
    if( page.table.attached.empty() && page.table.unknown.empty() )
        return;
    writeHeading( page.html, "Attached", grouped( page.table.attached.size() + page.table.unknown.size() ) );
    page.html.open( "ul", { { "class", "at_" } } );
    for( std::size_t const number : page.table.attached ) {
        ChipResource const& resource = page.data.chip.resources[ number ];
        page.html.open( "li" );
        writeSwatch( page.html, resource.type );
        page.html.leaf( "a", { linkTo( resource.link() ) }, SplitName( resource.name() ).last );
        writeHandle( page.html, resource.handle );
        String const facts = factsText( page.data.chip, resource );
        page.html.leaf( "u", grouped( resource.size ) )
            .leaf( "s", ( facts.empty() ? String( styleOf( resource.type ).word.view() ) : facts ) +
                            ( resource.owners.size() > 1 ? ", shared" : "" ) + "; " + placeText( resource ) )
            .close();
    }
    for( U32 const handle : page.table.unknown ) {
        page.html.open( "li" ).leaf( "i", "" ).leaf( "a", "not in the model" );
        writeHandle( page.html, handle );
        page.html.close();
    }
    page.html.close();
}

void writeActions( PageContext const& page ) {
    if( page.table.actions.empty() )
        return;
    writeHeading( page.html, "Actions", grouped( page.table.actions.size() ) );
    page.html.open( "ul", { { "class", "ac" } } );
    for( BfActionInfo const* const action : page.table.actions )
        page.html.open( "li" ).text( action->name + " " ).leaf( "u", handleText( action->handle ) ).close();
    page.html.close();
}

void writePageFindings( PageContext const& page ) {
    if( page.table.findings.empty() )
        return;
    writeHeading( page.html, "Findings" );
    page.html.open( "ul", { { "class", "fi" } } );
    for( std::size_t const number : page.table.findings ) {
        FindingKind const& kind = *page.data.chip.findings[ number ].kind;
        page.html.open( "li" );
        writeSeverity( page.html, kind.severity );
        page.html.leaf( "a", { { "href", own( "#c{}", &kind - findingKinds().data() ) } },
                        String( kind.code ) + ' ' + kind.title );
        page.html.close();
    }
    page.html.close();
}

void writePageMarks( PageContext const& page ) {
    if( page.table.marks.none() )
        return;
    page.html.open( "p", { { "class", "chg" } } );
    writeMarks( page.html, page.table.marks );
    String words;
    for( std::size_t mark = 0; mark < markCount; ++mark ) {
        if( page.table.marks.test( mark ) )
            words +=
                ( words.empty() ? "" : ", " ) + String( styleOf( static_cast<Mark>( mark ) ).word.view() );
    }
    page.html.text( words ).close();
}

void writePage( PageContext const& page ) {
    SplitName const name( page.table.record->name );
    page.html.open( "section", { { "class", "pg" }, { "id", own( "t{}", page.table.number ) } } );
    writeKicker( page );
    page.html.open( "h3" ).leaf( "s", name.path ).text( name.last ).close();
    writePageMarks( page );
    if( page.place && !page.place->stages.empty() )
        writePageStages( page );
    writeRecord( page );
    writeAttachedOnes( page );
    writeActions( page );
    writePageFindings( page );
    page.html.leaf( "a", { { "class", "ft" }, { "href", own( "#l{}", page.table.number ) } }, "In the list" )
        .close();
}

} // namespace

void writeTablePages( Html& html, ReportData const& data ) {
    html.open( "div", { { "id", "pages" },
                        { "style", own( "--n:{}", std::max<std::size_t>( 1, data.chip.stages.size() ) ) } } );
    html.leaf( "a", { { "class", "cl" }, { "href", "#_" }, labelled( "Close" ) }, "✕" );
    for( ChipTable const& table : data.chip.tables )
        writePage(
            { html, data, table, table.resource ? &data.chip.resources[ *table.resource ] : nullptr } );
    html.close();
}

} // namespace Bfri
