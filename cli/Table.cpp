#include "cli/Answers.h"
#include "cli/JsonFormat.h"
#include "cli/LeftOut.h"
#include "cli/Names.h"
#include "cli/Records.h"
#include "cli/TextFormat.h"

namespace Bfri {

namespace {

std::vector<String> tableNames( Model const& model ) {
    std::vector<String> names;
    for( BfTableInfo const& record : model.parser()->bfTables() )
        names.push_back( record.name );
    return names;
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

ExitStatus table( Model const& model, Request const& request, Streams const& io ) {
    auto const names = tableNames( model );
    String const& word = request.words[ 1 ];
    String const name = meantName( names, word, { "match table", "tables", "tables" },
                                   [ & ] { return leftOutOfName( *model.parser(), word ); } );
    noteSeveral( names, name, "tables", io.err );
    BfTableInfo const& record = model.parser()->bfTables().at( model.bfTableIndex( name ) );
    Row const placed = placement( model, record.handle );
    if( request.format == Format::json ) {
        JsonAnswer answer( io.out );
        answer.members( rowOf( record ) );
        answer.members( placed );
        return ExitStatus::done;
    }
    Row row = shownTable( rowOf( record ) );
    row.insert( row.end(), placed.begin(), placed.end() );
    printFields( io.out, row );
    return ExitStatus::done;
}

} // namespace Bfri
