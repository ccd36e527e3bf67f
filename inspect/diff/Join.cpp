#include "inspect/diff/Join.h"

#include <map>

namespace Bfri {

namespace {

/// Positions that wait for a partner, by key; those of one key in their order.
class Waiting {
  public:
    template<class KeyOf>
    Waiting( RowsOfProgram const& records, std::vector<std::size_t> const& positions, KeyOf keyOf ) {
        for( auto position = positions.rbegin(); position != positions.rend(); ++position )
            queues_[ keyOf( records.rows[ *position ] ) ].push_back( *position );
    }
    /// The first that waits under a key, which then waits no more.
    std::optional<std::size_t> take( String const& key ) {
        auto const queue = queues_.find( key );
        if( queue == queues_.end() || queue->second.empty() )
            return std::nullopt;
        std::size_t const first = queue->second.back();
        queue->second.pop_back();
        return first;
    }

  private:
    std::unordered_map<String, std::vector<std::size_t>> queues_;
};

/// Takes those that have a partner out of `removed` and `added`.
template<class OldKey, class NewKey>
void match( Join& join, RowsOfProgram const& old, RowsOfProgram const& now, OldKey oldKey, NewKey newKey ) {
    Waiting waiting( now, join.added, newKey );
    std::vector<bool> isTaken( now.rows.size() );
    std::erase_if( join.removed, [ & ]( std::size_t position ) {
        Row const& row = old.rows[ position ];
        auto const partner = waiting.take( oldKey( row ) );
        if( !partner )
            return false;
        isTaken[ *partner ] = true;
        Identity const from( row );
        Identity const to( now.rows[ *partner ] );
        bool const isRenamed = from.name != to.name || ( from.table && *from.table != *to.table );
        join.both.push_back( { position, *partner, isRenamed } );
        return true;
    } );
    std::erase_if( join.added, [ & ]( std::size_t position ) { return isTaken[ position ]; } );
}

String handleKey( Row const& row, String const& table ) {
    return table + '\0' + std::to_string( valueAs<Hex>( row, "handle" ).value );
}

} // namespace

Identity::Identity( Row const& row )
    : name( valueAs<String>( row, "name" ) ),
      table( std::get_if<String>( &valueOf( row, "tableName" ).is ) ) {}

String keyOf( String const& name, String const* table ) { return table ? name + '\0' + *table : name; }

Join joinRecords( RowsOfProgram const& old, RowsOfProgram const& now, Renames const& renames,
                  bool pairActions ) {
    Join join{ {}, old.positions, now.positions };
    auto const newKey = []( Row const& row ) {
        Identity const identity( row );
        return keyOf( identity.name, identity.table );
    };
    auto const oldKey = [ & ]( Row const& row ) {
        Identity const identity( row );
        return identity.table ? keyOf( identity.name, &renames.of( *identity.table ) )
                              : renames.of( identity.name );
    };
    match( join, old, now, oldKey, newKey );
    if( pairActions && !join.removed.empty() && !join.added.empty() ) {
        match(
            join, old, now,
            [ & ]( Row const& row ) { return handleKey( row, renames.of( *Identity( row ).table ) ); },
            []( Row const& row ) { return handleKey( row, *Identity( row ).table ); } );
        std::sort( join.both.begin(), join.both.end(),
                   []( Join::Pair const& a, Join::Pair const& b ) { return a.old < b.old; } );
    }
    join.isReordered = !std::is_sorted( join.both.begin(), join.both.end(),
                                        []( auto const& a, auto const& b ) { return a.now < b.now; } );
    return join;
}

} // namespace Bfri
