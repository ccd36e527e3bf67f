#include "cli/report/Listing.h"

#include <map>

namespace Bfri {

namespace {

constexpr std::size_t mostFlatRows = 120;

void writeHead( Html& html, Listing const& listing ) {
    html.open( "colgroup" );
    for( ListColumn const& column : listing.columns ) {
        Attributes width;
        if( column.width )
            width.push_back( { "style", own( "width:{}px", column.width ) } );
        html.empty( "col", width );
    }
    html.close().open( "thead" ).open( "tr" );
    for( ListColumn const& column : listing.columns ) {
        Attributes attributes{ { "scope", "col" } };
        if( !column.css.view().empty() )
            attributes.push_back( { "class", column.css } );
        html.leaf( "th", attributes, column.title );
    }
    html.close().close();
}

void writeRows( Html& html, Listing const& listing, std::vector<ListRow> const& rows, bool inFull ) {
    html.open( "div", { { "class", "x" } } ).open( "table", { { "class", "ls" } } );
    writeHead( html, listing );
    html.open( "tbody" );
    for( ListRow const& row : rows ) {
        html.open( "tr", { { "id", own( "{}{}", listing.prefix, row.number ) } } );
        listing.writeCells( row, inFull );
        html.close();
    }
    html.close().close().close();
}

struct ListGroup {
    std::uint64_t weight = 0;
    std::vector<ListRow> rows;
};

void writeGroup( Html& html, Listing const& listing, std::string_view path, ListGroup& group,
                 std::uint64_t most ) {
    html.open( "details", { { "class", "grp" }, ofPath( path ) } ).open( "summary" );
    html.leaf( "b", path.empty() ? "without a path" : path.substr( 0, path.size() - 1 ) );
    html.leaf( "u", grouped( group.rows.size() ) ).open( "span", { { "class", "gb" } } );
    html.leaf( "i",
               { { "style", own( "width:{:.1f}%", 100 * static_cast<double>( group.weight ) /
                                                      static_cast<double>( most ) ) } },
               "" );
    html.close().leaf( "u", rounded( group.weight ) ).close();
    std::stable_sort( group.rows.begin(), group.rows.end(),
                      []( auto const& a, auto const& b ) { return a.weight > b.weight; } );
    writeRows( html, listing, group.rows, false );
    html.close();
}

void writeGroups( Html& html, Listing const& listing ) {
    std::map<std::string_view, ListGroup> groups;
    std::uint64_t most = 1;
    for( ListRow const& row : listing.rows ) {
        ListGroup& group = groups[ SplitName( row.name ).path ];
        group.weight += row.weight;
        group.rows.push_back( row );
        most = std::max( most, group.weight );
    }
    for( auto& [ path, group ] : groups )
        writeGroup( html, listing, path, group, most );
}

} // namespace

void writeListing( Html& html, Listing const& listing ) {
    html.open( "div", { { "class", "list" }, { "id", listing.id }, { "data-p", listing.ranges } } );
    html.open( "div", { { "class", "ghead" } } );
    bool const isFlat = listing.rows.size() <= mostFlatRows;
    if( !isFlat )
        html.leaf( "span", "control" ).leaf( "u", "rows" ).leaf( "span", "" ).leaf( "u", "entries" );
    html.close().open( "div", { { "class", "groups" } } );
    if( isFlat ) {
        auto rows = listing.rows;
        std::stable_sort( rows.begin(), rows.end(),
                          []( auto const& a, auto const& b ) { return a.name < b.name; } );
        writeRows( html, listing, rows, true );
    } else
        writeGroups( html, listing );
    html.close().close();
}

void writeStageCell( Html& html, Chip const& chip, ChipResource const* resource ) {
    if( !resource || resource->stages.empty() ) {
        html.leaf( "td", { { "class", "sg" } }, "–" );
        return;
    }
    auto const percentOf = [ & ]( std::size_t column ) { return 100 * column / chip.stages.size(); };
    html.leaf(
        "td",
        { { "class", "sg" },
          { "style", own( "--a:{}%;--b:{}%", percentOf( chip.columnOf( resource->stages.front().stage ) ),
                          percentOf( chip.columnOf( resource->stages.back().stage ) + 1 ) ) } },
        stagesText( resource->stages ) );
}

void writeWeightCell( Html& html, std::uint64_t number, std::uint64_t most ) {
    html.leaf( "td", { { "class", "w" }, { "style", own( "--w:{}%", most ? 100 * number / most : 0 ) } },
               grouped( number ) );
}

void writeNumberCell( Html& html, std::uint64_t number ) {
    html.leaf( "td", { { "class", "n" } }, number ? grouped( number ) : "–" );
}

} // namespace Bfri
