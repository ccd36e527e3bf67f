#include "cli/terminal/DiffWords.h"

#include "cli/terminal/TextFormat.h"

#include <fmt/format.h>
#include <set>

namespace Bfri {

namespace {

/// The pipes, where there are several programs.
String pipesIn( Comparison const& comparison, U32 mask ) {
    return comparison.programs > 1 && mask ? " (pipes " + pipesText( mask ) + ')' : "";
}

/// Word for its kind, name, table of an action, pipes.
using RecordKey = std::tuple<String, String, String, U32>;

RecordKey keyOf( Notice const& notice ) {
    return { notice.what, notice.name, notice.table.value_or( "" ), maskOf( notice.pipes ) };
}

/// The lines of one comparison.
class Lines {
  public:
    Lines( Comparison const& comparison, Verdict const& verdict )
        : comparison_( comparison ), folded_( comparison ), replaced_( replacedPipes( comparison ) ) {
        for( Notice const& notice : verdict.notices ) {
            if( notice.kind->level == NoticeLevel::breaking && !isDuplicate( notice ) )
                noticed_.insert( keyOf( notice ) );
        }
    }

    DiffSection ofPipes() const {
        DiffSection section{ "pipes", {} };
        std::vector<PipeComparison> groups; // pipe has a mask
        for( PipeComparison const& pipe : comparison_.pipes ) {
            auto known = std::find_if( groups.begin(), groups.end(), [ & ]( PipeComparison const& group ) {
                return group.is == pipe.is && group.from == pipe.from && group.to == pipe.to;
            } );
            if( known == groups.end() )
                known = groups.insert( groups.end(), { 0, pipe.is, pipe.from, pipe.to } );
            known->pipe |= U32{ 1 } << pipe.pipe;
        }
        for( PipeComparison const& group : groups ) {
            if( comparison_.programs > 1 || group.is != PipeComparison::Is::edited )
                section.lines.push_back( lineOf( group ) );
        }
        return section;
    }

    DiffSection ofKind( KindComparison const& kind ) const {
        DiffSection section{ kind.kind->many, {} };
        auto const add = [ & ]( char mark, bool isMarked, Row const& row, String label, String text ) {
            if( !isWithin( maskOf( valueOf( row, "pipes" ) ), replaced_ ) )
                section.lines.push_back( { mark, isMarked, std::move( label ), std::move( text ) } );
        };
        for( Row const& row : kind.removed ) {
            if( !folded_.has( *kind.kind, row, false ) )
                add( '-', isNoticed( kind, row ), row, labelOf( row ), briefOf( row ) );
        }
        for( OmittedRecord const& one : kind.leftOut )
            add( '-', true, one.row, labelOf( one.row ), "left out: " + one.reason.text );
        for( Row const& row : kind.added ) {
            if( !folded_.has( *kind.kind, row, true ) )
                add( '+', false, row, labelOf( row ), briefOf( row ) );
        }
        for( OmittedRecord const& one : kind.cameBack )
            add( '+', false, one.row, labelOf( one.row ), "was left out: " + one.reason.text );
        for( ChangedRecord const& record : kind.changed ) {
            if( !folded_.hasAll( *kind.kind, record ) )
                add( '~', isNoticed( kind, record.row ), record.row, labelOf( *kind.kind, record ),
                     textOf( record ) );
        }
        if( kind.reordered )
            section.lines.push_back( { '~', false, "(all)", "in another order" } );
        return section;
    }

  private:
    bool isNoticed( KindComparison const& kind, Row const& row ) const {
        Identity const identity( row );
        return noticed_.count( { kind.kind->one, identity.name, identity.table ? *identity.table : "",
                                 maskOf( valueOf( row, "pipes" ) ) } ) > 0;
    }

    static DiffLine lineOf( PipeComparison const& group ) {
        using Is = PipeComparison::Is;
        static constexpr char marks[] = { '~', '~', '-', '+' };
        static constexpr char const* words[] = { "", ", another program", ", no program any more",
                                                 ", a first program" };
        auto const is = static_cast<std::size_t>( group.is );
        return { marks[ is ], group.is == Is::replaced || group.is == Is::removed, pipesText( group.pipe ),
                 fromTo( valueIf( group.from ), valueIf( group.to ) ) + words[ is ] };
    }

    /// With the pipes, where there are several programs.
    String labelOf( Row const& row, String const& newName = {} ) const {
        Identity const identity( row );
        return identity.label() + ( newName.empty() ? "" : " -> " + newName ) +
               pipesIn( comparison_, maskOf( valueOf( row, "pipes" ) ) );
    }
    String labelOf( RecordKind const& kind, ChangedRecord const& record ) const {
        bool const isNew = record.renamed && !( kind.kind == Kind::actions && folded_.has( kind, record ) );
        return labelOf( record.row, isNew ? Identity( record.now ).name : "" );
    }

    /// The most telling fields of a record that the other configuration does not have.
    static String briefOf( Row const& row ) {
        String text;
        for( auto const& [ field, title ] :
             { std::pair( "size", "size " ), std::pair( "stageStart", "stage " ) } ) {
            if( Value const& value = valueOf( row, field ); value.is.index() != 0 )
                text += ( text.empty() ? "" : ", " ) + String( title ) + Bfri::lineOf( value );
        }
        return text;
    }
    static String textOf( ChangedRecord const& record ) {
        String text = Bfri::lineOf( record.fields );
        auto const add = [ & ]( String const& more ) { text += ( text.empty() ? "" : "; " ) + more; };
        if( record.move )
            add( "stage " + fromTo( record.move->from, record.move->to ) );
        if( record.displaced )
            add( "queries by name answer for another one now" );
        return text;
    }

    Comparison const& comparison_;
    Folded const folded_;
    U32 const replaced_; ///< mask
    std::set<RecordKey> noticed_;
};

} // namespace

std::vector<DiffSection> sectionsOf( Comparison const& comparison, Verdict const& verdict ) {
    Lines const lines( comparison, verdict );
    std::vector<DiffSection> sections{ lines.ofPipes(), { "configuration", {} } };
    for( Change const& change : comparison.configuration )
        sections.back().lines.push_back(
            { '~', false, String( change.field ) + ' ' + fromTo( change.from, change.to ), "" } );
    for( KindComparison const& kind : comparison.kinds )
        sections.push_back( lines.ofKind( kind ) );
    std::erase_if( sections, []( DiffSection const& section ) { return section.lines.empty(); } );
    return sections;
}

DiffSection unreadSection( Comparison const& comparison ) {
    Unread const unread = unreadValues( comparison );
    static constexpr char marks[] = { '~', '+', '-' };
    DiffSection section{ "not read by the library", {} };
    for( UnreadTable const& table : unread.tables ) {
        char const mark = marks[ static_cast<std::size_t>( table.is ) ];
        section.lines.push_back( { mark, false, "table " + table.name + pipesIn( comparison, table.pipes ),
                                   mark == '~' ? textOf( table ) : "" } );
    }
    for( UnreadMember const& member : unread.members )
        section.lines.push_back(
            { '~', false, "section " + member.name + pipesIn( comparison, member.pipes ), "" } );
    return section;
}

RowList totalsOf( Comparison const& comparison ) {
    auto const& kinds = comparison.kinds;
    bool const anyOmitted = std::any_of( kinds.begin(), kinds.end(), []( auto const& kind ) {
        return !kind.leftOut.empty() || !kind.cameBack.empty();
    } );
    Folded const folded( comparison );
    RowList totals;
    for( KindComparison const& kind : kinds ) {
        auto const number = []( auto count ) { return static_cast<U32>( count ); };
        auto const countIf = [ & ]( auto is ) {
            return number( std::count_if( kind.changed.begin(), kind.changed.end(), is ) );
        };
        Row row{ { "KIND", kind.kind->many },
                 { "ADDED", number( kind.added.size() ) },
                 { "REMOVED", number( kind.removed.size() ) } };
        if( anyOmitted ) {
            row.push_back( { "LEFT OUT", number( kind.leftOut.size() ) } );
            row.push_back( { "BACK", number( kind.cameBack.size() ) } );
        }
        row.push_back( { "RENAMED", countIf( [ & ]( auto const& one ) {
                             return one.renamed && !folded.has( *kind.kind, one );
                         } ) } );
        row.push_back( { "CHANGED", countIf( []( auto const& one ) { return one.hasChanged(); } ) } );
        row.push_back( { "MOVED", countIf( []( auto const& one ) { return one.move.has_value(); } ) } );
        row.push_back( { "SAME", number( kind.same ) + countIf( [ & ]( auto const& one ) {
                                     return folded.hasAll( *kind.kind, one );
                                 } ) } );
        totals.header = row;
        if( kind.kind->kind != Kind::resources )
            row[ row.size() - 2 ].value = {}; // nothing else moves
        totals.rows.push_back( std::move( row ) );
    }
    return totals;
}

namespace {

/// "1 match table", "2 PHV fields"; for what is no kind of record, the word itself.
String countedWords( String const& what, std::size_t count ) {
    RecordKind const* const kind = kindOf( std::string_view( what ) );
    if( !kind )
        return countText( count, what );
    bool const isPhv = kind->kind == Kind::phvFields; // its words in commands are no nouns
    return countText( count, isPhv ? kind->noun : kind->one, isPhv ? kind->nouns : kind->many );
}

} // namespace

bool isDuplicate( Notice const& notice ) {
    std::string_view const code = notice.kind->code;
    return code == "BD107" || code == "BD108";
}

/// What differs on pipes with another program counts as those pipes.
String countsOf( Verdict const& verdict, NoticeLevel level ) {
    std::vector<Notice const*> replaced;
    U32 replacedMask = 0;
    for( Notice const& notice : verdict.notices ) {
        if( notice.kind->code == std::string_view( "BD109" ) ) {
            replaced.push_back( &notice );
            replacedMask |= maskOf( notice.pipes );
        }
    }
    std::vector<std::pair<Notice const*, std::set<RecordKey>>> counts;
    auto const count = [ & ]( Notice const& notice ) {
        auto alike = std::ranges::find_if( counts, [ & ]( auto const& one ) {
            return one.first->what == notice.what && one.first->kind == notice.kind;
        } );
        if( alike == counts.end() )
            alike = counts.insert( alike, { &notice, {} } );
        alike->second.insert( keyOf( notice ) );
    };
    for( Notice const& notice : verdict.notices ) {
        std::string_view const code = notice.kind->code;
        bool const takesHandle = level == NoticeLevel::handle && ( code == "BD101" || code == "BD103" );
        if( notice.kind->level != level && !takesHandle )
            continue;
        U32 const pipes = maskOf( notice.pipes );
        if( !isWithin( pipes, replacedMask ) )
            count( notice );
        for( Notice const* const pipe : replaced ) {
            if( isWithin( pipes, replacedMask ) && ( pipes & maskOf( pipe->pipes ) ) )
                count( *pipe );
        }
    }
    String text;
    for( auto const& [ notice, records ] : counts )
        text += ( text.empty() ? "" : ", " ) + countedWords( notice->what, records.size() ) + ' ' +
                notice->kind->counted;
    return text;
}

String byNameSentence( Verdict const& verdict ) {
    return "an agent that looks everything up by name notices" +
           ( verdict.byName ? " nothing" : ": " + countsOf( verdict, NoticeLevel::breaking ) );
}

String byHandleSentence( Verdict const& verdict ) {
    return verdict.byHandle
               ? "every handle still means the same record" // whatever these are now
               : "an agent that keeps handles notices: " + countsOf( verdict, NoticeLevel::handle );
}

String unreadCounts( Unread const& unread ) {
    std::vector<String> counts;
    if( !unread.tables.empty() )
        counts.push_back( countedWords( "table", unread.tables.size() ) );
    if( !unread.members.empty() )
        counts.push_back( countedWords( "section", unread.members.size() ) );
    return fmt::format( "{}", fmt::join( counts, " and " ) );
}

String unreadNames( Unread const& unread ) {
    constexpr std::size_t most = 3;
    std::vector<String> names;
    for( UnreadTable const& table : unread.tables )
        names.push_back( table.name );
    for( UnreadMember const& member : unread.members )
        names.push_back( member.name );
    bool const isCut = names.size() > most;
    names.resize( std::min( most, names.size() ) );
    return fmt::format( "{}{}", fmt::join( names, ", " ), isCut ? ", ..." : "" );
}

String sameness( Comparison const& comparison ) {
    bool const hasLines =
        comparison.modelDiffers() ||
        std::any_of( comparison.kinds.begin(), comparison.kinds.end(),
                     []( auto const& kind ) { return kind.differs(); } ) ||
        std::any_of( comparison.pipes.begin(), comparison.pipes.end(),
                     []( auto const& pipe ) { return pipe.is != PipeComparison::Is::edited; } );
    if( hasLines )
        return "";
    if( !comparison.unread.differs() )
        return comparison.kinds.size() == 1
                   ? String( "no difference in " ) + comparison.kinds.front().kind->many
                   : "no difference";
    bool const isOne = comparison.unread.tables.size() + comparison.unread.members.size() == 1;
    return "no difference in what the library reads; " + unreadCounts( comparison.unread ) +
           ( isOne ? " differs" : " differ" ) + " in what it does not";
}

String renumberedLine( Handles const& handles ) {
    Tally const& tally = handles.tally;
    return tally.differing == 0 ? ""
                                : fmt::format( "handles of records that both have: {} of {} renumbered",
                                               tally.differing, tally.all );
}

namespace {

String labelOf( HandleOwner const& owner ) {
    return fmt::format( "{} {}", kindOf( owner.kind ).one, owner.label() );
}

} // namespace

String lineOf( Renumbering const& handle ) {
    return fmt::format( "{} {}", labelOf( handle ), fromTo( Hex( handle.from ), Hex( handle.to ) ) );
}

String lineOf( ReusedHandle const& handle ) {
    return fmt::format( "{} {} -> {}", hexText( handle.handle ), labelOf( handle.from ),
                        labelOf( handle.to ) );
}

String shiftedLine( Comparison const& comparison ) {
    Tally const& shifted = comparison.shifted;
    return shifted.differing == 0
               ? ""
               : fmt::format( "hit-bit ranges: {} of {} shifted, and each is as long as before",
                              shifted.differing, shifted.all );
}

} // namespace Bfri
