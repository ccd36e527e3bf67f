#include "cli/terminal/StageText.h"

#include "cli/terminal/StageWords.h"
#include "cli/terminal/TextFormat.h"

#include <numeric>
#include <span>

namespace Bfri {

namespace {

String repeated( char const* symbol, std::size_t times ) {
    String text;
    for( std::size_t i = 0; i < times; ++i )
        text += symbol;
    return text;
}

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
        return "the fullest is " + fullest.front() + " with " + with;
    String text = fullest.front();
    for( std::size_t i = 1; i < fullest.size(); ++i )
        text += ( i + 1 < fullest.size() ? ", " : " and " ) + fullest[ i ];
    if( fullest.size() > most )
        text = std::to_string( fullest.size() ) + " of these";
    return "the fullest are " + text + " with " + with + " each";
}

std::uint64_t entriesIn( StageMap const& map ) {
    return std::accumulate( map.loads.begin(), map.loads.end(), std::uint64_t( 0 ),
                            []( std::uint64_t sum, auto const& load ) { return sum + load.entries; } );
}

/// "stage 3: 4 of 35 resources; 45056 entries, 11% of all".
String stageOverview( StageMap const& map, Stage stage ) {
    StageLoad const load = loadOf( map, stage );
    String text = "stage " + std::to_string( stage ) + ": " + std::to_string( load.spanning ) + " of " +
                  counted( map.size() );
    if( load.stated == 0 )
        return text;
    return text + "; " + std::to_string( load.entries ) + " entries, " +
           percentText( load.entries, entriesIn( map ) ) + " of all";
}

String overview( StageMap const& map, StageView const& view ) {
    if( map.groups.empty() )
        return map.lost.empty() ? "no resource is placed" : "no resource has stages that are known";
    if( view.stage )
        return stageOverview( map, *view.stage );
    return counted( map.size() ) + " in " + stagesText( map.stages ) + "; " + fullestText( map, view.by );
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

Value stagesValue( Placed const& placed ) {
    return listOf( placed.stages, []( PlacedStage const& one ) { return static_cast<U32>( one.stage ); } );
}

void printLargest( std::ostream& out, TerminalStyle const& look, StageMap const& map, Stage stage ) {
    constexpr std::size_t most = 10;
    auto const resources = largestIn( map, stage );
    std::uint64_t const all = loadOf( map, stage ).entries;
    RowList list{ { { "ENTRIES", {} },
                    { "SHARE", {} },
                    { "SIZE", {} },
                    { "STAGES", {} },
                    { "TYPE", {} },
                    { "NAME", {} } },
                  {} };
    for( Placed const& placed : std::span( resources ).first( std::min( most, resources.size() ) ) ) {
        PlacedStage const& here = *placed.in( stage );
        BfResource const& resource = *placed.resource;
        list.rows.push_back(
            { { "", entriesText( here ) },
              { "", here.stated ? Value( percentText( here.entries, all ) ) : Value() },
              { "", resource.size },
              { "", stagesValue( placed ) },
              { "", String( directionOf( resource.ingress ) ) + ' ' + typeNameOf( resource ) },
              { "", resource.name } } );
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
        << counted( map.lost.size() ) << '\n';
    for( BfResource const* const resource : map.lost )
        out << "  " << escapeForTerminal( resource->name ) << '\n';
}

/// "ingress hash_match entries: 45056 of 65536, 69%".
void printCapacities( std::ostream& out, StageMap const& map, StageView const& view ) {
    if( !view.budget || !view.stage )
        return;
    for( Use const& use : capacityUses( *view.budget, map ) ) {
        if( use.stage == view.stage )
            out << "  " << use.what << ": " << use.used << " of " << use.available << ", "
                << ( use.percent() ? std::to_string( *use.percent() ) + "%" : "over" ) << '\n';
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

void printFooter( std::ostream& out, TerminalStyle const& look, StageMeasure by ) {
    out << '\n'
        << inLines( by == StageMeasure::entries
                        ? "entries: the sizes of the stage tables in each stage, as the context file states "
                          "them; ?: some state none"
                        : "2+1: two start in the stage, and one goes on from an earlier one",
                    look );
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
        printFooter( out, look, view.by );
}

} // namespace Bfri
