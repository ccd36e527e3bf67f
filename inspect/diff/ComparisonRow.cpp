#include "inspect/diff/Comparison.h"
#include "inspect/diff/Join.h"
#include "inspect/diff/Verdict.h"

namespace Bfri {

namespace {

U32 number( std::size_t count ) { return static_cast<U32>( count ); }

Row rowOf( Change const& change ) {
    return { { "field", String( change.field ) }, { "from", change.from }, { "to", change.to } };
}

Row identityOf( Row const& row ) {
    Identity const identity( row );
    Row result{ { "name", identity.name } };
    if( identity.table )
        result.push_back( { "tableName", *identity.table } );
    return result;
}

List changesOf( KindComparison const& kind ) {
    List changes;
    for( ChangedRecord const& record : kind.changed ) {
        if( record.fields.empty() && !record.displaced )
            continue;
        Row row = identityOf( record.row );
        row.push_back( { "fields", listOf( record.fields, rowOf ) } );
        row.push_back( { "firstOfName", !record.displaced } );
        changes.emplace_back( std::move( row ) );
    }
    return changes;
}

List movesOf( KindComparison const& kind ) {
    List moves;
    for( ChangedRecord const& record : kind.changed ) {
        if( !record.move )
            continue;
        Row row = identityOf( record.row );
        row.push_back( { "from", record.move->from } );
        row.push_back( { "to", record.move->to } );
        moves.emplace_back( std::move( row ) );
    }
    return moves;
}

Row rowOf( KindComparison const& kind ) {
    auto const itself = []( Row const& row ) { return row; };
    return { { "added", listOf( kind.added, itself ) },
             { "removed", listOf( kind.removed, itself ) },
             { "changed", changesOf( kind ) },
             { "moved", movesOf( kind ) },
             { "same", number( kind.same ) } };
}

Row rowOf( Renumbering const& handle ) {
    Row row{ { "kind", kindOf( handle.kind ).one }, { "name", handle.name } };
    if( handle.table )
        row.push_back( { "tableName", *handle.table } );
    row.push_back( { "from", Hex( handle.from ) } );
    row.push_back( { "to", Hex( handle.to ) } );
    return row;
}

Row rowOf( SharedHandle const& shared ) {
    return { { "handle", Hex( shared.handle ) },
             { "names", listOf( shared.names, []( String const& name ) { return name; } ) } };
}

Row rowOf( Handles const& handles ) {
    auto const itself = []( auto const& element ) { return rowOf( element ); };
    return { { "renumbered", listOf( handles.renumbered, itself ) },
             { "count", number( handles.tally.differing ) },
             { "of", number( handles.tally.all ) },
             { "reused", number( handles.reused ) },
             { "shared", handles.areUnique ? Value( listOf( handles.shared, itself ) ) : Value() } };
}

Row noticed( Kind kind, Row row, char const* effect ) {
    row.insert( row.begin(), { "kind", kindOf( kind ).one } );
    row.push_back( { "effect", effect } );
    return row;
}

/// Of records, then of handles, which have names instead of one.
List noticesIn( Comparison const& comparison ) {
    List notices;
    for( Notice const& notice : noticesOf( comparison ) )
        notices.emplace_back(
            noticed( notice.kind->kind, identityOf( *notice.row ), textOf( notice.effect ) ) );
    for( SharedHandle const& shared : comparison.handles.shared )
        notices.emplace_back( noticed( Kind::handles, rowOf( shared ), "shared" ) );
    return notices;
}

Row verdictOf( Comparison const& comparison ) {
    return { { "differs", comparison.differs() },
             { "compatible", isCompatible( comparison ) },
             { "notices", noticesIn( comparison ) } };
}

} // namespace

Row rowOf( Comparison const& comparison ) {
    Row kinds;
    for( KindComparison const& kind : comparison.kinds )
        kinds.push_back( { kind.kind->member, rowOf( kind ) } );
    auto const itself = []( Change const& change ) { return rowOf( change ); };
    return { { "configuration", listOf( comparison.configuration, itself ) },
             { "kinds", std::move( kinds ) },
             { "handles", rowOf( comparison.handles ) },
             { "hitBitRanges", Row{ { "shifted", number( comparison.shifted.differing ) },
                                    { "of", number( comparison.shifted.all ) } } },
             { "verdict", verdictOf( comparison ) } };
}

} // namespace Bfri
