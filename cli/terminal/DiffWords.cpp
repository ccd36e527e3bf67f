#include "cli/terminal/DiffWords.h"

#include <set>

namespace Bfri {

namespace {

U32 maskOf( List const& pipes ) {
    U32 mask = 0;
    for( Value const& pipe : pipes )
        mask |= U32{ 1 } << std::get<U32>( pipe.is );
    return mask;
}

U32 maskOf( Row const& row ) {
    List const* const pipes = std::get_if<List>( &valueOf( row, "pipes" ).is );
    return pipes ? maskOf( *pipes ) : 0;
}

/// The pipes that run another program: what differs there is not listed, since nearly everything does.
U32 replacedPipes( Comparison const& comparison ) {
    U32 mask = 0;
    for( PipeComparison const& pipe : comparison.pipes )
        mask |= U32{ pipe.is == PipeComparison::Is::replaced } << pipe.pipe;
    return mask;
}

bool isWithin( U32 pipes, U32 others ) { return pipes != 0 && ( pipes & ~others ) == 0; }

/// The pipes, where there are several programs.
String pipesIn( Comparison const& comparison, U32 mask ) {
    return comparison.programs > 1 && mask ? " (pipes " + pipesText( mask ) + ')' : "";
}

/// The lines of one comparison.
class Lines {
  public:
    Lines( Comparison const& comparison, Verdict const& verdict )
        : comparison_( comparison ), folded_( comparison ), replaced_( replacedPipes( comparison ) ) {
        for( Notice const& notice : verdict.notices ) {
            std::string_view const code = notice.kind->code;
            bool const isDuplicate = code == "BD107" || code == "BD108"; // has a line of its own
            if( notice.kind->level == NoticeLevel::breaking && !isDuplicate )
                noticed_.insert( key( notice.what, notice.name, notice.table, notice.pipes ) );
        }
    }

    DiffSection ofPipes() const {
        DiffSection section{ "pipes", {} };
        std::vector<PipeComparison> groups; // pipe has a mask
        for( PipeComparison const& pipe : comparison_.pipes ) {
            auto known = std::ranges::find_if( groups, [ & ]( PipeComparison const& group ) {
                return group.is == pipe.is && group.from == pipe.from && group.to == pipe.to;
            } );
            if( known == groups.end() )
                known = groups.insert( groups.end(), { 0, pipe.is, pipe.from, pipe.to } );
            known->pipe |= U32{ 1 } << pipe.pipe;
        }
        bool const isTold = comparison_.programs > 1;
        for( PipeComparison const& group : groups ) {
            if( isTold || group.is != PipeComparison::Is::edited )
                section.lines.push_back( lineOf( group ) );
        }
        return section;
    }

    DiffSection ofKind( KindComparison const& kind ) const {
        DiffSection section{ kind.kind->many, {} };
        auto const add = [ & ]( char mark, bool isMarked, Row const& row, String label, String text ) {
            if( !isWithin( maskOf( row ), replaced_ ) )
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
    using Key = std::tuple<String, String, String, U32>;

    static Key key( String const& what, String const& name, std::optional<String> const& table,
                    List const& pipes ) {
        return { what, name, table.value_or( "" ), maskOf( pipes ) };
    }
    bool isNoticed( KindComparison const& kind, Row const& row ) const {
        Identity const identity( row );
        return noticed_.count( { kind.kind->one, identity.name, identity.table ? *identity.table : "",
                                 maskOf( row ) } ) > 0;
    }

    static DiffLine lineOf( PipeComparison const& group ) {
        static constexpr char const* words[] = { "", ", another program", ", no program any more",
                                                 ", a first program" };
        using Is = PipeComparison::Is;
        return { group.is == Is::removed ? '-'
                 : group.is == Is::added ? '+'
                                         : '~',
                 group.is == Is::replaced || group.is == Is::removed, pipesText( group.pipe ),
                 fromTo( valueIf( group.from ), valueIf( group.to ) ) +
                     words[ static_cast<int>( group.is ) ] };
    }

    /// With the pipes, where there are several programs.
    String labelOf( Row const& row, String const& newName = {} ) const {
        Identity const identity( row );
        return identity.label() + ( newName.empty() ? "" : " -> " + newName ) +
               pipesIn( comparison_, maskOf( row ) );
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
    std::set<Key> noticed_;
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

namespace {

template<class Element>
std::vector<Element> onOtherPipes( std::vector<Element> all, Comparison const& comparison ) {
    U32 const replaced = replacedPipes( comparison );
    std::erase_if( all, [ & ]( Element const& one ) { return isWithin( one.pipes, replaced ); } );
    return all;
}

} // namespace

std::vector<ReusedHandle> reusedHandles( Comparison const& comparison ) {
    return onOtherPipes( comparison.handles.reused, comparison );
}

Unread unreadValues( Comparison const& comparison ) {
    return { onOtherPipes( comparison.unread.tables, comparison ),
             onOtherPipes( comparison.unread.members, comparison ) };
}

DiffSection unreadSection( Comparison const& comparison ) {
    DiffSection section{ "not read by the library", {} };
    Unread const unread = unreadValues( comparison );
    for( UnreadTable const& table : unread.tables ) {
        static constexpr char marks[] = { '~', '+', '-' };
        char const mark = marks[ static_cast<int>( table.is ) ];
        section.lines.push_back( { mark, false, "table " + table.name + pipesIn( comparison, table.pipes ),
                                   mark == '~' ? Bfri::textOf( table ) : "" } );
    }
    for( UnreadMember const& member : unread.members )
        section.lines.push_back(
            { '~', false, "section " + member.name + pipesIn( comparison, member.pipes ), "" } );
    return section;
}

namespace {

U32 number( std::size_t count ) { return static_cast<U32>( count ); }

} // namespace

RowList totalsOf( Comparison const& comparison ) {
    bool const anyOmitted = std::ranges::any_of( comparison.kinds, []( auto const& kind ) {
        return !kind.leftOut.empty() || !kind.cameBack.empty();
    } );
    Folded const folded( comparison );
    RowList totals;
    for( KindComparison const& kind : comparison.kinds ) {
        auto const countIf = [ & ]( auto is ) {
            return number( static_cast<std::size_t>( std::ranges::count_if( kind.changed, is ) ) );
        };
        auto const isRenamed = [ & ]( ChangedRecord const& one ) {
            return one.renamed && !folded.has( *kind.kind, one );
        };
        auto const isSame = [ & ]( ChangedRecord const& one ) { return folded.hasAll( *kind.kind, one ); };
        bool const isMovable = kind.kind->kind == Kind::resources;
        Row row{ { "KIND", kind.kind->many },
                 { "ADDED", number( kind.added.size() ) },
                 { "REMOVED", number( kind.removed.size() ) } };
        if( anyOmitted ) {
            row.push_back( { "LEFT OUT", number( kind.leftOut.size() ) } );
            row.push_back( { "BACK", number( kind.cameBack.size() ) } );
        }
        row.push_back( { "RENAMED", countIf( isRenamed ) } );
        row.push_back( { "CHANGED", countIf( []( auto const& one ) { return one.hasChanged(); } ) } );
        row.push_back(
            { "MOVED", isMovable ? Value( countIf( []( auto const& one ) { return one.move.has_value(); } ) )
                                 : Value() } );
        row.push_back( { "SAME", number( kind.same ) + countIf( isSame ) } );
        totals.rows.push_back( std::move( row ) );
    }
    if( !totals.rows.empty() )
        totals.header = totals.rows.front();
    for( Field& field : totals.header ) {
        if( field.name == "MOVED" )
            field.value = U32{ 0 };
    }
    return totals;
}

namespace {

/// "1 table", "2 PHV fields"; of what is no kind of record the word itself.
String countedWords( String const& what, std::size_t count ) {
    RecordKind const* const kind = kindOf( std::string_view( what ) );
    if( !kind )
        return std::to_string( count ) + ' ' + what + ( count == 1 ? "" : "s" );
    bool const isPhv = kind->kind == Kind::phvFields; // its words in commands are no nouns
    char const* const one = isPhv ? kind->noun : kind->one;
    char const* const several = isPhv ? kind->nouns : kind->many;
    return std::to_string( count ) + ' ' + ( count == 1 ? one : several );
}

String verdictSentence( Verdict const& verdict, NoticeLevel level, char const* agent, bool isSafe ) {
    if( isSafe )
        return String( agent ) + " notices nothing";
    return String( agent ) + " notices: " + countsOf( verdict, level );
}

} // namespace

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
    using Record = std::tuple<String, String, U32>;
    std::vector<std::pair<Notice const*, std::set<Record>>> counts;
    auto const count = [ & ]( Notice const& notice ) {
        auto const alike = std::ranges::find_if( counts, [ & ]( auto const& one ) {
            return one.first->what == notice.what && one.first->kind == notice.kind;
        } );
        std::set<Record>& records =
            alike == counts.end() ? counts.emplace_back( &notice, std::set<Record>() ).second : alike->second;
        records.emplace( notice.name, notice.table.value_or( "" ), maskOf( notice.pipes ) );
    };
    for( Notice const& notice : verdict.notices ) {
        std::string_view const code = notice.kind->code;
        bool const isGone = level == NoticeLevel::handle && ( code == "BD101" || code == "BD103" );
        if( notice.kind->level != level && !isGone )
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
    return verdictSentence( verdict, NoticeLevel::breaking, "an agent that looks everything up by name",
                            verdict.byName );
}

String byHandleSentence( Verdict const& verdict ) {
    if( verdict.byHandle ) // which says nothing of what the records are now
        return "every handle still means the same record";
    return verdictSentence( verdict, NoticeLevel::handle, "an agent that keeps handles", false );
}

String unreadCounts( Unread const& unread ) {
    String text;
    if( std::size_t const count = unread.tables.size() )
        text = countedWords( "table", count );
    if( std::size_t const count = unread.members.size() )
        text += ( text.empty() ? "" : " and " ) + countedWords( "section", count );
    return text;
}

String unreadNames( Unread const& unread ) {
    constexpr std::size_t most = 3;
    std::vector<String> names;
    for( UnreadTable const& table : unread.tables )
        names.push_back( table.name );
    for( UnreadMember const& member : unread.members )
        names.push_back( member.name );
    String text;
    for( std::size_t i = 0; i < std::min( most, names.size() ); ++i )
        text += ( i == 0 ? "" : ", " ) + names[ i ];
    return text + ( names.size() > most ? ", ..." : "" );
}

String sameness( Comparison const& comparison ) {
    bool const hasLines =
        comparison.modelDiffers() ||
        std::ranges::any_of( comparison.kinds, []( auto const& kind ) { return kind.differs(); } ) ||
        std::ranges::any_of( comparison.pipes,
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
    return handles.tally.differing == 0
               ? ""
               : "handles of records that both have: " + std::to_string( handles.tally.differing ) + " of " +
                     std::to_string( handles.tally.all ) + " renumbered";
}

String lineOf( Renumbering const& handle ) {
    return kindOf( handle.kind ).one + ( ' ' + handle.label() ) + ' ' +
           fromTo( Hex( handle.from ), Hex( handle.to ) );
}

String lineOf( ReusedHandle const& handle ) {
    auto const label = []( HandleOwner const& owner ) {
        return kindOf( owner.kind ).one + ( ' ' + owner.label() );
    };
    return hexText( handle.handle ) + ' ' + label( handle.from ) + " -> " + label( handle.to );
}

String shiftedLine( Comparison const& comparison ) {
    Tally const& shifted = comparison.shifted;
    return shifted.differing == 0
               ? ""
               : "hit-bit ranges: " + std::to_string( shifted.differing ) + " of " +
                     std::to_string( shifted.all ) + " shifted, and each is as long as before";
}

} // namespace Bfri
