#include "cli/Records.h"
#include "cli/RowFormat.h"

namespace Bfri {

void resources( Model const& model, Request const& request, Streams const& io ) {
    auto const& parser = *model.parser();
    auto const parentOf = [ & ]( String const& name ) {
        String const* const parent = parser.parentTable().find( name );
        return parent ? Value( *parent ) : Value();
    };
    auto const all = [ & ]( BfZelResource const& resource ) {
        Row row = rowOf( resource );
        row.push_back( { "parent", parentOf( resource.name ) } );
        row.push_back( { "severalParents", parser.multipleParentTablesHas( resource.name ) } );
        return row;
    };
    auto const telling = [ & ]( BfZelResource const& resource ) -> Row {
        Row const row = all( resource );
        return { { "HANDLE", valueOf( row, "handle" ) },
                 { "SIZE", valueOf( row, "size" ) },
                 { "STAGE", valueOf( row, "stageStart" ) },
                 { "STATISTICS", valueOf( row, "statReferences" ) },
                 { "METERS", valueOf( row, "meterReferences" ) },
                 { "STATEFUL", valueOf( row, "statefulReferences" ) },
                 { "NAME", valueOf( row, "name" ) },
                 { "PARENT", parser.multipleParentTablesHas( resource.name ) ? Value( "(several)" )
                                                                             : valueOf( row, "parent" ) } };
    };
    std::vector<std::reference_wrapper<BfZelResource const>> byHandle;
    for( auto const* const entry : sortedByKey( parser.resourceHandles() ) )
        byHandle.emplace_back( entry->second );
    printRecords<BfZelResource>( io.out, request.format, "resourceHandles", byHandle, all, telling );
}

} // namespace Bfri
