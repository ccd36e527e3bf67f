#include "cli/terminal/StageText.h"

#include "cli/terminal/Characters.h"
#include "inspect/model/Records.h"

#include <fmt/ostream.h>
#include <numeric>
#include <span>

namespace Bfri {

Symbols const& symbolsOf( TerminalStyle const& look ) {
    static constexpr Symbols ascii = { ".", "#", { " ", ".", ":", "-", "=", "+", "*", "#", "@" } };
    static constexpr Symbols utf8 = { "·", "█", { " ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█" } };
    return look.utf8 ? utf8 : ascii;
}

String toTheRight( String const& text, std::size_t columns ) {
    return String( columns - std::min( columns, width( text ) ), ' ' ) + text;
}

String toTheLeft( String const& text, std::size_t columns ) {
    return text + String( columns - std::min( columns, width( text ) ), ' ' );
}

String percentText( std::uint64_t part, std::uint64_t all ) {
    return fmt::format( "{}%", all == 0 ? 0 : ( 100 * part + all / 2 ) / all );
}

String percentText( Use const& use ) { return use.percent() ? fmt::format( "{}%", *use.percent() ) : "over"; }

char const* directionOf( bool ingress ) { return ingress ? "ingress" : "egress"; }

String typeOf( StageGroup const& group ) { return typeNameOf( *group.resources.front().resource ); }

namespace {

struct BarWidths {
    std::size_t size;                ///< of the column of sizes
    std::vector<std::size_t> stages; ///< of each stage
    std::size_t name;                ///< the most; 0: no limit

    /// The width of what comes before a name.
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
    BarWidths widths{ String( "SIZE" ).size(), {}, 0 };
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
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        if( !placed.isIn( map.stages[ i ] ) )
            bar += toTheRight( symbols.nothing, widths.stages[ i ] );
        else
            for( std::size_t column = 0; column < widths.stages[ i ]; ++column )
                bar += symbols.taken;
    }
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

void printBars( std::ostream& out, TerminalStyle const& look, StageMap const& map,
                std::optional<Stage> stage ) {
    Symbols const& symbols = symbolsOf( look );
    BarWidths const widths = barWidths( map, look, stage );
    printBarHeader( out, map, widths );
    for( StageGroup const& group : map.groups ) {
        auto const resources = chosen( group, stage );
        if( !resources.empty() )
            out << directionOf( group.ingress ) << ' ' << typeOf( group ) << ": " << resources.size() << '\n';
        for( Placed const& placed : resources )
            out << toTheRight( std::to_string( placed.resource->size ), widths.size ) << "  "
                << barOf( placed, map, widths, symbols ) << "  " << nameOf( *placed.resource, widths, look )
                << '\n';
    }
}

namespace {

/// "stage 3" or "stages 0 to 11".
String stagesText( std::vector<Stage> const& stages ) {
    return stages.size() == 1 ? fmt::format( "stage {}", stages.front() )
                              : fmt::format( "stages {} to {}", stages.front(), stages.back() );
}

StageLoad loadOf( StageMap const& map, Stage stage ) {
    auto const found = std::find( map.stages.begin(), map.stages.end(), stage );
    return found == map.stages.end() ? StageLoad()
                                     : map.loads[ static_cast<std::size_t>( found - map.stages.begin() ) ];
}

/// "the fullest is 7 with 6" or "the fullest are 4 and 10 with 5 each".
String fullestText( StageMap const& map, StageMeasure by ) {
    constexpr std::size_t most = 4;
    std::uint64_t amount = 0;
    for( StageLoad const& one : map.loads )
        amount = std::max( amount, amountOf( one, by ) );
    std::vector<String> fullest;
    for( std::size_t i = 0; i < map.stages.size(); ++i ) {
        if( amountOf( map.loads[ i ], by ) == amount )
            fullest.push_back( std::to_string( map.stages[ i ] ) );
    }
    String const with = std::to_string( amount ) + ( by == StageMeasure::entries ? " entries" : "" );
    if( fullest.size() == 1 )
        return fmt::format( "the fullest is {} with {}", fullest.front(), with );
    String const last = fullest.back();
    fullest.pop_back();
    String const text = fullest.size() >= most ? fmt::format( "{} of these", fullest.size() + 1 )
                                               : fmt::format( "{} and {}", fmt::join( fullest, ", " ), last );
    return fmt::format( "the fullest are {} with {} each", text, with );
}

/// "stage 3: 4 of 35 resources; 45056 entries, 11% of all".
String stageOverview( StageMap const& map, Stage stage ) {
    StageLoad const load = loadOf( map, stage );
    String text =
        fmt::format( "stage {}: {} of {}", stage, load.spanning, countText( map.size(), "resource" ) );
    if( load.stated == 0 )
        return text;
    std::uint64_t all = 0;
    for( StageLoad const& one : map.loads )
        all += one.entries;
    return fmt::format( "{}; {} entries, {} of all", text, load.entries, percentText( load.entries, all ) );
}

String overview( StageMap const& map, StageView const& view ) {
    if( map.groups.empty() )
        return map.lost.empty() ? "no resource is placed" : "no resource has stages that are known";
    if( view.stage )
        return stageOverview( map, *view.stage );
    return fmt::format( "{} in {}; {}", countText( map.size(), "resource" ), stagesText( map.stages ),
                        fullestText( map, view.by ) );
}

// The largest of a stage.

/// Resources in a stage by size, largest first, then those that do not state all sizes.
std::vector<Placed> largestIn( StageMap const& map, Stage stage ) {
    std::vector<Placed> resources;
    for( StageGroup const& group : map.groups ) {
        auto const ofGroup = chosen( group, stage );
        resources.insert( resources.end(), ofGroup.begin(), ofGroup.end() );
    }
    std::stable_sort( resources.begin(), resources.end(), [ & ]( Placed const& a, Placed const& b ) {
        return a.in( stage )->entries > b.in( stage )->entries;
    } );
    return resources;
}

/// "512", "not stated", "512 and some not stated".
Value entriesText( PlacedStage const& placed ) {
    if( placed.stated == placed.tables )
        return static_cast<std::int64_t>( placed.entries );
    return placed.stated == 0 ? String( "not stated" )
                              : std::to_string( placed.entries ) + " and some not stated";
}

void printLargest( std::ostream& out, TerminalStyle const& look, StageMap const& map, Stage stage ) {
    constexpr std::size_t most = 10;
    auto const resources = largestIn( map, stage );
    std::uint64_t const all = loadOf( map, stage ).entries;
    TextList list{ "ENTRIES", "SHARE", "SIZE", "STAGES", "TYPE", "NAME" };
    for( Placed const& placed : std::span( resources ).first( std::min( most, resources.size() ) ) ) {
        PlacedStage const& here = *placed.in( stage );
        BfResource const& resource = *placed.resource;
        auto const number = []( PlacedStage const& one ) { return static_cast<U32>( one.stage ); };
        list.add( { entriesText( here ), here.stated ? Value( percentText( here.entries, all ) ) : Value(),
                    resource.size, listOf( placed.stages, number ),
                    fmt::format( "{} {}", directionOf( resource.ingress ), typeNameOf( resource ) ),
                    resource.name } );
    }
    printColumns( out, list, look );
    if( resources.size() > most )
        out << "and " << resources.size() - most << " more; --list has all\n";
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
        << countText( map.lost.size(), "resource" ) << '\n';
    for( BfResource const* const resource : map.lost )
        out << "  " << escapeForTerminal( resource->name ) << '\n';
}

/// "ingress hash_match entries: 45056 of 65536, 69%".
void printCapacities( std::ostream& out, StageMap const& map, StageView const& view ) {
    if( !view.budget || !view.stage )
        return;
    for( Use const& use : capacityUses( *view.budget, map ) ) {
        if( use.stage == view.stage )
            fmt::print( out, "  {}: {} of {}, {}\n", use.what, use.used, use.available, percentText( use ) );
    }
}

void printMap( std::ostream& out, TerminalStyle const& look, StageMap const& map, StageView const& view ) {
    printTitle( out, map );
    out << overview( map, view ) << '\n';
    printCapacities( out, map, view );
    printLost( out, map );
    if( view.stage ? loadOf( map, *view.stage ).spanning == 0 : map.groups.empty() )
        return;
    out << '\n';
    if( view.listed )
        printBars( out, look, map, view.stage );
    else if( view.stage )
        printLargest( out, look, map, *view.stage );
    else
        printGrid( out, look, map, view );
}

} // namespace

void printStages( std::ostream& out, TerminalStyle const& look, std::vector<StageMap> const& maps,
                  StageView const& view ) {
    for( StageMap const& map : maps ) {
        out << ( &map == &maps.front() ? "" : "\n" );
        printMap( out, look, map, view );
    }
    if( maps.empty() )
        out << "no resource is placed\n";
    bool const somePlaced =
        std::any_of( maps.begin(), maps.end(), []( StageMap const& map ) { return map.size() > 0; } );
    if( somePlaced && !view.listed && !view.stage )
        out << '\n'
            << inLines( view.by == StageMeasure::entries
                            ? "entries: the sizes of the stage tables in each stage, as the context file "
                              "states them; ?: some state none"
                            : "2+1: two start in the stage, and one goes on from an earlier one",
                        look );
}

} // namespace Bfri
