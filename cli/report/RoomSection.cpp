#include "cli/report/Sections.h"
#include "inspect/report/Treemap.h"

#include <map>

namespace Bfri {

namespace {

using Is = TreemapBox::Is;

/// "5 resources of 62 hold half of all 826k entries."
String halfText( Chip const& chip, std::uint64_t all ) {
    std::vector<std::uint64_t> sizes;
    for( ChipResource const& resource : chip.resources ) {
        if( resource.isPlaced )
            sizes.push_back( resource.size );
    }
    std::sort( sizes.rbegin(), sizes.rend() );
    std::size_t count = 0;
    for( std::uint64_t sum = 0; count < sizes.size() && sum * 2 < all; ++count )
        sum += sizes[ count ];
    return counted( count, "resource" ) + " of " + grouped( sizes.size() ) +
           ( count == 1 ? " holds" : " hold" ) + " half of all " + rounded( all ) +
           " entries. The largest blocks: ";
}

void writeLargestBlocks( Html& html, Chip const& chip, std::uint64_t all ) {
    constexpr std::size_t most = 3;
    std::map<std::string_view, std::uint64_t> byPath;
    for( ChipResource const& resource : chip.resources ) {
        SplitName const name( resource.name() );
        if( resource.isPlaced )
            byPath[ name.path.empty() ? name.last : name.path.substr( 0, name.path.size() - 1 ) ] +=
                resource.size;
    }
    std::vector<std::pair<std::string_view, std::uint64_t>> blocks( byPath.begin(), byPath.end() );
    std::stable_sort( blocks.begin(), blocks.end(),
                      []( auto const& a, auto const& b ) { return a.second > b.second; } );
    for( std::size_t i = 0; i < std::min( most, blocks.size() ); ++i )
        html.text( i ? ", " : "" )
            .leaf( "b", blocks[ i ].first )
            .text( " " + percent( blocks[ i ].second, all ) );
    html.text( "." );
}

OwnText boxStyle( Box const& box ) {
    return own( "left:{:.2f}%;top:{:.2f}%;width:{:.2f}%;height:{:.2f}%", 100 * box.x / Treemap::width,
                100 * box.y / Treemap::height, 100 * box.width / Treemap::width,
                100 * box.height / Treemap::height );
}

void writeGroup( Html& html, TreemapBox const& box, std::uint64_t all ) {
    static constexpr Literal classes[] = { "g0", "g1", "g2" };
    html.open( "div", { { "class", classes[ static_cast<std::size_t>( box.is ) ] },
                        { "style", boxStyle( box.place ) },
                        titled( ( box.label.empty() ? "without a path" : box.label ) + ": " +
                                counted( box.entries, "entry", "entries" ) + ", " +
                                percent( box.entries, all ) + " of all" ) } );
    if( box.hasLabel ) {
        html.leaf( "b", box.label );
        if( box.place.width > 80 )
            html.leaf( "u", rounded( box.entries ) +
                                ( box.is == Is::program ? ", " + percent( box.entries, all ) : "" ) );
    }
    html.close();
}

void writeLeaf( Html& html, TreemapBox const& box, std::uint64_t all ) {
    ChipResource const& resource = *box.resource;
    bool const hasLabel = box.place.width > 40 && box.place.height > 15;
    Attributes attributes{ { "class", own( "lf {}{}{}", styleOf( resource.type ).css, when( hasLabel, " L" ),
                                           when( hasLabel && box.place.width > 150, " S" ) ) },
                           { "style", boxStyle( box.place ) },
                           linkTo( resource.link() ),
                           titled( resource.name() + " · " + String( styleOf( resource.type ).word.view() ) +
                                   " · " + counted( resource.size, "entry", "entries" ) + ", " +
                                   percent( resource.size, all ) ) };
    addTableMark( attributes, resource );
    html.open( "a", attributes );
    if( hasLabel ) {
        html.open( "b" );
        writeMarks( html, resource.marks );
        html.text( SplitName( resource.name() ).last ).close();
        if( box.place.height > 28 )
            html.leaf( "u", entriesText( resource.size ) );
    }
    html.close();
}

void writeSeveral( Html& html, TreemapBox const& box ) {
    html.open(
        "a", { { "class", "lf more ot" },
               { "style", boxStyle( box.place ) },
               { "href", "#tables" },
               titled( grouped( box.several ) + " more: " + counted( box.entries, "entry", "entries" ) ) } );
    if( box.place.width > 34 && box.place.height > 13 )
        html.leaf( "b", "+" + grouped( box.several ) );
    html.close();
}

void writeTreemap( Html& html, Literal css, Treemap const& map ) {
    html.open( "div", { { "class", css } } ).open( "div", { { "class", "tm" } } );
    for( TreemapBox const& box : map.boxes ) {
        if( box.is == Is::several )
            writeSeveral( html, box );
        else if( box.is == Is::resource )
            writeLeaf( html, box, map.entries );
        else
            writeGroup( html, box, map.entries );
    }
    html.close().close();
}

void writeLegend( Html& html, Chip const& chip ) {
    std::map<std::size_t, U32> types;
    for( ChipResource const& resource : chip.resources ) {
        if( resource.isPlaced )
            types.emplace( placeOfType( resource.type ), resource.type );
    }
    html.open( "div", { { "class", "legend" } } );
    for( auto const& entry : types ) {
        html.open( "span", { { "class", when( !isMatchType( entry.second ), "nomatch" ) } } );
        writeSwatch( html, entry.second );
        html.text( styleOf( entry.second ).word.view() ).close();
    }
    html.close();
}

} // namespace

void writeRoom( Html& html, ReportData const& data ) {
    static constexpr Choice choices[] = { { "tm-m", "match tables" }, { "tm-a", "all resources" } };
    Treemap const all = treemapOf( data.chip, true );
    if( all.entries == 0 ) {
        html.leaf( "p", { { "class", "lead2" } }, "Nothing that is placed has entries." );
        return;
    }
    html.open( "p", { { "class", "lead2" } } ).text( halfText( data.chip, all.entries ) );
    writeLargestBlocks( html, data.chip, all.entries );
    html.close();
    writeSwitch( html, "tm", "The treemap shows", choices );
    writeTreemap( html, "tmm", treemapOf( data.chip, false ) );
    writeTreemap( html, "tma", all );
    writeLegend( html, data.chip );
}

} // namespace Bfri
