#include "resourceinfo/parser/BfResourceParser.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/model/TypeModules.h"
#include "resourceinfo/parser/context/ContextFile.h"

#include <bit>

namespace BfResourceInfo {

namespace {

/// The bits that tell the handles of one pipeline's file from those of another's: the number of its lowest
/// pipe.
U32 pipeBits( BfPipeMask mask ) {
    return mask.value() == 0 ? 0 : static_cast<U32>( std::countr_zero( mask.value() ) ) << 28;
}

} // namespace

BfResourceParser::BfResourceParser( String const& switchConf ) : switchConf_( switchConf ) {
    handleInitialized();
}

BfResourceParser::~BfResourceParser() {
    notificationsIs( false );
    doPrepareToDie();
}

Zel::Ptr<BfResourceParser> BfResourceParser::BfResourceParserIs( String const& switchConf ) {
    Zel::Ptr<BfResourceParser> parser( new BfResourceParser( switchConf ) );
    parser->notificationsIs( true );
    return parser;
}

Zel::Ptr<BfResourceParser> bfResourceParserFactory( String const& switchConf ) {
    return BfResourceParser::BfResourceParserIs( switchConf );
}

Zel::TypeId BfResourceParser::fwkType() const { return parserTypeModule().typeId( bfResourceParserType ); }

void BfResourceParser::handleInitialized() {
    // Operators match these two trace lines by their source position, so that is given, not taken from here.
    ZEL_TRACE_AT( traceHandle(), 5, 100, "handleInitialized" )
        << "void BfResourceInfo::BfResourceParser::handleInitialized()";
    initialized_ = true;
    parseSwitchConf();
    // The iterator holds its entry, and finds its way on should the map change under it.
    for( auto entry = contextFile_.begin(); entry != contextFile_.end(); ++entry )
        parseContextFile( *entry );
}

void BfResourceParser::parseContextFile( ZelContextFile const& entry ) {
    U32 const handlePipeBits = bfrtConfig_.empty() ? 0 : pipeBits( entry.key() );
    parseContextJson( this, entry.value(), { .pipeMask = entry.key(), .handlePipeBits = handlePipeBits } );
}

void BfResourceParser::doPrepareToDie() {
    ZEL_TRACE_AT( traceHandle(), 5, 391, "doPrepareToDie" )
        << "void BfResourceInfo::BfResourceParser::doPrepareToDie()";
}

} // namespace BfResourceInfo
