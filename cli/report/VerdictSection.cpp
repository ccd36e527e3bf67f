#include "cli/report/Sections.h"

#include "inspect/diff/Comparison.h"
#include "inspect/diff/Verdict.h"

#include <map>

namespace Bfri {

namespace {

/// A notice, together with those of one name and code: a match table and its resource are one reason.
struct Reason {
    Notice const* notice;
    std::vector<String> kinds;
};

std::vector<Reason> reasonsOf( Verdict const& verdict, NoticeLevel level ) {
    std::vector<Reason> reasons;
    std::map<std::tuple<String, String, String>, std::size_t> places;
    for( Notice const& notice : verdict.notices ) {
        if( notice.kind->level != level )
            continue;
        auto const [ place, isNew ] = places.emplace(
            std::tuple( notice.kind->code, notice.name, notice.table.value_or( "" ) ), reasons.size() );
        if( isNew )
            reasons.push_back( { &notice, {} } );
        auto& kinds = reasons[ place->second ].kinds;
        if( std::find( kinds.begin(), kinds.end(), notice.what ) == kinds.end() )
            kinds.push_back( notice.what );
    }
    return reasons;
}

/// "1 match table", "2 pipes": what notices are about.
String nounText( std::size_t count, String const& what ) {
    RecordKind const* const kind = kindOf( std::string_view( what ) );
    return kind ? counted( count, kind->noun, kind->nouns ) : counted( count, what );
}

Mark markOf( NoticeKind const& kind ) {
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
    String detail = notice.table ? "of " + String( SplitName( *notice.table ).last ) : "";
    if( markOf( *notice.kind ) != Mark::removed )
        return detail + ( detail.empty() ? "" : ": " ) + notice.text;
    if( detail.empty() && removed != chip.removed.end() )
        return counted( ( *removed )->size, "entry", "entries" ) + ", " + placeText( **removed );
    return detail.empty() ? notice.text : detail;
}

void writeReason( Html& html, Chip const& chip, Reason const& reason ) {
    Notice const& notice = *reason.notice;
    html.open( "li" );
    writeMark( html, markOf( *notice.kind ) );
    RecordKind const* const kind = kindOf( std::string_view( notice.what ) );
    html.leaf( "em", ( kind ? String( kind->noun ) : notice.what ) + ' ' + notice.kind->counted );
    if( auto const link = linkOf( chip, notice ) )
        html.open( "a", { linkTo( *link ) } );
    else
        html.open( "span", { { "class", "a" } } );
    writeName( html, notice.name );
    html.close();
    html.leaf( "small", detailOf( chip, notice ) ).close();
}

void writeReasons( Html& html, Chip const& chip, std::vector<Reason> const& reasons ) {
    constexpr std::size_t most = 12;
    auto const write = [ & ]( std::span<Reason const> some ) {
        html.open( "ul", { { "class", "why" } } );
        for( Reason const& reason : some )
            writeReason( html, chip, reason );
        html.close();
    };
    std::span<Reason const> const all( reasons );
    write( all.first( std::min( most, all.size() ) ) );
    if( all.size() <= most )
        return;
    html.open( "details" ).leaf( "summary", grouped( all.size() - most ) + " more" );
    write( all.subspan( most ) );
    html.close();
}

/// "3 tables removed, 1 action changed".
String sumsText( std::vector<Reason> const& reasons ) {
    std::vector<std::pair<String, std::size_t>> sums; // in the order of the notices
    std::map<String, std::size_t> counts;
    for( Reason const& reason : reasons ) {
        String const key = reason.kinds.front() + '\n' + reason.notice->kind->counted;
        if( counts[ key ]++ == 0 )
            sums.emplace_back( key, 0 );
    }
    String text;
    for( auto const& sum : sums ) {
        auto const split = sum.first.find( '\n' );
        text += ( text.empty() ? "" : ", " ) + nounText( counts[ sum.first ], sum.first.substr( 0, split ) ) +
                ' ' + sum.first.substr( split + 1 );
    }
    return text;
}

struct Judgement {
    Soundness soundness;
    char const* word;
    String sentence;
    std::optional<NoticeLevel> reasons = {};
};

Judgement judgementOf( Verdict const& verdict ) {
    if( !verdict.differs )
        return { Soundness::good, "No difference", "" };
    if( !verdict.modelDiffers )
        return { Soundness::good, "Agent-safe", "Only members that the library never reads differ." };
    if( !verdict.byName )
        return { Soundness::bad, "Breaking",
                 "An agent that looks everything up by name would notice: " +
                     sumsText( reasonsOf( verdict, NoticeLevel::breaking ) ) + ".",
                 NoticeLevel::breaking };
    if( !verdict.byHandle )
        return { Soundness::warning, "Safe by name, not by handle",
                 "An agent that looks everything up by name when it starts notices nothing. One that keeps "
                 "handles would "
                 "notice: " +
                     sumsText( reasonsOf( verdict, NoticeLevel::handle ) ) + ".",
                 NoticeLevel::handle };
    return { Soundness::good, "Agent-safe",
             "An agent that looks everything up by name when it starts notices nothing, and every handle "
             "still means the same record." };
}

/// Which agents notice nothing, and what only other programs would notice.
void writeLevels( Html& html, Comparison const& comparison, Verdict const& verdict ) {
    html.open( "p" );
    html.text( String( "By name: " ) + ( verdict.byName ? "safe" : "breaking" ) + ". By handle: " +
               ( verdict.byHandle ? "every handle still means the same record."
                                  : "some handles no longer mean what they did." ) );
    if( comparison.unread.differs() )
        html.text( " Not read by the library, but different: " +
                   counted( comparison.unread.tables.size(), "table" ) + " and " +
                   counted( comparison.unread.members.size(), "other member" ) + "." );
    html.close();
}

void writeTally( Html& html, Comparison const& comparison ) {
    html.open( "table", { { "class", "tally" } } )
        .open( "thead" )
        .open( "tr" )
        .leaf( "th", { { "scope", "col" } }, "Kind" );
    for( char const* const title : { "+ added", "− removed", "~ changed", "→ moved", "renamed", "same" } )
        html.leaf( "th", { { "scope", "col" } }, title );
    html.close().close().open( "tbody" );
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
        html.open( "tr" ).leaf( "th", { { "scope", "row" } }, kind.kind->nouns );
        for( std::size_t const number :
             { kind.added.size() + kind.cameBack.size(), kind.removed.size() + kind.leftOut.size(), changed,
               moved, renamed, same } )
            html.leaf( "td", number ? grouped( number ) : "·" );
        html.close();
    }
    html.close().close();
}

} // namespace

void writeVerdict( Html& html, ReportData const& data ) {
    Comparison const& comparison = *data.comparison;
    Verdict const verdict = verdictOf( comparison );
    Judgement const judgement = judgementOf( verdict );
    html.open( "div", { { "class", own( "band {} verdict", cssOf( judgement.soundness ) ) } } );
    writeIcon( html, judgement.soundness );
    html.open( "div" ).leaf( "h2", judgement.word );
    if( !judgement.sentence.empty() )
        html.leaf( "p", judgement.sentence );
    if( verdict.differs )
        writeLevels( html, comparison, verdict );
    if( judgement.reasons )
        writeReasons( html, data.chip, reasonsOf( verdict, *judgement.reasons ) );
    html.close().close().open( "div", { { "class", "two" } } );
    if( comparison.modelDiffers() )
        writeTally( html, comparison );
    writeSoundness( html, data );
    html.close();
}

} // namespace Bfri
