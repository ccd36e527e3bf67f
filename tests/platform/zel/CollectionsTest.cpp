#include "zel/Collections.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using Vessa::String;
using Zel::Ptr;
using Zel::U32;

struct Port {
    String name;
    friend bool operator==( Port const&, Port const& ) = default;
};
struct PortName {
    using Type = String;
    static Type of( Port const& port ) { return port.name; }
};
using PortSequence = Zel::Sequence<Port, PortName>;

struct ZelLinks : Zel::OrderedMapEntry<ZelLinks, U32, String> {
    using OrderedMapEntry::OrderedMapEntry;
};

/// One collection of each kind; plain members around them, as in a real entity.
class Switch : public Zel::PtrInterface {
  public:
    explicit Switch( String name ) : name_( std::move( name ) ) {}
    String const& name() const { return name_; }

  private:
    String const name_;

    ZEL_SEQUENCE( ports, PortSequence )
    ZEL_ORDERED_MAP( links, ZelLinks )
    ZEL_HASH_MAP( speeds, String, U32 )
    ZEL_HASH_SET( groups, String )
    ZEL_QUEUE( waiting )

    int const last_ = 0;

  public:
    int last() const { return last_; }
};

class Collections : public testing::Test {
  protected:
    Ptr<Switch> const entity_{ new Switch( "leaf" ) };
};

TEST_F( Collections, StartEmpty ) {
    EXPECT_TRUE( entity_->ports().empty() );
    EXPECT_TRUE( entity_->links().empty() );
    EXPECT_TRUE( entity_->speeds().empty() );
    EXPECT_TRUE( entity_->groups().empty() );
    EXPECT_TRUE( entity_->waiting().empty() );
}

TEST_F( Collections, ASequenceIsPushedReplacedAndPopped ) {
    entity_->portsPush( { "a" } );
    entity_->portsPush( { "b" } );
    entity_->portsIs( 1, { "c" } );
    EXPECT_THROW( entity_->portsIs( 2, { "d" } ), Vessa::VectorOutOfRange );
    EXPECT_EQ( entity_->ports().at( 1 ).name, "c" );
    EXPECT_EQ( entity_->ports().first<PortName>( "c" ), 1U );
    EXPECT_EQ( entity_->portsPop(), Port{ "c" } );
    entity_->portsPopAll();
    EXPECT_TRUE( entity_->ports().empty() );
    EXPECT_THROW( entity_->portsPop(), Vessa::VectorEmpty );
}

TEST_F( Collections, AnOrderedMapIsLookedUpByItsNameAndChangedByKeyOrIterator ) {
    entity_->linksIs( 2, "b" );
    entity_->linksIs( 1, "a" );
    entity_->linksIs( 2, "c" );
    EXPECT_EQ( entity_->links( 2 ), "c" );
    EXPECT_EQ( entity_->links( 3 ), "" );
    EXPECT_TRUE( entity_->linksHas( 1 ) );
    EXPECT_FALSE( entity_->linksHas( 3 ) );
    EXPECT_EQ( entity_->links().size(), 2U );
    EXPECT_EQ( entity_->links().changes(), 3U );
    EXPECT_EQ( entity_->linksDel( entity_->links().begin() ), "a" );
    EXPECT_EQ( entity_->linksDel( entity_->links().end() ), "" );
    EXPECT_EQ( entity_->linksDel( 3 ), "" );
    EXPECT_EQ( entity_->linksDel( 2 ), "c" );
    entity_->linksIs( 5, "e" );
    entity_->linksDelAll();
    EXPECT_TRUE( entity_->links().empty() );
}

TEST_F( Collections, AHashMapIsLookedUpByItsName ) {
    entity_->speedsIs( "a", 10 );
    entity_->speedsIs( "a", 40 );
    entity_->speedsIs( "b", 100 );
    EXPECT_EQ( entity_->speeds( "a" ), 40U );
    EXPECT_EQ( entity_->speeds( "c" ), 0U );
    EXPECT_TRUE( entity_->speedsHas( "b" ) );
    EXPECT_FALSE( entity_->speedsHas( "c" ) );
    EXPECT_EQ( entity_->speedsDel( "c" ), 0U );
    EXPECT_EQ( entity_->speedsDel( "a" ), 40U );
    EXPECT_EQ( entity_->speeds().size(), 1U );
    entity_->speedsDelAll();
    EXPECT_TRUE( entity_->speeds().empty() );
}

TEST_F( Collections, AHashSetTakesAndForgets ) {
    entity_->groupsIs( "a" );
    entity_->groupsIs( "a" );
    entity_->groupsIs( "b" );
    EXPECT_EQ( entity_->groups().size(), 2U );
    EXPECT_TRUE( entity_->groupsHas( "a" ) );
    EXPECT_EQ( entity_->groupsDel( "a" ), "a" );
    EXPECT_EQ( entity_->groupsDel( "a" ), "" );
    EXPECT_FALSE( entity_->groupsHas( "a" ) );
    entity_->groupsDelAll();
    EXPECT_TRUE( entity_->groups().empty() );
}

TEST_F( Collections, AQueueAnswersZeroWhenEmpty ) {
    EXPECT_EQ( entity_->waitingDeq(), 0U );
    entity_->waitingEnq( 7 );
    entity_->waitingEnq( 9 );
    EXPECT_EQ( entity_->waitingFront(), 7U );
    EXPECT_EQ( entity_->waitingBack(), 9U );
    EXPECT_EQ( entity_->waitingDeq(), 7U );
    EXPECT_EQ( entity_->waitingDeq(), 9U );
    EXPECT_EQ( entity_->waitingDeq(), 0U );
    EXPECT_EQ( entity_->waitingFront(), 0U );
    EXPECT_EQ( entity_->waitingBack(), 0U );
    entity_->waitingEnq( 1 );
    entity_->waitingDelAll();
    EXPECT_TRUE( entity_->waiting().empty() );
}

TEST_F( Collections, MembersBesideThemKeepTheirAccess ) {
    EXPECT_EQ( entity_->name(), "leaf" );
    EXPECT_EQ( entity_->last(), 0 );
}

} // namespace
