#pragma once

// Records of the model as rows, and what many who read the model need.

#include "inspect/rows/Row.h"
#include "resourceinfo/BfResourceInfoIntf.h"

#include <algorithm>

namespace Bfri {

using BfResourceInfo::BfResourceParser;
using BfResourceInfo::BfZelResource;

/// Every field of a record, named and ordered as in the record; after a resource's type its name.
Row rowOf( BfTableInfo const& record );
Row rowOf( BfResource const& record );
Row rowOf( BfActionInfo const& record );

/// The type of a resource, as the context file spells it; for an unknown type, its number.
String typeNameOf( BfResource const& record );

/// The numbers of the pipes in a mask.
List pipesOf( U32 mask );

/// A context file that is read: mask and numbers of its pipes, and path.
Row pipelineRow( BfResourceInfo::ZelContextFile const& file );

/// Pointers to the entries of a hash map, by ascending key.
template<class Map>
auto sortedByKey( Map const& map ) {
    std::vector<decltype( &*map.begin() )> entries;
    entries.reserve( map.size() );
    for( auto const& entry : map )
        entries.push_back( &entry );
    std::sort( entries.begin(), entries.end(), []( auto a, auto b ) { return a->first < b->first; } );
    return entries;
}

} // namespace Bfri
