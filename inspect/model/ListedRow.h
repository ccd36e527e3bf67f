#pragma once

// What lists add to the records that belong to tables: the table if there is just one, or that there are
// several.

#include "inspect/model/RecordFields.h"
#include "inspect/model/Relations.h"

namespace Bfri {

/// Counters and meters name their table themselves.
template<class Record>
constexpr bool namesItsTable = requires( Record const& record ) {
    record.associatedTable;
};

/// Of the others, the relations tell it.
template<class Record>
constexpr bool hasOwner = std::is_same_v<Record, BfTableWredInfo> || std::is_same_v<Record, BfRegisterInfo> ||
                          std::is_same_v<Record, BfZelResource>;

template<class Record>
constexpr bool isAttached = hasOwner<Record> || namesItsTable<Record>;

template<class Record, class Visit>
void eachListed( Record const& record, Owners::Owner const& owner, Visit const& field ) {
    Fields::each( record, field );
    if constexpr( hasOwner<Record> )
        field( "parent", owner.table, Fields::ofOwner );
    if constexpr( isAttached<Record> )
        field( "severalParents", owner.several,
               namesItsTable<Record> ? Fields::ofSeveralParents : Fields::ofSeveralOwners );
}

template<class Record>
Row listedRow( Record const& record, Owners::Owner const& owner ) {
    constexpr std::size_t room = isAttached<Record> ? 1 : 3; // resources get stages, all of them pipes
    return Fields::rowFrom( [ & ]( auto const& field ) { eachListed( record, owner, field ); }, room );
}

} // namespace Bfri
