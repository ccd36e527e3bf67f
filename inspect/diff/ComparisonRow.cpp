#include "inspect/diff/Verdict.h"
#include "inspect/model/Records.h"

namespace Bfri {

namespace {

U32 number( std::size_t count ) { return static_cast<U32>( count ); }

Row with( Row row, std::initializer_list<Field> more ) {
    row.insert( row.end(), more );
    return row;
}

List textsOf( std::vector<String> const& texts ) {
    return listOf( texts, []( String const& text ) { return text; } );
}

/// With the pipes of what is not merged.
Row withPipesOf( Row const& record, Row row ) {
    if( Value const& pipes = valueOf( record, "pipes" ); pipes.is.index() != 0 )
        row.push_back( { "pipes", pipes } );
    return row;
}

Row identityOf( Row const& record ) {
    Identity const identity( record );
    Row row{ { "name", identity.name } };
    if( identity.table )
        row.push_back( { "tableName", *identity.table } );
    return withPipesOf( record, std::move( row ) );
}

Row rowOf( Row const& row ) { return row; }

Row rowOf( Change const& change ) {
    return { { "field", String( change.field ) }, { "from", change.from }, { "to", change.to } };
}

Row rowOf( OmittedRecord const& record ) {
    Row row = identityOf( record.row );
    row.insert( row.begin() + 1, { "handle", valueOf( record.row, "handle" ) } );
    return with( std::move( row ),
                 { { "reason", record.reason.text }, { "members", textsOf( record.reason.members ) } } );
}

Row rowOf( HandleOwner const& owner ) {
    Row row{ { "kind", kindOf( owner.kind ).one }, { "name", owner.name } };
    return owner.table ? with( std::move( row ), { { "tableName", *owner.table } } ) : row;
}

Row rowOf( Renumbering const& handle ) {
    return with( rowOf( static_cast<HandleOwner const&>( handle ) ),
                 { { "from", Hex( handle.from ) },
                   { "to", Hex( handle.to ) },
                   { "pipes", pipesOf( handle.pipes ) } } );
}

Row rowOf( ReusedHandle const& reused ) {
    return { { "handle", Hex( reused.handle ) },
             { "from", rowOf( reused.from ) },
             { "to", rowOf( reused.to ) },
             { "pipes", pipesOf( reused.pipes ) } };
}

Row rowOf( NewDuplicate const& duplicate ) {
    auto const asHex = []( U32 handle ) { return Hex( handle ); };
    return with( rowOf( static_cast<HandleOwner const&>( duplicate ) ),
                 { { "handle", duplicate.handle ? Value( Hex( *duplicate.handle ) ) : Value() },
                   { "names", textsOf( duplicate.names ) },
                   { "handles", listOf( duplicate.handles, asHex ) },
                   { "pipes", pipesOf( duplicate.pipes ) } } );
}

Row rowOf( PipeComparison const& pipe ) {
    static constexpr char const* words[] = { "edited", "replaced", "removed", "added" };
    return { { "pipe", pipe.pipe },
             { "from", valueIf( pipe.from ) },
             { "to", valueIf( pipe.to ) },
             { "change", words[ static_cast<int>( pipe.is ) ] } };
}

Row rowOf( UnreadTable const& table ) {
    static constexpr char const* words[] = { "changed", "added", "removed" };
    return { { "name", table.name },
             { "change", words[ static_cast<int>( table.is ) ] },
             { "members", textsOf( table.members ) },
             { "pipes", pipesOf( table.pipes ) } };
}

Row rowOf( UnreadMember const& member ) {
    return { { "name", member.name }, { "pipes", pipesOf( member.pipes ) } };
}

Row rowOf( Notice const& notice ) {
    Row row{ { "level", wordOf( notice.kind->level ) },
             { "kind", notice.what },
             { "name", notice.name },
             { "code", notice.kind->code },
             { "text", notice.text },
             { "from", notice.from },
             { "to", notice.to } };
    if( notice.table )
        row.push_back( { "tableName", *notice.table } );
    return with( std::move( row ), { { "pipes", notice.pipes } } );
}

template<class Elements>
List rowsOf( Elements const& elements ) {
    return listOf( elements, []( auto const& element ) { return rowOf( element ); } );
}

Row changedRow( ChangedRecord const& record ) {
    return with( identityOf( record.row ),
                 { { "fields", rowsOf( record.fields ) }, { "firstOfName", !record.displaced } } );
}

Row movedRow( ChangedRecord const& record ) {
    return with( identityOf( record.row ),
                 { { "from", record.move->from },
                   { "to", record.move->to },
                   { "stages", Row{ { "from", valueOf( record.row, "stageNumbers" ) },
                                    { "to", valueOf( record.now, "stageNumbers" ) } } } } );
}

Row renamedRow( ChangedRecord const& record ) {
    Identity const from( record.row );
    Identity const to( record.now );
    Row row{ { "from", from.name }, { "to", to.name } };
    if( from.table )
        row.push_back( { "tableName", Row{ { "from", *from.table }, { "to", *to.table } } } );
    return withPipesOf( record.row, std::move( row ) );
}

Row rowOf( KindComparison const& kind ) {
    auto const listIf = [ & ]( auto is, Row ( *toRow )( ChangedRecord const& ) ) {
        List list;
        for( ChangedRecord const& record : kind.changed ) {
            if( is( record ) )
                list.emplace_back( toRow( record ) );
        }
        return list;
    };
    return { { "added", rowsOf( kind.added ) },
             { "removed", rowsOf( kind.removed ) },
             { "renamed", listIf( []( auto const& one ) { return one.renamed; }, renamedRow ) },
             { "leftOut", rowsOf( kind.leftOut ) },
             { "cameBack", rowsOf( kind.cameBack ) },
             { "changed", listIf( []( auto const& one ) { return one.hasChanged(); }, changedRow ) },
             { "moved", listIf( []( auto const& one ) { return one.move.has_value(); }, movedRow ) },
             { "reordered", kind.reordered },
             { "same", number( kind.same ) } };
}

} // namespace

Row rowOf( Comparison const& comparison, Verdict const& verdict ) {
    Row kinds;
    for( KindComparison const& kind : comparison.kinds )
        kinds.push_back( { kind.kind->member, rowOf( kind ) } );
    return { { "pipes", rowsOf( comparison.pipes ) },
             { "configuration", rowsOf( comparison.configuration ) },
             { "kinds", std::move( kinds ) },
             { "handles", Row{ { "renumbered", rowsOf( comparison.handles.renumbered ) },
                               { "count", number( comparison.handles.tally.differing ) },
                               { "of", number( comparison.handles.tally.all ) },
                               { "reused", rowsOf( comparison.handles.reused ) } } },
             { "duplicates", rowsOf( comparison.duplicates ) },
             { "hitBitRanges", Row{ { "shifted", number( comparison.shifted.differing ) },
                                    { "of", number( comparison.shifted.all ) } } },
             { "unread", Row{ { "tables", rowsOf( comparison.unread.tables ) },
                              { "members", rowsOf( comparison.unread.members ) } } },
             { "verdict", Row{ { "differs", verdict.differs },
                               { "modelDiffers", verdict.modelDiffers },
                               { "byName", verdict.byName },
                               { "byHandle", verdict.byHandle },
                               { "notices", rowsOf( verdict.notices ) } } } };
}

} // namespace Bfri
