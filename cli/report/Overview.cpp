#include "cli/report/Sections.h"

#include "inspect/model/RecordKinds.h"

#include <filesystem>
#include <set>

namespace Bfri {

namespace {

void writeTitle( Html& html, ReportData const& data ) {
    html.open( "h1" );
    String const& path = data.chip.configuration->path;
    if( data.isDiff() ) {
        html.leaf( "span", { { "class", "was" } }, data.chip.old->configuration->path ).text( " " );
        html.leaf( "i", "→" ).text( " " ).leaf( "span", path );
    } else {
        auto const slash = path.rfind( '/' );
        if( slash != String::npos )
            html.leaf( "s", std::string_view( path ).substr( 0, slash + 1 ) );
        html.text( std::string_view( path ).substr( slash == String::npos ? 0 : slash + 1 ) );
    }
    html.close();
}

String numberWord( std::size_t number ) {
    static constexpr char const* words[] = { "No", "One", "Two", "Three", "Four" };
    return number < std::size( words ) ? words[ number ] : std::to_string( number );
}

using Codes = std::set<std::pair<FindingKind const*, String>>;

Codes codesOf( Chip const& chip ) {
    Codes codes;
    for( Finding const& finding : chip.findings )
        codes.emplace( finding.kind, finding.name );
    return codes;
}

std::size_t countMissing( Codes const& all, Codes const& others ) {
    return static_cast<std::size_t>( std::count_if(
        all.begin(), all.end(), [ & ]( auto const& one ) { return others.count( one ) == 0; } ) );
}

void writeSeverities( Html& html, ReportData const& data ) {
    html.open( "p" );
    bool isFirst = true;
    for( Severity const severity : { Severity::error, Severity::warning, Severity::note } ) {
        auto const count = std::count_if( data.chip.findings.begin(), data.chip.findings.end(),
                                          [ & ]( auto const& f ) { return f.kind->severity == severity; } );
        if( count == 0 )
            continue;
        html.text( isFirst ? "" : ", " );
        writeSeverity( html, severity );
        html.text( counted( static_cast<std::size_t>( count ), wordOf( severity ) ) );
        isFirst = false;
    }
    if( isFirst )
        html.text( "No findings" );
    if( data.isDiff() ) {
        Codes const now = codesOf( data.chip ), old = codesOf( *data.chip.old );
        html.text( ". Compared with the old configuration: " + grouped( countMissing( now, old ) ) +
                   " new, " + grouped( countMissing( old, now ) ) + " gone" );
    }
    html.close();
}

void writeCodes( Html& html, std::vector<Finding> const& findings ) {
    constexpr std::size_t most = 6;
    html.open( "p", { { "class", "codes" } } );
    std::size_t shown = 0;
    for( auto first = findings.begin(); first != findings.end() && shown < most; ++shown ) {
        auto const end =
            std::find_if( first, findings.end(), [ & ]( auto const& f ) { return f.kind != first->kind; } );
        html.open( "a", { { "href", own( "#c{}", first->kind - findingKinds().data() ) } } );
        html.text( String( first->kind->code ) + " " + first->kind->title + " " );
        html.leaf( "b", grouped( static_cast<std::size_t>( end - first ) ) ).close().text( " " );
        first = end;
    }
    html.close();
}

// Programs.

struct ProgramTotals {
    std::size_t fullest = 0, mostResources = 0; ///< columns
    std::vector<GridCell> cells;
};

ProgramTotals totalsOf( ReportData const& data, std::size_t program ) {
    ProgramTotals totals;
    for( std::size_t i = 0; i < data.chip.stages.size(); ++i ) {
        totals.cells.push_back( data.totalOf( program, i ) );
        if( totals.cells[ i ].entries > totals.cells[ totals.fullest ].entries )
            totals.fullest = i;
        if( totals.cells[ i ].resources > totals.cells[ totals.mostResources ].resources )
            totals.mostResources = i;
    }
    return totals;
}

void writeBar( Html& html, std::size_t column, std::uint64_t entries, double scale, bool ingress ) {
    double const height = static_cast<double>( entries ) * scale;
    if( entries > 0 )
        html.shape( "rect", { { "class", ingress ? Literal( "i" ) : Literal( "o" ) },
                              { "x", own( "{}", column * 20 + 2 ) },
                              { "y", own( "{:.1f}", ingress ? 46 - height : 47.0 ) },
                              { "width", "16" },
                              { "height", own( "{:.1f}", height ) } } );
}

/// A dashed line where a bar ended in the older chip.
OwnText formerEnds( StageGrid const& grid, double scale, bool ingress ) {
    OwnText path( "" );
    for( std::size_t i = 0; i < grid.all.was.size(); ++i ) {
        std::uint64_t const was = grid.all.was[ i ].entries;
        double const height = static_cast<double>( was ) * scale;
        if( was != grid.all.cells[ i ].entries )
            path += own( "M{} {:.1f}h20", i * 20, ingress ? 46 - height : 47 + height );
    }
    return path;
}

void writeBars( Html& html, ReportData const& data, std::size_t program, std::uint64_t most,
                std::size_t fullest ) {
    std::size_t const columns = data.chip.stages.size();
    double const scale = 46 / static_cast<double>( most );
    html.open( "span", { { "class", "ps" } } );
    html.open( "svg", { { "viewBox", own( "0 0 {} 94", columns * 20 ) },
                        { "preserveAspectRatio", "none" },
                        { "role", "img" },
                        labelled( "entries by stage, ingress above, egress below" ) } );
    OwnText was( "" );
    for( bool const ingress : { true, false } ) {
        StageGrid const& grid = data.grids[ program ][ !ingress ];
        for( std::size_t i = 0; i < grid.all.cells.size(); ++i )
            writeBar( html, i, grid.all.cells[ i ].entries, scale, ingress );
        was += formerEnds( grid, scale, ingress );
    }
    if( data.isDiff() )
        html.shape( "path", { { "class", "was" }, { "d", was } } );
    html.shape( "path", { { "class", "ax" }, { "d", own( "M0 46.5H{}", columns * 20 ) } } ).close();
    html.open( "span", { { "class", "st" }, { "style", own( "--n:{}", columns ) } } );
    for( std::size_t i = 0; i < columns; ++i )
        html.leaf( "span", { { "class", when( i == fullest, "top" ) } },
                   std::to_string( data.chip.stages[ i ] ) );
    html.close().close();
}

void writeFigure( Html& html, char const* caption, String const& figure, String const& detail ) {
    html.open( "span", { { "class", "pf" } } ).leaf( "small", caption );
    html.leaf( "b", figure ).leaf( "small", detail ).close();
}

void writeProgram( Html& html, ReportData const& data, std::size_t number, std::uint64_t most ) {
    ChipProgram const& program = data.chip.programs[ number ];
    ProgramTotals const totals = totalsOf( data, number );
    std::size_t const resources = data.chip.countPlaced( program );
    std::uint64_t const entries = data.entriesOf( number );
    html.open( "a", { { "class", "pl" }, { "href", own( "#p{}", number ) } } );
    writePipes( html, program, true );
    html.open( "span", { { "class", "pn" } } ).leaf( "b", program.name ).leaf( "small", program.file->path );
    html.leaf( "small", counted( program.endTable - program.firstTable, "match table" ) + ", " +
                            counted( resources, "resource" ) + ", " + rounded( entries ) + " entries" );
    html.close();
    writeBars( html, data, number, most, totals.fullest );
    if( !totals.cells.empty() ) {
        auto const stage = [ & ]( std::size_t column ) {
            return "stage " + std::to_string( data.chip.stages[ column ] );
        };
        std::uint64_t const fullest = totals.cells[ totals.fullest ].entries;
        writeFigure( html, "fullest by entries", stage( totals.fullest ),
                     rounded( fullest ) + ", " + percent( fullest, entries ) );
        writeFigure( html, "by resources", stage( totals.mostResources ),
                     grouped( totals.cells[ totals.mostResources ].resources ) + " of " +
                         grouped( resources ) );
    }
    html.close();
}

/// Room for the pipes of the programs, left of their names.
std::size_t widthOfPipes( Chip const& chip ) {
    std::size_t width = 112;
    for( ChipProgram const& program : chip.programs ) {
        if( program.pipes.size() < 9 )
            width = std::max( width, 30 * program.pipes.size() + 44 );
    }
    return width;
}

struct Fact {
    Literal href;
    char const* words;
    std::size_t number;
};

std::vector<Fact> factsOf( Chip const& chip ) {
    auto const& parser = chip.parser();
    return { { "#tables", "match tables", parser.bfTables().size() },
             { "#stages", "resources", parser.bfResources().size() },
             { "#attached", "counters", parser.bfCounters().size() },
             { "#attached", "meters", parser.bfMeters().size() },
             { "#attached", "WRED tables", parser.bfWreds().size() },
             { "#attached", "registers", parser.bfRegisterInfos().size() },
             { "#tables", "actions", parser.bfActions().size() },
             { "#other", "learn quantas", parser.bfLearnQuantaInfos().size() },
             { "#phv", "PHV fields", chip.fields.size() },
             { "#hitbits", "hit-bit slots", parser.hitBitSmashEntries() } };
}

} // namespace

void writeTop( Html& html, ReportData const& data ) {
    Chip const& chip = data.chip;
    std::size_t pipes = 0;
    for( ChipProgram const& program : chip.programs )
        pipes += program.pipes.size();
    html.open( "header", { { "class", "top" } } );
    writeTitle( html, data );
    html.leaf( "p", { { "class", "lead" } },
               numberWord( chip.programs.size() ) + ( chip.programs.size() == 1 ? " program" : " programs" ) +
                   " on " + counted( pipes, "pipe" ) + ": " + counted( chip.tables.size(), "match table" ) +
                   " and " + counted( chip.parser().bfResources().size(), "resource" ) + " in " +
                   counted( chip.stages.size(), "stage" ) + "." );
    html.close();
}

void writeSoundness( Html& html, ReportData const& data ) {
    auto const& findings = data.chip.findings;
    Severity const worst = findings.empty() ? Severity::note : findings.front().kind->severity;
    auto const soundness = static_cast<Soundness>( worst );
    static constexpr char const* words[] = { "Loads, with notes", "Loads, with warnings", "Has errors" };
    html.open( "div", { { "class", own( "band {}", cssOf( soundness ) ) } } );
    writeIcon( html, soundness );
    html.open( "div" ).leaf( "h2",
                             findings.empty() ? "Sound" : words[ static_cast<std::size_t>( soundness ) ] );
    writeSeverities( html, data );
    html.close();
    writeCodes( html, findings );
    html.close();
}

void writePrograms( Html& html, ReportData const& data ) {
    std::uint64_t most = 1;
    for( auto const& grids : data.grids )
        most = std::max( { most, grids[ 0 ].mostEntries(), grids[ 1 ].mostEntries() } );
    html.open( "div", { { "class", "pls" }, { "style", own( "--pw:{}px", widthOfPipes( data.chip ) ) } } );
    html.open( "div", { { "class", "pk" } } );
    if( data.isDiff() )
        html.leaf( "em", "" ).text( "as it was" );
    html.leaf( "i", { { "class", "i" } }, "" ).text( "ingress, up" ).leaf( "i", { { "class", "o" } }, "" );
    html.text( "egress, down" ).leaf( "span", "entries by stage, one scale" ).close();
    for( std::size_t i = 0; i < data.chip.programs.size(); ++i )
        writeProgram( html, data, i, most );
    html.close();
}

void writeFacts( Html& html, ReportData const& data ) {
    auto const facts = factsOf( data.chip );
    auto const old = factsOf( data.isDiff() ? *data.chip.old : data.chip );
    html.open( "nav", { { "class", "facts" }, labelled( "Counts" ) } );
    for( std::size_t i = 0; i < facts.size(); ++i ) {
        html.open( "a", { { "href", facts[ i ].href } } ).open( "b" ).text( grouped( facts[ i ].number ) );
        writeDelta( html, facts[ i ].number, old[ i ].number );
        html.close().leaf( "span", facts[ i ].words ).close();
    }
    html.close();
}

} // namespace Bfri
