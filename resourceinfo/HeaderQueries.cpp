#include "resourceinfo/Queries.h"

#include <algorithm>

namespace BfResourceInfo {

U32 BfResourceInfoIntf::bfHeaderSize( String const& hdrName ) noexcept {
    auto const parser = queried();
    BfHeaderInfo const* const header = parser->bfHeaders().find( hdrName );
    return header ? header->size() : 0;
}

U32 BfResourceInfoIntf::bfDynHashTableHdl( String const& hashName ) const noexcept {
    auto const parser = queried();
    BfDynamicHashInfo const* const hash = parser->bfDynamicHashInfo().find( hashName );
    return hash ? hash->tableHdl : BfResourceInfoIndexInvalid;
}

U32 BfResourceInfoIntf::bfDynHashFieldListHdl( String const& hashName ) const noexcept {
    auto const parser = queried();
    BfDynamicHashInfo const* const hash = parser->bfDynamicHashInfo().find( hashName );
    return hash ? hash->fieldListHdl : BfResourceInfoIndexInvalid;
}

U32 BfResourceInfoIntf::bfDynHashFieldCount( String const& hashName ) const noexcept {
    auto const parser = queried();
    BfDynamicHashInfo const* const hash = parser->bfDynamicHashInfo().find( hashName );
    return hash ? hash->fieldCount : BfResourceInfoIndexInvalid;
}

U32 BfResourceInfoIntf::bfDynHashFieldId( String const& hashName, String const& fieldName ) const noexcept {
    auto const parser = queried();
    BfDynamicHashInfo const* const hash = parser->bfDynamicHashInfo().find( hashName );
    if( !hash )
        return BfResourceInfoIndexInvalid;
    auto const& names = hash->fieldNames;
    auto const end = names.begin() + std::min<std::ptrdiff_t>( hash->fieldCount, std::ssize( names ) );
    auto const found = std::find( names.begin(), end, fieldName );
    return found == end ? BfResourceInfoIndexInvalid : static_cast<U32>( found - names.begin() );
}

} // namespace BfResourceInfo
