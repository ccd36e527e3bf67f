#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"
#include "zel/Type.h"

#include <atomic>
#include <concepts>
#include <cstddef>
#include <utility>

namespace Zel {

using Vessa::U32;

/// How reference counts change: with plain increments (one thread takes and drops all references) or with
/// atomic read-modify-write operations (several threads do).
enum class PointerMode { plain, atomic };

/// The process-wide mode; plain at start. Set it before a second thread uses an entity: an operation may take
/// and drop references of its own.
VESSA_EXPORT PointerMode pointerMode();
VESSA_EXPORT void pointerModeIs( PointerMode mode );

class NotifieeList;

/// Base of every entity: a reference count, a notification switch and a type identity. An entity lives on the
/// heap and dies with its last counted reference. Counting follows pointerMode(); all else is
/// thread-compatible.
class VESSA_EXPORT PtrInterface {
  public:
    PtrInterface( PtrInterface const& ) = delete;
    PtrInterface& operator=( PtrInterface const& ) = delete;

    /// The entity's notifiees; null, since nothing in this process is notified yet.
    virtual NotifieeList* notifieeList();
    /// Called with true when the last reference went: destroys the entity.
    virtual void zeroReferencesIs( bool zero );
    /// The type identity; the invalid one for entities of no registered type (map entries).
    virtual TypeId fwkType() const;
    virtual ~PtrInterface();

    /// On from the end of creation to the start of destruction.
    bool notifications() const { return notifications_; }
    void notificationsIs( bool on ) { notifications_ = on; }

    /// For Ptr only: takes and drops one counted reference.
    void referenceTake() const {
        if( mode_.load( std::memory_order_relaxed ) == PointerMode::atomic )
            references_.fetch_add( 1, std::memory_order_relaxed );
        else
            references_.store( references() + 1, std::memory_order_relaxed );
    }
    void referenceDrop() const {
        if( lessOne() == 0 )
            const_cast<PtrInterface*>( this )->zeroReferencesIs( true );
    }
    /// The current number of counted references.
    U32 references() const { return references_.load( std::memory_order_relaxed ); }

  protected:
    PtrInterface() = default;

  private:
    friend PointerMode pointerMode();
    friend void pointerModeIs( PointerMode mode );

    /// Drops one reference; how many are left.
    U32 lessOne() const {
        // Acquire and release: what other holders wrote is seen by the thread that destroys.
        if( mode_.load( std::memory_order_relaxed ) == PointerMode::atomic )
            return references_.fetch_sub( 1, std::memory_order_acq_rel ) - 1;
        U32 const left = references() - 1;
        references_.store( left, std::memory_order_relaxed );
        return left;
    }

    static std::atomic<PointerMode> mode_;

    mutable std::atomic<U32> references_ = 0;
    bool notifications_ = false;
};

/// A counted reference to an entity, or empty. Cheap to move; a copy costs one count.
template<class T>
class Ptr {
  public:
    Ptr() = default;
    Ptr( std::nullptr_t ) {}
    Ptr( T* entity ) : entity_( entity ) { take(); }
    Ptr( Ptr const& other ) : Ptr( other.entity_ ) {}
    Ptr( Ptr&& other ) noexcept : entity_( std::exchange( other.entity_, nullptr ) ) {}
    template<class Other>
    requires std::convertible_to<Other*, T*> Ptr( Ptr<Other> const& other ) : Ptr( other.get() ) {}
    ~Ptr() { drop(); }

    /// The former entity is released after the new one is in place.
    Ptr& operator=( Ptr other ) noexcept {
        std::swap( entity_, other.entity_ );
        return *this;
    }

    T* get() const { return entity_; }
    T* operator->() const { return entity_; }
    T& operator*() const { return *entity_; }
    explicit operator bool() const { return entity_ != nullptr; }

    friend bool operator==( Ptr const& a, Ptr const& b ) { return a.entity_ == b.entity_; }

  private:
    void take() const {
        if( entity_ )
            entity_->referenceTake();
    }
    void drop() const {
        if( entity_ )
            entity_->referenceDrop();
    }

    T* entity_ = nullptr;
};

} // namespace Zel
