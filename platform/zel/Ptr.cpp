#include "zel/Ptr.h"

namespace Zel {

namespace {
std::atomic<PointerMode> mode = PointerMode::plain;
}

PointerMode pointerMode() { return mode.load( std::memory_order_relaxed ); }

void pointerModeIs( PointerMode newMode ) { mode.store( newMode, std::memory_order_relaxed ); }

PtrInterface::~PtrInterface() = default;

NotifieeList* PtrInterface::notifieeList() { return nullptr; }

void PtrInterface::zeroReferencesIs( bool zero ) {
    if( zero )
        delete this;
}

TypeId PtrInterface::fwkType() const { return {}; }

void PtrInterface::referenceTake() const {
    if( pointerMode() == PointerMode::atomic )
        references_.fetch_add( 1, std::memory_order_relaxed );
    else
        references_.store( references() + 1, std::memory_order_relaxed );
}

void PtrInterface::referenceDrop() const {
    U32 left = 0;
    if( pointerMode() == PointerMode::atomic ) {
        // Acquire and release: what other holders wrote is seen by the thread that destroys.
        left = references_.fetch_sub( 1, std::memory_order_acq_rel ) - 1;
    } else {
        left = references() - 1;
        references_.store( left, std::memory_order_relaxed );
    }
    if( left == 0 )
        const_cast<PtrInterface*>( this )->zeroReferencesIs( true );
}

} // namespace Zel
