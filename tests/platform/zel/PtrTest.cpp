#include "zel/Ptr.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Zel::PointerMode;
using Zel::Ptr;

using Events = std::vector<std::string>;

class Entity : public Zel::PtrInterface {
  public:
    explicit Entity( Events& events, std::string name = "entity" )
        : events_( events ), name_( std::move( name ) ) {}
    ~Entity() override { events_.push_back( name_ + " destroyed" ); }

    Ptr<Entity> child;

  private:
    Events& events_;
    std::string name_;
};

class DerivedEntity : public Entity {
    using Entity::Entity;
};

/// Counting in both modes; the mode is put back.
class PtrCounting : public testing::TestWithParam<PointerMode> {
  protected:
    void SetUp() override { Zel::pointerModeIs( GetParam() ); }
    void TearDown() override { Zel::pointerModeIs( PointerMode::plain ); }

    Events events_;
};

INSTANTIATE_TEST_SUITE_P( Modes, PtrCounting, testing::Values( PointerMode::plain, PointerMode::atomic ) );

TEST( PointerMode, IsPlainAtStartAndStaysAsSet ) {
    ASSERT_EQ( Zel::pointerMode(), PointerMode::plain );
    Zel::pointerModeIs( PointerMode::atomic );
    EXPECT_EQ( Zel::pointerMode(), PointerMode::atomic );
    Zel::pointerModeIs( PointerMode::plain );
    EXPECT_EQ( Zel::pointerMode(), PointerMode::plain );
}

TEST_P( PtrCounting, EmptyReferencesCountNothing ) {
    Ptr<Entity> const empty;
    Ptr<Entity> const null( nullptr );
    Ptr<Entity> const copy( empty );
    EXPECT_FALSE( empty );
    EXPECT_EQ( null.get(), nullptr );
    EXPECT_TRUE( copy == null );
}

TEST_P( PtrCounting, CopiesCountAndMovesDoNot ) {
    Ptr<Entity> first( new Entity( events_ ) );
    Entity const& entity = *first;
    EXPECT_EQ( entity.references(), 1U );
    Ptr<Entity> second( first );
    EXPECT_EQ( entity.references(), 2U );
    Ptr<Entity> third( std::move( second ) );
    EXPECT_EQ( entity.references(), 2U );
    EXPECT_FALSE( second ); // NOLINT(bugprone-use-after-move): a moved-from reference is empty
    second = third;
    EXPECT_EQ( entity.references(), 3U );
    second = std::move( third );
    EXPECT_EQ( entity.references(), 2U );
    second = nullptr;
    EXPECT_EQ( entity.references(), 1U );
    EXPECT_TRUE( events_.empty() );
    first = nullptr;
    EXPECT_EQ( events_, Events{ "entity destroyed" } );
}

TEST_P( PtrCounting, AReferenceToTheBaseCountsTheSameEntity ) {
    Ptr<DerivedEntity> derived( new DerivedEntity( events_ ) );
    Ptr<Entity> const entity = derived;
    Ptr<Zel::PtrInterface> base = entity;
    EXPECT_EQ( base->references(), 3U );
    EXPECT_EQ( base.get(), derived.get() );
    derived = nullptr;
    base = nullptr;
    EXPECT_EQ( entity->references(), 1U );
    EXPECT_TRUE( events_.empty() );
}

TEST_P( PtrCounting, SelfAssignmentChangesNothing ) {
    Ptr<Entity> entity( new Entity( events_ ) );
    Ptr<Entity> const& same = entity;
    entity = same;
    EXPECT_EQ( entity->references(), 1U );
    entity = std::move( entity ); // NOLINT: self-move on purpose
    ASSERT_TRUE( entity );
    EXPECT_EQ( entity->references(), 1U );
    entity = entity.get();
    EXPECT_EQ( entity->references(), 1U );
    EXPECT_TRUE( events_.empty() );
}

TEST_P( PtrCounting, ReplacingReleasesTheFormerEntity ) {
    Ptr<Entity> entity( new Entity( events_, "first" ) );
    entity = Ptr<Entity>( new Entity( events_, "second" ) );
    EXPECT_EQ( events_, Events{ "first destroyed" } );
    EXPECT_EQ( entity->references(), 1U );
}

// The new entity hangs on the former one alone: it must be held before that one goes.
TEST_P( PtrCounting, AnEntityMayBeReplacedByItsOwnChild ) {
    Ptr<Entity> entity( new Entity( events_, "parent" ) );
    entity->child = new Entity( events_, "child" );
    entity = entity->child;
    EXPECT_EQ( events_, Events{ "parent destroyed" } );
    EXPECT_EQ( entity->references(), 1U );
}

TEST_P( PtrCounting, ReleasingAnEntityReleasesWhatItHolds ) {
    {
        Ptr<Entity> const parent( new Entity( events_, "parent" ) );
        parent->child = new Entity( events_, "child" );
    }
    EXPECT_EQ( events_, ( Events{ "parent destroyed", "child destroyed" } ) );
}

TEST_P( PtrCounting, EqualityIsIdentity ) {
    Ptr<Entity> const a( new Entity( events_ ) );
    Ptr<Entity> const b( new Entity( events_ ) );
    EXPECT_TRUE( a == Ptr<Entity>( a ) );
    EXPECT_TRUE( a == a.get() );
    EXPECT_TRUE( a != b );
    EXPECT_TRUE( a != nullptr );
}

/// Survives its last reference: the owner decides.
class KeptEntity : public Entity {
  public:
    explicit KeptEntity( Events& events ) : Entity( events, "kept" ), events_( events ) {}
    void zeroReferencesIs( bool zero ) override {
        events_.push_back( zero ? "zero" : "not zero" );
        referencesAtZero = references();
    }

    Zel::U32 referencesAtZero = 99;

  private:
    Events& events_;
};

TEST_P( PtrCounting, TheZeroReferenceHandlerDecidesWhatHappens ) {
    KeptEntity* const entity = new KeptEntity( events_ );
    {
        Ptr<Entity> const reference( entity );
        Ptr<Entity> const second( reference );
    }
    EXPECT_EQ( events_, Events{ "zero" } );
    EXPECT_EQ( entity->referencesAtZero, 0U );
    {
        Ptr<Entity> const again( entity );
        EXPECT_EQ( entity->references(), 1U );
    }
    EXPECT_EQ( events_, ( Events{ "zero", "zero" } ) );
    entity->PtrInterface::zeroReferencesIs( false );
    EXPECT_EQ( events_, ( Events{ "zero", "zero" } ) );
    entity->PtrInterface::zeroReferencesIs( true );
    EXPECT_EQ( events_, ( Events{ "zero", "zero", "kept destroyed" } ) );
}

TEST( PtrInterface, IsWithoutNotifieesAndTypeUnlessOverridden ) {
    Events events;
    Ptr<Entity> const entity( new Entity( events ) );
    EXPECT_EQ( entity->notifieeList(), nullptr );
    EXPECT_FALSE( entity->fwkType() );
    EXPECT_EQ( entity->fwkType(), Zel::TypeId() );
}

TEST( PtrInterface, NotificationsAreOffUntilSwitchedOn ) {
    Events events;
    Ptr<Entity> const entity( new Entity( events ) );
    EXPECT_FALSE( entity->notifications() );
    entity->notificationsIs( true );
    EXPECT_TRUE( entity->notifications() );
    entity->notificationsIs( false );
    EXPECT_FALSE( entity->notifications() );
}

} // namespace
