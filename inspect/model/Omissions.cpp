#include "inspect/model/Omissions.h"

#include "inspect/check/CheckContext.h"
#include "inspect/model/ActionWord.h"
#include "inspect/model/HandleUses.h"
#include "inspect/model/Names.h"
#include "inspect/model/RecordKinds.h"
#include "inspect/model/Relations.h"
#include "inspect/rows/Utf8.h"

namespace Bfri {

namespace {

bool isMeant( String const& name, String const& word ) {
    return name == word || !namesEndingIn( { name }, word ).empty();
}

bool isMeant( FileTable const& table, FileName const& action, String const& word ) {
    if( isMeant( action.name, word ) )
        return true;
    auto const words = actionWordsIn( word );
    return std::any_of( words.begin(), words.end(), [ & ]( ActionWord const& one ) {
        return isMeant( action.name, one.action ) && isMeant( table.name, one.table );
    } );
}

} // namespace

String sentenceOf( LeftOut const& leftOut ) {
    static constexpr char const* lost[] = { "which", "whose references", "whose handle" };
    String const action = leftOut.action.empty() ? "" : "action " + quoted( leftOut.action ) + " of the ";
    char const* const has = leftOut.isOwner ? " has it with the " : " has the ";
    return escapeForTerminal( leftOut.contextFile ) + has + action + escapeForTerminal( leftOut.type ) +
           " table " + quoted( leftOut.table ) + ", " + lost[ static_cast<int>( leftOut.missing ) ] +
           " the model leaves out: " + leftOut.reason;
}

String sentencesOf( LeftOuts const& all ) {
    String text;
    for( LeftOut const& one : all )
        text += ( text.empty() ? "" : "; " ) + sentenceOf( one );
    return text;
}

namespace {

Row rowOf( LeftOut const& leftOut ) {
    static constexpr char const* lost[] = { "record", "references", "handle" };
    bool const isAction = !leftOut.action.empty();
    bool const isMatch = leftOut.type == "match";
    return { { "kind", isAction  ? "action"
                       : isMatch ? "table"
                                 : "resource" },
             { "name", isAction ? leftOut.action : leftOut.table },
             { "table", isAction ? Value( leftOut.table ) : Value() },
             { "handle", leftOut.handle ? Value( Hex( *leftOut.handle ) ) : Value() },
             { "contextFile", leftOut.contextFile },
             { "missing", lost[ static_cast<int>( leftOut.missing ) ] },
             { "reason", leftOut.reason } };
}

/// What the model lacks of a table.
std::optional<Missing> missingOf( FileTable const& table ) {
    if( !table.whyLeftOut().empty() )
        return Missing::record;
    if( table.stageTables > 0 || table.type == "condition" )
        return std::nullopt;
    return table.type == "match" ? Missing::references : Missing::handle;
}

} // namespace

List valuesOf( LeftOuts const& all ) {
    return listOf( all, []( LeftOut const& one ) { return rowOf( one ); } );
}

void LeftOutTables::read( String const& contextFile, U32 pipeBits, Detail detail ) {
    eachTable( contextFile, detail, [ & ]( FileTable table ) {
        auto const missing = missingOf( table );
        if( !missing )
            return;
        String reason = *missing == Missing::record ? table.whyLeftOut() : "it has no stage table";
        tables_.push_back( { std::move( table ), contextFile, pipeBits, *missing, std::move( reason ) } );
    } );
}

std::vector<LeftOutTables::Table> const& LeftOutTables::tables( Detail detail ) {
    if( read_ && ( read_ == Detail::full || detail == Detail::brief ) )
        return tables_;
    read_ = detail;
    tables_.clear();
    for( auto const& entry : parser_.contextFile() )
        read( entry.value(), pipeBitsOf( parser_, entry.key().value() ), detail );
    return tables_;
}

LeftOut LeftOutTables::leftOut( Table const& table, FileName const* action ) const {
    auto handle = action ? action->handle : table.handle;
    if( handle )
        *handle |= table.pipeBits;
    return { table.contextFile,          table.missing, table.type,  table.name,
             action ? action->name : "", handle,        table.reason };
}

std::optional<LeftOut> LeftOutTables::named( String const& word ) {
    for( Table const& table : tables( Detail::full ) ) {
        if( table.missing != Missing::record )
            continue;
        if( isMeant( table.name, word ) )
            return leftOut( table );
        for( FileName const& action : table.actions ) {
            if( isMeant( table, action, word ) )
                return leftOut( table, &action );
        }
    }
    return std::nullopt;
}

LeftOuts LeftOutTables::withHandle( U32 handle ) {
    LeftOuts all;
    for( Table const& table : tables( Detail::full ) ) {
        if( table.missing == Missing::references ) // its own handle and its actions' the model has
            continue;
        if( table.has( table, handle ) )
            all.push_back( leftOut( table ) );
        for( FileName const& action : table.actions ) {
            if( table.missing == Missing::record && table.has( action, handle ) )
                all.push_back( leftOut( table, &action ) );
        }
    }
    return all;
}

/// Of a table on no stage the model has the action data and the selection.
bool LeftOutTables::Table::lists( U32 asked ) const {
    return std::any_of( references.begin(), references.end(), [ & ]( FileReference const& reference ) {
        bool const isKept = missing == Missing::references && ( reference.list == "action_data_table_refs" ||
                                                                reference.list == "selection_table_refs" );
        return !isKept && ( reference.handle | pipeBits ) == asked;
    } );
}

namespace {

/// The handle that a direct counter, meter, WRED table or register has from its table.
std::optional<U32> tableOfDirect( BfResourceInfo::BfResourceParser const& parser, U32 handle,
                                  String const& name ) {
    Relations const relations( parser );
    std::optional<U32> table;
    auto const findIn = [ & ]( auto const& all, auto const& isDirect ) {
        for( auto const& record : all ) {
            if( record.name == name && isDirect( record ) && relations.sameFile( record.handle, handle ) )
                table = record.handle;
        }
    };
    auto const isDirect = []( auto const& record ) { return record.direct; };
    findIn( parser.bfCounters(), isDirect );
    findIn( parser.bfMeters(), isDirect );
    findIn( parser.bfWreds(), isDirect );
    findIn( parser.bfRegisterInfos(), []( BfRegisterInfo const& record ) { return !record.indirect; } );
    return table;
}

/// Whether it is direct, so of one table, and the model has that: the files know no more.
bool isSettled( BfResourceInfo::BfResourceParser const& parser, U32 handle, String const& name ) {
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

} // namespace

LeftOuts LeftOutTables::behind( U32 handle, String const& name ) {
    if( isSettled( parser_, handle, name ) )
        return {};
    String const* const parent = parser_.parentTable().find( name );
    Relations const relations( parser_ );
    LeftOuts all;
    for( Table const& table : tables( Detail::brief ) ) {
        bool const isItself =
            table.missing == Missing::record && table.name == name && table.has( table, handle );
        bool const isNamed = parent && *parent == table.name && relations.sameFile( handle, table.pipeBits );
        if( table.missing == Missing::handle || !( isItself || isNamed || table.lists( handle ) ) )
            continue;
        all.push_back( leftOut( table ) );
        all.back().isOwner = !isItself;
    }
    return all;
}

std::optional<U32> LeftOutTables::ownHandle( String const& name, U32 handleInFile ) {
    Relations const relations( parser_ );
    for( Table const& table : tables( Detail::brief ) ) {
        bool const isIt = table.missing == Missing::handle && table.name == name;
        if( isIt && table.handle && relations.sameFile( handleInFile, table.pipeBits ) )
            return *table.handle | table.pipeBits;
    }
    return std::nullopt;
}

namespace {

/// Whose handle it is: "that is the handle of the meter ..."; of a placed record itself, not of its resource.
String whoHas( BfResourceInfo::BfResourceParser const& parser, U32 handle ) {
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

String whyMissing( BfResourceInfo::BfResourceParser const& parser, String const& word ) {
    LeftOutTables tables( parser );
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
    return meant ? "did you mean " + hexOf( *meant ) + "?" : "";
}

} // namespace Bfri
