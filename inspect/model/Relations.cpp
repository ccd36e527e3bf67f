#include "inspect/model/Relations.h"

namespace Bfri {

namespace {

/// Registers say the contrary of what the others say.
bool isDirect( Row const& record ) {
    bool const* const direct = std::get_if<bool>( &valueOf( record, "direct" ).is );
    return direct ? *direct : !valueAs<bool>( record, "indirect" );
}

} // namespace

bool Relations::belongs( Attachment const& attachment, Row const& record, BfZelResource const& table ) const {
    String const& name = valueAs<String>( record, "name" );
    U32 const handle = valueAs<Hex>( record, "handle" ).value;
    if( isDirect( record ) && handle == table.handle )
        return true;
    if( !sameFile( handle, table.handle ) )
        return false;
    for( U32 const reference : ( table.*attachment.references )() ) {
        BfZelResource const* const referenced = parser_.resourceHandles().find( reference );
        if( referenced ? referenced->name == name : reference == handle )
            return true;
    }
    String const* const parent = parser_.parentTable().find( name );
    return parent && *parent == table.name;
}

Owners::Owners( BfResourceParser const& parser ) : parser_( parser ) {
    for( BfTableInfo const& table : parser.bfTables() ) {
        add( table.adtHandle, table.adtName, table.name );
        add( table.selHandle, table.selName, table.name );
    }
    for( auto const& [ handle, placed ] : parser.resourceHandles() ) {
        for( Attachment const& attachment : attachments() ) {
            for( U32 const reference : ( placed.*attachment.references )() ) {
                if( auto const* const referenced = parser.resourceHandles().find( reference ) )
                    add( reference, referenced->name, placed.name );
            }
        }
    }
}

void Owners::add( U32 handle, std::string_view name, std::string_view table ) {
    auto& resources = used_[ handle ];
    auto const known = std::find_if( resources.begin(), resources.end(),
                                     [ & ]( Resource const& resource ) { return resource.name == name; } );
    if( known == resources.end() )
        resources.push_back( { name, { table } } );
    else if( known->owner.table != table )
        known->owner = { .several = true };
}

Owners::Owner Owners::of( U32 handle, String const& name, bool direct ) const {
    if( direct ) {
        BfZelResource const* const table = parser_.resourceHandles().find( handle );
        return { table ? table->name : std::string_view() };
    }
    if( parser_.multipleParentTablesHas( name ) )
        return { {}, true };
    if( auto const used = used_.find( handle ); used != used_.end() ) {
        for( Resource const& resource : used->second ) {
            if( resource.name == name )
                return resource.owner;
        }
    }
    String const* const parent = parser_.parentTable().find( name );
    return { parent ? *parent : std::string_view() };
}

} // namespace Bfri
