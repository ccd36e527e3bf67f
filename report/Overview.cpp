// Title, verdict, programs and counts.

#include "report/Parts.h"

#include "inspect/check/Checked.h"
#include "inspect/diff/Comparison.h"
#include "inspect/diff/Verdict.h"
#include "inspect/model/RecordKinds.h"

#include <set>

namespace Bfri {

namespace {

void writeTitle( Html& html, ReportData const& data ) {
    static constexpr char const* words[] = { "No", "One", "Two", "Three", "Four" };
    Chip const& chip = data.chip;
    String const& path = chip.configuration->path;
    auto const name = path.rfind( '/' ) + 1; // 0 if there is no folder
    html.add( "<header class=top><h1>" );
    if( data.isDiff() )
        html.add( "<span class=was>{}</span> <i>→</i> <span>{}</span>", chip.old->configuration->path, path );
    else
        html.add( "{}{}", name ? markup( "<s>{}</s>", path.substr( 0, name ) ) : Html(),
                  path.substr( name ) );
    std::size_t const programs = chip.programs.size();
    std::size_t pipes = 0;
    for( ChipProgram const& program : chip.programs )
        pipes += program.pipes.size();
    html.add( "</h1><p class=lead>{} {} on {}: {} and {} in {}.</p></header>",
              programs < std::size( words ) ? words[ programs ] : std::to_string( programs ),
              programs == 1 ? "program" : "programs", counted( pipes, "pipe" ),
              counted( chip.tables.size(), "match table" ),
              counted( chip.parser().bfResources().size(), "resource" ),
              counted( chip.stages.size(), "stage" ) );
}

// The verdict on a difference.

using Reasons = std::vector<Notice const*>;

/// The notices of a level, those of one name and code once: a match table and its resource are one reason.
Reasons reasonsOf( Verdict const& verdict, NoticeLevel level ) {
    Reasons reasons;
    std::set<std::tuple<String, String, String>> told;
    for( Notice const& notice : verdict.notices ) {
        if( notice.kind->level == level &&
            told.emplace( notice.kind->code, notice.name, notice.table.value_or( "" ) ).second )
            reasons.push_back( &notice );
    }
    return reasons;
}

Mark kindMark( NoticeKind const& kind ) {
    std::string_view const title = kind.title;
    return title.starts_with( "removed" ) || title.starts_with( "left-out" ) ? Mark::removed
           : title.starts_with( "shrunk" )                                   ? Mark::shrank
           : title.starts_with( "added" )                                    ? Mark::added
                                                                             : Mark::changed;
}

/// The part of the page that a notice is about: the record, by its new name where it is renamed; an action's
/// table.
std::optional<ChipLink> linkOf( Chip const& chip, Notice const& notice ) {
    String const* const renamed = std::get_if<String>( &notice.to.is );
    for( String const* const name : { notice.table ? &*notice.table : &notice.name, renamed } ) {
        auto const found = name ? chip.byName.find( *name ) : chip.byName.end();
        if( found != chip.byName.end() )
            return found->second;
    }
    return std::nullopt;
}

/// For a removed record what it was; for others what differs.
String detailOf( Chip const& chip, Notice const& notice ) {
    auto const removed = std::find_if( chip.removed.begin(), chip.removed.end(),
                                       [ & ]( auto const* old ) { return old->name() == notice.name; } );
    String const table = notice.table ? fmt::format( "of {}", SplitName( *notice.table ).last ) : "";
    if( kindMark( *notice.kind ) != Mark::removed )
        return table + ( table.empty() ? "" : ": " ) + notice.text;
    if( table.empty() && removed != chip.removed.end() )
        return countedEntries( ( *removed )->size ) + ", " + placeText( **removed );
    return table.empty() ? notice.text : table;
}

void writeReasons( Html& html, Chip const& chip, Reasons const& reasons ) {
    writeFolded( html, std::span( reasons ), 12, [ & ]( std::span<Notice const* const> some ) {
        html.add( "<ul class=why>" );
        for( Notice const* const notice : some ) {
            RecordKind const* const kind = kindOf( std::string_view( notice->what ) );
            html.add( "<li>{}<em>{} {}</em>{}<small>{}</small>", markOf( kindMark( *notice->kind ) ),
                      kind ? kind->noun : notice->what, notice->kind->counted,
                      linkedName( linkOf( chip, *notice ), notice->name ), detailOf( chip, *notice ) );
        }
        html.add( "</ul>" );
    } );
}

/// "3 match tables removed, 1 action changed".
String sumsText( Reasons const& reasons ) {
    std::vector<std::pair<Notice const*, std::size_t>> sums;
    for( Notice const* const reason : reasons ) {
        auto sum = std::find_if( sums.begin(), sums.end(), [ & ]( auto const& one ) {
            return one.first->what == reason->what &&
                   std::string_view( one.first->kind->counted ) == reason->kind->counted;
        } );
        if( sum == sums.end() )
            sum = sums.insert( sum, { reason, 0 } );
        ++sum->second;
    }
    String text;
    for( auto const& [ notice, count ] : sums ) {
        RecordKind const* const kind = kindOf( std::string_view( notice->what ) );
        text +=
            fmt::format( "{}{} {}", text.empty() ? "" : ", ",
                         kind ? counted( count, kind->noun, kind->nouns ) : counted( count, notice->what ),
                         notice->kind->counted );
    }
    return text;
}

struct Judgement {
    Soundness soundness;
    char const* word;
    String sentence;
    Reasons reasons = {};
};

Judgement judgementOf( Verdict const& verdict ) {
    if( !verdict.differs )
        return { Soundness::good, "No difference", "" };
    if( !verdict.modelDiffers )
        return { Soundness::good, "Agent-safe", "Only members that the library never reads differ." };
    if( verdict.byName && verdict.byHandle )
        return { Soundness::good, "Agent-safe",
                 "An agent that looks everything up by name when it starts notices nothing, and every handle "
                 "still means the same record." };
    auto const reasons = reasonsOf( verdict, verdict.byName ? NoticeLevel::handle : NoticeLevel::breaking );
    if( !verdict.byName )
        return { Soundness::bad, "Breaking",
                 "An agent that looks everything up by name would notice: " + sumsText( reasons ) + ".",
                 reasons };
    return { Soundness::warning, "Safe by name, not by handle",
             "An agent that looks everything up by name when it starts notices nothing. One that keeps "
             "handles would notice: " +
                 sumsText( reasons ) + ".",
             reasons };
}

/// Which agents notice nothing, and what only other programs would notice.
void writeLevels( Html& html, Comparison const& comparison, Verdict const& verdict ) {
    html.add( "<p>By name: {}. By handle: {}", verdict.byName ? "safe" : "breaking",
              verdict.byHandle ? "every handle still means the same record."
                               : "some handles no longer mean what they did." );
    if( std::ranges::any_of( verdict.notices, []( auto const& one ) { return one.what == "resource"; } ) )
        html.add( " A record and the resource with its name are counted as one." );
    if( Unread const unread = unreadValues( comparison ); unread.differs() )
        html.add( " Not read by the library, but different: {} and {}.",
                  counted( unread.tables.size(), "table" ),
                  counted( unread.members.size(), "other member" ) );
    html.add( "</p>" );
}

void writeTally( Html& html, Comparison const& comparison ) {
    html.add( "<table class=tally><thead><tr><th scope=col>Kind" );
    for( char const* const title : { "+ added", "− removed", "~ changed", "→ moved", "renamed", "same" } )
        html.add( "<th scope=col>{}", title );
    html.add( "<tbody>" );
    Folded const folded( comparison );
    for( KindComparison const& kind : comparison.kinds ) {
        if( !kind.differs() )
            continue;
        std::size_t changed = 0, moved = 0, renamed = 0, same = kind.same;
        for( ChangedRecord const& record : kind.changed ) {
            changed += record.hasChanged();
            moved += record.move.has_value();
            renamed += record.renamed && !folded.has( *kind.kind, record );
            same += folded.hasAll( *kind.kind, record );
        }
        html.add( "<tr><th scope=row>{}", kind.kind->nouns );
        for( std::size_t const number :
             { kind.added.size() + kind.cameBack.size(), kind.removed.size() + kind.leftOut.size(), changed,
               moved, renamed, same } )
            html.add( "<td>{}", number ? grouped( number ) : "·" );
    }
    html.add( "</table>" );
}

// Findings in short.

using Codes = std::set<std::pair<FindingKind const*, String>>;

Codes codesOf( Chip const& chip ) {
    Codes codes;
    for( Finding const& finding : chip.findings )
        codes.emplace( finding.kind, finding.name );
    return codes;
}

String countMissing( Codes const& all, Codes const& others ) {
    return grouped( static_cast<std::uint64_t>( std::count_if(
        all.begin(), all.end(), [ & ]( auto const& one ) { return others.count( one ) == 0; } ) ) );
}

void writeSeverities( Html& html, ReportData const& data ) {
    auto const& findings = data.chip.findings;
    html.add( "<p>{}", findings.empty() ? "No findings" : "" );
    for( Severity const severity : { Severity::error, Severity::warning, Severity::note } ) {
        auto const isOf = [ & ]( Finding const& finding ) { return finding.kind->severity == severity; };
        auto const count = std::count_if( findings.begin(), findings.end(), isOf );
        if( count > 0 )
            html.add( "{}{}{}", when( !isOf( findings.front() ), ", " ), severityMark( severity ),
                      counted( static_cast<std::uint64_t>( count ), wordOf( severity ) ) );
    }
    if( data.isDiff() ) {
        Codes const now = codesOf( data.chip ), old = codesOf( *data.chip.old );
        html.add( ". Compared with the old configuration: {} new, {} gone", countMissing( now, old ),
                  countMissing( old, now ) );
    }
    html.add( "</p>" );
}

void writeSoundness( Html& html, ReportData const& data ) {
    static constexpr Literal words[] = { "Loads, with notes", "Loads, with warnings", "Has errors" };
    constexpr std::size_t most = 6;
    auto const& findings = data.chip.findings;
    auto const worst =
        static_cast<Soundness>( findings.empty() ? Severity::note : findings.front().kind->severity );
    html.add( R"(<div class="band {}">{}<div><h2>{}</h2>)", cssOf( worst ), iconOf( worst ),
              findings.empty() ? Literal( "Sound" ) : words[ static_cast<std::size_t>( worst ) ] );
    writeSeverities( html, data );
    html.add( "</div><p class=codes>" );
    auto const codes = codeCountsOf( findings );
    for( CodeCount const& code : std::span( codes ).first( std::min( most, codes.size() ) ) )
        html.add( "<a href=#c{}>{} {} <b>{}</b></a> ", code.kind - findingKinds().data(), code.kind->code,
                  code.kind->title, grouped( code.number ) );
    html.add( "</p></div>" );
}

void writeVerdict( Html& html, ReportData const& data ) {
    Comparison const& comparison = *data.comparison;
    Verdict verdict = verdictOf( comparison );
    std::erase_if( verdict.notices, [ replaced = replacedPipes( comparison ) ]( Notice const& notice ) {
        return notice.what != "pipe" && isWithin( maskOf( notice.pipes ), replaced );
    } );
    Judgement const judgement = judgementOf( verdict );
    html.add( R"(<div class="band {} verdict">{}<div><h2>{}</h2>)", cssOf( judgement.soundness ),
              iconOf( judgement.soundness ), judgement.word );
    if( !judgement.sentence.empty() )
        html.add( "<p>{}</p>", judgement.sentence );
    if( verdict.differs )
        writeLevels( html, comparison, verdict );
    if( !judgement.reasons.empty() )
        writeReasons( html, data.chip, judgement.reasons );
    html.add( "</div></div><div class=two>" );
    if( comparison.modelDiffers() )
        writeTally( html, comparison );
    writeSoundness( html, data );
    html.add( "</div>" );
}

// Programs.

/// Entries by stage: ingress up, egress down; a dashed line where a bar ended in the older chip.
void writeBars( Html& html, ReportData const& data, std::size_t program, std::uint64_t most,
                std::size_t fullest ) {
    std::size_t const columns = data.chip.stages.size();
    html.add( R"(<span class=ps><svg viewBox="0 0 {} 94" preserveAspectRatio=none role=img )"
              R"(aria-label="entries by stage, ingress above, egress below">)",
              columns * 20 );
    OwnText was;
    for( bool const ingress : { true, false } ) {
        GridRow const& all = data.grids[ program ][ !ingress ].all;
        for( std::size_t i = 0; i < columns; ++i ) {
            auto const heightOf = [ & ]( GridCell const& cell ) {
                return static_cast<double>( cell.entries ) * 46 / static_cast<double>( most );
            };
            double const height = heightOf( all.cells[ i ] );
            if( all.cells[ i ].entries > 0 )
                html.add( "<rect class={} x={} y={:.1f} width=16 height={:.1f} />", ingress ? 'i' : 'o',
                          i * 20 + 2, ingress ? 46 - height : 47.0, height );
            if( all.was.empty() || all.was[ i ].entries == all.cells[ i ].entries )
                continue;
            double const former = heightOf( all.was[ i ] );
            was += own( "M{} {:.1f}h20", i * 20, ingress ? 46 - former : 47 + former );
        }
    }
    if( data.isDiff() )
        html.add( R"(<path class=was d="{}" />)", was );
    html.add( R"(<path class=ax d="M0 46.5H{}" /></svg><span class=st style=--n:{}>)", columns * 20,
              columns );
    for( std::size_t i = 0; i < columns; ++i )
        html.add( "<span{}>{}</span>", when( i == fullest, " class=top" ), data.chip.stages[ i ] );
    html.add( "</span></span>" );
}

void writeProgram( Html& html, ReportData const& data, std::size_t number, std::uint64_t most ) {
    ChipProgram const& program = data.chip.programs[ number ];
    std::size_t const resources = data.chip.countPlaced( program );
    std::uint64_t const entries = data.entriesOf( number );
    std::vector<GridCell> totals;
    for( std::size_t i = 0; i < data.chip.stages.size(); ++i )
        totals.push_back( data.totalOf( number, i ) );
    auto const largest = [ & ]( auto GridCell::*amount ) {
        auto const found =
            std::max_element( totals.begin(), totals.end(), [ & ]( GridCell const& a, GridCell const& b ) {
                return a.*amount < b.*amount;
            } );
        return static_cast<std::size_t>( found - totals.begin() );
    };
    std::size_t const fullest = largest( &GridCell::entries ), richest = largest( &GridCell::resources );
    html.add( "<a class=pl href=#p{}>{}<span class=pn><b>{}</b><small>{}</small>"
              "<small>{}, {}, {} entries</small></span>",
              number, pipeBoxes( program, true ), program.name, program.file->path,
              counted( program.endTable - program.firstTable, "match table" ),
              counted( resources, "resource" ), rounded( entries ) );
    writeBars( html, data, number, most, fullest );
    if( !totals.empty() )
        html.add(
            "<span class=pf><small>fullest by entries</small><b>stage {}</b><small>{}, {}</small></span>"
            "<span class=pf><small>by resources</small><b>stage {}</b><small>{} of {}</small></span>",
            data.chip.stages[ fullest ], rounded( totals[ fullest ].entries ),
            percent( totals[ fullest ].entries, entries ), data.chip.stages[ richest ],
            grouped( totals[ richest ].resources ), grouped( resources ) );
    html.add( "</a>" );
}

void writePrograms( Html& html, ReportData const& data ) {
    std::uint64_t most = 1;
    std::size_t room = 112; // for the pipes, left of the names
    for( std::size_t i = 0; i < data.chip.programs.size(); ++i ) {
        std::size_t const pipes = data.chip.programs[ i ].pipes.size();
        most = std::max( most, data.mostEntriesOf( i ) );
        room = std::max( room, pipes < 9 ? 30 * pipes + 44 : 0 );
    }
    html.add( "<div class=pls style=--pw:{}px><div class=pk>{}<i class=i></i>ingress, up<i class=o></i>"
              "egress, down<span>entries by stage, one scale</span></div>",
              room, when( data.isDiff(), "<em></em>as it was" ) );
    for( std::size_t i = 0; i < data.chip.programs.size(); ++i )
        writeProgram( html, data, i, most );
    html.add( "</div>" );
}

struct Fact {
    Literal href;
    Literal words;
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

void writeFacts( Html& html, ReportData const& data ) {
    auto const facts = factsOf( data.chip ), old = factsOf( data.isDiff() ? *data.chip.old : data.chip );
    html.add( "<nav class=facts aria-label=Counts>" );
    for( std::size_t i = 0; i < facts.size(); ++i )
        html.add( "<a href={}><b>{}{}</b><span>{}</span></a>", facts[ i ].href, grouped( facts[ i ].number ),
                  delta( facts[ i ].number, old[ i ].number ), facts[ i ].words );
    html.add( "</nav>" );
}

} // namespace

void writeOverview( Html& html, ReportData const& data ) {
    writeTitle( html, data );
    if( data.isDiff() )
        writeVerdict( html, data );
    else
        writeSoundness( html, data );
    writePrograms( html, data );
    writeFacts( html, data );
}

} // namespace Bfri
