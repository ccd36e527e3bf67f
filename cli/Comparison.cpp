#include "cli/Comparison.h"

#include "cli/FieldComparer.h"
#include "cli/Join.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

bool isHandles( Listing const& kind ) { return kind.word == std::string_view( "handles" ); }

/// Takes from the record of a placed table what its resource says of it, too.
void leaveToResource( ChangedRecord& record ) {
    record.move.reset();
    std::erase_if( record.fields, []( Change const& change ) { return change.field == "size"; } );
}

void moveRows( std::vector<Row>& to, std::vector<Row>& from, std::vector<std::size_t> const& places ) {
    for( std::size_t const place : places )
        to.push_back( std::move( from[ place ] ) );
}

KindComparison compareKind( FieldComparer& comparer, Listing const& kind, bool isOnly, std::vector<Row> old,
                            std::vector<Row> now ) {
    KindComparison result{ &kind };
    Join const join = joinRows( old, now );
    for( Join::Pair const& pair : join.both ) {
        ChangedRecord record = comparer.compare( old[ pair.old ], now[ pair.now ] );
        record.displaced = pair.displaced && !isHandles( kind );
        if( isHandles( kind ) && !isOnly )
            leaveToResource( record );
        if( record.fields.empty() && !record.move && !record.displaced ) {
            ++result.same;
            continue;
        }
        record.row = std::move( old[ pair.old ] );
        result.changed.push_back( std::move( record ) );
    }
    moveRows( result.removed, old, join.removed );
    moveRows( result.added, now, join.added );
    return result;
}

/// What the configuration says beside paths, and what the records share.
Row configurationOf( BfResourceParser const& parser ) {
    auto const mask = []( auto const& entry ) { return Hex( entry.key().value() ); };
    return { { "pipeMasks", listOf( parser.contextFile(), mask ) },
             { "handlesCarryPipe", !parser.bfrtConfig().empty() },
             { "hitBitSmashEntries", parser.hitBitSmashEntries() } };
}

std::vector<Change> changesOf( Row const& from, Row const& to ) {
    std::vector<Change> changes;
    for( std::size_t i = 0; i < from.size(); ++i ) {
        if( !same( from[ i ].value, to[ i ].value ) )
            changes.push_back( { from[ i ].name, from[ i ].value, to[ i ].value } );
    }
    return changes;
}

} // namespace

bool Comparison::differs() const {
    return !configuration.empty() || renumbered.differing > 0 || shifted.differing > 0 ||
           std::any_of( kinds.begin(), kinds.end(), []( auto const& kind ) { return kind.differs(); } );
}

Comparison compare( Model const& old, Model const& now, Listing const* only ) {
    BfResourceParser const& from = *old.parser();
    BfResourceParser const& to = *now.parser();
    Comparison result;
    if( !only )
        result.configuration = changesOf( configurationOf( from ), configurationOf( to ) );
    FieldComparer comparer( old, now );
    for( Listing const& kind : listings() ) {
        if( !only || only == &kind )
            result.kinds.push_back( compareKind( comparer, kind, only, kind.rows( from ), kind.rows( to ) ) );
    }
    result.renumbered = comparer.renumbered();
    result.shifted = comparer.shifted();
    return result;
}

} // namespace Bfri
