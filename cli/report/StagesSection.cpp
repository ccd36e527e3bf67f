#include "cli/report/Sections.h"

#include <map>

namespace Bfri {

namespace {

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
    return ( top->second.first * 2 > data.totalOf( program, column ).entries ? "mostly " : "above all " ) +
           String( styleOf( top->second.second ).word.view() );
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

void writeDirection( Html& html, ReportData const& data, ChipProgram const& program, bool ingress ) {
    html.open( "div", { { "class", "sc" },
                        { "style", own( "--n:{}", data.chip.stages.size() ) },
                        { "tabindex", "0" },
                        { "role", "region" },
                        labelled( program.name + ' ' + String( directionWord( ingress ).view() ) ) } );
    html.open( "div", { { "class", "in" } } );
    writeStageMap( html, data, program, ingress );
    writeFloorPlan( html, data, program, ingress );
    html.close().close();
}

void writeNotes( Html& html, std::span<ChipResource const> resources ) {
    std::size_t notStated = 0, notKnown = 0;
    for( ChipResource const& resource : resources ) {
        notStated += !resource.stages.empty() && !resource.isStated;
        notKnown += resource.isPlaced && resource.stages.empty();
    }
    if( notStated > 0 )
        html.leaf( "p", { { "class", "note" } },
                   counted( notStated, "resource" ) +
                       " with stage tables that do not state their sizes: drawn with an even "
                       "share of their entries in each stage and a dashed edge; the sums have only what is "
                       "stated." );
    if( notKnown > 0 )
        html.leaf( "p", { { "class", "note" } },
                   counted( notKnown, "resource" ) +
                       " not on the map: the context file does not say which stages they take." );
}

void writeProgramStages( Html& html, ReportData const& data, std::size_t number ) {
    ChipProgram const& program = data.chip.programs[ number ];
    html.open( "section", { { "class", "chip" }, { "id", own( "p{}", number ) } } ).open( "h3" );
    writePipes( html, program );
    html.text( program.name );
    if( String const fullest = fullestText( data, number ); !fullest.empty() )
        html.leaf( "small", "Most entries: " + fullest + "." );
    html.close();
    for( bool const ingress : { true, false } ) {
        if( !data.grids[ number ][ !ingress ].isEmpty() )
            writeDirection( html, data, program, ingress );
    }
    writeNotes( html, data.chip.resourcesOf( program ) );
    html.close();
}

void writeMarkLegend( Html& html ) {
    html.open( "p", { { "class", "dleg" } } );
    for( std::size_t i = 0; i < markCount; ++i ) {
        html.open( "span" );
        writeMark( html, static_cast<Mark>( i ) );
        html.text( styleOf( static_cast<Mark>( i ) ).word.view() ).close();
    }
    html.open( "span" ).leaf( "i", { { "class", "gk" } }, "" ).text( "dashed: where it was" ).close().close();
}

} // namespace

void writeStages( Html& html, ReportData const& data ) {
    static constexpr Choice choices[] = {
        { "by-n", "resources" }, { "by-e", "entries" }, { "by-f", "capacity" } };
    if( data.isDiff() )
        writeMarkLegend( html );
    writeSwitch( html, "by", "The map shows", std::span( choices ).first( data.hasBudget() ? 3 : 2 ) );
    for( std::size_t i = 0; i < data.chip.programs.size(); ++i )
        writeProgramStages( html, data, i );
}

} // namespace Bfri
