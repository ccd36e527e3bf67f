#include "inspect/diff/Comparison.h"

#include "inspect/diff/FieldComparer.h"
#include "inspect/diff/Join.h"
#include "inspect/stages/PlacedStages.h"

namespace Bfri {

namespace {

using BfResourceInfo::BfResourceParser;

/// To the rows of resources the stages that they take, which the survey knows.
void addStages( std::vector<Row>& rows, Configuration const& configuration ) {
    auto const number = []( PlacedStage const& placed ) { return static_cast<U32>( placed.stage ); };
    auto const placed = placedStages( configuration );
    for( U32 i = 0; i < rows.size(); ++i )
        rows[ i ].push_back(
            { "stageNumbers", placed[ i ] ? Value( listOf( *placed[ i ], number ) ) : Value() } );
}

/// Takes from the record of a placed table what other records say of it, too: its resource, and who owns it.
void leaveToOthers( ChangedRecord& record ) {
    std::erase_if( record.fields, []( Change const& change ) {
        return change.field == "size" || change.field == "stageStart" || change.field == "parent" ||
               change.field == "severalParents";
    } );
}

void moveRows( std::vector<Row>& to, std::vector<Row>& from, std::vector<std::size_t> const& places ) {
    for( std::size_t const place : places )
        to.push_back( std::move( from[ place ] ) );
}

KindComparison compareKind( FieldComparer& comparer, RecordKind const& kind, bool isOnly,
                            std::vector<Row> old, std::vector<Row> now ) {
    bool const areHandles = kind.kind == Kind::handles;
    KindComparison result{ &kind };
    Join const join = joinRows( old, now );
    for( Join::Pair const& pair : join.both ) {
        ChangedRecord record = comparer.compare( kind, old[ pair.old ], now[ pair.now ] );
        record.displaced = pair.displaced && !areHandles;
        if( areHandles && !isOnly )
            leaveToOthers( record );
        if( record.fields.empty() && !record.move && !record.displaced ) {
            ++result.same;
            continue;
        }
        record.row = std::move( old[ pair.old ] );
        record.now = std::move( now[ pair.now ] );
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

bool hasUniqueHandles( BfResourceParser const& parser ) {
    return !parser.bfrtConfig().empty() || parser.contextFile().size() <= 1;
}

/// How many of the old numbers have an owner now that had another number before, or was not there.
std::size_t reusedOf( std::vector<Renumbering> const& renumbered, HandleOwners const& old,
                      HandleOwners const& now ) {
    std::map<U32, std::set<String>> gone;
    for( Renumbering const& one : renumbered )
        gone[ one.from ].insert( one.label() );
    std::size_t count = 0;
    for( auto const& entry : gone ) {
        auto const& before = old.namesOf( entry.first );
        auto const& after = now.namesOf( entry.first );
        count += std::any_of( after.begin(), after.end(), [ & ]( String const& name ) {
            return entry.second.count( name ) > 0 || before.count( name ) == 0;
        } );
    }
    return count;
}

Handles handlesOf( FieldComparer const& comparer, BfResourceParser const& from, BfResourceParser const& to,
                   RecordKind const* only ) {
    HandleOwners const old( from, only );
    HandleOwners const now( to, only );
    Handles handles{ comparer.handles(), comparer.renumbered() };
    handles.reused = reusedOf( handles.renumbered, old, now );
    handles.areUnique = hasUniqueHandles( from ) && hasUniqueHandles( to );
    if( handles.areUnique )
        handles.shared = now.sharedSince( old );
    handles.keepMeanings =
        handles.areUnique && handles.shared.empty() && handles.reused == 0 &&
        std::all_of( handles.renumbered.begin(), handles.renumbered.end(),
                     [ & ]( Renumbering const& one ) { return now.takesOver( one.to, old, one.from ); } );
    return handles;
}

} // namespace

bool Comparison::differs() const {
    return !configuration.empty() || handles.tally.differing > 0 || !handles.shared.empty() ||
           shifted.differing > 0 ||
           std::any_of( kinds.begin(), kinds.end(), []( auto const& kind ) { return kind.differs(); } );
}

Comparison compare( Configuration const& old, Configuration const& now, RecordKind const* only ) {
    BfResourceParser const& from = old.parser();
    BfResourceParser const& to = now.parser();
    Comparison result;
    if( !only )
        result.configuration = changesOf( configurationOf( from ), configurationOf( to ) );
    FieldComparer comparer( old, now );
    for( RecordKind const& kind : recordKinds() ) {
        if( only && only != &kind )
            continue;
        auto oldRows = kind.rows( from );
        auto newRows = kind.rows( to );
        if( kind.kind == Kind::resources ) {
            addStages( oldRows, old );
            addStages( newRows, now );
        }
        result.kinds.push_back(
            compareKind( comparer, kind, only, std::move( oldRows ), std::move( newRows ) ) );
    }
    result.handles = handlesOf( comparer, from, to, only );
    result.shifted = comparer.shifted();
    return result;
}

} // namespace Bfri
