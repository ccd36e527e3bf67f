#include "cli/Commands.h"
#include "cli/Failure.h"
#include "cli/JsonFormat.h"
#include "cli/Names.h"
#include "cli/Records.h"
#include "cli/TextFormat.h"
#include "cli/Utf8.h"

namespace Bfri {

namespace {

std::vector<String> tableNames( Model const& model ) {
    std::vector<String> names;
    for( BfTableInfo const& record : model.parser()->bfTables() )
        names.push_back( record.name );
    return names;
}

/// The name of the one table that is meant.
String fullName( Model const& model, String const& name ) {
    auto const names = tableNames( model );
    if( std::find( names.begin(), names.end(), name ) != names.end() )
        return name;
    auto const candidates = namesEndingIn( names, name );
    if( candidates.size() == 1 )
        return candidates.front();
    String const quoted = "'" + shown( name ) + "'";
    if( !candidates.empty() )
        throw Failure( ExitStatus::no, quoted + " is the end of several tables' names:", candidates );
    auto const suggestions = nearest( names, name );
    throw Failure( ExitStatus::no,
                   "no match table " + quoted +
                       ( suggestions.empty() ? "; 'bfri tables' lists them all" : "; names like it:" ),
                   suggestions );
}

/// Referenced handles, with the names of the tables behind them.
List named( BfResourceInfo::BfResourceParser const& parser, Vessa::Queue<U32> const& handles ) {
    return listOf( handles, [ & ]( U32 handle ) {
        BfZelResource const* const resource = parser.resourceHandles().find( handle );
        return Row{ { "handle", Hex( handle ) }, { "name", resource ? Value( resource->name ) : Value() } };
    } );
}

/// What the handle's entry knows beyond the table's record; all absent for a table that is not placed.
Row placement( Model const& model, U32 handle ) {
    auto const& parser = *model.parser();
    BfZelResource const* const resource = parser.resourceHandles().find( handle );
    if( !resource )
        return { { "stageStart", {} },
                 { "statReferences", {} },
                 { "meterReferences", {} },
                 { "statefulReferences", {} } };
    return { { "stageStart", U32{ resource->stageStart } },
             { "statReferences", named( parser, resource->statReferences() ) },
             { "meterReferences", named( parser, resource->meterReferences() ) },
             { "statefulReferences", named( parser, resource->statefulReferences() ) } };
}

} // namespace

void table( Model const& model, Request const& request, Streams const& io ) {
    String const name = fullName( model, request.name );
    auto const names = tableNames( model );
    if( auto const count = std::count( names.begin(), names.end(), name ); count > 1 )
        io.err << "bfri: " << count << " tables have this name; this is the first, as for every query\n";
    BfTableInfo const& record = model.parser()->bfTables().at( model.bfTableIndex( name ) );
    Row const placed = placement( model, record.handle );
    if( request.format == Format::json ) {
        JsonAnswer answer( io.out );
        answer.members( rowOf( record ) );
        answer.members( placed );
        return;
    }
    Row row = shownTable( rowOf( record ) );
    row.insert( row.end(), placed.begin(), placed.end() );
    printFields( io.out, row );
}

} // namespace Bfri
