#include "cli/report/Report.h"

#include "cli/report/Sections.h"

namespace Bfri {

namespace {

struct Section {
    Literal id;
    char const* title;
    std::optional<std::size_t> count;
    char const* subtitle;
    void ( *write )( Html&, ReportData const& );
};

/// The rows of the lists of changes.
std::size_t countChanges( Chip const& chip ) {
    auto const isMarked = []( auto const& part ) { return part.marks.any(); };
    auto const count =
        std::count_if( chip.resources.begin(), chip.resources.end(), isMarked ) +
        std::count_if( chip.tables.begin(), chip.tables.end(),
                       [ & ]( ChipTable const& table ) { return !table.resource && isMarked( table ); } );
    return chip.removed.size() + chip.removedTables.size() + static_cast<std::size_t>( count );
}

std::vector<Section> sectionsOf( ReportData const& data ) {
    Chip const& chip = data.chip;
    std::vector<Section> sections;
    if( data.isDiff() )
        sections.push_back( { "changes", "Changes", countChanges( chip ),
                              "What was added, removed, resized or moved.", writeChanges } );
    sections.insert(
        sections.end(),
        { { "stages", "Stages", chip.stages.size(),
            data.hasBudget()
                ? "Where the chip is full, also as shares of the budget's capacities."
                : "Where the chip is full. Percentages are of what the program takes: the chip's capacities "
                  "are not in the files.",
            writeStages },
          { "room", "What takes the room", {}, "", writeRoom },
          { "findings", "Findings", chip.findings.size(), "What 'bfri check' reports, most severe first.",
            writeFindings },
          { "tables", "Match tables", chip.tables.size(), "Tables that an agent can program.", writeTables },
          { "attached", "Other parts", chip.countOthers(),
            "Counters, meters, registers, action data, selectors, and tables that an agent cannot program. "
            "Those that are not placed do not count as resources.",
            writeAttached },
          { "phv", "PHV bytes", chip.fields.size(), "", writeFields },
          { "hitbits", "Hit-bit space", {}, "", writeHitBits },
          { "other", "Hashes, headers, learning", {}, "", writeOthers } } );
    return sections;
}

void writeHead( Html& html, ReportData const& data ) {
    String const& path = data.chip.configuration->path;
    html.open( "head" ).empty( "meta", { { "charset", "utf-8" } } );
    html.empty( "meta",
                { { "http-equiv", "Content-Security-Policy" },
                  { "content", own( "default-src 'none'; style-src 'unsafe-inline'; script-src 'sha256-{}'; "
                                    "base-uri 'none'; form-action 'none'",
                                    scriptHash() ) } } );
    html.empty( "meta", { { "name", "viewport" }, { "content", "width=device-width,initial-scale=1" } } );
    html.empty( "meta", { { "name", "color-scheme" }, { "content", "light dark" } } );
    html.empty( "meta", { { "name", "referrer" }, { "content", "no-referrer" } } );
    html.leaf( "title", ( data.isDiff() ? data.chip.old->configuration->path + " → " : "" ) + path +
                            " – bfri report" );
    html.styleSheet().close();
}

void writeSearch( Html& html ) {
    html.open( "div", { { "class", "srch" }, { "hidden", "" } } );
    html.empty( "input", { { "type", "search" },
                           { "id", "q" },
                           { "placeholder", "Name or handle" },
                           { "aria-label", "Search names and handles" },
                           { "autocomplete", "off" },
                           { "spellcheck", "false" },
                           { "role", "combobox" },
                           { "aria-expanded", "false" },
                           { "aria-controls", "hits_" },
                           { "aria-autocomplete", "list" } } );
    html.leaf( "kbd", "/" )
        .leaf( "ul", { { "id", "hits_" }, { "role", "listbox" }, { "hidden", "" } }, "" )
        .close();
}

void writeRail( Html& html, ReportData const& data, std::vector<Section> const& sections ) {
    html.open( "aside", { { "class", "rail" } } ).leaf( "p", { { "class", "mk" } }, "bfri report" );
    writeSearch( html );
    html.open( "nav", { { "aria-label", "Sections" } } ).open( "ul" );
    for( Section const& section : sections ) {
        html.open( "li" ).open( "a", { { "href", own( "#{}", section.id ) } } ).text( section.title );
        if( section.count )
            html.leaf( "u", grouped( *section.count ) );
        html.close();
        if( section.write == writeStages ) {
            html.open( "ul" );
            for( std::size_t i = 0; i < data.chip.programs.size(); ++i ) {
                html.open( "li" ).open( "a", { { "href", own( "#p{}", i ) } } );
                writePipes( html, data.chip.programs[ i ] );
                html.text( data.chip.programs[ i ].name ).close().close();
            }
            html.close();
        }
        html.close();
    }
    html.close().close().close();
}

void writeMain( Html& html, ReportData const& data, std::vector<Section> const& sections ) {
    html.open( "main", { { "id", "main" } } );
    writeTop( html, data );
    if( data.isDiff() )
        writeVerdict( html, data );
    else
        writeSoundness( html, data );
    writePrograms( html, data );
    writeFacts( html, data );
    for( Section const& section : sections ) {
        html.open( "section", { { "id", section.id }, { "class", "s" } } )
            .open( "header" )
            .leaf( "h2", section.title );
        if( *section.subtitle )
            html.leaf( "p", section.subtitle );
        html.close();
        section.write( html, data );
        html.close();
    }
    html.close();
}

ReportData dataOf( Chip const& chip, Comparison const* comparison, Rules const* rules ) {
    ReportData data{ chip, comparison };
    for( ChipProgram const& program : chip.programs )
        data.grids.push_back( { stageGridOf( chip, program, true ), stageGridOf( chip, program, false ) } );
    if( rules )
        data.uses = capacityUsesOf( chip, *rules );
    return data;
}

} // namespace

String htmlReport( Chip const& chip, Comparison const* comparison, Rules const* rules ) {
    ReportData const data = dataOf( chip, comparison, rules );
    auto const sections = sectionsOf( data );
    Html html;
    html.doctype().open( "html", { { "lang", "en" }, { "class", when( data.isDiff(), "diff" ) } } );
    writeHead( html, data );
    html.open( "body" ).leaf( "a", { { "class", "skip" }, { "href", "#main" } }, "To the content" );
    html.leaf( "i", { { "id", "_" } }, "" );
    writeRail( html, data, sections );
    writeMain( html, data, sections );
    writeTablePages( html, data );
    html.script().close().close();
    return std::move( html ).take();
}

} // namespace Bfri
