#include "cli/report/Sections.h"

namespace Bfri {

namespace {

/// From 0 to 7: how dark a cell is.
std::uint64_t shade( std::uint64_t number, std::uint64_t most ) {
    constexpr std::uint64_t shades = 7;
    return most == 0 ? 0 : std::min( shades, ( number * shades + most - 1 ) / most );
}

struct MapContext {
    ReportData const& data;
    ChipProgram const& program;
    bool ingress;
    U32 mostResources;  ///< of one kind in a stage, in both directions
    std::size_t number; ///< of the program

    /// How much of a capacity a kind uses, or all kinds; none without a budget.
    CapacityShare shareOf( GridRow const* row, std::size_t column ) const {
        return data.hasBudget() ? capacityShareOf( data.uses[ number ], row, ingress, data.chip, column )
                                : CapacityShare();
    }
};

/// "43 %"; "·" where there is no capacity.
void writeShare( Html& html, MapContext const& map, CapacityShare const& share ) {
    if( map.data.hasBudget() )
        html.leaf( "u", { { "class", "f" } },
                   share.use ? percent( share.used, std::max<std::uint64_t>( 1, share.available() ) ) : "·" );
}

OwnText shareClasses( CapacityShare const& share ) {
    if( !share.use )
        return OwnText( "" );
    return own( " f{}{}", shade( share.used, std::max<std::uint64_t>( 1, share.available() ) ),
                when( share.use->isOver(), " over" ) );
}

String cellTitle( MapContext const& map, GridRow const& row, std::size_t column ) {
    GridCell const& cell = row.cells[ column ];
    String text = "stage " + std::to_string( map.data.chip.stages[ column ] ) + ", " +
                  String( directionWord( map.ingress ).view() ) + ' ' +
                  String( styleOf( row.type ).word.view() ) + ": " + counted( cell.resources, "resource" );
    if( cell.resources > cell.starting )
        text += ", " + grouped( cell.resources - cell.starting ) + " of them from an earlier stage";
    text += "; " + counted( cell.entries, "entry", "entries" );
    if( cell.entries > 0 )
        text += ", " + percent( cell.entries, row.sum().entries ) + " of this kind";
    if( !row.was.empty() )
        text += "; was " + grouped( row.was[ column ].resources ) + " and " +
                grouped( row.was[ column ].entries );
    if( CapacityShare const share = map.shareOf( &row, column ); share.use )
        text += "; " + grouped( share.used ) + " of a capacity of " + grouped( share.available() ) +
                ( share.use->isOver() ? ", which is overrun" : "" );
    return text;
}

void writeCell( Html& html, MapContext const& map, GridRow const& row, std::size_t column,
                std::uint64_t mostEntries ) {
    GridCell const& cell = row.cells[ column ];
    GridCell const was = row.was.empty() ? cell : row.was[ column ];
    if( cell.resources == 0 && was.resources == 0 ) {
        html.open( "td" ).close();
        return;
    }
    CapacityShare const share = map.shareOf( &row, column );
    html.open( "td", { { "class", own( "n{} e{}{}", shade( cell.resources, map.mostResources ),
                                       shade( cell.entries, mostEntries ), shareClasses( share ) ) } } );
    html.open( "a", { { "href", listLink( row.type ) },
                      { "data-q", questionOf( map.data, map.program, map.data.chip.stages[ column ],
                                              map.ingress, row.type ) },
                      titled( cellTitle( map, row, column ) ) } );
    html.open( "u", { { "class", "n" } } ).text( grouped( cell.resources ) );
    writeDelta( html, cell.resources, was.resources );
    html.close().open( "u", { { "class", "e" } } ).text( rounded( cell.entries ) );
    writeDelta( html, cell.entries, was.entries, roundedFine );
    html.close();
    writeShare( html, map, share );
    html.close().close();
}

void writeTwo( Html& html, String const& resources, String const& entries ) {
    html.leaf( "u", { { "class", "n" } }, resources ).leaf( "u", { { "class", "e" } }, entries );
}

void writeRow( Html& html, MapContext const& map, GridRow const& row ) {
    std::uint64_t most = 1;
    for( GridCell const& cell : row.cells )
        most = std::max( most, cell.entries );
    html.open( "tr" ).open( "th", { { "scope", "row" } } ).open( "span" );
    writeSwatch( html, row.type );
    html.text( styleOf( row.type ).word.view() ).close();
    writeTwo( html, grouped( row.resources ), rounded( row.sum().entries ) );
    html.close();
    for( std::size_t i = 0; i < row.cells.size(); ++i )
        writeCell( html, map, row, i, most );
    html.close();
}

void writeSums( Html& html, MapContext const& map, GridRow const& all ) {
    html.open( "tfoot" ).open( "tr" ).open( "th", { { "scope", "row" } } ).leaf( "span", "all kinds" );
    writeTwo( html, grouped( all.resources ), rounded( all.sum().entries ) );
    html.close();
    for( std::size_t i = 0; i < all.cells.size(); ++i ) {
        GridCell const& cell = all.cells[ i ];
        html.open( "td" );
        writeTwo( html, cell.resources ? grouped( cell.resources ) : "·",
                  cell.resources ? rounded( cell.entries ) : "·" );
        writeShare( html, map, map.shareOf( nullptr, i ) );
        html.close();
    }
    html.close().close();
}

} // namespace

void writeStageMap( Html& html, ReportData const& data, ChipProgram const& program, bool ingress ) {
    auto const number = static_cast<std::size_t>( &program - data.chip.programs.data() );
    StageGrid const& grid = data.grids[ number ][ !ingress ];
    MapContext const map{ data, program, ingress,
                          std::max( { U32( 5 ), data.grids[ number ][ 0 ].mostResources(),
                                      data.grids[ number ][ 1 ].mostResources() } ),
                          number };
    html.open( "table", { { "class", own( "hm{}", when( data.chip.stages.size() > 14, " nar" ) ) } } );
    html.leaf( "caption", { { "class", "vh" } },
               program.name + ", " + String( directionWord( ingress ).view() ) +
                   ": resources and entries by kind and stage" );
    html.open( "colgroup" ).empty( "col", { { "class", "c0" } } );
    for( std::size_t i = 0; i < data.chip.stages.size(); ++i )
        html.empty( "col" );
    html.close().open( "thead" ).open( "tr" ).open( "th", { { "rowspan", "2" }, { "class", "c1" } } );
    html.leaf( "b", ingress ? "Ingress" : "Egress" ).text( " " ).leaf( "span", "total" ).close();
    html.leaf( "th", { { "colspan", own( "{}", data.chip.stages.size() ) }, { "scope", "colgroup" } },
               "stage" );
    html.close().open( "tr" );
    for( Stage const stage : data.chip.stages )
        html.leaf( "th", { { "scope", "col" } }, std::to_string( stage ) );
    html.close().close().open( "tbody" );
    for( GridRow const& row : grid.rows )
        writeRow( html, map, row );
    html.close();
    writeSums( html, map, grid.all );
    html.close();
}

} // namespace Bfri
