#include "cli/StageText.h"

#include "cli/Records.h"
#include "cli/TextFormat.h"
#include "cli/Utf8.h"

#include <array>

namespace Bfri {

namespace {

struct Symbols {
    char const* nothing;
    char const* taken;
    std::array<char const*, 9> levels; ///< from empty to full
};

Symbols const& symbolsOf( Look const& look ) {
    static constexpr Symbols ascii = { ".", "#", { " ", ".", ":", "-", "=", "+", "*", "#", "@" } };
    static constexpr Symbols utf8 = { "·", "█", { " ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█" } };
    return look.utf8 ? utf8 : ascii;
}

String repeated( char const* symbol, std::size_t times ) {
    String text;
    for( std::size_t i = 0; i < times; ++i )
        text += symbol;
    return text;
}

String toTheRight( String const& text, std::size_t columns ) {
    return String( columns - std::min( columns, width( text ) ), ' ' ) + text;
}

String toTheLeft( String const& text, std::size_t columns ) {
    return text + String( columns - std::min( columns, width( text ) ), ' ' );
}

char const* directionOf( StageGroup const& group ) { return group.ingress ? "ingress" : "egress"; }

String typeOf( StageGroup const& group ) {
    return valueAs<String>( shownResource( rowOf( *group.resources.front().resource ) ), "type" );
}

// The grid.

/// "2+1": two start, one goes on.
String cellOf( StageLoad const& load, Symbols const& symbols ) {
    U32 const going = load.spanning - load.starting;
    if( load.spanning == 0 )
        return symbols.nothing;
    return ( load.starting > 0 ? std::to_string( load.starting ) : "" ) +
           ( going > 0 ? "+" + std::to_string( going ) : "" );
}

struct GridLine {
    String label;
    std::vector<String> cells;
};

GridLine headerLine( StageMap const& map ) {
    GridLine line{ "STAGE", { "ALL" } };
    for( Stage const stage : map.stages )
        line.cells.push_back( std::to_string( stage ) );
    return line;
}

GridLine loadLine( String const& label, std::size_t all, std::vector<StageLoad> const& loads,
                   Symbols const& symbols ) {
    GridLine line{ label, { std::to_string( all ) } };
    for( StageLoad const& load : loads )
        line.cells.push_back( cellOf( load, symbols ) );
    return line;
}

/// How full the stages are, compared with the fullest.
GridLine levelLine( StageMap const& map, Symbols const& symbols ) {
    std::uint64_t fullest = 1;
    for( StageLoad const& load : map.loads )
        fullest = std::max<std::uint64_t>( fullest, load.spanning );
    GridLine line{ "", { "" } };
    for( StageLoad const& load : map.loads )
        line.cells.push_back(
            symbols.levels[ ( load.spanning * std::uint64_t( 8 ) + fullest - 1 ) / fullest ] );
    return line;
}

std::vector<GridLine> gridOf( StageMap const& map, Symbols const& symbols ) {
    std::vector<GridLine> lines{ headerLine( map ) };
    StageGroup const* former = nullptr;
    for( StageGroup const& group : map.groups ) {
        if( !former || former->ingress != group.ingress )
            lines.push_back( { directionOf( group ), {} } );
        former = &group;
        lines.push_back( loadLine( "  " + typeOf( group ), group.resources.size(), group.loads, symbols ) );
    }
    lines.push_back( loadLine( "all", map.size(), map.loads, symbols ) );
    lines.push_back( levelLine( map, symbols ) );
    return lines;
}

struct GridWidths {
    std::size_t label = 0;
    std::size_t cell = 0; ///< the gap before it included
};

/// Cells of a line, as even as can be, in as few blocks as the terminal allows.
std::size_t cellsOfBlock( std::size_t cells, GridWidths const& widths, Look const& look ) {
    if( look.columns == 0 )
        return cells;
    std::size_t const room = look.columns - std::min( look.columns, widths.label );
    std::size_t const most = std::max<std::size_t>( 1, room / widths.cell );
    std::size_t const blocks = ( cells + most - 1 ) / most;
    return ( cells + blocks - 1 ) / blocks;
}

/// The gaps are narrow where that saves a block.
GridWidths widthsOf( std::vector<GridLine> const& lines, Look const& look ) {
    GridWidths widths;
    for( GridLine const& line : lines ) {
        widths.label = std::max( widths.label, width( line.label ) );
        for( String const& cell : line.cells )
            widths.cell = std::max( widths.cell, width( cell ) );
    }
    std::size_t const cells = lines.front().cells.size();
    GridWidths const narrow{ widths.label, widths.cell + 1 };
    GridWidths const wide{ widths.label, widths.cell + 2 };
    return cellsOfBlock( cells, narrow, look ) > cellsOfBlock( cells, wide, look ) ? narrow : wide;
}

void printBlock( std::ostream& out, std::vector<GridLine> const& lines, GridWidths const& widths,
                 std::size_t first, std::size_t end ) {
    for( GridLine const& line : lines ) {
        String text = toTheLeft( line.label, widths.label );
        for( std::size_t i = first; i < std::min( end, line.cells.size() ); ++i )
            text += toTheRight( line.cells[ i ], widths.cell );
        text.erase( text.find_last_not_of( ' ' ) + 1 );
        out << text << '\n';
    }
}

// The bars.

struct BarWidths {
    std::size_t size;  ///< of the column of sizes
    std::size_t stage; ///< of each stage
    std::size_t name;  ///< the most; 0: no limit
};

std::vector<Placed> chosen( StageGroup const& group, std::optional<Stage> stage ) {
    std::vector<Placed> resources = group.resources;
    std::erase_if( resources, [ & ]( Placed const& placed ) { return stage && !placed.isIn( *stage ); } );
    return resources;
}

/// Wide stages as long as some room is left for names, else a character a stage.
BarWidths barWidths( StageMap const& map, Look const& look, std::optional<Stage> stage ) {
    constexpr std::size_t gaps = 2 + 2;
    constexpr std::size_t enough = 24;
    BarWidths widths{ 4, std::max<std::size_t>( 3, std::to_string( map.stages.back() ).size() + 1 ), 0 };
    for( StageGroup const& group : map.groups ) {
        for( Placed const& placed : chosen( group, stage ) )
            widths.size = std::max( widths.size, std::to_string( placed.resource->size ).size() );
    }
    if( look.columns == 0 )
        return widths;
    std::size_t const stages = map.stages.size();
    if( widths.size + gaps + stages * widths.stage + enough > look.columns )
        widths.stage = 1;
    std::size_t const taken = widths.size + gaps + stages * widths.stage;
    widths.name = look.columns > taken + 4 ? look.columns - taken : 4;
    return widths;
}

String nameOf( BfResource const& resource, BarWidths const& widths, Look const& look ) {
    String const name = shown( resource.name );
    return widths.name == 0 ? name : cutAtFront( name, widths.name, look );
}

String barOf( Placed const& placed, StageMap const& map, std::size_t stageWidth, Symbols const& symbols ) {
    String bar;
    for( Stage const stage : map.stages )
        bar += placed.isIn( stage ) ? repeated( symbols.taken, stageWidth )
                                    : toTheRight( symbols.nothing, stageWidth );
    return bar;
}

void printBarHeader( std::ostream& out, StageMap const& map, BarWidths const& widths ) {
    out << toTheRight( "SIZE", widths.size ) << "  ";
    for( Stage const stage : map.stages ) {
        String const number = std::to_string( stage );
        out << ( widths.stage > 1 ? toTheRight( number, widths.stage ) : number.substr( number.size() - 1 ) );
    }
    out << "  NAME\n";
}

} // namespace

void printGrid( std::ostream& out, Look const& look, StageMap const& map ) {
    auto const lines = gridOf( map, symbolsOf( look ) );
    GridWidths const widths = widthsOf( lines, look );
    std::size_t const cells = lines.front().cells.size();
    std::size_t const step = cellsOfBlock( cells, widths, look );
    for( std::size_t first = 0; first < cells; first += step ) {
        out << ( first == 0 ? "" : "\n" );
        printBlock( out, lines, widths, first, first + step );
    }
}

void printBars( std::ostream& out, Look const& look, StageMap const& map, std::optional<Stage> stage ) {
    Symbols const& symbols = symbolsOf( look );
    BarWidths const widths = barWidths( map, look, stage );
    printBarHeader( out, map, widths );
    for( StageGroup const& group : map.groups ) {
        auto const resources = chosen( group, stage );
        if( !resources.empty() )
            out << directionOf( group ) << ' ' << typeOf( group ) << ": " << resources.size() << '\n';
        for( Placed const& placed : resources )
            out << toTheRight( std::to_string( placed.resource->size ), widths.size ) << "  "
                << barOf( placed, map, widths.stage, symbols ) << "  "
                << nameOf( *placed.resource, widths, look ) << '\n';
    }
}

} // namespace Bfri
