// Which records have the handles of a program, and which names and handles occur more than once.

#include "inspect/diff/Programs.h"
#include "inspect/rows/Runs.h"

#include <array>
#include <set>

namespace Bfri {

namespace {

struct Owner {
    Kind kind;
    Identity is;
    std::optional<U32> handle;

    RecordKey key() const { return { is.name, is.table ? *is.table : std::string_view() }; }
    /// Match tables have names of their own.
    auto nameKey() const { return std::pair( key(), kind != Kind::tables ); }
    HandleOwner asHandleOwner() const {
        return { kind, is.name, is.table ? std::optional( *is.table ) : std::nullopt };
    }
};

/// The owners of a program by what they are numbered separately as: tables, actions and learn quantas.
using Spaces = std::array<std::vector<Owner>, 3>;

Spaces spacesOf( P4Program const& program, RecordKind const* only ) {
    Spaces spaces;
    auto& [ tables, actions, learnQuantas ] = spaces;
    if( !program.file() )
        return spaces;
    auto const isAsked = [ & ]( Kind kind ) { return !only || only->kind == kind; };
    for( SurveyedTable const& table : program.file()->tables ) {
        bool const isPlacedAsked =
            table.resource && only && ( isAsked( Kind::resources ) || isAsked( Kind::handles ) );
        if( ( table.record || table.resource ) && ( isAsked( kindOf( table ) ) || isPlacedAsked ) )
            tables.push_back(
                { isPlacedAsked ? Kind::resources : kindOf( table ), Identity( table.name ), table.handle } );
        if( !table.firstAction || !isAsked( Kind::actions ) )
            continue;
        for( Context::SurveyedAction const& action : table.actions )
            actions.push_back( { Kind::actions, Identity( action.name, &table.name ), action.handle } );
    }
    for( auto const& quanta : program.file()->learnQuantas ) {
        if( quanta.record && isAsked( Kind::learnQuantas ) )
            learnQuantas.push_back( { Kind::learnQuantas, Identity( quanta.name ), quanta.handle } );
    }
    return spaces;
}

/// Owners by what they may share; those that share it are in the order of the file.
template<class KeyOf>
class Groups {
  public:
    using Group = std::span<Owner const* const>;

    Groups( std::vector<Owner> const& owners, KeyOf keyOf ) : keyOf_( keyOf ) {
        for( Owner const& owner : owners )
            sorted_.push_back( &owner );
        std::ranges::stable_sort( sorted_, {}, keyOf );
    }
    /// Those that share what an owner has.
    Group of( Owner const& owner ) const {
        auto const [ first, last ] =
            std::equal_range( sorted_.begin(), sorted_.end(), &owner,
                              [ & ]( Owner const* a, Owner const* b ) { return keyOf_( a ) < keyOf_( b ); } );
        return { first, last };
    }
    /// Hands each group of at least so many owners to `step`, by ascending keys.
    template<class Step>
    void each( std::size_t least, Step step ) const {
        eachRun( sorted_, keyOf_, [ & ]( Group group ) {
            if( group.size() >= least )
                step( group );
        } );
    }

  private:
    KeyOf keyOf_;
    std::vector<Owner const*> sorted_ = {};
};

auto const byHandle = []( Owner const* owner ) { return owner->handle; };
auto const byName = []( Owner const* owner ) { return owner->nameKey(); };
using ByHandle = Groups<decltype( byHandle )>;
using ByName = Groups<decltype( byName )>;

/// What changes between the owners of two programs.
class OwnerChanges {
    using NamesWithHandles = std::set<std::pair<std::string_view, U32>>;

  public:
    OwnerChanges( ProgramPair const& pair, Comparison& comparison )
        : pair_( pair ), comparison_( comparison ) {}

    /// Adds the numbers that are the handle of another record now.
    void addReused( std::vector<Owner> const& old, std::vector<Owner> const& now,
                    Renames const& renames ) const {
        ByHandle const present( now, byHandle );
        ByHandle( old, byHandle ).each( 1, [ & ]( ByHandle::Group former ) {
            auto const handle = former.front()->handle;
            auto const owners = present.of( *former.front() );
            if( !handle || owners.empty() || owners.front()->key() == newKeyOf( *former.front(), renames ) )
                return;
            std::set<RecordKey> keys;
            for( Owner const* const owner : owners )
                keys.insert( owner->key() );
            if( std::ranges::none_of( former, [ & ]( Owner const* owner ) {
                    return keys.count( newKeyOf( *owner, renames ) ) > 0;
                } ) )
                comparison_.handles.reused.push_back( { *handle, former.front()->asHandleOwner(),
                                                        owners.front()->asHandleOwner(), pair_.pipes } );
        } );
    }

    /// Adds names that occurred less often, except for actions of tables that share a name; which names occur
    /// more than once.
    std::set<std::string_view> addNames( std::vector<Owner> const& old, std::vector<Owner> const& now,
                                         std::set<std::string_view> const& mixed ) const {
        std::set<std::string_view> names;
        ByName const former( old, byName );
        ByName( now, byName ).each( 2, [ & ]( ByName::Group owners ) {
            Owner const& first = *owners.front();
            names.insert( first.is.name );
            if( former.of( first ).size() >= owners.size() ||
                ( first.is.table && mixed.count( *first.is.table ) > 0 ) )
                return;
            NewDuplicate duplicate{ first.asHandleOwner() };
            for( Owner const* const owner : owners )
                duplicate.handles.push_back( owner->handle.value_or( 0 ) );
            duplicate.pipes = pair_.pipes;
            comparison_.duplicates.push_back( std::move( duplicate ) );
        } );
        return names;
    }

    /// Adds handles that names share which did not share one before, maybe under other names.
    void addHandles( std::vector<Owner> const& old, std::vector<Owner> const& now ) const {
        NamesWithHandles former; // only if some handle is shared
        ByHandle( now, byHandle ).each( 2, [ & ]( ByHandle::Group owners ) {
            std::set<String> names;
            for( Owner const* const owner : owners )
                names.insert( owner->is.name );
            auto const handle = owners.front()->handle;
            if( names.size() < 2 || !handle )
                return;
            if( former.empty() )
                addFormer( former, old );
            if( wereTogether( names, former ) )
                return;
            auto const taker = std::ranges::find_if( owners, [ & ]( Owner const* owner ) {
                return former.count( { owner->is.name, *handle } ) == 0;
            } );
            comparison_.duplicates.push_back(
                { ( taker == owners.end() ? owners.front() : *taker )->asHandleOwner(),
                  handle,
                  { names.begin(), names.end() },
                  {},
                  pair_.pipes } );
        } );
    }

  private:
    /// What an old owner is called in the newer program.
    RecordKey newKeyOf( Owner const& owner, Renames const& renames ) const {
        if( !owner.is.table )
            return { renames.of( owner.is.name ), {} };
        auto const renamed = pair_.actions.find( owner.key() );
        return { renamed == pair_.actions.end() ? owner.is.name : *renamed->second,
                 renames.of( *owner.is.table ) };
    }
    void addFormer( NamesWithHandles& former, std::vector<Owner> const& old ) const {
        for( Owner const& owner : old ) {
            if( owner.handle )
                former.emplace( pair_.tables.renames.of( owner.is.name ), *owner.handle );
        }
    }
    static bool wereTogether( std::set<String> const& names, NamesWithHandles const& former ) {
        std::string_view const first = *names.begin();
        for( auto one = former.lower_bound( { first, 0 } ); one != former.end() && one->first == first;
             ++one ) {
            if( std::ranges::all_of( names, [ & ]( String const& name ) {
                    return former.count( { name, one->second } ) > 0;
                } ) )
                return true;
        }
        return false;
    }

    ProgramPair const& pair_;
    Comparison& comparison_;
};

} // namespace

void addOwnerChanges( ProgramPair const& pair, RecordKind const* only, Comparison& comparison ) {
    auto const [ tables, actions, learnQuantas ] = spacesOf( *pair.old, only );
    auto const [ newTables, newActions, newQuantas ] = spacesOf( *pair.now, only );
    OwnerChanges const changes( pair, comparison );
    changes.addReused( tables, newTables, pair.tables.renames );
    changes.addReused( actions, newActions, pair.tables.renames );
    changes.addReused( learnQuantas, newQuantas, pair.learnQuantas.renames );
    // If tables have the same name, the model does not say which of them an action belongs to.
    auto const mixed = changes.addNames( tables, newTables, {} );
    changes.addNames( actions, newActions, mixed );
    changes.addHandles( tables, newTables );
    changes.addHandles( actions, newActions );
}

} // namespace Bfri
