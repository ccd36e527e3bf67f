#include "inspect/model/Omissions.h"

#include "inspect/model/HandleUses.h"
#include "inspect/model/Names.h"
#include "inspect/model/Relations.h"
#include "inspect/rows/Utf8.h"

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

Row rowOf( Omission const& omission ) {
    static constexpr char const* lost[] = { "record", "references", "handle" };
    bool const isAction = !omission.action.empty();
    bool const isMatch = omission.type == "match";
    return { { "kind", isAction  ? "action"
                       : isMatch ? "table"
                                 : "resource" },
             { "name", isAction ? omission.action : omission.table },
             { "table", isAction ? Value( omission.table ) : Value() },
             { "handle", omission.handle ? Value( Hex( *omission.handle ) ) : Value() },
             { "contextFile", omission.contextFile },
             { "missing", lost[ static_cast<int>( omission.omitted ) ] },
             { "reason", omission.reason } };
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

String sentenceOf( Omission const& omission ) {
    static constexpr char const* lost[] = { "which", "whose references", "whose handle" };
    String const action = omission.action.empty() ? "" : "action " + quoted( omission.action ) + " of the ";
    char const* const has = omission.isOwner ? " has it with the " : " has the ";
    return omission.contextFile + has + action + omission.type + " table " + quoted( omission.table ) + ", " +
           lost[ static_cast<int>( omission.omitted ) ] + " the model leaves out: " + omission.reason;
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
        why = "it has " + std::to_string( table.staticEntries ) +
              ( table.staticEntries == 1 ? " static entry" : " static entries" );
    if( !table.isControllable )
        why += String( why.empty() ? "" : ", and " ) + "its \"is_resource_controllable\" is false";
    return why;
}

OmittedTables::OmittedTables( Configuration const& configuration ) : parser_( configuration.parser() ) {
    for( Context::FileSurvey const& file : configuration.files ) {
        for( Context::SurveyedTable const& table : file.tables ) {
            if( auto const omitted = omittedOf( table ) )
                tables_.push_back( { &table, &file, *omitted } );
        }
    }
}

Omission OmittedTables::omission( Table const& table, Context::SurveyedAction const* action ) {
    return { table.file->path,
             table.omitted,
             table.survey->type,
             table.survey->name,
             action ? action->name : "",
             action ? action->handle : table.survey->handle,
             table.omitted == Omitted::record ? whyOmitted( *table.survey ) : "it has no stage table" };
}

std::optional<Omission> OmittedTables::named( String const& word ) const {
    for( Table const& table : tables_ ) {
        if( table.omitted != Omitted::record )
            continue;
        if( isMeant( table.survey->name, word ) )
            return omission( table );
        for( Context::SurveyedAction const& action : table.survey->actions ) {
            if( isMeant( *table.survey, action, word ) )
                return omission( table, &action );
        }
    }
    return std::nullopt;
}

Omissions OmittedTables::withHandle( U32 handle ) const {
    Omissions all;
    for( Table const& table : tables_ ) {
        if( table.omitted == Omitted::references ) // the model has its own handle and those of its actions
            continue;
        if( table.survey->handle == handle )
            all.push_back( omission( table ) );
        for( Context::SurveyedAction const& action : table.survey->actions ) {
            if( table.omitted == Omitted::record && action.handle == handle )
                all.push_back( omission( table, &action ) );
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
    for( Table const& table : tables_ ) {
        auto const& survey = *table.survey;
        bool const isItself =
            table.omitted == Omitted::record && survey.name == name && survey.handle == handle;
        bool const isNamed =
            parent && *parent == survey.name && relations.sameFile( handle, table.file->handlePipeBits );
        if( table.omitted == Omitted::handle ||
            !( isItself || isNamed || lacksReference( survey, table.omitted, handle ) ) )
            continue;
        all.push_back( omission( table ) );
        all.back().isOwner = !isItself;
    }
    return all;
}

std::optional<U32> OmittedTables::ownHandle( String const& name, U32 handleInFile ) const {
    Relations const relations( parser_ );
    for( Table const& table : tables_ ) {
        bool const isIt = table.omitted == Omitted::handle && table.survey->name == name;
        if( isIt && table.survey->handle && relations.sameFile( handleInFile, table.file->handlePipeBits ) )
            return table.survey->handle;
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
