#include "report/Report.h"

#include "report/Parts.h"

namespace Bfri {

namespace {

struct Section {
    Literal id;
    Literal title;
    std::optional<std::size_t> count;
    Literal subtitle;
    void ( *write )( Html&, ReportData const& );
};

std::vector<Section> sectionsOf( ReportData const& data ) {
    Chip const& chip = data.chip;
    std::vector<Section> sections{
        { "changes", "Changes", countChanges( chip ), "What was added, removed, resized or moved.",
          writeChanges },
        { "stages", "Stages", chip.stages.size(),
          data.hasBudget()
              ? Literal( "Where the chip is full, also as shares of the budget's capacities." )
              : Literal( "Where the chip is full. Percentages are of what the program takes: the chip's "
                         "capacities are not in the files." ),
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
        { "other", "Hashes, headers, learning", {}, "", writeOthers } };
    if( !data.isDiff() )
        sections.erase( sections.begin() );
    return sections;
}

void writeHead( Html& html, ReportData const& data ) {
    html.add( R"(<head><meta charset=utf-8><meta http-equiv=Content-Security-Policy content=")"
              R"(default-src 'none'; style-src 'unsafe-inline'; script-src 'sha256-{}'; )"
              R"(base-uri 'none'; form-action 'none'">)"
              R"(<meta name=viewport content="width=device-width,initial-scale=1">)"
              R"(<meta name=color-scheme content="light dark"><meta name=referrer content=no-referrer>)",
              scriptHashInBase64() );
    html.add( "<title>{}{} – bfri report</title><style>{}</style></head>",
              data.isDiff() ? data.chip.old->configuration->path + " → " : "", data.chip.configuration->path,
              styleSheet );
}

void writeRail( Html& html, ReportData const& data, std::vector<Section> const& sections ) {
    html.add(
        R"(<aside class=rail><p class=mk>bfri report</p><div class=srch hidden><input type=search id=q )"
        R"(placeholder="Name or handle" aria-label="Search names and handles" autocomplete=off )"
        R"(spellcheck=false role=combobox aria-expanded=false aria-controls=hits_ )"
        R"(aria-autocomplete=list><kbd>/</kbd><ul id=hits_ role=listbox hidden></ul></div>)"
        R"(<nav aria-label=Sections><ul>)" );
    for( Section const& section : sections ) {
        html.add( "<li><a href=#{}>{}{}</a>", section.id, section.title,
                  section.count ? markup( "<u>{}</u>", grouped( *section.count ) ) : Html() );
        if( section.write != writeStages )
            continue;
        html.add( "<ul>" );
        for( ChipProgram const& program : data.chip.programs )
            html.add( "<li><a href=#p{}>{}{}</a>", &program - data.chip.programs.data(), pipeBoxes( program ),
                      program.name );
        html.add( "</ul>" );
    }
    html.add( "</ul></nav></aside>" );
}

void writeMain( Html& html, ReportData const& data, std::vector<Section> const& sections ) {
    html.add( "<main id=main>" );
    writeOverview( html, data );
    for( Section const& section : sections ) {
        html.add( "<section id={} class=s><header><h2>{}</h2>", section.id, section.title );
        if( section.subtitle != "" )
            html.add( "<p>{}</p>", section.subtitle );
        html.add( "</header>" );
        section.write( html, data );
        html.add( "</section>" );
    }
    html.add( "</main>" );
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
    html.add( "<!DOCTYPE html>\n<html lang=en{}>", when( data.isDiff(), " class=diff" ) );
    writeHead( html, data );
    html.add( "<body><a class=skip href=#main>To the content</a><i id=_></i>" );
    writeRail( html, data, sections );
    writeMain( html, data, sections );
    writeTablePages( html, data );
    html.add( "<script>{}</script></body></html>", script );
    return std::move( html ).take();
}

} // namespace Bfri
