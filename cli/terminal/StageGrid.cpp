#include "cli/terminal/Characters.h"
#include "cli/terminal/StageText.h"

#include <algorithm>
#include <utility>

namespace Bfri {

namespace {

/// "2+1": two start, one goes on.
String cellOf( StageLoad const& load, Symbols const& symbols ) {
    U32 const going = load.spanning - load.starting;
    if( load.spanning == 0 )
        return symbols.nothing;
    return ( load.starting > 0 ? std::to_string( load.starting ) : "" ) +
           ( going > 0 ? "+" + std::to_string( going ) : "" );
}

/// The entries as far as they are stated: "512", "512?" where some are not, "?" where none are.
String entriesOf( StageLoad const& load, Symbols const& symbols ) {
    if( load.tables == 0 )
        return symbols.nothing;
    return ( load.stated > 0 ? std::to_string( load.entries ) : "" ) +
           ( load.stated < load.tables ? "?" : "" );
}

StageLoad sumOf( std::vector<StageLoad> const& loads ) {
    StageLoad sum;
    for( StageLoad const& load : loads ) {
        sum.tables += load.tables;
        sum.stated += load.stated;
        sum.entries += load.entries;
    }
    return sum;
}

struct GridLine {
    String label;
    std::vector<String> cells;       ///< the first is of all stages
    std::vector<unsigned> heat = {}; ///< of each stage, from 0, nothing, to hottest
};

GridLine headerLine( StageMap const& map ) {
    GridLine line{ "STAGE", { "ALL" } };
    for( Stage const stage : map.stages )
        line.cells.push_back( std::to_string( stage ) );
    return line;
}

std::uint64_t mostOf( std::vector<StageLoad> const& loads, StageMeasure by ) {
    std::uint64_t most = 1;
    for( StageLoad const& load : loads )
        most = std::max( most, amountOf( load, by ) );
    return most;
}

/// The amount in so many steps up to the most there is; only nothing is 0.
unsigned stepOf( std::uint64_t amount, std::uint64_t most, unsigned steps ) {
    return static_cast<unsigned>( ( amount * steps + most - 1 ) / most );
}

GridLine loadLine( String const& label, std::size_t resources, std::vector<StageLoad> const& loads,
                   StageMeasure by, std::uint64_t most, Symbols const& symbols ) {
    bool const entries = by == StageMeasure::entries;
    GridLine line{ label, { entries ? entriesOf( sumOf( loads ), symbols ) : std::to_string( resources ) } };
    for( StageLoad const& load : loads ) {
        line.cells.push_back( entries ? entriesOf( load, symbols ) : cellOf( load, symbols ) );
        line.heat.push_back( stepOf( amountOf( load, by ), most, hottest ) );
    }
    return line;
}

/// The share of each stage in all entries.
GridLine shareLine( StageMap const& map, Symbols const& symbols ) {
    auto const all = sumOf( map.loads );
    GridLine line{ "share", { percentText( all.entries, all.entries ) } };
    for( StageLoad const& load : map.loads )
        line.cells.push_back( load.entries ? percentText( load.entries, all.entries ) : symbols.nothing );
    return line;
}

/// How full the stages are, compared with the fullest.
GridLine levelLine( StageMap const& map, StageMeasure by, Symbols const& symbols ) {
    std::uint64_t const fullest = mostOf( map.loads, by );
    GridLine line{ "", { "" } };
    for( StageLoad const& load : map.loads )
        line.cells.push_back( symbols.levels[ stepOf( amountOf( load, by ), fullest, 8 ) ] );
    return line;
}

/// A line for each capacity: which part of it each stage uses.
std::vector<GridLine> capacityLines( StageMap const& map, Rules const& rules, Symbols const& symbols ) {
    std::vector<GridLine> lines;
    Rule const* former = nullptr;
    for( Use const& use : capacityUses( rules, map ) ) {
        if( use.rule != std::exchange( former, use.rule ) )
            lines.push_back( { use.what, std::vector<String>( map.stages.size() + 1, symbols.nothing ),
                               std::vector<unsigned>( map.stages.size() ) } );
        auto const place = std::lower_bound( map.stages.begin(), map.stages.end(), *use.stage );
        auto const stage = static_cast<std::size_t>( place - map.stages.begin() );
        auto const percent = std::min<std::int64_t>( use.percent().value_or( 100 ), 100 );
        lines.back().cells[ stage + 1 ] = percentText( use );
        lines.back().heat[ stage ] = stepOf( static_cast<std::uint64_t>( percent ), 100, hottest );
    }
    for( GridLine& line : lines )
        line.cells.front().clear();
    return lines;
}

std::vector<GridLine> gridOf( StageMap const& map, StageView const& view, Symbols const& symbols ) {
    StageMeasure const by = view.by;
    std::uint64_t most = 1;
    for( StageGroup const& group : map.groups )
        most = std::max( most, mostOf( group.loads, by ) );
    std::vector<GridLine> lines{ headerLine( map ) };
    StageGroup const* former = nullptr;
    for( StageGroup const& group : map.groups ) {
        if( !former || former->ingress != group.ingress )
            lines.push_back( { directionOf( group.ingress ), {} } );
        former = &group;
        lines.push_back(
            loadLine( "  " + typeOf( group ), group.resources.size(), group.loads, by, most, symbols ) );
    }
    lines.push_back( loadLine( "all", map.size(), map.loads, by, mostOf( map.loads, by ), symbols ) );
    if( by == StageMeasure::entries )
        lines.push_back( shareLine( map, symbols ) );
    lines.push_back( levelLine( map, by, symbols ) );
    auto capacities = view.budget ? capacityLines( map, *view.budget, symbols ) : std::vector<GridLine>();
    if( !capacities.empty() )
        lines.push_back( { "capacities", {} } );
    for( GridLine& line : capacities ) {
        line.label.insert( 0, 2, ' ' );
        lines.push_back( std::move( line ) );
    }
    return lines;
}

struct GridWidths {
    std::size_t label = 0;
    std::vector<std::size_t> cells; ///< the gap before each included
};

/// Where the blocks of cells end: each has as many as fit, at least one, and at most so many.
std::vector<std::size_t> blocksOf( GridWidths const& widths, std::size_t most, TerminalStyle const& look ) {
    std::vector<std::size_t> ends;
    for( std::size_t end = 0; end < widths.cells.size(); ends.push_back( end ) ) {
        std::size_t const first = end;
        std::size_t taken = widths.label;
        do {
            taken += widths.cells[ end++ ];
        } while( end < widths.cells.size() && end - first < most &&
                 ( look.columns == 0 || taken + widths.cells[ end ] <= look.columns ) );
    }
    return ends;
}

/// As few blocks as the terminal allows, and even ones.
std::vector<std::size_t> evenBlocksOf( GridWidths const& widths, TerminalStyle const& look ) {
    std::size_t const cells = widths.cells.size();
    auto const blocks = blocksOf( widths, cells, look );
    auto const even = blocksOf( widths, ( cells + blocks.size() - 1 ) / blocks.size(), look );
    return even.size() == blocks.size() ? even : blocks;
}

/// Cells are alike, but for a number too long for the others: that of a stage that no chip has, or of all.
GridWidths widthsWithGap( std::vector<GridLine> const& lines, std::size_t gap, TerminalStyle const& look ) {
    GridWidths widths;
    std::size_t alike = 3;
    for( GridLine const& line : lines ) {
        widths.label = std::max( widths.label, width( line.label ) );
        for( std::size_t i = 1; &line != &lines.front() && i < line.cells.size(); ++i )
            alike = std::max( alike, width( line.cells[ i ] ) );
    }
    constexpr std::size_t readable = 8; // with less room the line is broken, not the label cut
    if( look.columns > 0 )
        widths.label =
            std::min( widths.label, std::max( readable + alike + gap, look.columns ) - alike - gap );
    widths.cells.resize( lines.front().cells.size(), alike + gap );
    for( GridLine const& line : lines ) {
        for( std::size_t i = 0; i < line.cells.size(); ++i )
            widths.cells[ i ] = std::max( widths.cells[ i ], width( line.cells[ i ] ) + gap );
    }
    return widths;
}

/// The gaps are narrow where that saves a block.
GridWidths widthsOf( std::vector<GridLine> const& lines, TerminalStyle const& look ) {
    GridWidths const narrow = widthsWithGap( lines, 1, look );
    GridWidths const wide = widthsWithGap( lines, 2, look );
    std::size_t const cells = wide.cells.size();
    return blocksOf( narrow, cells, look ).size() < blocksOf( wide, cells, look ).size() ? narrow : wide;
}

/// A space, then the cell, on its heat.
String cellText( GridLine const& line, std::size_t i, std::size_t columns, TerminalStyle const& look ) {
    unsigned const heat = i > 0 && i <= line.heat.size() ? line.heat[ i - 1 ] : 0;
    return " " + onHeat( look, heat, toTheRight( line.cells[ i ], columns - 1 ) );
}

void printBlock( std::ostream& out, std::vector<GridLine> const& lines, GridWidths const& widths,
                 std::size_t first, std::size_t end, TerminalStyle const& look ) {
    for( GridLine const& line : lines ) {
        String text = toTheLeft( cutAtEnd( line.label, widths.label, look ), widths.label );
        for( std::size_t i = first; i < std::min( end, line.cells.size() ); ++i )
            text += cellText( line, i, widths.cells[ i ], look );
        text.erase( text.find_last_not_of( ' ' ) + 1 );
        out << text << '\n';
    }
}

} // namespace

void printGrid( std::ostream& out, TerminalStyle const& look, StageMap const& map, StageView const& view ) {
    auto const lines = gridOf( map, view, symbolsOf( look ) );
    GridWidths const widths = widthsOf( lines, look );
    std::size_t first = 0;
    for( std::size_t const end : evenBlocksOf( widths, look ) ) {
        out << ( first == 0 ? "" : "\n" );
        printBlock( out, lines, widths, std::exchange( first, end ), end, look );
    }
}

} // namespace Bfri
