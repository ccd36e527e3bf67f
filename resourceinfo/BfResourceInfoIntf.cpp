#include "resourceinfo/BfResourceInfoIntf.h"

#include "resourceinfo/Queries.h"
#include "resourceinfo/model/TypeModules.h"

namespace BfResourceInfo {

BfResourceInfoIntf::BfResourceInfoIntf( String const& switchConf ) : switchConf_( switchConf ) {
    handleInitialized();
}

BfResourceInfoIntf::~BfResourceInfoIntf() {
    notificationsIs( false );
    parserDel();
}

Zel::Ptr<BfResourceInfoIntf> BfResourceInfoIntf::BfResourceInfoIntfIs( String const& switchConf ) {
    Zel::Ptr<BfResourceInfoIntf> entity( new BfResourceInfoIntf( switchConf ) );
    entity->notificationsIs( true );
    return entity;
}

Zel::Ptr<BfResourceInfoIntf> bfResourceInfoIntfFactory( String const& switchConf ) {
    return BfResourceInfoIntf::BfResourceInfoIntfIs( switchConf );
}

Zel::TypeId BfResourceInfoIntf::fwkType() const {
    return interfaceTypeModule().typeId( bfResourceInfoIntfType );
}

void BfResourceInfoIntf::handleInitialized() { parserIs( switchConf_ ); }

Zel::Ptr<BfResourceParser> BfResourceInfoIntf::parserIs( String const& name ) {
    if( parser_ && parser_->switchConf() == name )
        return parser_;
    // The former parser answers until the new one is complete, and is released last.
    parser_ = BfResourceParser::BfResourceParserIs( name );
    return parser_;
}

Zel::Ptr<BfResourceParser> BfResourceInfoIntf::parserDel() { return std::exchange( parser_, nullptr ); }

} // namespace BfResourceInfo
