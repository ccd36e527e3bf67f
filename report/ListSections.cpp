// The lists of match tables, and of all other resources and records, which the script can sort and search:
// one table, or many rows folded by control path.

#include "report/Parts.h"

#include <functional>
#include <map>

namespace Bfri {

namespace {

struct ListRow {
    std::size_t number; ///< of what it shows; the default order of rows
    std::string_view name;
    std::uint64_t weight;
};

struct Listing {
    ReportData const& data;
    Literal id;
    char prefix; ///< of the ids of rows
    std::vector<ListColumn> columns;
    std::vector<ListRow> rows = {};
    OwnText ranges = {}; ///< which numbers belong to which pipes, for the script
    /// The cells of a row; in full, the name has its path. The weight has a bar for its share of the most.
    std::function<Html( std::size_t number, bool inFull, std::uint64_t most )> cells = {};

    void addRange( ChipProgram const& program, std::size_t first, std::size_t end ) {
        if( first == end )
            return;
        ranges += own( "{}", when( !std::string_view( ranges ).empty(), ";" ) );
        for( U32 const pipe : program.pipes )
            ranges += own( "{}{}", when( pipe != program.pipes.front(), " " ), pipe );
        ranges += own( ":{}-{}", first, end - 1 );
    }
};

void writeRows( Html& html, Listing const& listing, std::vector<ListRow> const& rows, bool inFull ) {
    std::uint64_t most = 1;
    for( ListRow const& row : listing.rows )
        most = std::max( most, row.weight );
    openTable( html, listing.columns );
    for( ListRow const& row : rows )
        html.add( "<tr id={}{}>{}", listing.prefix, row.number, listing.cells( row.number, inFull, most ) );
    html.add( "</table></div>" );
}

void writeGroups( Html& html, Listing const& listing ) {
    struct Group {
        std::uint64_t weight = 0;
        std::vector<ListRow> rows = {};
    };
    std::map<std::string_view, Group> groups;
    std::uint64_t most = 1;
    for( ListRow const& row : listing.rows ) {
        Group& group = groups[ SplitName( row.name ).path ];
        group.weight += row.weight;
        group.rows.push_back( row );
        most = std::max( most, group.weight );
    }
    for( auto& [ path, group ] : groups ) {
        html.add( R"(<details class=grp data-p="{}"><summary><b>{}</b><u>{}</u>)"
                  R"(<span class=gb><i style=width:{:.1f}%></i></span><u>{}</u></summary>)",
                  path, path.empty() ? "without a path" : path.substr( 0, path.size() - 1 ),
                  grouped( group.rows.size() ),
                  100 * static_cast<double>( group.weight ) / static_cast<double>( most ),
                  rounded( group.weight ) );
        std::stable_sort( group.rows.begin(), group.rows.end(),
                          []( auto const& a, auto const& b ) { return a.weight > b.weight; } );
        writeRows( html, listing, group.rows, false );
        html.add( "</details>" );
    }
}

void writeListing( Html& html, Listing listing ) {
    constexpr std::size_t mostFlatRows = 120;
    bool const isFlat = listing.rows.size() <= mostFlatRows;
    if( listing.data.isDiff() )
        listing.columns.push_back( { "Change", 64 } );
    html.add( R"(<div class=list id={} data-p="{}"><div class=ghead>{}</div><div class=groups>)", listing.id,
              listing.ranges, when( !isFlat, "<span>control</span><u>rows</u><span></span><u>entries</u>" ) );
    if( isFlat ) {
        auto rows = listing.rows;
        std::stable_sort( rows.begin(), rows.end(),
                          []( auto const& a, auto const& b ) { return a.name < b.name; } );
        writeRows( html, listing, rows, true );
    } else
        writeGroups( html, listing );
    html.add( "</div></div>" );
}

/// The kind, direction and stages of what is placed, with a bar that shows where the stages are.
Html placeCells( Chip const& chip, ChipResource const* resource ) {
    if( !resource )
        return markup( "<td><span class=mut>not placed</span><td>–<td class=sg>–" );
    Html cells = markup( "<td>{}<td>{}", typeWord( resource->type ), directionWord( resource->ingress ) );
    auto const& stages = resource->stages;
    if( stages.empty() )
        return cells.add( "<td class=sg>–" );
    auto const percentOf = [ & ]( std::size_t column ) { return 100 * column / chip.stages.size(); };
    return cells.add( "<td class=sg style=--a:{}%;--b:{}%>{}",
                      percentOf( chip.columnOf( stages.front().stage ) ),
                      percentOf( chip.columnOf( stages.back().stage ) + 1 ), stagesText( stages ) );
}

String numberText( std::uint64_t number ) { return number ? grouped( number ) : "–"; }

Html markCell( ReportData const& data, Marks marks ) {
    return data.isDiff() ? markup( "<td>{}", marksOf( marks ) ) : Html();
}

Html tableCells( ReportData const& data, ChipTable const& table, bool inFull, std::uint64_t most ) {
    BfTableInfo const& record = *table.record;
    return markup( "<td><a href={}>{}</a><td>{}{}<td class=w style=--w:{}%>{}"
                   "<td class=n>{}<td class=n>{}<td class=n>{}{}",
                   hrefOf( table.link() ),
                   inFull ? nameParts( record.name ) : markup( "<b>{}</b>", SplitName( record.name ).last ),
                   hexText( record.handle ), placeCells( data.chip, data.chip.placeOf( table ) ),
                   100 * std::uint64_t( record.size ) / most, grouped( record.size ),
                   numberText( table.actions.size() ), numberText( table.attached.size() ),
                   numberText( record.hitBitSupported ? record.idleTimePrecision : 0 ),
                   markCell( data, table.marks ) );
}

Html ownersOf( Chip const& chip, ChipResource const& resource ) {
    constexpr std::size_t most = 3;
    Html html;
    auto const& owners = resource.owners;
    for( std::size_t i = 0; i < std::min( most, owners.size() ); ++i )
        html.add( "{}<a href={}>{}</a>", when( i > 0, ", " ), hrefOf( owners[ i ] ),
                  SplitName( chip.nameOf( owners[ i ] ) ).last );
    if( owners.size() > most )
        html.add( " +{}", grouped( owners.size() - most ) );
    return html.add( "{}", when( owners.empty(), "–" ) );
}

Html resourceCells( ReportData const& data, ChipResource const& resource, bool inFull, std::uint64_t most ) {
    return markup( "<td>{}<td>{}{}<td class=w style=--w:{}%>{}<td>{}<td>{}{}",
                   inFull ? linkedName( {}, resource.name() )
                          : markup( "<b>{}</b>", SplitName( resource.name() ).last ),
                   hexText( resource.handle ), placeCells( data.chip, &resource ), 100 * resource.size / most,
                   grouped( resource.size ), ownersOf( data.chip, resource ),
                   factsText( data.chip, resource ), markCell( data, resource.marks ) );
}

} // namespace

void writeTables( Html& html, ReportData const& data ) {
    Listing listing{ data,
                     "Ltables",
                     'l',
                     { { "Name" },
                       { "Handle", 98 },
                       { "Kind", 168 },
                       { "Direction", 74 },
                       { "Stages", 92 },
                       { "Entries", 96, " class=w" },
                       { "Actions", 66, " class=n" },
                       { "Attached", 72, " class=n" },
                       { "Idle bits", 70, " class=n" } } };
    for( ChipTable const& table : data.chip.tables )
        listing.rows.push_back( { table.number, table.name(), table.record->size } );
    for( ChipProgram const& program : data.chip.programs )
        listing.addRange( program, program.firstTable, program.endTable );
    listing.cells = [ & ]( std::size_t number, bool inFull, std::uint64_t most ) {
        return tableCells( data, data.chip.tables[ number ], inFull, most );
    };
    writeListing( html, std::move( listing ) );
}

void writeAttached( Html& html, ReportData const& data ) {
    Listing listing{ data,
                     "Lattached",
                     'r',
                     { { "Name" },
                       { "Handle", 98 },
                       { "Kind", 118 },
                       { "Direction", 74 },
                       { "Stages", 92 },
                       { "Size", 84, " class=w" },
                       { "Of table", 190 },
                       { "What", 150 } } };
    for( ChipResource const& resource : data.chip.resources ) {
        if( !resource.table )
            listing.rows.push_back( { resource.number, resource.name(), resource.size } );
    }
    for( ChipProgram const& program : data.chip.programs )
        listing.addRange( program, program.firstResource, program.endResource );
    listing.cells = [ & ]( std::size_t number, bool inFull, std::uint64_t most ) {
        return resourceCells( data, data.chip.resources[ number ], inFull, most );
    };
    writeListing( html, std::move( listing ) );
}

} // namespace Bfri
