#include "cli/commands/Answers.h"
#include "cli/commands/Meant.h"
#include "cli/terminal/PageText.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/HandleUses.h"
#include "inspect/model/Relations.h"
#include "inspect/rows/JsonFormat.h"

namespace Bfri {

namespace {

/// Referenced handles, with the names of their tables.
List named( BfResourceInfo::BfResourceParser const& parser, Vessa::Queue<U32> const& handles ) {
    return listOf( handles, [ & ]( U32 handle ) {
        BfZelResource const* const resource = parser.resourceHandles().find( handle );
        return Row{ { "handle", Hex( handle ) }, { "name", resource ? Value( resource->name ) : Value() } };
    } );
}

/// What the entry by handle has beyond the table's record; all absent if the table is not placed.
Row placement( Configuration const& configuration, U32 handle ) {
    auto const& parser = configuration.parser();
    BfZelResource const* const resource = parser.resourceHandles().find( handle );
    using References = Vessa::Queue<U32> const& (BfZelResource::*)() const;
    auto const references = [ & ]( References all ) {
        return resource ? Value( named( parser, ( resource->*all )() ) ) : Value();
    };
    return { { "stageStart", resource ? Value( U32{ resource->stageStart } ) : Value() },
             { "statReferences", references( &BfZelResource::statReferences ) },
             { "meterReferences", references( &BfZelResource::meterReferences ) },
             { "statefulReferences", references( &BfZelResource::statefulReferences ) } };
}

/// The place of the table that is meant: the first of its name, else of its handle. Says on err where there
/// are others.
U32 placeMeant( Configuration const& configuration, String const& word, std::ostream& err ) {
    auto const& tables = configuration.parser().bfTables();
    auto const names = textsOf( tables, &BfTableInfo::name );
    auto const handle = handleIn( word );
    bool const isName = tables.first<BfByName<BfTableInfo>>( word ) < tables.size();
    if( U32 const first =
            handle && !isName ? tables.first<BfByHandle<BfTableInfo>>( *handle ) : tables.size();
        first < tables.size() ) {
        auto const count = std::count_if( tables.begin(), tables.end(), [ & ]( BfTableInfo const& table ) {
            return table.handle == *handle;
        } );
        if( count > 1 )
            err << "bfri: " << count << " tables have this handle; this is the first\n";
        return first;
    }
    Meaning const meaning =
        foundInReadings( word, [ & ]( String const& reading ) { return meaningOf( names, reading ); } );
    if( meaning.is != Meaning::Is::found )
        refuse( configuration, word, meaning, { "match table", "tables", "tables" } );
    String const& name = meaning.names.front();
    if( auto const count = std::count( names.begin(), names.end(), name ); count > 1 )
        err << "bfri: " << count << " tables have this name; this is the first, as for every query\n";
    return configuration.model->bfTableIndex( name );
}

} // namespace

ExitStatus table( Configuration const& configuration, Request const& request, Streams const& io ) {
    auto const& parser = configuration.parser();
    BfTableInfo const& record =
        parser.bfTables().at( placeMeant( configuration, request.words[ 1 ], io.err ) );
    BfResource const* const place = Relations( parser ).placeOf( record.handle, record.name );
    Row const placed = placement( configuration, record.handle );
    if( request.format == Format::json ) {
        JsonAnswer answer( io.out );
        answer.members( rowOf( record ) );
        answer.member( "placed", place != nullptr );
        answer.members( placed );
        return ExitStatus::done;
    }
    Row row = rowForPeople( Kind::tables, rowOf( record ) );
    row.push_back( { "placed", placeText( place ) } );
    row.insert( row.end(), placed.begin(), placed.end() );
    printFields( io.out, row );
    return ExitStatus::done;
}

} // namespace Bfri
