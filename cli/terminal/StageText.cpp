#include "cli/terminal/StageText.h"

#include "cli/terminal/Characters.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/Records.h"

#include <array>
#include <numeric>

namespace Bfri {

namespace {

struct Symbols {
    char const* nothing;
    char const* taken;
    std::array<char const*, 9> levels; ///< from empty to full
};

Symbols const& symbolsOf( TerminalStyle const& look ) {
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

String typeOf( StageGroup const& group ) { return typeNameOf( *group.resources.front().resource ); }

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
    std::vector<std::size_t> cells; ///< the gap before each included
};

/// The end of the block that begins with a cell: as many cells as fit, at least one.
std::size_t endOfBlock( GridWidths const& widths, std::size_t first, std::size_t most,
                        TerminalStyle const& look ) {
    std::size_t const cells = widths.cells.size();
    std::size_t end = first;
    std::size_t taken = widths.label;
    while( end < cells && end - first < most ) {
        taken += widths.cells[ end ];
        if( look.columns > 0 && taken > look.columns && end > first )
            break;
        ++end;
    }
    return end;
}

std::size_t numberOfBlocks( GridWidths const& widths, std::size_t most, TerminalStyle const& look ) {
    std::size_t blocks = 0;
    for( std::size_t first = 0; first < widths.cells.size(); ++blocks )
        first = endOfBlock( widths, first, most, look );
    return blocks;
}

/// The most cells of a block, so that the blocks are even, and as few as the terminal allows.
std::size_t cellsOfBlock( GridWidths const& widths, TerminalStyle const& look ) {
    std::size_t const cells = widths.cells.size();
    std::size_t const blocks = numberOfBlocks( widths, cells, look );
    std::size_t const even = ( cells + blocks - 1 ) / blocks;
    return numberOfBlocks( widths, even, look ) == blocks ? even : cells;
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
    return numberOfBlocks( narrow, cells, look ) < numberOfBlocks( wide, cells, look ) ? narrow : wide;
}

void printBlock( std::ostream& out, std::vector<GridLine> const& lines, GridWidths const& widths,
                 std::size_t first, std::size_t end, TerminalStyle const& look ) {
    for( GridLine const& line : lines ) {
        String text = toTheLeft( cutAtEnd( line.label, widths.label, look ), widths.label );
        for( std::size_t i = first; i < std::min( end, line.cells.size() ); ++i )
            text += toTheRight( line.cells[ i ], widths.cells[ i ] );
        text.erase( text.find_last_not_of( ' ' ) + 1 );
        out << text << '\n';
    }
}

// The bars.

struct BarWidths {
    std::size_t size;                ///< of the column of sizes
    std::vector<std::size_t> stages; ///< of each stage
    std::size_t name;                ///< the most; 0: no limit

    /// Of what stands in front of a name.
    std::size_t front() const {
        constexpr std::size_t gaps = 2 + 2;
        return std::accumulate( stages.begin(), stages.end(), size + gaps );
    }
};

std::vector<Placed> chosen( StageGroup const& group, std::optional<Stage> stage ) {
    std::vector<Placed> resources = group.resources;
    std::erase_if( resources, [ & ]( Placed const& placed ) { return stage && !placed.isIn( *stage ); } );
    return resources;
}

/// Wide stages as long as some room is left for names, else a character a stage.
BarWidths barWidths( StageMap const& map, TerminalStyle const& look, std::optional<Stage> stage ) {
    constexpr std::size_t enough = 24;
    constexpr std::size_t readable = 8; // with less room the line is broken, not the name cut
    BarWidths widths{ 4, {}, 0 };
    for( Stage const one : map.stages )
        widths.stages.push_back( std::max<std::size_t>( 3, std::to_string( one ).size() + 1 ) );
    for( StageGroup const& group : map.groups ) {
        for( Placed const& placed : chosen( group, stage ) )
            widths.size = std::max( widths.size, std::to_string( placed.resource->size ).size() );
    }
    if( look.columns == 0 )
        return widths;
    if( widths.front() + enough > look.columns )
        widths.stages.assign( map.stages.size(), 1 );
    if( look.columns >= widths.front() + readable )
        widths.name = look.columns - widths.front();
    return widths;
}

String nameOf( BfResource const& resource, BarWidths const& widths, TerminalStyle const& look ) {
    String const name = escapeForTerminal( resource.name );
    return widths.name == 0 ? name : cutAtFront( name, widths.name, look );
}

String barOf( Placed const& placed, StageMap const& map, BarWidths const& widths, Symbols const& symbols ) {
    String bar;
    for( std::size_t i = 0; i < map.stages.size(); ++i )
        bar += placed.isIn( map.stages[ i ] ) ? repeated( symbols.taken, widths.stages[ i ] )
                                              : toTheRight( symbols.nothing, widths.stages[ i ] );
    return bar;
}

void printBarHeader( std::ostream& out, StageMap const& map, BarWidths const& widths ) {
    out << toTheRight( "SIZE", widths.size ) << "  ";
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        String const number = std::to_string( map.stages[ i ] );
        std::size_t const room = widths.stages[ i ];
        out << ( room > 1 ? toTheRight( number, room ) : number.substr( number.size() - 1 ) );
    }
    out << "  NAME\n";
}

} // namespace

void printGrid( std::ostream& out, TerminalStyle const& look, StageMap const& map ) {
    auto const lines = gridOf( map, symbolsOf( look ) );
    GridWidths const widths = widthsOf( lines, look );
    std::size_t const most = cellsOfBlock( widths, look );
    for( std::size_t first = 0, end = 0; first < widths.cells.size(); first = end ) {
        end = endOfBlock( widths, first, most, look );
        out << ( first == 0 ? "" : "\n" );
        printBlock( out, lines, widths, first, end, look );
    }
}

void printBars( std::ostream& out, TerminalStyle const& look, StageMap const& map,
                std::optional<Stage> stage ) {
    Symbols const& symbols = symbolsOf( look );
    BarWidths const widths = barWidths( map, look, stage );
    printBarHeader( out, map, widths );
    for( StageGroup const& group : map.groups ) {
        auto const resources = chosen( group, stage );
        if( !resources.empty() )
            out << directionOf( group ) << ' ' << typeOf( group ) << ": " << resources.size() << '\n';
        for( Placed const& placed : resources )
            out << toTheRight( std::to_string( placed.resource->size ), widths.size ) << "  "
                << barOf( placed, map, widths, symbols ) << "  " << nameOf( *placed.resource, widths, look )
                << '\n';
    }
}

namespace {

/// "stage 3" or "stages 0 to 11".
String stagesText( std::vector<Stage> const& stages ) {
    String const last = std::to_string( stages.back() );
    return stages.size() == 1 ? "stage " + last
                              : "stages " + std::to_string( stages.front() ) + " to " + last;
}

String counted( std::size_t resources ) {
    return std::to_string( resources ) + ( resources == 1 ? " resource" : " resources" );
}

StageLoad loadOf( StageMap const& map, Stage stage ) {
    auto const found = std::find( map.stages.begin(), map.stages.end(), stage );
    return found == map.stages.end() ? StageLoad()
                                     : map.loads[ static_cast<std::size_t>( found - map.stages.begin() ) ];
}

/// "the fullest is 7 with 6" or "the fullest are 4 and 10 with 5 each".
String fullestText( StageMap const& map ) {
    constexpr std::size_t most = 4;
    U32 load = 0;
    for( StageLoad const& one : map.loads )
        load = std::max( load, one.spanning );
    std::vector<String> fullest;
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        if( map.loads[ i ].spanning == load )
            fullest.push_back( std::to_string( map.stages[ i ] ) );
    }
    if( fullest.size() == 1 )
        return "the fullest is " + fullest.front() + " with " + std::to_string( load );
    String text = fullest.front();
    for( std::size_t i = 1; i < fullest.size(); ++i )
        text += ( i + 1 < fullest.size() ? ", " : " and " ) + fullest[ i ];
    if( fullest.size() > most )
        text = std::to_string( fullest.size() ) + " of these";
    return "the fullest are " + text + " with " + std::to_string( load ) + " each";
}

String overview( StageMap const& map, std::optional<Stage> asked ) {
    if( map.groups.empty() )
        return map.lost.empty() ? "no resource is placed" : "no resource has stages that are known";
    if( asked )
        return "stage " + std::to_string( *asked ) + ": " + std::to_string( loadOf( map, *asked ).spanning ) +
               " of " + counted( map.size() );
    return counted( map.size() ) + " in " + stagesText( map.stages ) + "; " + fullestText( map );
}

void printTitle( std::ostream& out, StageMap const& map ) {
    for( auto const* const file : map.files ) {
        out << "pipes";
        for( Value const& pipe : pipesOf( file->key().value() ) )
            out << ' ' << std::get<U32>( pipe.is );
        out << ": " << escapeForTerminal( file->value() ) << '\n';
    }
    if( map.files.size() > 1 )
        out << "one map for all of these, as their handles do not tell them apart\n";
}

void printLost( std::ostream& out, StageMap const& map ) {
    if( map.lost.empty() )
        return;
    out << "not on the map, as the context file does not tell all of their stages: "
        << counted( map.lost.size() ) << '\n';
    for( BfResource const* const resource : map.lost )
        out << "  " << escapeForTerminal( resource->name ) << '\n';
}

void printMap( std::ostream& out, TerminalStyle const& look, StageMap const& map, std::optional<Stage> asked,
               bool listed ) {
    printTitle( out, map );
    out << overview( map, asked ) << '\n';
    printLost( out, map );
    if( asked ? loadOf( map, *asked ).spanning == 0 : map.groups.empty() )
        return;
    out << '\n';
    if( asked || listed )
        printBars( out, look, map, asked );
    else
        printGrid( out, look, map );
}

void printFooter( std::ostream& out, TerminalStyle const& look ) {
    out << '\n' << inLines( "2+1: two start in the stage, and one goes on from an earlier one", look );
}

} // namespace

void printStages( std::ostream& out, TerminalStyle const& look, std::vector<StageMap> const& maps,
                  std::optional<Stage> asked, bool listed ) {
    for( StageMap const& map : maps ) {
        out << ( &map == &maps.front() ? "" : "\n" );
        printMap( out, look, map, asked, listed );
    }
    if( maps.empty() )
        out << "no resource is placed\n";
    bool const somePlaced =
        std::any_of( maps.begin(), maps.end(), []( StageMap const& map ) { return map.size() > 0; } );
    if( somePlaced && !listed && !asked )
        printFooter( out, look );
}

} // namespace Bfri
