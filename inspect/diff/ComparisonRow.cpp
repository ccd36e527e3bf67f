#include "inspect/diff/Comparison.h"
#include "inspect/diff/Join.h"
#include "inspect/diff/Verdict.h"
#include "inspect/model/Records.h"

namespace Bfri {

namespace {

U32 number( std::size_t count ) { return static_cast<U32>( count ); }

List textsOf( std::vector<String> const& texts ) {
    return listOf( texts, []( String const& text ) { return text; } );
}

Row rowOf( Change const& change ) {
    return { { "field", String( change.field ) }, { "from", change.from }, { "to", change.to } };
}

/// Name, an action's table, and the pipes of what is not merged.
Row identityOf( Row const& row ) {
    Identity const identity( row );
    Row result{ { "name", identity.name } };
    if( identity.table )
        result.push_back( { "tableName", *identity.table } );
    if( Value const& pipes = valueOf( row, "pipes" ); pipes.is.index() != 0 )
        result.push_back( { "pipes", pipes } );
    return result;
}

Row changedRow( ChangedRecord const& record ) {
    Row row = identityOf( record.row );
    row.push_back( { "fields", listOf( record.fields, []( Change const& one ) { return rowOf( one ); } ) } );
    row.push_back( { "firstOfName", !record.displaced } );
    return row;
}

Row movedRow( ChangedRecord const& record ) {
    Row row = identityOf( record.row );
    row.push_back( { "from", record.move->from } );
    row.push_back( { "to", record.move->to } );
    row.push_back( { "stages", Row{ { "from", valueOf( record.row, "stageNumbers" ) },
                                    { "to", valueOf( record.now, "stageNumbers" ) } } } );
    return row;
}

Row renamedRow( ChangedRecord const& record ) {
    Identity const from( record.row );
    Identity const to( record.now );
    Row row{ { "from", from.name }, { "to", to.name } };
    if( from.table )
        row.push_back( { "tableName", Row{ { "from", *from.table }, { "to", *to.table } } } );
    if( Value const& pipes = valueOf( record.row, "pipes" ); pipes.is.index() != 0 )
        row.push_back( { "pipes", pipes } );
    return row;
}

template<class Is, class ToRow>
List listIf( std::vector<ChangedRecord> const& records, Is is, ToRow toRow ) {
    List list;
    for( ChangedRecord const& record : records ) {
        if( is( record ) )
            list.emplace_back( toRow( record ) );
    }
    return list;
}

Row rowOf( OmittedRecord const& record ) {
    Row row = identityOf( record.row );
    row.insert( row.begin() + 1, { "handle", valueOf( record.row, "handle" ) } );
    row.push_back( { "reason", record.reason.text } );
    row.push_back( { "members", textsOf( record.reason.members ) } );
    return row;
}

Row rowOf( KindComparison const& kind ) {
    auto const itself = []( Row const& row ) { return row; };
    auto const omitted = []( OmittedRecord const& record ) { return rowOf( record ); };
    auto const isRenamed = []( ChangedRecord const& record ) { return record.renamed; };
    auto const hasChanged = []( ChangedRecord const& record ) { return record.hasChanged(); };
    auto const hasMoved = []( ChangedRecord const& record ) { return record.move.has_value(); };
    return { { "added", listOf( kind.added, itself ) },
             { "removed", listOf( kind.removed, itself ) },
             { "renamed", listIf( kind.changed, isRenamed, renamedRow ) },
             { "leftOut", listOf( kind.leftOut, omitted ) },
             { "cameBack", listOf( kind.cameBack, omitted ) },
             { "changed", listIf( kind.changed, hasChanged, changedRow ) },
             { "moved", listIf( kind.changed, hasMoved, movedRow ) },
             { "reordered", kind.reordered },
             { "same", number( kind.same ) } };
}

Row rowOf( HandleOwner const& owner ) {
    Row row{ { "kind", kindOf( owner.kind ).one }, { "name", owner.name } };
    if( owner.table )
        row.push_back( { "tableName", *owner.table } );
    return row;
}

Row rowOf( Renumbering const& handle ) {
    Row row = rowOf( static_cast<HandleOwner const&>( handle ) );
    row.push_back( { "from", Hex( handle.from ) } );
    row.push_back( { "to", Hex( handle.to ) } );
    row.push_back( { "pipes", pipesOf( handle.pipes ) } );
    return row;
}

Row rowOf( ReusedHandle const& reused ) {
    return { { "handle", Hex( reused.handle ) },
             { "from", rowOf( reused.from ) },
             { "to", rowOf( reused.to ) },
             { "pipes", pipesOf( reused.pipes ) } };
}

Row rowOf( NewDuplicate const& duplicate ) {
    Row row = rowOf( HandleOwner{ duplicate.kind, duplicate.name, duplicate.table } );
    row.push_back( { "handle", duplicate.handle ? Value( Hex( *duplicate.handle ) ) : Value() } );
    row.push_back( { "names", textsOf( duplicate.names ) } );
    row.push_back( { "handles", listOf( duplicate.handles, []( U32 handle ) { return Hex( handle ); } ) } );
    row.push_back( { "pipes", pipesOf( duplicate.pipes ) } );
    return row;
}

Row rowOf( Handles const& handles ) {
    auto const itself = []( auto const& element ) { return rowOf( element ); };
    return { { "renumbered", listOf( handles.renumbered, itself ) },
             { "count", number( handles.tally.differing ) },
             { "of", number( handles.tally.all ) },
             { "reused", listOf( handles.reused, itself ) } };
}

Row rowOf( PipeComparison const& pipe ) {
    static constexpr char const* words[] = { "edited", "replaced", "removed", "added" };
    auto const path = []( std::optional<String> const& file ) { return file ? Value( *file ) : Value(); };
    return { { "pipe", pipe.pipe },
             { "from", path( pipe.from ) },
             { "to", path( pipe.to ) },
             { "change", words[ static_cast<int>( pipe.is ) ] } };
}

Row rowOf( UnreadTable const& table ) {
    static constexpr char const* words[] = { "changed", "added", "removed" };
    return { { "name", table.name },
             { "change", words[ static_cast<int>( table.is ) ] },
             { "members", textsOf( table.members ) },
             { "pipes", pipesOf( table.pipes ) } };
}

Row rowOf( Unread const& unread ) {
    auto const memberRow = []( UnreadMember const& member ) {
        return Row{ { "name", member.name }, { "pipes", pipesOf( member.pipes ) } };
    };
    return { { "tables", listOf( unread.tables, []( UnreadTable const& table ) { return rowOf( table ); } ) },
             { "members", listOf( unread.members, memberRow ) } };
}

} // namespace

Row rowOf( Comparison const& comparison, Verdict const& verdict ) {
    Row kinds;
    for( KindComparison const& kind : comparison.kinds )
        kinds.push_back( { kind.kind->member, rowOf( kind ) } );
    auto const itself = []( auto const& element ) { return rowOf( element ); };
    return { { "pipes", listOf( comparison.pipes, itself ) },
             { "configuration", listOf( comparison.configuration, itself ) },
             { "kinds", std::move( kinds ) },
             { "handles", rowOf( comparison.handles ) },
             { "duplicates", listOf( comparison.duplicates, itself ) },
             { "hitBitRanges", Row{ { "shifted", number( comparison.shifted.differing ) },
                                    { "of", number( comparison.shifted.all ) } } },
             { "unread", rowOf( comparison.unread ) },
             { "verdict", rowOf( verdict ) } };
}

} // namespace Bfri
