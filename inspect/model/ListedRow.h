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

inline bool isDirect( BfTableWredInfo const& record ) { return record.direct; }
inline bool isDirect( BfRegisterInfo const& record ) { return !record.indirect; }
inline bool isDirect( BfZelResource const& ) { return false; }

template<class Record>
constexpr bool hasOwner = requires( Record const& record ) {
    isDirect( record );
};

template<class Record, class Visit>
void eachListed( Record const& record, Owners::Owner const& owner, Visit const& field ) {
    Fields::each( record, field );
    if constexpr( hasOwner<Record> )
        field( "parent", owner.table, Fields::ofOwner );
    if constexpr( hasOwner<Record> || namesItsTable<Record> )
        field( "severalParents", owner.several,
               namesItsTable<Record> ? Fields::ofSeveralParents : Fields::ofSeveralOwners );
}

template<class Record>
Row listedRow( Record const& record, Owners::Owner const& owner ) {
    return Fields::rowFrom( [ & ]( auto const& field ) { eachListed( record, owner, field ); } );
}

} // namespace Bfri
