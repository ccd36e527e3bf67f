#include "cli/LeftOut.h"

#include "cli/ActionWord.h"
#include "cli/Bearers.h"
#include "cli/Facts.h"
#include "cli/Names.h"
#include "cli/Utf8.h"

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
    String const action = leftOut.action.empty() ? "" : "the action " + quoted( leftOut.action ) + " of ";
    char const* const has = leftOut.isOwner ? " has it with " : " has ";
    return shown( leftOut.contextFile ) + has + action + "the match table " + quoted( leftOut.table ) +
           ", which the model leaves out: " + leftOut.reason;
}

Value valueOf( std::optional<LeftOut> const& leftOut ) {
    if( !leftOut )
        return {};
    bool const isAction = !leftOut->action.empty();
    return Row{ { "kind", isAction ? "action" : "table" },
                { "name", isAction ? leftOut->action : leftOut->table },
                { "table", isAction ? Value( leftOut->table ) : Value() },
                { "handle", leftOut->handle ? Value( Hex( *leftOut->handle ) ) : Value() },
                { "contextFile", leftOut->contextFile },
                { "reason", leftOut->reason } };
}

std::vector<LeftOutTables::Table> const& LeftOutTables::tables( Detail detail ) {
    if( read_ && ( read_ == Detail::full || detail == Detail::brief ) )
        return tables_;
    read_ = detail;
    tables_.clear();
    for( auto const& entry : parser_.contextFile() ) {
        U32 const pipeBits = pipeBitsOf( parser_, entry.key().value() );
        eachTable( entry.value(), detail, [ & ]( FileTable table ) {
            if( !table.whyLeftOut().empty() )
                tables_.push_back( { std::move( table ), entry.value(), pipeBits } );
        } );
    }
    return tables_;
}

LeftOut LeftOutTables::leftOut( Table const& table, FileName const* action ) const {
    auto handle = action ? action->handle : table.handle;
    if( handle )
        *handle |= table.pipeBits;
    return { table.contextFile, table.name, action ? action->name : "", handle, table.whyLeftOut() };
}

std::optional<LeftOut> LeftOutTables::named( String const& word ) {
    for( Table const& table : tables( Detail::full ) ) {
        if( isMeant( table.name, word ) )
            return leftOut( table );
        for( FileName const& action : table.actions ) {
            if( isMeant( table, action, word ) )
                return leftOut( table, &action );
        }
    }
    return std::nullopt;
}

std::optional<LeftOut> LeftOutTables::withHandle( U32 handle ) {
    for( Table const& table : tables( Detail::full ) ) {
        auto const has = [ & ]( FileName const& one ) {
            return one.handle && ( *one.handle | table.pipeBits ) == handle;
        };
        if( has( table ) )
            return leftOut( table );
        auto const action = std::find_if( table.actions.begin(), table.actions.end(), has );
        if( action != table.actions.end() )
            return leftOut( table, &*action );
    }
    return std::nullopt;
}

std::optional<LeftOut> LeftOutTables::behind( U32 handle, std::string_view table ) {
    auto const& known = parser_.bfTables();
    if( !table.empty() && known.first<BfByName<BfTableInfo>>( String( table ) ) < known.size() )
        return std::nullopt;
    for( Table const& one : tables( Detail::brief ) ) {
        auto const isIt = [ & ]( U32 own ) { return ( own | one.pipeBits ) == handle; };
        bool const lists = std::any_of( one.references.begin(), one.references.end(),
                                        [ & ]( auto const& reference ) { return isIt( reference.handle ); } );
        bool const isItself = one.handle && isIt( *one.handle );
        if( table.empty() ? lists || isItself : one.name == table ) {
            LeftOut found = leftOut( one );
            found.isOwner = !isItself;
            return found;
        }
    }
    return std::nullopt;
}

namespace {

/// Whose handle it is: "that is the handle of the meter ..."; of a placed record itself, not of its resource.
String whoHas( BfResourceInfo::BfResourceParser const& parser, U32 handle ) {
    Bearer owner;
    eachBearer( parser, [ & ]( Bearer const& bearer ) {
        bool const isOwn = bearer.handle == handle && bearer.owner == bearer.name;
        if( isOwn && ( owner.name.empty() || owner.kind == std::string_view( "resource" ) ) )
            owner = bearer;
    } );
    return owner.name.empty()
               ? ""
               : String( "it is the handle of the " ) + owner.kind + " " + quoted( owner.name );
}

} // namespace

String whyMissing( BfResourceInfo::BfResourceParser const& parser, String const& word ) {
    LeftOutTables tables( parser );
    auto const handle = handleIn( word );
    auto found = tables.named( word );
    if( !found && handle )
        found = tables.withHandle( *handle );
    if( found )
        return sentenceOf( *found );
    if( String owner = handle ? whoHas( parser, *handle ) : ""; !owner.empty() )
        return owner;
    if( handle && word.find_first_of( "xX" ) != String::npos )
        return "nothing has that handle";
    auto const meant = handleWithout0x( parser, word );
    return meant ? "did you mean " + hexOf( *meant ) + "?" : "";
}

} // namespace Bfri
