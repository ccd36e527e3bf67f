// PHV bytes by field, the hit-bit space, and what else the model has.

#include "cli/report/Sections.h"
#include "inspect/model/Records.h"

namespace Bfri {

namespace {

constexpr std::size_t mostFields = 48;

using Bytes = std::optional<U32> ChipField::*;

std::uint64_t sumOf( Chip const& chip, Bytes direction ) {
    std::uint64_t sum = 0;
    for( ChipField const& field : chip.fields )
        sum += ( field.*direction ).value_or( 0 );
    return sum;
}

std::size_t countOf( Chip const& chip, Bytes direction ) {
    return static_cast<std::size_t>(
        std::count_if( chip.fields.begin(), chip.fields.end(),
                       [ & ]( auto const& field ) { return ( field.*direction ).has_value(); } ) );
}

void writeBytes( Html& html, U32 now, U32 was, U32 most, bool ingress ) {
    auto const width = [ & ]( U32 bytes ) { return 100.0 * bytes / most; };
    html.open( "td", { { "class", ingress ? Literal( "i" ) : Literal( "e" ) } } ).open( "span" );
    if( now > 0 )
        html.leaf( "i", { { "style", own( "width:{:.1f}%", width( now ) ) } }, "" );
    if( now != was )
        html.leaf( "em", { { "style", own( "width:{:.1f}%", width( was ) ) } }, "" );
    html.open( "u" ).text( now || was ? std::to_string( now ) : "·" );
    writeDelta( html, now, was );
    html.close().close().close();
}

/// A field of either chip.
struct FieldRow {
    ChipField const* now;
    ChipField const* old;
};

void writeFieldRow( Html& html, FieldRow const& row, std::size_t number, U32 most, bool isDiff ) {
    static ChipField const none{ nullptr };
    ChipField const& now = row.now ? *row.now : none;
    ChipField const& old = !isDiff ? now : row.old ? *row.old : none;
    html.open( "tr", { { "id", own( "v{}", number ) } } );
    writeBytes( html, now.ingress.value_or( 0 ), old.ingress.value_or( 0 ), most, true );
    html.leaf( "th", { { "scope", "row" } }, *( row.now ? row.now : row.old )->name );
    writeBytes( html, now.egress.value_or( 0 ), old.egress.value_or( 0 ), most, false );
    html.close();
}

std::vector<FieldRow> fieldRowsOf( ReportData const& data ) {
    std::vector<FieldRow> rows;
    std::unordered_map<std::string_view, ChipField const*> old;
    if( data.isDiff() ) {
        for( ChipField const& field : data.chip.old->fields )
            old.emplace( *field.name, &field );
    }
    for( ChipField const& field : data.chip.fields ) {
        auto const was = old.find( *field.name );
        rows.push_back( { &field, was == old.end() ? nullptr : was->second } );
        if( was != old.end() )
            old.erase( was );
    }
    if( data.isDiff() ) {
        for( ChipField const& field : data.chip.old->fields ) {
            if( old.count( *field.name ) > 0 )
                rows.push_back( { nullptr, &field } );
        }
    }
    return rows;
}

void writeFieldTable( Html& html, std::vector<FieldRow> const& rows, std::size_t first, std::size_t end,
                      bool isDiff ) {
    U32 most = 1;
    for( FieldRow const& row : rows ) {
        for( ChipField const* const field : { row.now, row.old } )
            most = field ? std::max( { most, field->ingress.value_or( 0 ), field->egress.value_or( 0 ) } )
                         : most;
    }
    html.open( "table", { { "class", "phv" } } ).open( "colgroup" );
    html.empty( "col" ).empty( "col", { { "class", "m" } } ).empty( "col" ).close();
    html.open( "thead" ).open( "tr" ).leaf( "th", { { "class", "i" }, { "scope", "col" } }, "Ingress bytes" );
    html.leaf( "th", { { "scope", "col" } }, "Field" );
    html.leaf( "th", { { "class", "e" }, { "scope", "col" } }, "Egress bytes" )
        .close()
        .close()
        .open( "tbody" );
    for( std::size_t i = first; i < end; ++i )
        writeFieldRow( html, rows[ i ], i, most, isDiff );
    html.close().close();
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

Literal cssOf( Chip const& chip, ChipTable const& table ) {
    return table.resource ? styleOf( chip.resources[ *table.resource ].type ).css : Literal( "ot" );
}

/// Which programs have which part of the space.
void writeBrackets( Html& html, Chip const& chip, Tables const& tables, U32 all ) {
    html.open( "div", { { "class", "hbw" } } );
    for( std::size_t i = 0; i < chip.programs.size(); ++i ) {
        U32 first = all, end = 0;
        std::size_t count = 0;
        for( ChipTable const* const table : tables ) {
            if( table->program != i )
                continue;
            first = std::min( first, table->record->hitBitSmashOffset );
            end = std::max( end, table->record->hitBitSmashLast + 1 );
            ++count;
        }
        if( count == 0 )
            continue;
        html.open( "span", { { "style", placeOf( first, end - first, all ) } } )
            .text( chip.programs[ i ].name );
        html.leaf( "small", counted( count, "table" ) + ", " + grouped( end - first ) ).close();
    }
    html.close();
}

/// Ranges too small for a link share one shape per kind; the list of ranges has all.
void writeSlots( Html& html, Chip const& chip, Tables const& tables, U32 all ) {
    constexpr std::size_t many = 60;
    auto const isSmall = [ & ]( ChipTable const& table ) {
        return tables.size() > many && slotsOf( table ) < all * 0.012;
    };
    html.open( "div", { { "class", "hbs" } } );
    html.open(
        "svg",
        { { "viewBox", "0 0 1000 1" }, { "preserveAspectRatio", "none" }, { "aria-hidden", "true" } } );
    std::vector<std::pair<Literal, OwnText>> shapes;
    for( ChipTable const* const table : tables ) {
        if( !isSmall( *table ) )
            continue;
        Literal const css = cssOf( chip, *table );
        auto shape = std::find_if( shapes.begin(), shapes.end(),
                                   [ & ]( auto const& one ) { return one.first.view() == css.view(); } );
        if( shape == shapes.end() )
            shape = shapes.insert( shapes.end(), { css, OwnText( "" ) } );
        double const width = std::max( 0.3, 1000.0 * slotsOf( *table ) / all - 0.1 );
        shape->second += own( "M{:.2f} 0h{:.2f}v1h-{:.2f}z", 1000.0 * table->record->hitBitSmashOffset / all,
                              width, width );
    }
    for( auto const& [ css, path ] : shapes )
        html.shape( "path", { { "class", own( "p{}", css ) }, { "d", path } } );
    html.close();
    for( ChipTable const* const table : tables ) {
        if( isSmall( *table ) )
            continue;
        BfTableInfo const& record = *table->record;
        html.leaf( "a",
                   { { "class", own( "hb {}", cssOf( chip, *table ) ) },
                     { "href", own( "#t{}", table->number ) },
                     { "data-t", own( "{}", table->number ) },
                     { "style", placeOf( record.hitBitSmashOffset, slotsOf( *table ), all ) },
                     titled( record.name + ": " + grouped( record.hitBitSmashOffset ) + "–" +
                             grouped( record.hitBitSmashLast ) + ", " + counted( slotsOf( *table ), "slot" ) +
                             ", " + counted( record.idleTimePrecision, "bit" ) ) },
                   SplitName( record.name ).last );
    }
    html.close();
}

void writeAxis( Html& html, U32 all ) {
    html.open( "div", { { "class", "hax" } } );
    for( U32 quarter = 0; quarter <= 4; ++quarter )
        html.leaf( "span", { { "style", own( "left:{}%", 25 * quarter ) } },
                   grouped( std::uint64_t( all ) * quarter / 4 ) );
    html.close();
}

void writeRanges( Html& html, Tables const& tables ) {
    html.open( "details", { { "class", "plain" }, { "id", "hits" } } )
        .leaf( "summary", "The ranges, in order" );
    html.open( "div", { { "class", "x" } } )
        .open( "table", { { "class", "ls" } } )
        .open( "colgroup" )
        .empty( "col" );
    for( int i = 0; i < 4; ++i )
        html.empty( "col", { { "style", "width:100px" } } );
    html.close().open( "thead" ).open( "tr" ).leaf( "th", { { "scope", "col" } }, "Name" );
    for( char const* const title : { "From", "To", "Slots", "Bits" } )
        html.leaf( "th", { { "scope", "col" }, { "class", "n" } }, title );
    html.close().close().open( "tbody" );
    for( ChipTable const* const table : tables ) {
        html.open( "tr" ).open( "td" ).open( "a", { { "href", own( "#t{}", table->number ) } } );
        writeName( html, table->record->name );
        html.close().close();
        for( U32 const number : { table->record->hitBitSmashOffset, table->record->hitBitSmashLast,
                                  slotsOf( *table ), table->record->idleTimePrecision } )
            html.leaf( "td", { { "class", "n" } }, grouped( number ) );
        html.close();
    }
    html.close().close().close().close();
}

// Hashes, headers, learn quantas.

void writeHashes( Html& html, BfResourceInfo::BfResourceParser const& parser ) {
    html.open( "div" ).leaf( "h3", "Hash calculations" );
    for( auto const* const entry : sortedByKey( parser.bfDynamicHashInfo() ) ) {
        html.open( "p", { { "class", "hc" }, { "data-s", "hash" } } ).open( "b" );
        writeName( html, entry->first );
        html.close();
        writeHandle( html, entry->second.tableHdl );
        String fields;
        for( String const& field : entry->second.fieldNames )
            fields += ( fields.empty() ? "" : ", " ) + field;
        html.open( "span" )
            .text( fields + " " )
            .leaf( "small", "field list " + handleText( entry->second.fieldListHdl ) );
        html.close().close();
    }
    html.close();
}

void writeHeaders( Html& html, BfResourceInfo::BfResourceParser const& parser ) {
    html.open( "div" ).leaf( "h3", "Flexible headers" ).open( "ul", { { "class", "pl2" } } );
    for( auto const* const entry : sortedByKey( parser.bfHeaders() ) )
        html.open( "li", { { "data-s", "header" } } )
            .text( entry->first )
            .leaf( "u", counted( entry->second.size(), "byte" ) )
            .close();
    html.close().close();
}

void writeLearnQuantas( Html& html, BfResourceInfo::BfResourceParser const& parser ) {
    html.open( "div" ).leaf( "h3", "Learn quantas" ).open( "ul", { { "class", "pl2" } } );
    for( BfLearnQuantaInfo const& quanta : parser.bfLearnQuantaInfos() ) {
        html.open( "li", { { "data-s", "learn quanta" } } ).text( quanta.name ).open( "u" );
        writeHandle( html, quanta.handle );
        html.close().close();
    }
    html.close().close();
}

} // namespace

void writeFields( Html& html, ReportData const& data ) {
    Chip const& chip = data.chip;
    html.open( "p", { { "class", "lead2" } } ).text( "Ingress takes " );
    html.leaf( "b", counted( sumOf( chip, &ChipField::ingress ), "byte" ) );
    html.text( " for " + counted( countOf( chip, &ChipField::ingress ), "field" ) + ", egress " );
    html.leaf( "b", counted( sumOf( chip, &ChipField::egress ), "byte" ) );
    html.text( " for " + grouped( countOf( chip, &ChipField::egress ) ) + "." );
    if( chip.programs.size() > 1 )
        html.text( " The fields of all programs are taken together; for a field that several have, the "
                   "largest number of "
                   "bytes counts." );
    html.close();
    auto const rows = fieldRowsOf( data );
    std::size_t const shown = std::min( mostFields, rows.size() );
    writeFieldTable( html, rows, 0, shown, data.isDiff() );
    if( shown == rows.size() )
        return;
    html.open( "details" ).leaf( "summary", counted( rows.size() - shown, "more field" ) );
    writeFieldTable( html, rows, shown, rows.size(), data.isDiff() );
    html.close();
}

void writeHitBits( Html& html, ReportData const& data ) {
    U32 const all = data.chip.parser().hitBitSmashEntries();
    auto const tables = tablesWithHitBits( data.chip );
    if( tables.empty() || all == 0 ) {
        html.leaf( "p", { { "class", "lead2" } }, "No table has hit bits." );
        return;
    }
    ChipTable const& largest =
        **std::max_element( tables.begin(), tables.end(),
                            []( auto const* a, auto const* b ) { return slotsOf( *a ) < slotsOf( *b ); } );
    html.open( "p", { { "class", "lead2" } } );
    html.text( counted( tables.size(), "table" ) + " with idle time " +
               ( tables.size() == 1 ? "has " : "share " ) );
    html.leaf( "b", counted( all, "slot" ) ).text( "; " ).leaf( "b", SplitName( largest.record->name ).last );
    html.text( " has " + percent( slotsOf( largest ), all ) + " of them." );
    if( data.isDiff() && data.chip.old->parser().hitBitSmashEntries() != all )
        html.text( " It was " + grouped( data.chip.old->parser().hitBitSmashEntries() ) + "." );
    html.close();
    writeBrackets( html, data.chip, tables, all );
    writeSlots( html, data.chip, tables, all );
    writeAxis( html, all );
    writeRanges( html, tables );
}

void writeOthers( Html& html, ReportData const& data ) {
    auto const& parser = data.chip.parser();
    html.open( "div", { { "class", "three" } } );
    if( !parser.bfDynamicHashInfo().empty() )
        writeHashes( html, parser );
    if( !parser.bfHeaders().empty() )
        writeHeaders( html, parser );
    if( !parser.bfLearnQuantaInfos().empty() )
        writeLearnQuantas( html, parser );
    html.close();
}

} // namespace Bfri
