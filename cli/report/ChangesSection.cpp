#include "cli/report/Sections.h"

#include "inspect/diff/Comparison.h"

namespace Bfri {

namespace {

/// What differs of a resource, or of a match table that is not placed.
struct ChangeRow {
    Marks marks;
    std::string_view name, oldName; ///< the old one where it is another
    std::optional<ChipLink> link;   ///< none of what is removed
    ChipResource const* now;        ///< null of what is removed, or has no place
    ChipResource const* old;
    std::optional<std::uint64_t> size, oldSize;

    ChipResource const* shown() const { return now ? now : old; }
    std::uint64_t distance() const {
        std::uint64_t const a = size.value_or( 0 ), b = oldSize.value_or( 0 );
        return std::max( a, b ) - std::min( a, b );
    }
};

ChangeRow rowOf( ChipResource const& resource ) {
    ChangeRow row{ resource.marks, resource.name(), {}, resource.link(), &resource,
                   resource.old,   resource.size,   {} };
    if( resource.old )
        row.oldSize = resource.old->size;
    if( resource.isRenamed() )
        row.oldName = resource.old->name();
    return row;
}

ChangeRow rowOf( ChipTable const& table ) {
    ChangeRow row{
        table.marks, table.record->name, {}, ChipLink{ ChipLink::To::table, table.number }, nullptr,
        nullptr,     table.record->size, {} };
    if( table.old )
        row.oldSize = table.old->record->size;
    if( table.old && table.old->record->name != row.name )
        row.oldName = table.old->record->name;
    return row;
}

ChangeRow removedRowOf( ChipResource const& old ) {
    ChangeRow row{ {}, old.name(), {}, {}, nullptr, &old, {}, old.size };
    add( row.marks, Mark::removed );
    return row;
}

ChangeRow removedRowOf( ChipTable const& old ) {
    ChangeRow row{ {}, old.record->name, {}, {}, nullptr, nullptr, {}, old.record->size };
    add( row.marks, Mark::removed );
    return row;
}

/// By the gravest mark; the largest differences first.
std::array<std::vector<ChangeRow>, markCount> changesOf( Chip const& chip ) {
    std::array<std::vector<ChangeRow>, markCount> groups;
    auto const put = [ & ]( ChangeRow const& row ) {
        if( row.marks.any() )
            groups[ static_cast<std::size_t>( gravest( row.marks ) ) ].push_back( row );
    };
    for( ChipResource const* const old : chip.removed )
        put( removedRowOf( *old ) );
    for( ChipTable const* const old : chip.removedTables )
        put( removedRowOf( *old ) );
    for( ChipResource const& resource : chip.resources )
        put( rowOf( resource ) );
    for( ChipTable const& table : chip.tables ) {
        if( !table.resource )
            put( rowOf( table ) );
    }
    for( auto& group : groups )
        std::stable_sort( group.begin(), group.end(),
                          []( auto const& a, auto const& b ) { return a.distance() > b.distance(); } );
    return groups;
}

String sizesText( ChangeRow const& row ) {
    if( row.size == row.oldSize )
        return grouped( *row.size );
    return ( row.oldSize ? grouped( *row.oldSize ) : "–" ) + " → " +
           ( row.size ? grouped( *row.size ) : "–" );
}

String stagesText( ChangeRow const& row ) {
    auto const text = []( ChipResource const* resource ) {
        return resource && !resource->stages.empty() ? stagesText( resource->stages ) : String( "–" );
    };
    String const was = text( row.old ), is = text( row.now );
    return was == is ? is : was + " → " + is;
}

void writeSizes( Html& html, ChangeRow const& row, std::uint64_t most ) {
    auto const width = [ & ]( std::optional<std::uint64_t> size ) {
        return own( "width:{:.2f}%",
                    100 * static_cast<double>( size.value_or( 0 ) ) / static_cast<double>( most ) );
    };
    Literal const css = row.shown() ? styleOf( row.shown()->type ).css : Literal( "ot" );
    html.open( "td" ).open( "span", { { "class", "ob" } } );
    html.leaf( "i", { { "class", "was" }, { "style", width( row.oldSize ) } }, "" );
    html.leaf( "i", { { "class", own( "now {}", css ) }, { "style", width( row.size ) } }, "" )
        .close()
        .close();
}

void writeChange( Html& html, ChangeRow const& row, std::uint64_t most ) {
    html.open( "tr" ).open( "td", { { "class", "dm" } } );
    writeMarks( html, row.marks );
    html.close().open( "td" );
    if( row.link )
        html.open( "a", { linkTo( *row.link ) } );
    else
        html.open( "span", { { "class", "a" } } );
    writeName( html, row.name );
    html.close();
    if( !row.oldName.empty() )
        html.open( "small" ).text( "was " ).text( row.oldName ).close();
    html.close().open( "td" );
    if( row.shown() ) {
        writeSwatch( html, row.shown()->type );
        html.text( styleOf( row.shown()->type ).word.view() );
    } else
        html.text( "match table" );
    html.close().leaf( "td", row.shown() ? directionWord( row.shown()->ingress ).view() : "–" );
    html.leaf( "td", { { "class", "n" } }, sizesText( row ) );
    writeSizes( html, row, most );
    html.leaf( "td", stagesText( row ) ).close();
}

void writeChangeTable( Html& html, std::span<ChangeRow const> rows, std::uint64_t most ) {
    static constexpr U32 widths[] = { 44, 0, 150, 70, 150, 130, 110 };
    html.open( "div", { { "class", "x" } } ).open( "table", { { "class", "ls" } } ).open( "colgroup" );
    for( U32 const width : widths ) {
        Attributes attributes;
        if( width )
            attributes.push_back( { "style", own( "width:{}px", width ) } );
        html.empty( "col", attributes );
    }
    html.close().open( "thead", { { "class", "vh" } } ).open( "tr" );
    for( char const* const title :
         { "change", "name", "kind", "direction", "entries", "old and new size", "stages" } )
        html.leaf( "th", { { "scope", "col" } }, title );
    html.close().close().open( "tbody" );
    for( ChangeRow const& row : rows )
        writeChange( html, row, most );
    html.close().close().close();
}

/// The first ones, and the others folded.
template<class Rows, class Write>
void writeFolded( Html& html, Rows const& rows, std::size_t most, Write write ) {
    std::size_t const shown = std::min( most, rows.size() );
    write( rows.first( shown ) );
    if( shown == rows.size() )
        return;
    html.open( "details" ).leaf( "summary", grouped( rows.size() - shown ) + " more" );
    write( rows.subspan( shown ) );
    html.close();
}

void writeGroups( Html& html, Chip const& chip ) {
    static constexpr char const* titles[ markCount ] = { "Removed", "Shrank", "Added",
                                                         "Grew",    "Moved",  "Changed otherwise" };
    auto const groups = changesOf( chip );
    std::uint64_t most = 1;
    for( auto const& group : groups ) {
        for( ChangeRow const& row : group )
            most = std::max( { most, row.size.value_or( 0 ), row.oldSize.value_or( 0 ) } );
    }
    for( std::size_t i = 0; i < markCount; ++i ) {
        if( groups[ i ].empty() )
            continue;
        html.open( "h3" )
            .text( titles[ i ] )
            .text( " " )
            .leaf( "small", grouped( groups[ i ].size() ) )
            .close();
        writeFolded( html, std::span( groups[ i ] ), 40,
                     [ & ]( auto const& rows ) { writeChangeTable( html, rows, most ); } );
    }
}

struct ActionChange {
    Mark mark;
    Row const* row;
};

void writeActionChanges( Html& html, KindComparison const& actions ) {
    std::vector<ActionChange> changes;
    for( Row const& row : actions.removed )
        changes.push_back( { Mark::removed, &row } );
    for( Row const& row : actions.added )
        changes.push_back( { Mark::added, &row } );
    if( changes.empty() )
        return;
    html.open( "h3" ).text( "Actions " ).leaf( "small", grouped( changes.size() ) ).close();
    writeFolded( html, std::span( changes ), 60, [ & ]( auto const& some ) {
        html.open( "ul", { { "class", "acts" } } );
        for( ActionChange const& change : some ) {
            html.open( "li" );
            writeMark( html, change.mark );
            html.leaf( "b", valueAs<String>( *change.row, "name" ) )
                .text( " of " + valueAs<String>( *change.row, "tableName" ) )
                .close();
        }
        html.close();
    } );
}

} // namespace

void writeChanges( Html& html, ReportData const& data ) {
    Comparison const& comparison = *data.comparison;
    writeGroups( html, data.chip );
    for( KindComparison const& kind : comparison.kinds ) {
        if( kind.kind->kind == Kind::actions )
            writeActionChanges( html, kind );
    }
    Tally const &handles = comparison.handles.tally, &shifted = comparison.shifted;
    html.leaf( "p", { { "class", "lead2" } },
               "Renumbered handles: " + grouped( handles.differing ) + " of " + grouped( handles.all ) +
                   ". Shifted hit-bit ranges: " + grouped( shifted.differing ) + " of " +
                   grouped( shifted.all ) + "." );
}

} // namespace Bfri
