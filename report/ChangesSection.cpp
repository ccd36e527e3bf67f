#include "report/Parts.h"

#include "inspect/diff/Comparison.h"

namespace Bfri {

namespace {

/// What differs of a resource, or of a match table that is not placed.
struct ChangeRow {
    Marks marks = {};
    std::string_view name = {}, oldName = {}; ///< the old one where it is another
    std::optional<ChipLink> link = {};        ///< none of what is removed
    ChipResource const* now = nullptr;        ///< null of what is removed, or has no place
    ChipResource const* old = nullptr;
    std::optional<std::uint64_t> size = {}, oldSize = {};

    ChipResource const* shown() const { return now ? now : old; }
    std::uint64_t distance() const {
        auto const [ least, most ] = std::minmax( { size.value_or( 0 ), oldSize.value_or( 0 ) } );
        return most - least;
    }
};

ChipResource const* placeOf( ChipResource const* resource ) { return resource; }
ChipResource const* placeOf( ChipTable const* ) { return nullptr; }
std::uint64_t sizeOf( ChipResource const& resource ) { return resource.size; }
std::uint64_t sizeOf( ChipTable const& table ) { return table.record->size; }

/// One of the two may be null.
template<class Part>
ChangeRow rowOf( Part const* now, Part const* old ) {
    ChangeRow row;
    row.name = ( now ? now : old )->name();
    row.now = placeOf( now );
    row.old = placeOf( old );
    if( now ) {
        row.marks = now->marks;
        row.link = now->link();
        row.size = sizeOf( *now );
    } else
        add( row.marks, Mark::removed );
    if( old ) {
        row.oldSize = sizeOf( *old );
        row.oldName = old->name() == row.name ? "" : std::string_view( old->name() );
    }
    return row;
}

/// By the gravest mark; the largest differences first.
std::array<std::vector<ChangeRow>, markCount> changesOf( Chip const& chip ) {
    std::array<std::vector<ChangeRow>, markCount> groups;
    auto const put = [ & ]( auto const* now, decltype( now ) old ) {
        ChangeRow const row = rowOf( now, old );
        if( row.marks.any() )
            groups[ static_cast<std::size_t>( marksIn( row.marks ).front() ) ].push_back( row );
    };
    for( ChipResource const* const old : chip.removed )
        put( static_cast<ChipResource const*>( nullptr ), old );
    for( ChipTable const* const old : chip.removedTables )
        put( static_cast<ChipTable const*>( nullptr ), old );
    for( ChipResource const& resource : chip.resources )
        put( &resource, resource.old );
    for( ChipTable const& table : chip.tables ) {
        if( !table.resource )
            put( &table, table.old );
    }
    for( auto& group : groups )
        std::stable_sort( group.begin(), group.end(),
                          []( auto const& a, auto const& b ) { return a.distance() > b.distance(); } );
    return groups;
}

/// "was → is", or once if they are the same.
String fromTo( String const& was, String const& is ) { return was == is ? is : was + " → " + is; }

String sizeText( std::optional<std::uint64_t> size ) { return size ? grouped( *size ) : "–"; }

String stagesOf( ChipResource const* resource ) {
    return resource && !resource->stages.empty() ? stagesText( resource->stages ) : "–";
}

void writeChange( Html& html, ChangeRow const& row, std::uint64_t most ) {
    auto const width = [ & ]( std::optional<std::uint64_t> size ) {
        return 100 * static_cast<double>( size.value_or( 0 ) ) / static_cast<double>( most );
    };
    ChipResource const* const shown = row.shown();
    html.add( "<tr><td class=dm>{}<td>{}", marksOf( row.marks ), linkedName( row.link, row.name ) );
    if( !row.oldName.empty() )
        html.add( "<small>was {}</small>", row.oldName );
    html.add( "<td>{}<td>{}<td class=n>{}<td><span class=ob><i class=was style=width:{:.2f}%></i>"
              "<i class=\"now {}\" style=width:{:.2f}%></i></span><td>{}",
              shown ? typeWord( shown->type ) : markup( "match table" ),
              shown ? directionWord( shown->ingress ) : Literal( "–" ),
              fromTo( sizeText( row.oldSize ), sizeText( row.size ) ), width( row.oldSize ),
              shown ? styleOf( shown->type ).css : Literal( "ot" ), width( row.size ),
              fromTo( stagesOf( row.old ), stagesOf( row.now ) ) );
}

void writeGroups( Html& html, Chip const& chip ) {
    static constexpr Literal titles[ markCount ] = { "Removed", "Shrank", "Added",
                                                     "Grew",    "Moved",  "Changed otherwise" };
    static constexpr ListColumn columns[] = { { "change", 44 },   { "name" },
                                              { "kind", 150 },    { "direction", 70 },
                                              { "entries", 150 }, { "old and new size", 130 },
                                              { "stages", 110 } };
    auto const groups = changesOf( chip );
    std::uint64_t most = 1;
    for( auto const& group : groups ) {
        for( ChangeRow const& row : group )
            most = std::max( { most, row.size.value_or( 0 ), row.oldSize.value_or( 0 ) } );
    }
    for( std::size_t i = 0; i < markCount; ++i ) {
        if( groups[ i ].empty() )
            continue;
        html.add( "<h3>{} <small>{}</small></h3>", titles[ i ], grouped( groups[ i ].size() ) );
        writeFolded( html, std::span( groups[ i ] ), 40, [ & ]( std::span<ChangeRow const> rows ) {
            openTable( html, columns, " class=vh" );
            for( ChangeRow const& row : rows )
                writeChange( html, row, most );
            html.add( "</table></div>" );
        } );
    }
}

void writeActionChanges( Html& html, KindComparison const& actions ) {
    std::vector<std::pair<Mark, Row const*>> changes;
    for( Row const& row : actions.removed )
        changes.emplace_back( Mark::removed, &row );
    for( Row const& row : actions.added )
        changes.emplace_back( Mark::added, &row );
    if( changes.empty() )
        return;
    html.add( "<h3>Actions <small>{}</small></h3>", grouped( changes.size() ) );
    writeFolded( html, std::span( changes ), 60, [ & ]( auto const& some ) {
        html.add( "<ul class=acts>" );
        for( auto const& [ mark, row ] : some )
            html.add( "<li>{}<b>{}</b> of {}", markOf( mark ), valueAs<String>( *row, "name" ),
                      valueAs<String>( *row, "tableName" ) );
        html.add( "</ul>" );
    } );
}

} // namespace

std::size_t countChanges( Chip const& chip ) {
    std::size_t count = 0;
    for( auto const& group : changesOf( chip ) )
        count += group.size();
    return count;
}

void writeChanges( Html& html, ReportData const& data ) {
    Comparison const& comparison = *data.comparison;
    writeGroups( html, data.chip );
    for( KindComparison const& kind : comparison.kinds ) {
        if( kind.kind->kind == Kind::actions )
            writeActionChanges( html, kind );
    }
    Tally const &handles = comparison.handles.tally, &shifted = comparison.shifted;
    html.add( "<p class=lead2>Renumbered handles: {} of {}.", grouped( handles.differing ),
              grouped( handles.all ) );
    if( shifted.all > 0 )
        html.add( " Shifted hit-bit ranges: {} of {}.", grouped( shifted.differing ),
                  grouped( shifted.all ) );
    html.add( "</p>" );
}

} // namespace Bfri
