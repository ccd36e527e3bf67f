#include "resourceinfo/model/BfHeaderInfo.h"
#include "resourceinfo/model/BfPipeMask.h"
#include "resourceinfo/model/BfZelResource.h"
#include "resourceinfo/model/Source.h"
#include "zel/Assert.h"

namespace BfResourceInfo {

BfPipeMask::BfPipeMask( String const& strep ) : value_( Zel::strepAttribute( strep, "value" ) ) {}

void BfPipeMask::writePbMessage( Zel::PbMessage& ) const {
    ZEL_ASSERT( false ) << "Only value types support witePbMessage";
}

BfPipeMask BfPipeMask::constructFromPbMessage( Zel::PbMessage const& ) {
    ZEL_ASSERT( false ) << "Only value types support constructFromPbMessage";
}

String valueToStrep( BfPipeMask const& mask ) { return std::to_string( mask.value() ); }

std::ostream& operator<<( std::ostream& os, BfPipeMask const& mask ) { return os << valueToStrep( mask ); }

BfZelResource::BfZelResource( String const& ) {
    ZEL_ASSERT( false ) << "No String constructor for BfZelResource - has collection";
}

bool BfZelResource::isEq( BfZelResource const& other ) const {
    return handle == other.handle && name == other.name && size == other.size &&
           stageStart == other.stageStart && statReferences_ == other.statReferences_ &&
           meterReferences_ == other.meterReferences_ && statefulReferences_ == other.statefulReferences_;
}

U32 BfZelResource::hash() const { throw Zel::UnhashableType( "BfResourceInfo::BfZelResource" ); }

String valueToStrep( BfZelResource const& resource ) {
    return "Value('BfResourceInfo::BfZelResource', ** {'handle': " + std::to_string( resource.handle ) +
           ", 'name': " + Zel::quotedStrep( resource.name ) + ", 'size': " + std::to_string( resource.size ) +
           ", 'stageStart': " + std::to_string( resource.stageStart ) +
           ", 'statReferences': None, 'meterReferences': None, 'statefulReferences': None})";
}

std::ostream& operator<<( std::ostream& os, BfZelResource const& resource ) {
    return os << valueToStrep( resource );
}

} // namespace BfResourceInfo

BfHeaderInfo::BfHeaderInfo( String const& strep )
    : size_( static_cast<U16>( Zel::strepAttribute( strep, "size" ) ) ) {}

U32 BfHeaderInfo::hash() const { throw Zel::UnhashableType( "BfHeaderInfo" ); }

String valueToStrep( BfHeaderInfo const& header ) { return std::to_string( header.size() ); }

std::ostream& operator<<( std::ostream& os, BfHeaderInfo const& header ) {
    return os << valueToStrep( header );
}
