// Findings, PHV bytes by field, the hit-bit space, and what else the model has.

#include "report/Parts.h"

#include "inspect/check/Checked.h"
#include "inspect/model/Records.h"

namespace Bfri {

namespace {

// Findings.

void writeFindingsOfKind( Html& html, Chip const& chip, std::span<Finding const> findings ) {
    constexpr std::size_t mostOpen = 8;
    FindingKind const& kind = *findings.front().kind;
    bool const isOpen = findings.size() <= mostOpen || kind.severity != Severity::note;
    html.add(
        "<details class=cd id=c{}{}><summary>{}<code>{}</code><b>{}</b><u>{}</u><span>{}</span></summary>"
        "<p class=do>{} <b>What to do:</b> {}</p>",
        &kind - findingKinds().data(), when( isOpen, " open" ), severityMark( kind.severity ), kind.code,
        kind.title, grouped( findings.size() ), kind.meaning, kind.matters, kind.advice );
    writeFolded( html, findings, mostOpen, [ & ]( std::span<Finding const> some ) {
        html.add( "<ul class=fl_>" );
        for( Finding const& finding : some ) {
            bool const hasFile = chip.programs.size() > 1 && !finding.contextFile.empty() &&
                                 finding.contextFile != finding.name;
            html.add( "<li><em>{}</em>{}{}<p>{}{}</p>", finding.what,
                      linkedName( chip.linkOf( finding ), finding.name ),
                      finding.handle ? codeOf( *finding.handle ) : Html(), finding.says,
                      hasFile ? markup( " <small>{}</small>", finding.contextFile ) : Html() );
        }
        html.add( "</ul>" );
    } );
    html.add( "</details>" );
}

// PHV bytes.

struct FieldBytes {
    U32 ingress = 0, egress = 0;
};

FieldBytes bytesOf( ChipField const& field ) {
    return { field.ingress.value_or( 0 ), field.egress.value_or( 0 ) };
}

/// A field of either chip.
struct FieldRow {
    String const* name;
    FieldBytes now, was;
};

std::vector<FieldRow> fieldRowsOf( ReportData const& data ) {
    std::vector<FieldRow> rows;
    std::unordered_map<std::string_view, std::size_t> places;
    for( ChipField const& field : data.chip.fields ) {
        places.emplace( *field.name, rows.size() );
        rows.push_back( { field.name, bytesOf( field ), data.isDiff() ? FieldBytes() : bytesOf( field ) } );
    }
    if( !data.isDiff() )
        return rows;
    for( ChipField const& field : data.chip.old->fields ) {
        auto const [ place, isNew ] = places.emplace( *field.name, rows.size() );
        if( isNew )
            rows.push_back( { field.name, {}, {} } );
        rows[ place->second ].was = bytesOf( field );
    }
    return rows;
}

Html bytesCell( char css, U32 now, U32 was, U32 most ) {
    auto const width = [ & ]( U32 bytes ) { return 100.0 * bytes / most; };
    return markup( "<td class={}><span>{}{}<u>{}{}</u></span>", css,
                   now > 0 ? markup( "<i style=width:{:.1f}%></i>", width( now ) ) : Html(),
                   now != was ? markup( "<em style=width:{:.1f}%></em>", width( was ) ) : Html(),
                   now || was ? std::to_string( now ) : "·", delta( now, was ) );
}

/// "1,234 bytes", and the number of fields.
std::pair<String, std::size_t> sumsOf( Chip const& chip, std::optional<U32> ChipField::*direction ) {
    std::uint64_t bytes = 0;
    std::size_t fields = 0;
    for( ChipField const& field : chip.fields ) {
        bytes += ( field.*direction ).value_or( 0 );
        fields += ( field.*direction ).has_value();
    }
    return { counted( bytes, "byte" ), fields };
}

// Hit bits.

using Tables = std::vector<ChipTable const*>;

U32 slotsOf( ChipTable const& table ) {
    return table.record->hitBitSmashLast - table.record->hitBitSmashOffset + 1;
}

Tables tablesWithHitBits( Chip const& chip ) {
    Tables tables;
    for( ChipTable const& table : chip.tables ) {
        if( table.record->hitBitSupported )
            tables.push_back( &table );
    }
    std::stable_sort( tables.begin(), tables.end(), []( auto const* a, auto const* b ) {
        return a->record->hitBitSmashOffset < b->record->hitBitSmashOffset;
    } );
    return tables;
}

OwnText placeOf( double first, double count, double all ) {
    return own( "left:{:.3f}%;width:{:.3f}%", 100 * first / all, 100 * count / all );
}

/// Which programs have which part of the space.
void writeBrackets( Html& html, Chip const& chip, Tables const& tables, U32 all ) {
    html.add( "<div class=hbw>" );
    for( ChipProgram const& program : chip.programs ) {
        U32 first = all, end = 0;
        std::size_t count = 0;
        for( ChipTable const* const table : tables ) {
            if( &chip.programs[ table->program ] != &program )
                continue;
            first = std::min( first, table->record->hitBitSmashOffset );
            end = std::max( end, table->record->hitBitSmashLast + 1 );
            ++count;
        }
        if( count > 0 )
            html.add( "<span style={}>{}<small>{}, {}</small></span>", placeOf( first, end - first, all ),
                      program.name, counted( count, "table" ), grouped( end - first ) );
    }
    html.add( "</div>" );
}

/// Ranges too small for a link share one shape per kind; the list of ranges has all.
void writeSlots( Html& html, Chip const& chip, Tables const& tables, U32 all ) {
    constexpr std::size_t many = 60;
    std::vector<std::pair<Literal, OwnText>> shapes; // by class
    Html links;
    html.add( R"(<div class=hbs><svg viewBox="0 0 1000 1" preserveAspectRatio=none aria-hidden=true>)" );
    for( ChipTable const* const table : tables ) {
        BfTableInfo const& record = *table->record;
        ChipResource const* const place = chip.placeOf( *table );
        Literal const css = place ? styleOf( place->type ).css : Literal( "ot" );
        U32 const slots = slotsOf( *table );
        if( tables.size() <= many || slots >= all * 0.012 ) {
            links.add( R"(<a class="hb {}" href={}{} style={} title="{}: {}–{}, {}, {}">{}</a>)", css,
                       hrefOf( table->link() ), own( " data-t={}", table->number ),
                       placeOf( record.hitBitSmashOffset, slots, all ), record.name,
                       grouped( record.hitBitSmashOffset ), grouped( record.hitBitSmashLast ),
                       counted( slots, "slot" ), counted( record.idleTimePrecision, "bit" ),
                       SplitName( record.name ).last );
            continue;
        }
        auto shape = std::find_if( shapes.begin(), shapes.end(),
                                   [ & ]( auto const& one ) { return one.first == css; } );
        if( shape == shapes.end() )
            shape = shapes.insert( shape, { css, OwnText() } );
        double const width = std::max( 0.3, 1000.0 * slots / all - 0.1 );
        shape->second +=
            own( "M{0:.2f} 0h{1:.2f}v1h-{1:.2f}z", 1000.0 * record.hitBitSmashOffset / all, width );
    }
    for( auto const& [ css, path ] : shapes )
        html.add( R"(<path class=p{} d="{}" />)", css, path );
    html.add( "</svg>{}</div>", links );
}

void writeRanges( Html& html, Tables const& tables, U32 all ) {
    html.add( "<div class=hax>" );
    for( U32 quarter = 0; quarter <= 4; ++quarter )
        html.add( "<span style=left:{}%>{}</span>", 25 * quarter,
                  grouped( std::uint64_t( all ) * quarter / 4 ) );
    html.add( "</div><details class=plain id=hits><summary>The ranges, in order</summary>" );
    static constexpr ListColumn columns[] = { { "Name" },
                                              { "From", 100, " class=n" },
                                              { "To", 100, " class=n" },
                                              { "Slots", 100, " class=n" },
                                              { "Bits", 100, " class=n" } };
    openTable( html, columns );
    for( ChipTable const* const table : tables )
        html.add( "<tr><td>{}<td class=n>{}<td class=n>{}<td class=n>{}<td class=n>{}",
                  linkedName( table->link(), table->name() ), grouped( table->record->hitBitSmashOffset ),
                  grouped( table->record->hitBitSmashLast ), grouped( slotsOf( *table ) ),
                  grouped( table->record->idleTimePrecision ) );
    html.add( "</table></div></details>" );
}

} // namespace

void writeFindings( Html& html, ReportData const& data ) {
    std::span<Finding const> left( data.chip.findings );
    if( left.empty() )
        html.add( "<p class=lead2>Nothing found.</p>" );
    for( CodeCount const& code : codeCountsOf( data.chip.findings ) ) {
        writeFindingsOfKind( html, data.chip, left.first( code.number ) );
        left = left.subspan( code.number );
    }
}

void writeFields( Html& html, ReportData const& data ) {
    auto const ingress = sumsOf( data.chip, &ChipField::ingress ),
               egress = sumsOf( data.chip, &ChipField::egress );
    html.add( "<p class=lead2>Ingress takes <b>{}</b> for {}, egress <b>{}</b> for {}.{}</p>", ingress.first,
              counted( ingress.second, "field" ), egress.first, grouped( egress.second ),
              when( data.chip.programs.size() > 1,
                    " The fields of all programs are taken together; for a field that several have, the "
                    "largest number of bytes counts." ) );
    auto const rows = fieldRowsOf( data );
    U32 most = 1;
    for( FieldRow const& row : rows )
        most = std::max( { most, row.now.ingress, row.now.egress, row.was.ingress, row.was.egress } );
    auto const write = [ & ]( std::span<FieldRow const> some ) {
        html.add( "<table class=phv><colgroup><col><col class=m><col></colgroup><thead><tr>"
                  "<th class=i scope=col>Ingress bytes<th scope=col>Field<th class=e scope=col>Egress bytes"
                  "<tbody>" );
        for( FieldRow const& row : some )
            html.add( "<tr id=v{}>{}<th scope=row>{}{}", &row - rows.data(),
                      bytesCell( 'i', row.now.ingress, row.was.ingress, most ), *row.name,
                      bytesCell( 'e', row.now.egress, row.was.egress, most ) );
        html.add( "</table>" );
    };
    writeFolded( html, std::span( rows ), 48, write, "more field" );
}

void writeHitBits( Html& html, ReportData const& data ) {
    U32 const all = data.chip.parser().hitBitSmashEntries();
    auto const tables = tablesWithHitBits( data.chip );
    if( tables.empty() || all == 0 ) {
        html.add( "<p class=lead2>No table has hit bits.</p>" );
        return;
    }
    ChipTable const& largest =
        **std::max_element( tables.begin(), tables.end(),
                            []( auto const* a, auto const* b ) { return slotsOf( *a ) < slotsOf( *b ); } );
    html.add( "<p class=lead2>{} with idle time {} <b>{}</b>; <b>{}</b> has {} of them.",
              counted( tables.size(), "table" ), tables.size() == 1 ? "has" : "share", counted( all, "slot" ),
              SplitName( largest.name() ).last, percent( slotsOf( largest ), all ) );
    if( U32 const was = ( data.isDiff() ? *data.chip.old : data.chip ).parser().hitBitSmashEntries();
        was != all )
        html.add( " It was {}.", grouped( was ) );
    html.add( "</p>" );
    writeBrackets( html, data.chip, tables, all );
    writeSlots( html, data.chip, tables, all );
    writeRanges( html, tables, all );
}

/// Hashes, headers, learn quantas.
void writeOthers( Html& html, ReportData const& data ) {
    auto const& parser = data.chip.parser();
    Html hashes, headers, quantas;
    for( auto const* const entry : sortedByKey( parser.bfDynamicHashInfo() ) )
        hashes.add( "<p class=hc data-s=hash><b>{}</b>{}<span>{} <small>field list {}</small></span></p>",
                    nameParts( entry->first ), codeOf( entry->second.tableHdl ),
                    fmt::format( "{}", fmt::join( entry->second.fieldNames, ", " ) ),
                    hexText( entry->second.fieldListHdl ) );
    for( auto const* const entry : sortedByKey( parser.bfHeaders() ) )
        headers.add( "<li data-s=header>{}<u>{}</u>", entry->first, counted( entry->second.size(), "byte" ) );
    for( BfLearnQuantaInfo const& quanta : parser.bfLearnQuantaInfos() )
        quantas.add( "<li data-s=\"learn quanta\">{}<u>{}</u>", quanta.name, codeOf( quanta.handle ) );
    html.add( "<div class=three>" );
    if( !parser.bfDynamicHashInfo().empty() )
        html.add( "<div><h3>Hash calculations</h3>{}</div>", hashes );
    if( !parser.bfHeaders().empty() )
        html.add( "<div><h3>Flexible headers</h3><ul class=pl2>{}</ul></div>", headers );
    if( !parser.bfLearnQuantaInfos().empty() )
        html.add( "<div><h3>Learn quantas</h3><ul class=pl2>{}</ul></div>", quantas );
    html.add( "</div>" );
}

} // namespace Bfri
