#pragma once

// The records of the model as rows: every field, named and ordered as in the record.

#include "inspect/rows/Row.h"
#include "resourceinfo/BfResourceInfoIntf.h"

#include <algorithm>

namespace Bfri {

using BfResourceInfo::BfZelResource;

Row rowOf( BfResource const& record );
Row rowOf( BfTableInfo const& record );
Row rowOf( BfTableCounterInfo const& record );
Row rowOf( BfTableMeterInfo const& record );
Row rowOf( BfTableWredInfo const& record );
Row rowOf( BfRegisterInfo const& record );
Row rowOf( BfLearnQuantaInfo const& record );
Row rowOf( BfActionInfo const& record );
Row rowOf( BfDynamicHashInfo const& record );
Row rowOf( BfZelResource const& record );

/// The type of a resource, as the context file spells it; for an unknown type, its number.
String typeNameOf( BfResource const& record );

/// Adds the name of a resource's type to its row, after the type.
Row withTypeName( Row row );

/// The numbers of the pipes in a mask.
List pipesOf( U32 mask );

/// Pointers to the entries of a hash map, by ascending key.
template<class Map>
auto sortedByKey( Map const& map ) {
    std::vector<decltype( &*map.begin() )> entries;
    for( auto const& entry : map )
        entries.push_back( &entry );
    std::sort( entries.begin(), entries.end(), []( auto a, auto b ) { return a->first < b->first; } );
    return entries;
}

} // namespace Bfri
