#include "inspect/check/CheckContext.h"

#include "inspect/model/Records.h"

#include <set>

namespace Bfri {

void findUnplacedTables( CheckContext const& facts, Findings& findings ) {
    for( BfTableInfo const& table : facts.parser.bfTables() ) {
        if( !facts.parser.resourceHandlesHas( table.handle ) )
            findings.add( "match table", table.name, table.handle, "has no stage table" );
    }
}

void findEmptyTables( CheckContext const& facts, Findings& findings ) {
    std::unordered_set<U32> matches;
    for( BfTableInfo const& table : facts.parser.bfTables() ) {
        matches.insert( table.handle );
        if( table.size == 0 )
            findings.add( "match table", table.name, table.handle, "has a size of 0 entries" );
    }
    for( BfResource const& resource : facts.parser.bfResources() ) {
        if( resource.size == 0 && matches.count( resource.handle ) == 0 )
            findings.add( "placed table", resource.name, resource.handle, "has a size of 0 entries" );
    }
}

void findRepeatedHashFields( CheckContext const& facts, Findings& findings ) {
    for( auto const* const entry : sortedByKey( facts.parser.bfDynamicHashInfo() ) ) {
        std::unordered_set<std::string_view> seen;
        std::set<String> repeated;
        for( String const& field : entry->second.fieldNames ) {
            if( !seen.insert( field ).second )
                repeated.insert( field );
        }
        for( String const& field : repeated )
            findings.add( "hash", entry->first, entry->second.tableHdl,
                          "its field list holds " + quoted( field ) + " more than once" );
    }
}

} // namespace Bfri
