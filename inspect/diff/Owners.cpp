#include "inspect/diff/Owners.h"

#include "inspect/diff/Join.h"

#include <set>

namespace Bfri {

namespace {

Kind kindOf( SurveyedTable const& table ) {
    return !table.record                ? Kind::resources
           : table.type == "match"      ? Kind::tables
           : table.type == "statistics" ? Kind::counters
           : table.type == "stateful"   ? Kind::registers
           : table.isWred               ? Kind::wreds
                                        : Kind::meters;
}

bool isAsked( RecordKind const* only, Kind kind ) { return !only || only->kind == kind; }

} // namespace

ProgramOwners::ProgramOwners( P4Program const& program, RecordKind const* only ) {
    if( !program.file() )
        return;
    for( SurveyedTable const& table : program.file()->tables )
        addTable( table, only );
    for( auto const& quanta : program.file()->learnQuantas ) {
        if( quanta.record && isAsked( only, Kind::learnQuantas ) )
            learnQuantas.owners.push_back( { { Kind::learnQuantas, quanta.name, {} }, quanta.handle } );
    }
    for( Space* const space : { &tables, &actions, &learnQuantas } )
        space->index();
}

void ProgramOwners::addTable( SurveyedTable const& table, RecordKind const* only ) {
    bool const isPlacedAsked =
        table.resource && only && ( only->kind == Kind::resources || only->kind == Kind::handles );
    if( ( table.record || table.resource ) && ( isAsked( only, kindOf( table ) ) || isPlacedAsked ) )
        tables.owners.push_back(
            { { isPlacedAsked ? Kind::resources : kindOf( table ), table.name, {} }, table.handle } );
    if( !table.firstAction || !isAsked( only, Kind::actions ) )
        return;
    for( Context::SurveyedAction const& action : table.actions )
        actions.owners.push_back( { { Kind::actions, action.name, table.name }, action.handle } );
}

void ProgramOwners::Space::index() {
    for( Owner const& owner : owners ) {
        if( owner.handle )
            byHandle[ *owner.handle ].push_back( &owner );
    }
}

namespace {

using Owner = ProgramOwners::Owner;
using Space = ProgramOwners::Space;

/// The name of an old owner in the newer program.
String newKeyOf( HandleOwner const& owner, Renames const& renames, ActionRenames const& actionRenames ) {
    if( !owner.table )
        return renames.of( owner.name );
    auto const renamed = actionRenames.find( keyOf( owner.name, &*owner.table ) );
    return keyOf( renamed == actionRenames.end() ? owner.name : renamed->second,
                  &renames.of( *owner.table ) );
}

String keyOf( HandleOwner const& owner ) {
    return Bfri::keyOf( owner.name, owner.table ? &*owner.table : nullptr );
}

void addReused( Space const& old, Space const& now, Renames const& renames,
                ActionRenames const& actionRenames, U32 pipes, std::vector<ReusedHandle>& reused ) {
    for( auto const& [ handle, former ] : old.byHandle ) {
        auto const present = now.byHandle.find( handle );
        if( present == now.byHandle.end() )
            continue;
        if( former.front()->is == present->second.front()->is &&
            renames.of( former.front()->is.name ) == former.front()->is.name )
            continue;
        std::set<String> names;
        for( Owner const* const owner : present->second )
            names.insert( keyOf( owner->is ) );
        bool const isKept = std::any_of( former.begin(), former.end(), [ & ]( Owner const* owner ) {
            return names.count( newKeyOf( owner->is, renames, actionRenames ) ) > 0;
        } );
        if( !isKept )
            reused.push_back( { handle, former.front()->is, present->second.front()->is, pipes } );
    }
}

} // namespace

void addReused( ProgramOwners const& old, ProgramOwners const& now, Renames const& renames,
                Renames const& quantaRenames, ActionRenames const& actionRenames, U32 pipes,
                std::vector<ReusedHandle>& reused ) {
    addReused( old.tables, now.tables, renames, actionRenames, pipes, reused );
    addReused( old.actions, now.actions, renames, actionRenames, pipes, reused );
    addReused( old.learnQuantas, now.learnQuantas, quantaRenames, actionRenames, pipes, reused );
}

namespace {

using Groups = std::unordered_map<String, std::vector<Owner const*>>;

/// Owners of one name: match tables, others by themselves, actions of one table.
Groups byName( Space const& space ) {
    Groups groups;
    for( Owner const& owner : space.owners )
        groups[ keyOf( owner.is ) + ( owner.is.kind == Kind::tables ? "" : "\1" ) ].push_back( &owner );
    return groups;
}

/// Adds names that came once, but for actions of tables that share a name; which names come more than once.
std::set<String> addNames( Space const& old, Space const& now, std::set<String> const& mixed, U32 pipes,
                           std::vector<NewDuplicate>& duplicates ) {
    Groups const former = byName( old );
    Groups const present = byName( now );
    std::set<String> keys; // in byte order
    for( auto const& [ key, owners ] : present ) {
        if( owners.size() > 1 )
            keys.insert( key );
    }
    std::set<String> names;
    for( String const& key : keys ) {
        auto const& owners = present.at( key );
        auto const before = former.find( key );
        HandleOwner const& first = owners.front()->is;
        names.insert( first.name );
        if( ( before != former.end() && before->second.size() >= owners.size() ) ||
            ( first.table && mixed.count( *first.table ) > 0 ) )
            continue;
        NewDuplicate duplicate{ first.kind, first.name, first.table };
        for( Owner const* const owner : owners )
            duplicate.handles.push_back( owner->handle.value_or( 0 ) );
        duplicate.pipes = pipes;
        duplicates.push_back( std::move( duplicate ) );
    }
    return names;
}

/// Whether names that share a handle did so before, one of them maybe under another name.
bool wereTogether( std::set<String> const& names, std::map<String, std::set<U32>> const& handles ) {
    std::set<U32> common;
    for( auto name = names.begin(); name != names.end(); ++name ) {
        auto const known = handles.find( *name );
        if( known == handles.end() )
            return false;
        std::set<U32> both;
        std::set_intersection( known->second.begin(), known->second.end(), common.begin(), common.end(),
                               std::inserter( both, both.end() ) );
        common = name == names.begin() ? known->second : both;
    }
    return !common.empty();
}

void addHandles( Space const& old, Space const& now, Renames const& renames, U32 pipes,
                 std::vector<NewDuplicate>& duplicates ) {
    auto const isShared = []( auto const& entry ) { return entry.second.size() > 1; };
    if( std::none_of( now.byHandle.begin(), now.byHandle.end(), isShared ) )
        return;
    std::map<String, std::set<U32>> former;
    for( auto const& [ handle, owners ] : old.byHandle ) {
        for( Owner const* const owner : owners )
            former[ renames.of( owner->is.name ) ].insert( handle );
    }
    for( auto const& [ handle, owners ] : now.byHandle ) {
        if( owners.size() < 2 )
            continue;
        std::set<String> names;
        for( Owner const* const owner : owners )
            names.insert( owner->is.name );
        if( names.size() < 2 || wereTogether( names, former ) )
            continue;
        auto const taker =
            std::find_if( owners.begin(), owners.end(), [ &, taken = handle ]( Owner const* owner ) {
                auto const known = former.find( owner->is.name );
                return known == former.end() || known->second.count( taken ) == 0;
            } );
        HandleOwner const& is = ( taker == owners.end() ? owners.front() : *taker )->is;
        duplicates.push_back( { is.kind,
                                is.name,
                                is.table,
                                handle,
                                std::vector<String>( names.begin(), names.end() ),
                                {},
                                pipes } );
    }
}

} // namespace

void addDuplicates( ProgramOwners const& old, ProgramOwners const& now, Renames const& renames, U32 pipes,
                    std::vector<NewDuplicate>& duplicates ) {
    // If tables have the same name, the model does not say which of them an action belongs to.
    auto const mixed = addNames( old.tables, now.tables, {}, pipes, duplicates );
    addNames( old.actions, now.actions, mixed, pipes, duplicates );
    addHandles( old.tables, now.tables, renames, pipes, duplicates );
    addHandles( old.actions, now.actions, renames, pipes, duplicates );
}

} // namespace Bfri
