#include "report/Parts.h"

namespace Bfri {

namespace {

struct PageContext {
    Html& html;
    ReportData const& data;
    ChipTable const& table;
    ChipResource const* place;
};

/// Entries by stage, as bars; where it was before has a dashed edge.
void writePageStages( PageContext const& page ) {
    std::uint64_t most = 1;
    for( StageEntries const& one : page.place->stages )
        most = std::max( most, one.drawn );
    Chip const& chip = page.data.chip;
    page.html.add( "<ol class=z{}>", styleOf( page.place->type ).css );
    for( StageEntries const& one : page.place->stages )
        page.html.add( "<li style=--s:{};--h:{}%>{}<u>{}</u>", chip.columnOf( one.stage ) + 1,
                       std::max<std::uint64_t>( 8, 100 * one.drawn / most ), one.stage,
                       rounded( one.drawn ) );
    for( StageEntries const& one : page.place->old ? page.place->old->stages : std::vector<StageEntries>() ) {
        if( !page.place->isIn( one.stage ) )
            page.html.add( "<li class=was style=--s:{}>{}<u></u>", chip.columnOf( one.stage ) + 1,
                           one.stage );
    }
    page.html.add( "</ol>" );
}

/// A field of the record, with its old value struck out.
void writeField( PageContext const& page, Literal label, U32 BfTableInfo::*field, bool isShown = true,
                 Literal unit = "" ) {
    U32 const now = page.table.record->*field, was = page.table.old ? page.table.old->record->*field : now;
    if( isShown )
        page.html.add( "<dt>{}<dd>{}{}{}", label, grouped( now ), unit,
                       was == now ? Html() : markup( " <del>{}</del>", grouped( was ) ) );
}

void writeRecord( PageContext const& page ) {
    BfTableInfo const& record = *page.table.record;
    page.html.add( "<dl><dt>Handle<dd>{} <small>{}</small>", codeOf( record.handle ), record.handle );
    writeField( page, "Entries", &BfTableInfo::size );
    writeField( page, "Total entries", &BfTableInfo::totalEntries, record.totalEntries != record.size );
    writeField( page, "Partitions", &BfTableInfo::maxPartitions, record.maxPartitions > 0 );
    writeField( page, "Idle time", &BfTableInfo::idleTimePrecision, record.hitBitSupported,
                record.idleTimePrecision == 1 ? Literal( " bit" ) : Literal( " bits" ) );
    if( record.hitBitSupported )
        page.html.add( "<dt>Hit bits<dd><a href=#hitbits>{}–{}</a> <small>{}</small>",
                       grouped( record.hitBitSmashOffset ), grouped( record.hitBitSmashLast ),
                       counted( record.hitBitSmashLast - record.hitBitSmashOffset + 1, "slot" ) );
    writeField( page, "Action data", &BfTableInfo::maxAdtEntries, record.maxAdtEntries > 0 );
    writeField( page, "Selector", &BfTableInfo::maxSelEntries, record.maxSelEntries > 0 );
    if( record.hasActionProfile )
        page.html.add( "<dt>Action profile<dd>yes" );
    if( !record.logicalPipe.empty() )
        page.html.add( "<dt>Logical pipe<dd>{}", record.logicalPipe );
    page.html.add( "</dl>" );
}

void writeAttachedOnes( PageContext const& page ) {
    auto const& attached = page.table.attached;
    auto const& unknown = page.table.unknown;
    if( attached.empty() && unknown.empty() )
        return;
    page.html.add( "<h4>Attached <small>{}</small></h4><ul class=at_>",
                   grouped( attached.size() + unknown.size() ) );
    for( std::size_t const number : attached ) {
        ChipResource const& resource = page.data.chip.resources[ number ];
        String const facts = factsText( page.data.chip, resource );
        page.html.add( "<li>{}<a href={}>{}</a>{}<u>{}</u><s>{}{}; {}</s>", swatchOf( resource.type ),
                       hrefOf( resource.link() ), SplitName( resource.name() ).last,
                       codeOf( resource.handle ), grouped( resource.size ),
                       facts.empty() ? std::string_view( styleOf( resource.type ).word ) : facts,
                       when( resource.owners.size() > 1, ", shared" ), placeText( resource ) );
    }
    for( U32 const handle : unknown )
        page.html.add( "<li><i></i><a>not in the model</a>{}", codeOf( handle ) );
    page.html.add( "</ul>" );
}

void writeActions( PageContext const& page ) {
    if( page.table.actions.empty() )
        return;
    page.html.add( "<h4>Actions <small>{}</small></h4><ul class=ac>", grouped( page.table.actions.size() ) );
    for( BfActionInfo const* const action : page.table.actions )
        page.html.add( "<li>{} <u>{}</u>", action->name, hexText( action->handle ) );
    page.html.add( "</ul>" );
}

void writePageFindings( PageContext const& page ) {
    if( page.table.findings.empty() )
        return;
    page.html.add( "<h4>Findings</h4><ul class=fi>" );
    for( std::size_t const number : page.table.findings ) {
        FindingKind const& kind = *page.data.chip.findings[ number ].kind;
        page.html.add( "<li>{}<a href=#c{}>{} {}</a>", severityMark( kind.severity ),
                       &kind - findingKinds().data(), kind.code, kind.title );
    }
    page.html.add( "</ul>" );
}

void writePage( PageContext const& page ) {
    ChipProgram const& program = page.data.chip.programs[ page.table.program ];
    SplitName const name( page.table.name() );
    page.html.add(
        "<section class=pg id=t{}><p>{}, {} {}</p><h3><s>{}</s>{}</h3>", page.table.number,
        page.place ? markup( "{}, {}", typeWord( page.place->type ), directionWord( page.place->ingress ) )
                   : markup( "not placed" ),
        program.pipes.size() == 1 ? "pipe" : "pipes", fmt::format( "{}", fmt::join( program.pipes, " " ) ),
        name.path, name.last );
    auto const marks = marksIn( page.table.marks );
    if( !marks.empty() ) {
        page.html.add( "<p class=chg>{}", marksOf( page.table.marks ) );
        for( Mark const mark : marks )
            page.html.add( "{}{}", when( mark != marks.front(), ", " ), wordOf( mark ) );
        page.html.add( "</p>" );
    }
    if( page.place && !page.place->stages.empty() )
        writePageStages( page );
    writeRecord( page );
    writeAttachedOnes( page );
    writeActions( page );
    writePageFindings( page );
    page.html.add( "<a class=ft href=#l{}>In the list</a></section>", page.table.number );
}

} // namespace

void writeTablePages( Html& html, ReportData const& data ) {
    html.add( R"(<div id=pages style=--n:{}><a class=cl href=#_ aria-label=Close>✕</a>)",
              std::max<std::size_t>( 1, data.chip.stages.size() ) );
    for( ChipTable const& table : data.chip.tables )
        writePage( { html, data, table, data.chip.placeOf( table ) } );
    html.add( "</div>" );
}

} // namespace Bfri
