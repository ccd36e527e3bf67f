#include "inspect/model/Omissions.h"

#include "inspect/model/HandleUses.h"
#include "inspect/model/Names.h"
#include "inspect/model/Relations.h"
#include "inspect/rows/Utf8.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

bool isMeant( String const& name, String const& word ) {
    return name == word || !namesEndingIn( { name }, word ).empty();
}

bool isMeant( Context::SurveyedTable const& table, Context::SurveyedAction const& action,
              String const& word ) {
    if( isMeant( action.name, word ) )
        return true;
    auto const words = actionWordsIn( word );
    return std::any_of( words.begin(), words.end(), [ & ]( ActionWord const& one ) {
        return isMeant( action.name, one.action ) && isMeant( table.name, one.table );
    } );
}

String reasonOf( Omission const& one ) {
    return one.omitted == Omitted::record ? whyOmitted( *one.table ) : "it has no stage table";
}

Row rowOf( Omission const& one ) {
    static constexpr char const* lost[] = { "record", "references", "handle" };
    auto const& [ file, table, omitted, action, isOwner ] = one;
    auto const& handle = action ? action->handle : table->handle;
    return { { "kind", action                   ? "action"
                       : table->type == "match" ? "table"
                                                : "resource" },
             { "name", action ? action->name : table->name },
             { "table", action ? Value( table->name ) : Value() },
             { "handle", handle ? Value( Hex( *handle ) ) : Value() },
             { "contextFile", file->path },
             { "missing", lost[ static_cast<int>( omitted ) ] },
             { "reason", reasonOf( one ) } };
}

/// The parts of a table that the model lacks.
std::optional<Omitted> omittedOf( Context::SurveyedTable const& table ) {
    if( table.isOmitted )
        return Omitted::record;
    if( !table.stageTables.empty() || table.type == "condition" )
        return std::nullopt;
    return table.type == "match" ? Omitted::references : Omitted::handle;
}

/// The handle that a direct counter, meter, WRED table or register has from its table.
std::optional<U32> tableOfDirect( BfResourceParser const& parser, U32 handle, String const& name ) {
    Relations const relations( parser );
    std::optional<U32> table;
    auto const findIn = [ & ]( auto const& all ) {
        for( auto const& record : all ) {
            if( record.name == name && isDirect( record ) && relations.sameFile( record.handle, handle ) )
                table = record.handle;
        }
    };
    findIn( parser.bfCounters() );
    findIn( parser.bfMeters() );
    findIn( parser.bfWreds() );
    findIn( parser.bfRegisterInfos() );
    return table;
}

/// Whether it is direct, so of one table, and the model has that: the files know no more.
bool isSettled( BfResourceParser const& parser, U32 handle, String const& name ) {
    auto const table = tableOfDirect( parser, handle, name );
    if( !table || parser.bfTables().first<BfByHandle<BfTableInfo>>( *table ) == parser.bfTables().size() )
        return false;
    bool isListed = false;
    bool byOthers = false;
    for( auto const& [ placed, entry ] : parser.resourceHandles() ) {
        for( Attachment const& attachment : attachments() ) {
            auto const& references = ( entry.*attachment.references )();
            if( std::find( references.begin(), references.end(), handle ) != references.end() )
                ( placed == *table ? isListed : byOthers ) = true;
        }
    }
    return isListed && !byOthers;
}

/// Whether the model lacks a reference of a table to a handle. It has the action data and the selection of a
/// table on no stage.
bool lacksReference( Context::SurveyedTable const& table, Omitted omitted, U32 handle ) {
    return std::any_of( table.references.begin(), table.references.end(), [ & ]( auto const& reference ) {
        bool const isKept = omitted == Omitted::references && ( reference.list == "action_data_table_refs" ||
                                                                reference.list == "selection_table_refs" );
        return !isKept && reference.handle == handle;
    } );
}

/// Whose handle it is: "that is the handle of the meter ..."; of a placed record itself, not of its resource.
String whoHas( BfResourceParser const& parser, U32 handle ) {
    HandleUse owner;
    eachHandleUse( parser, [ & ]( HandleUse const& bearer ) {
        bool const isOwn = bearer.handle == handle && bearer.owner == bearer.name;
        if( isOwn && ( owner.name.empty() || owner.kind == Kind::resources ) )
            owner = bearer;
    } );
    return owner.name.empty()
               ? ""
               : String( "it is the handle of the " ) + kindOf( owner.kind ).one + " " + quoted( owner.name );
}

} // namespace

String sentenceOf( Omission const& one ) {
    static constexpr char const* lost[] = { "which", "whose references", "whose handle" };
    return fmt::format( "{} has {}the {}{} table {}, {} the model leaves out: {}", one.file->path,
                        one.isOwner ? "it with " : "",
                        one.action ? "action " + quoted( one.action->name ) + " of the " : "",
                        one.table->type, quoted( one.table->name ), lost[ static_cast<int>( one.omitted ) ],
                        reasonOf( one ) );
}

String sentencesOf( Omissions const& all ) {
    String text;
    for( Omission const& one : all )
        text += ( text.empty() ? "" : "; " ) + sentenceOf( one );
    return text;
}

List valuesOf( Omissions const& all ) {
    return listOf( all, []( Omission const& one ) { return rowOf( one ); } );
}

String whyOmitted( Context::SurveyedTable const& table ) {
    if( !table.isOmitted )
        return "";
    String why;
    if( table.staticEntries > 0 )
        why = fmt::format( "it has {} static {}", table.staticEntries,
                           table.staticEntries == 1 ? "entry" : "entries" );
    if( !table.isControllable )
        why += String( why.empty() ? "" : ", and " ) + "its \"is_resource_controllable\" is false";
    return why;
}

OmittedTables::OmittedTables( Configuration const& configuration ) : parser_( configuration.parser() ) {
    for( Context::FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedTable const& table : file.tables ) {
            if( auto const omitted = omittedOf( table ) )
                tables_.push_back( { &file, &table, *omitted } );
        }
    }
}

std::optional<Omission> OmittedTables::named( String const& word ) const {
    for( Omission one : tables_ ) {
        if( one.omitted != Omitted::record )
            continue;
        if( isMeant( one.table->name, word ) )
            return one;
        for( Context::SurveyedAction const& action : one.table->actions ) {
            one.action = &action;
            if( isMeant( *one.table, action, word ) )
                return one;
        }
    }
    return std::nullopt;
}

Omissions OmittedTables::withHandle( U32 handle ) const {
    Omissions all;
    for( Omission one : tables_ ) {
        if( one.omitted == Omitted::references ) // the model has its own handle and those of its actions
            continue;
        if( one.table->handle == handle )
            all.push_back( one );
        for( Context::SurveyedAction const& action : one.table->actions ) {
            one.action = &action;
            if( one.omitted == Omitted::record && action.handle == handle )
                all.push_back( one );
        }
    }
    return all;
}

Omissions OmittedTables::of( U32 handle, String const& name ) const {
    if( isSettled( parser_, handle, name ) )
        return {};
    String const* const parent = parser_.parentTable().find( name );
    Relations const relations( parser_ );
    Omissions all;
    for( Omission one : tables_ ) {
        auto const& table = *one.table;
        bool const isItself = one.omitted == Omitted::record && table.name == name && table.handle == handle;
        bool const isNamed =
            parent && *parent == table.name && relations.sameFile( handle, one.file->handlePipeBits );
        one.isOwner = !isItself;
        if( one.omitted != Omitted::handle &&
            ( isItself || isNamed || lacksReference( table, one.omitted, handle ) ) )
            all.push_back( one );
    }
    return all;
}

std::optional<U32> OmittedTables::ownHandle( String const& name, U32 handleInFile ) const {
    Relations const relations( parser_ );
    for( auto const& [ file, table, omitted, action, isOwner ] : tables_ ) {
        if( omitted == Omitted::handle && table->name == name && table->handle &&
            relations.sameFile( handleInFile, file->handlePipeBits ) )
            return table->handle;
    }
    return std::nullopt;
}

String whyMissing( Configuration const& configuration, String const& word ) {
    BfResourceParser const& parser = configuration.parser();
    OmittedTables const tables( configuration );
    auto const handle = handleIn( word );
    if( auto const found = tables.named( word ) )
        return sentenceOf( *found );
    if( String found = handle ? sentencesOf( tables.withHandle( *handle ) ) : ""; !found.empty() )
        return found;
    if( String owner = handle ? whoHas( parser, *handle ) : ""; !owner.empty() )
        return owner;
    if( handle && word.find_first_of( "xX" ) != String::npos )
        return "nothing has that handle";
    auto const meant = handleWithout0x( parser, word );
    return meant ? "did you mean " + hexText( *meant ) + "?" : "";
}

} // namespace Bfri
