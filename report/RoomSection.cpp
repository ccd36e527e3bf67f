#include "inspect/report/Treemap.h"
#include "report/Parts.h"

#include <map>

namespace Bfri {

namespace {

using Is = TreemapBox::Is;

/// How many resources hold half of all entries, and which paths most.
void writeSentence( Html& html, Chip const& chip, std::uint64_t all ) {
    std::vector<std::uint64_t> sizes;
    std::map<std::string_view, std::uint64_t> byPath;
    for( ChipResource const& resource : chip.resources ) {
        if( !resource.isPlaced )
            continue;
        SplitName const name( resource.name() );
        sizes.push_back( resource.size );
        byPath[ name.path.empty() ? name.last : name.path.substr( 0, name.path.size() - 1 ) ] +=
            resource.size;
    }
    std::sort( sizes.rbegin(), sizes.rend() );
    std::size_t count = 0;
    for( std::uint64_t sum = 0; count < sizes.size() && sum * 2 < all; ++count )
        sum += sizes[ count ];
    html.add( "<p class=lead2>{} of {} {} half of all {} entries. The largest blocks: ",
              counted( count, "resource" ), grouped( sizes.size() ), count == 1 ? "holds" : "hold",
              rounded( all ) );
    constexpr std::size_t most = 3;
    std::vector<std::pair<std::string_view, std::uint64_t>> blocks( byPath.begin(), byPath.end() );
    std::stable_sort( blocks.begin(), blocks.end(),
                      []( auto const& a, auto const& b ) { return a.second > b.second; } );
    for( std::size_t i = 0; i < std::min( most, blocks.size() ); ++i )
        html.add( "{}<b>{}</b> {}", when( i > 0, ", " ), blocks[ i ].first,
                  percent( blocks[ i ].second, all ) );
    html.add( ".</p>" );
}

OwnText boxStyle( Box const& box ) {
    return own( "left:{:.2f}%;top:{:.2f}%;width:{:.2f}%;height:{:.2f}%", 100 * box.x / Treemap::width,
                100 * box.y / Treemap::height, 100 * box.width / Treemap::width,
                100 * box.height / Treemap::height );
}

void writeGroup( Html& html, TreemapBox const& box, std::uint64_t all ) {
    html.add( R"(<div class=g{} style={} title="{}: {}, {} of all">)", static_cast<int>( box.is ),
              boxStyle( box.place ), box.label.empty() ? "without a path" : box.label,
              countedEntries( box.entries ), percent( box.entries, all ) );
    if( box.hasLabel )
        html.add( "<b>{}</b>", box.label );
    if( box.hasLabel && box.place.width > 80 )
        html.add( "<u>{}{}</u>", rounded( box.entries ),
                  box.is == Is::program ? ", " + percent( box.entries, all ) : "" );
    html.add( "</div>" );
}

void writeLeaf( Html& html, TreemapBox const& box, std::uint64_t all ) {
    ChipResource const& resource = *box.resource;
    bool const hasLabel = box.place.width > 40 && box.place.height > 15;
    html.add( R"(<a class="lf {}{}{}" style={} href={} title="{} · {} · {}, {}"{}>)",
              styleOf( resource.type ).css, when( hasLabel, " L" ),
              when( hasLabel && box.place.width > 150, " S" ), boxStyle( box.place ),
              hrefOf( resource.link() ), resource.name(), styleOf( resource.type ).word,
              countedEntries( resource.size ), percent( resource.size, all ), tableMark( resource ) );
    if( hasLabel )
        html.add( "<b>{}{}</b>", marksOf( resource.marks ), SplitName( resource.name() ).last );
    if( hasLabel && box.place.height > 28 )
        html.add( "<u>{}</u>", entriesText( resource.size ) );
    html.add( "</a>" );
}

void writeSeveral( Html& html, TreemapBox const& box ) {
    bool const hasLabel = box.place.width > 34 && box.place.height > 13;
    html.add( R"(<a class="lf more ot" style={} href=#tables title="{} more: {}">{}</a>)",
              boxStyle( box.place ), grouped( box.several ), countedEntries( box.entries ),
              hasLabel ? markup( "<b>+{}</b>", grouped( box.several ) ) : Html() );
}

void writeTreemap( Html& html, Literal css, Treemap const& map ) {
    html.add( "<div class={}><div class=tm>", css );
    for( TreemapBox const& box : map.boxes ) {
        if( box.is == Is::several )
            writeSeveral( html, box );
        else if( box.is == Is::resource )
            writeLeaf( html, box, map.entries );
        else
            writeGroup( html, box, map.entries );
    }
    html.add( "</div></div>" );
}

} // namespace

void writeRoom( Html& html, ReportData const& data ) {
    static constexpr Choice choices[] = { { "tm-m", "match tables" }, { "tm-a", "all resources" } };
    Treemap const all = treemapOf( data.chip, true );
    if( all.entries == 0 ) {
        html.add( "<p class=lead2>Nothing that is placed has entries.</p>" );
        return;
    }
    writeSentence( html, data.chip, all.entries );
    html += switchOf( "tm", "The treemap shows", choices );
    writeTreemap( html, "tmm", treemapOf( data.chip, false ) );
    writeTreemap( html, "tma", all );
    html.add( "<div class=legend>" );
    for( U32 const type : typesOf( data.chip, []( auto const& resource ) { return resource.isPlaced; } ) )
        html.add( "<span{}>{}</span>", when( !isMatchType( type ), " class=nomatch" ), typeWord( type ) );
    html.add( "</div>" );
}

} // namespace Bfri
