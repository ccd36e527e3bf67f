#include "cli/LeftOut.h"

#include "cli/Facts.h"
#include "cli/FileTables.h"
#include "cli/Names.h"
#include "cli/Utf8.h"

namespace Bfri {

namespace {

String sentence( String const& file, FileTable const& table, FileName const* action, String const& why ) {
    return file + " has " + ( action ? "the action " + quoted( action->name ) + " of " : "" ) +
           "the match table " + quoted( table.name ) + ", which the model leaves out: " + why;
}

/// The first table or action that `isIt` is true of.
template<class IsIt>
String firstLeftOut( BfResourceInfo::BfResourceParser const& parser, IsIt isIt ) {
    String text;
    for( auto const& entry : parser.contextFile() ) {
        U32 const pipeBits = pipeBitsOf( parser, entry.key().value() );
        eachTable( entry.value(), Detail::full, [ & ]( FileTable const& table ) {
            String const why = text.empty() ? table.whyLeftOut() : "";
            if( why.empty() )
                return;
            if( isIt( table, pipeBits ) )
                text = sentence( shown( entry.value() ), table, nullptr, why );
            for( FileName const& action : table.actions ) {
                if( text.empty() && isIt( action, pipeBits ) )
                    text = sentence( shown( entry.value() ), table, &action, why );
            }
        } );
    }
    return text;
}

} // namespace

String leftOutOfName( BfResourceInfo::BfResourceParser const& parser, String const& word ) {
    return firstLeftOut( parser, [ & ]( FileName const& one, U32 ) {
        return one.name == word || !namesEndingIn( { one.name }, word ).empty();
    } );
}

String leftOutOfHandle( BfResourceInfo::BfResourceParser const& parser, U32 handle ) {
    return firstLeftOut( parser, [ handle ]( FileName const& one, U32 pipeBits ) {
        return one.handle && ( *one.handle | pipeBits ) == handle;
    } );
}

} // namespace Bfri
