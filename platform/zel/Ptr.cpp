#include "zel/Ptr.h"

namespace Zel {

std::atomic<PointerMode> PtrInterface::mode_ = PointerMode::plain;

PointerMode pointerMode() { return PtrInterface::mode_.load( std::memory_order_relaxed ); }

void pointerModeIs( PointerMode newMode ) { PtrInterface::mode_.store( newMode, std::memory_order_relaxed ); }

PtrInterface::~PtrInterface() = default;

NotifieeList* PtrInterface::notifieeList() { return nullptr; }

void PtrInterface::zeroReferencesIs( bool zero ) {
    if( zero )
        delete this;
}

TypeId PtrInterface::fwkType() const { return {}; }

} // namespace Zel
