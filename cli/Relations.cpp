#include "cli/Relations.h"

namespace Bfri {

namespace {

constexpr Attachment attachments_[] = {
    { "counters", BfResourceType::statistics, &BfZelResource::statReferences },
    { "meters", BfResourceType::meter, &BfZelResource::meterReferences },
    { "wreds", BfResourceType::wred, &BfZelResource::meterReferences },
    { "registers", BfResourceType::stateful, &BfZelResource::statefulReferences },
};

/// Registers say the contrary of what the others say.
bool isDirect( Row const& record ) {
    bool const* const direct = std::get_if<bool>( &valueOf( record, "direct" ).is );
    return direct ? *direct : !valueAs<bool>( record, "indirect" );
}

} // namespace

std::span<Attachment const> attachments() { return attachments_; }

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

} // namespace Bfri
