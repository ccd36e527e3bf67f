#include "inspect/diff/Join.h"

#include <unordered_map>
#include <unordered_set>

namespace Bfri {

namespace {

constexpr std::size_t none = static_cast<std::size_t>( -1 );

using Keys = std::vector<String>;

/// Texts of the model hold no NUL, so none of two parts reads like another two.
String identityKey( Row const& row ) {
    Identity const identity( row );
    return identity.table ? identity.name + '\0' + *identity.table : identity.name;
}

Keys identityKeysOf( std::vector<Row> const& rows ) {
    Keys keys;
    keys.reserve( rows.size() );
    for( Row const& row : rows )
        keys.push_back( identityKey( row ) );
    return keys;
}

/// What tells a record's pipeline: the pipe that it states, else the one in the upper bits of its handle.
String pipelineOf( Row const& row ) {
    auto const* const pipe = std::get_if<String>( &valueOf( row, "logicalPipe" ).is );
    if( pipe && !pipe->empty() )
        return *pipe;
    auto const* const handle = std::get_if<Hex>( &valueOf( row, "handle" ).is );
    return std::to_string( handle ? handle->value >> 28 : 0 );
}

/// The keys with the pipelines.
Keys pipelineKeysOf( std::vector<Row> const& rows, Keys keys ) {
    for( std::size_t i = 0; i < rows.size(); ++i )
        keys[ i ].append( 1, '\0' ).append( pipelineOf( rows[ i ] ) );
    return keys;
}

/// Whom each row is joined with so far.
struct Partners {
    Partners( std::size_t olds, std::size_t nows ) : ofOld( olds, none ), ofNow( nows, none ) {}

    std::vector<std::size_t> ofOld;
    std::vector<std::size_t> ofNow;
};

/// Rows without a partner by their key; those of one key form a chain, the first row at its head.
class Waiting {
  public:
    Waiting( Keys const& keys, std::vector<std::size_t> const& partners ) : next_( keys.size(), none ) {
        for( std::size_t i = keys.size(); i-- > 0; ) {
            if( partners[ i ] != none )
                continue;
            auto const [ entry, isFirst ] = heads_.try_emplace( keys[ i ], i );
            if( !isFirst )
                next_[ i ] = std::exchange( entry->second, i );
        }
    }
    /// The first that waits under a key, which then waits no more.
    std::size_t take( String const& key ) {
        auto const entry = heads_.find( key );
        if( entry == heads_.end() || entry->second == none )
            return none;
        return std::exchange( entry->second, next_[ entry->second ] );
    }

  private:
    std::unordered_map<std::string_view, std::size_t> heads_;
    std::vector<std::size_t> next_;
};

void match( Partners& partners, Keys const& old, Keys const& now ) {
    Waiting waiting( old, partners.ofOld );
    for( std::size_t i = 0; i < now.size(); ++i ) {
        if( partners.ofNow[ i ] != none )
            continue;
        std::size_t const partner = waiting.take( now[ i ] );
        partners.ofNow[ i ] = partner;
        if( partner != none )
            partners.ofOld[ partner ] = i;
    }
}

std::vector<bool> firstsOf( Keys const& keys ) {
    std::unordered_set<std::string_view> seen;
    std::vector<bool> firsts;
    for( String const& key : keys )
        firsts.push_back( seen.insert( key ).second );
    return firsts;
}

Join joinOf( Partners const& partners, Keys const& old, Keys const& now ) {
    auto const oldFirsts = firstsOf( old );
    auto const nowFirsts = firstsOf( now );
    Join join;
    for( std::size_t i = 0; i < old.size(); ++i ) {
        std::size_t const partner = partners.ofOld[ i ];
        if( partner == none )
            join.removed.push_back( i );
        else
            join.both.push_back( { i, partner, oldFirsts[ i ] && !nowFirsts[ partner ] } );
    }
    for( std::size_t i = 0; i < now.size(); ++i ) {
        if( partners.ofNow[ i ] == none )
            join.added.push_back( i );
    }
    return join;
}

} // namespace

Identity::Identity( Row const& row )
    : name( valueAs<String>( row, "name" ) ),
      table( std::get_if<String>( &valueOf( row, "tableName" ).is ) ) {}

Join joinRows( std::vector<Row> const& old, std::vector<Row> const& now ) {
    Partners partners( old.size(), now.size() );
    Keys const oldKeys = identityKeysOf( old );
    Keys const nowKeys = identityKeysOf( now );
    match( partners, pipelineKeysOf( old, oldKeys ), pipelineKeysOf( now, nowKeys ) );
    match( partners, oldKeys, nowKeys );
    return joinOf( partners, oldKeys, nowKeys );
}

} // namespace Bfri
