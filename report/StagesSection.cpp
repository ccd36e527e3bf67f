// The map of stages by kinds, and the floor plan below it, for each direction of each program.

#include "report/Parts.h"

#include <map>

namespace Bfri {

namespace {

// The map.

/// From 0 to 7: how dark a cell is.
std::uint64_t shade( std::uint64_t number, std::uint64_t most ) {
    constexpr std::uint64_t shades = 7;
    return most == 0 ? 0 : std::min( shades, ( number * shades + most - 1 ) / most );
}

/// How much of a capacity a kind uses, or all kinds; none without a budget.
CapacityShare shareOf( Direction const& map, GridRow const* row, std::size_t column ) {
    ReportData const& data = map.data;
    return data.hasBudget() ? capacityShareOf( data.uses[ map.number ], row, map.ingress, data.chip, column )
                            : CapacityShare();
}

std::uint64_t wholeOf( CapacityShare const& share ) {
    return std::max<std::uint64_t>( 1, share.available() );
}

/// "43 %"; "·" where there is no capacity.
Html shareText( Direction const& map, CapacityShare const& share ) {
    if( !map.data.hasBudget() )
        return {};
    return markup( "<u class=f>{}</u>", share.use ? percent( share.used, wholeOf( share ) ) : "·" );
}

OwnText shareClasses( CapacityShare const& share ) {
    if( !share.use )
        return {};
    return own( " f{}{}", shade( share.used, wholeOf( share ) ), when( share.use->isOver(), " over" ) );
}

String cellTitle( Direction const& map, GridRow const& row, std::size_t column ) {
    GridCell const& cell = row.cells[ column ];
    String text =
        fmt::format( "stage {}, {} {}: {}", map.data.chip.stages[ column ], directionWord( map.ingress ),
                     styleOf( row.type ).word, counted( cell.resources, "resource" ) );
    if( cell.resources > cell.starting )
        text += ", " + grouped( cell.resources - cell.starting ) + " of them from an earlier stage";
    text += "; " + countedEntries( cell.entries );
    if( cell.entries > 0 )
        text += ", " + percent( cell.entries, row.sum().entries ) + " of this kind";
    if( !row.was.empty() )
        text += "; was " + grouped( row.was[ column ].resources ) + " and " +
                grouped( row.was[ column ].entries );
    if( CapacityShare const share = shareOf( map, &row, column ); share.use )
        text += "; " + grouped( share.used ) + " of a capacity of " + grouped( share.available() ) +
                ( share.use->isOver() ? ", which is overrun" : "" );
    return text;
}

void writeCell( Html& html, Direction const& map, GridRow const& row, std::size_t column,
                std::uint64_t mostResources, std::uint64_t mostEntries ) {
    GridCell const& cell = row.cells[ column ];
    GridCell const& was = row.was.empty() ? cell : row.was[ column ];
    if( cell.resources == 0 && was.resources == 0 ) {
        html.add( "<td>" );
        return;
    }
    CapacityShare const share = shareOf( map, &row, column );
    html.add( R"(<td class="n{} e{}{}"><a href={} data-q="{}" title="{}">)"
              R"(<u class=n>{}{}</u><u class=e>{}{}</u>{}</a>)",
              shade( cell.resources, mostResources ), shade( cell.entries, mostEntries ),
              shareClasses( share ), listLink( row.type ), map.question( column, row.type ),
              cellTitle( map, row, column ), grouped( cell.resources ),
              delta( cell.resources, was.resources ), rounded( cell.entries ),
              delta( cell.entries, was.entries, roundedFine ), shareText( map, share ) );
}

Html twoTexts( String const& resources, String const& entries ) {
    return markup( "<u class=n>{}</u><u class=e>{}</u>", resources, entries );
}

void writeRow( Html& html, Direction const& map, GridRow const& row, std::uint64_t mostResources ) {
    std::uint64_t most = 1;
    for( GridCell const& cell : row.cells )
        most = std::max( most, cell.entries );
    html.add( "<tr><th scope=row><span>{}</span>{}", typeWord( row.type ),
              twoTexts( grouped( row.resources ), rounded( row.sum().entries ) ) );
    for( std::size_t i = 0; i < row.cells.size(); ++i )
        writeCell( html, map, row, i, mostResources, most );
}

void writeStageMap( Html& html, Direction const& map ) {
    auto const& stages = map.data.chip.stages;
    auto const& grids = map.data.grids[ map.number ];
    U32 const most = std::max( { U32( 5 ), grids[ 0 ].mostResources(), grids[ 1 ].mostResources() } );
    html.add( R"(<table class="hm{}"><caption class=vh>{}: resources and entries by kind and stage</caption>)"
              R"(<colgroup><col class=c0>)",
              when( stages.size() > 14, " nar" ), map.name() );
    for( std::size_t i = 0; i < stages.size(); ++i )
        html.add( "<col>" );
    html.add( "</colgroup><thead><tr><th rowspan=2 class=c1><b>{}</b> <span>total</span>"
              "<th colspan={} scope=colgroup>stage<tr>",
              map.ingress ? "Ingress" : "Egress", stages.size() );
    for( Stage const stage : stages )
        html.add( "<th scope=col>{}", stage );
    html.add( "<tbody>" );
    for( GridRow const& row : map.grid().rows )
        writeRow( html, map, row, most );
    GridRow const& all = map.grid().all;
    html.add( "<tfoot><tr><th scope=row><span>all kinds</span>{}",
              twoTexts( grouped( all.resources ), rounded( all.sum().entries ) ) );
    for( std::size_t i = 0; i < all.cells.size(); ++i ) {
        GridCell const& cell = all.cells[ i ];
        html.add( "<td>{}{}",
                  cell.resources ? twoTexts( grouped( cell.resources ), rounded( cell.entries ) )
                                 : twoTexts( "·", "·" ),
                  shareText( map, shareOf( map, nullptr, i ) ) );
    }
    html.add( "</table>" );
}

// Words about a program.

/// "mostly statistics": the kind with most of the entries in a stage; "above all", where that is not half.
String topKindText( ReportData const& data, std::size_t program, std::size_t column ) {
    std::map<std::size_t, std::pair<std::uint64_t, U32>> kinds; // by their places
    for( StageGrid const& grid : data.grids[ program ] ) {
        for( GridRow const& row : grid.rows ) {
            auto& kind = kinds[ placeOfType( row.type ) ];
            kind = { kind.first + row.cells[ column ].entries, row.type };
        }
    }
    auto const top = std::max_element( kinds.begin(), kinds.end(), []( auto const& a, auto const& b ) {
        return a.second.first < b.second.first;
    } );
    bool const isHalf = top->second.first * 2 > data.totalOf( program, column ).entries;
    return fmt::format( "{} {}", isHalf ? "mostly" : "above all", styleOf( top->second.second ).word );
}

/// "stage 5 (101k, 26 %), mostly hash match, and stage 4 (86k, 22 %), …": the two with most entries.
String fullestText( ReportData const& data, std::size_t program ) {
    std::vector<std::pair<std::uint64_t, std::size_t>> totals;
    for( std::size_t i = 0; i < data.chip.stages.size(); ++i )
        totals.emplace_back( data.totalOf( program, i ).entries, i );
    std::stable_sort( totals.begin(), totals.end(),
                      []( auto const& a, auto const& b ) { return a.first > b.first; } );
    String text;
    for( std::size_t i = 0; i < std::min<std::size_t>( 2, totals.size() ) && totals[ i ].first > 0; ++i )
        text += fmt::format( "{}stage {} ({}, {}), {}", i ? ", and " : "",
                             data.chip.stages[ totals[ i ].second ], rounded( totals[ i ].first ),
                             percent( totals[ i ].first, data.entriesOf( program ) ),
                             topKindText( data, program, totals[ i ].second ) );
    return text;
}

void writeNotes( Html& html, std::span<ChipResource const> resources ) {
    std::size_t notStated = 0, notKnown = 0;
    for( ChipResource const& resource : resources ) {
        notStated += !resource.stages.empty() && !resource.isStated;
        notKnown += resource.isPlaced && resource.stages.empty();
    }
    if( notStated > 0 )
        html.add(
            "<p class=note>{} with stage tables that do not state their sizes: drawn with an even share of "
            "their entries in each stage and a dashed edge; the sums have only what is stated.</p>",
            counted( notStated, "resource" ) );
    if( notKnown > 0 )
        html.add(
            "<p class=note>{} not on the map: the context file does not say which stages they take.</p>",
            counted( notKnown, "resource" ) );
}

void writeProgramStages( Html& html, ReportData const& data, std::size_t number ) {
    ChipProgram const& program = data.chip.programs[ number ];
    html.add( "<section class=chip id=p{}><h3>{}{}", number, pipeBoxes( program ), program.name );
    if( String const fullest = fullestText( data, number ); !fullest.empty() )
        html.add( "<small>Most entries: {}.</small>", fullest );
    html.add( "</h3>" );
    for( bool const ingress : { true, false } ) {
        Direction const direction{ data, number, ingress };
        if( direction.grid().isEmpty() )
            continue;
        html.add( R"(<div class=sc style=--n:{} tabindex=0 role=region aria-label="{} {}"><div class=in>)",
                  data.chip.stages.size(), program.name, directionWord( ingress ) );
        writeStageMap( html, direction );
        writeFloorPlan( html, direction );
        html.add( "</div></div>" );
    }
    writeNotes( html, data.chip.resourcesOf( program ) );
    html.add( "</section>" );
}

} // namespace

void writeStages( Html& html, ReportData const& data ) {
    static constexpr Choice choices[] = {
        { "by-n", "resources" }, { "by-e", "entries" }, { "by-f", "capacity" } };
    if( data.isDiff() ) {
        html.add( "<p class=dleg>" );
        for( Mark const mark : marksIn( Marks().set() ) )
            html.add( "<span>{}{}</span>", markOf( mark ), wordOf( mark ) );
        html.add( "<span><i class=gk></i>dashed: where it was</span></p>" );
    }
    html += switchOf( "by", "The map shows", std::span( choices ).first( data.hasBudget() ? 3 : 2 ) );
    for( std::size_t i = 0; i < data.chip.programs.size(); ++i )
        writeProgramStages( html, data, i );
}

} // namespace Bfri
