#include "inspect/diff/Verdict.h"

#include "inspect/model/Codes.h"

namespace Bfri {

namespace {

template<std::size_t Size>
bool isOneOf( std::string_view const ( &words )[ Size ], std::string_view word ) {
    return std::ranges::find( words, word ) != std::end( words );
}

/// Whether a field depends only on placement.
bool isPlacement( std::string_view field ) {
    static constexpr std::string_view fields[] = { "stages", "stageStart", "stageNumbers", "stageSizes" };
    return isOneOf( fields, field );
}

/// Whether an agent needs at least as many as before.
bool isCapacity( RecordKind const& kind, std::string_view field ) {
    static constexpr std::string_view fields[] = {
        "size",         "totalEntries",  "maxEntries",   "maxPartitions", "maxPrios",  "maxAdtEntries",
        "maxSelGroups", "maxSelEntries", "ingressBytes", "egressBytes",   "fieldCount" };
    return kind.kind != Kind::headers && isOneOf( fields, field );
}

/// Whether each field of a hash is found at its old position.
bool keepsPositions( Value const& from, Value const& to ) {
    List const& old = std::get<List>( from.is );
    List const& now = std::get<List>( to.is );
    return old.size() <= now.size() &&
           std::equal( old.begin(), old.end(), now.begin(),
                       []( auto const& a, auto const& b ) { return !( a < b ) && !( b < a ); } );
}

char const* codeOf( RecordKind const& kind, Change const& change ) {
    if( isPlacement( change.field ) )
        return "BD304";
    if( change.field == "hitBitSmashOffset" || change.field == "hitBitSmashLast" )
        return "BD305";
    if( kind.kind == Kind::handles )
        return "BD306";
    if( isCapacity( kind, change.field ) )
        return change.to < change.from ? "BD104" : "BD303";
    if( change.field == "fieldNames" && keepsPositions( change.from, change.to ) )
        return "BD303";
    return "BD105";
}

/// Collects the notices of a comparison.
class Noticed {
  public:
    explicit Noticed( Comparison const& comparison ) : comparison_( comparison ), folded_( comparison ) {}

    std::vector<Notice> all() {
        for( PipeComparison const& pipe : comparison_.pipes )
            addPipe( pipe );
        for( Change const& change : comparison_.configuration )
            add( "BD311", "configuration", String( change.field ), lineOf( std::vector<Change>{ change } ),
                 change.from, change.to );
        for( KindComparison const& kind : comparison_.kinds )
            addKind( kind );
        for( NewDuplicate const& duplicate : comparison_.duplicates )
            addDuplicate( duplicate );
        addHandles();
        addFolded();
        std::ranges::stable_sort(
            notices_, []( Notice const& a, Notice const& b ) { return a.kind->level > b.kind->level; } );
        return std::move( notices_ );
    }

  private:
    Notice& add( char const* code, String what, String name, String text, Value from = {}, Value to = {} ) {
        notices_.push_back( { codedAs( noticeKinds(), code ),
                              std::move( what ),
                              std::move( name ),
                              {},
                              std::move( text ),
                              std::move( from ),
                              std::move( to ) } );
        return notices_.back();
    }
    void add( char const* code, RecordKind const& kind, Row const& row, String text, Value from = {},
              Value to = {} ) {
        Identity const identity( row );
        Notice& notice =
            add( code, kind.one, identity.name, std::move( text ), std::move( from ), std::move( to ) );
        if( identity.table )
            notice.table = *identity.table;
        if( List const* const pipes = std::get_if<List>( &valueOf( row, "pipes" ).is ) )
            notice.pipes = *pipes;
    }
    void add( char const* code, HandleOwner const& owner, U32 pipes, String text, Value from = {},
              Value to = {} ) {
        Notice& notice = add( code, kindOf( owner.kind ).one, owner.name, std::move( text ),
                              std::move( from ), std::move( to ) );
        notice.table = owner.table;
        notice.pipes = pipesOf( pipes );
    }
    void addPipe( PipeComparison const& pipe ) {
        using Is = PipeComparison::Is;
        static constexpr char const* codes[] = { "BD309", "BD109", "BD110", "BD310" };
        Value const from = valueIf( pipe.from );
        Value const to = valueIf( pipe.to );
        add( codes[ static_cast<int>( pipe.is ) ], "pipe", std::to_string( pipe.pipe ),
             pipe.is == Is::removed ? "ran " + *pipe.from
             : pipe.is == Is::added ? "runs " + *pipe.to
                                    : fromTo( from, to ),
             from, to )
            .pipes = { pipe.pipe };
    }

    void addKind( KindComparison const& kind ) {
        char const* const gone = kind.kind->kind == Kind::handles ? "BD203" : "BD101";
        for( Row const& row : kind.removed ) {
            if( !folded_.has( *kind.kind, row, false ) )
                add( gone, *kind.kind, row, "is gone" );
        }
        for( Row const& row : kind.added ) {
            if( !folded_.has( *kind.kind, row, true ) )
                add( "BD301", *kind.kind, row, "is new" );
        }
        for( OmittedRecord const& one : kind.leftOut )
            add( "BD103", *kind.kind, one.row, "is left out: " + one.reason.text );
        for( OmittedRecord const& one : kind.cameBack )
            add( "BD302", *kind.kind, one.row, "was left out: " + one.reason.text );
        for( ChangedRecord const& record : kind.changed )
            addChanged( *kind.kind, record );
        if( kind.reordered )
            add( "BD312", kind.kind->many, "", "come in another order" );
    }

    void addChanged( RecordKind const& kind, ChangedRecord const& record ) {
        if( record.renamed && !folded_.has( kind, record ) ) {
            String const& name = Identity( record.now ).name;
            add( "BD102", kind, record.row, "is now " + name, Identity( record.row ).name, name );
        }
        if( record.displaced )
            add( "BD106", kind, record.row, "queries by name answer for another one" );
        if( record.move )
            add( "BD304", kind, record.row, "stage " + fromTo( record.move->from, record.move->to ),
                 record.move->from, record.move->to );
        std::vector<Change> left = record.fields;
        std::erase_if( left, []( Change const& change ) { return change.field == "type"; } ); // has a name
        while( !left.empty() ) {
            Change const first = left.front();
            std::vector<Change> alike;
            std::erase_if( left, [ & ]( Change const& change ) {
                bool const is = codeOf( kind, change ) == std::string_view( codeOf( kind, first ) ) &&
                                fromTo( change.from, change.to ) == fromTo( first.from, first.to );
                if( is )
                    alike.push_back( change );
                return is;
            } );
            add( codeOf( kind, first ), kind, record.row, lineOf( alike ), first.from, first.to );
        }
    }

    void addDuplicate( NewDuplicate const& duplicate ) {
        String text;
        for( String const& name : duplicate.names )
            text += ( text.empty() ? "is the handle of " : ", " ) + name;
        for( U32 const handle : duplicate.handles )
            text += ( text.empty() ? "with the handles " : ", " ) + hexText( handle );
        add( duplicate.handle ? "BD108" : "BD107", duplicate, duplicate.pipes, text, {},
             duplicate.handle ? Value( Hex( *duplicate.handle ) ) : Value() );
    }

    void addHandles() {
        for( Renumbering const& one : comparison_.handles.renumbered ) {
            Value const from = Hex( one.from );
            Value const to = Hex( one.to );
            add( "BD201", one, one.pipes, "handle " + fromTo( from, to ), from, to );
        }
        for( ReusedHandle const& one : comparison_.handles.reused )
            add( "BD202", one.from, one.pipes,
                 hexText( one.handle ) + " is now the handle of " + kindOf( one.to.kind ).one + ' ' +
                     one.to.label(),
                 one.from.label(), one.to.label() );
    }

    void addFolded() {
        Tally const& shifted = comparison_.shifted;
        if( shifted.differing > 0 )
            add( "BD305", kindOf( Kind::tables ).many, "",
                 std::to_string( shifted.differing ) + " of " + std::to_string( shifted.all ) +
                     " hit-bit ranges start elsewhere" );
        for( UnreadTable const& table : comparison_.unread.tables )
            add( "BD307", "table", table.name, textOf( table ) ).pipes = pipesOf( table.pipes );
        for( UnreadMember const& member : comparison_.unread.members )
            add( "BD308", "member", member.name, "differs" ).pipes = pipesOf( member.pipes );
    }

    Comparison const& comparison_;
    Folded const folded_;
    std::vector<Notice> notices_;
};

} // namespace

Folded::Folded( Comparison const& comparison ) {
    for( KindComparison const& kind : comparison.kinds ) {
        Kind const is = kind.kind->kind;
        for( ChangedRecord const& record : kind.changed ) {
            if( record.renamed && is != Kind::actions && is != Kind::handles )
                ( is == Kind::resources ? resources_ : names_ ).insert( Identity( record.row ).name );
        }
        if( is != Kind::resources )
            continue;
        for( Row const& row : kind.removed )
            alone_.emplace( false, Identity( row ).name );
        for( Row const& row : kind.added )
            alone_.emplace( true, Identity( row ).name );
    }
}

bool Folded::has( RecordKind const& kind, ChangedRecord const& record ) const {
    Identity const from( record.row );
    if( kind.kind == Kind::actions )
        return from.name == Identity( record.now ).name;
    bool const isPlaced = kind.kind == Kind::resources || kind.kind == Kind::handles;
    return isPlaced && ( names_.count( from.name ) > 0 ||
                         ( kind.kind == Kind::handles && resources_.count( from.name ) > 0 ) );
}

U32 maskOf( Value const& pipes ) {
    U32 mask = 0;
    for( Value const& pipe : std::holds_alternative<List>( pipes.is ) ? std::get<List>( pipes.is ) : List() )
        mask |= U32{ 1 } << std::get<U32>( pipe.is );
    return mask;
}

U32 replacedPipes( Comparison const& comparison ) {
    U32 mask = 0;
    for( PipeComparison const& pipe : comparison.pipes )
        mask |= U32{ pipe.is == PipeComparison::Is::replaced } << pipe.pipe;
    return mask;
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

String textOf( UnreadTable const& table ) {
    if( table.is != UnreadTable::Is::changed )
        return table.is == UnreadTable::Is::added ? "is new" : "is gone";
    String text;
    for( String const& member : table.members )
        text += ( text.empty() ? "" : ", " ) + member;
    return text;
}

Verdict verdictOf( Comparison const& comparison ) {
    Verdict verdict{ comparison.differs(), comparison.modelDiffers() };
    verdict.notices = Noticed( comparison ).all();
    for( Notice const& notice : verdict.notices ) {
        std::string_view const code = notice.kind->code;
        verdict.byName &= notice.kind->level != NoticeLevel::breaking;
        verdict.byHandle &= notice.kind->level != NoticeLevel::handle && code != "BD101" && code != "BD103";
    }
    return verdict;
}

} // namespace Bfri
