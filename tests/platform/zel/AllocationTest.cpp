// Everything that entities and collections allocate is counted under their type, and given back.

#include "vessa/AllocationTracker.h"
#include "zel/Collections.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

using Vessa::allocationTracker;
using Zel::Ptr;
using Zel::String;
using Zel::U32;

struct Port {
    U32 number = 0;
};

struct PortNumber {
    using Type = U32;
    static Type of( Port const& port ) { return port.number; }
};

/// Distinct value types, so that each collection's tracker is its own.
struct HashValue {
    String text;
};
struct SetKey {
    U32 number = 0;
    friend bool operator==( SetKey, SetKey ) = default;
};

using PortSequence = Zel::Sequence<Port, PortNumber>;

struct ZelLinks : Zel::OrderedMapEntry<ZelLinks, U32, String> {
    using OrderedMapEntry::OrderedMapEntry;
};

} // namespace

template<>
struct std::hash<SetKey> {
    std::size_t operator()( SetKey key ) const { return key.number; }
};

namespace {

class Chip : public Zel::PtrInterface, public Mirrow::Allocated<Chip> {
  public:
    explicit Chip( bool fails = false ) {
        fill( 100 );
        if( fails )
            throw std::runtime_error( "no chip" );
    }

    void fill( U32 count ) {
        for( U32 i = 0; i < count; ++i ) {
            portsPush( { i % 7 } );
            linksIs( i, "link" );
            tableIs( i, { "value" } );
            marksIs( { i } );
        }
    }

    ZEL_SEQUENCE( ports, PortSequence )
    ZEL_ORDERED_MAP( links, ZelLinks )
    ZEL_HASH_MAP( table, U32, HashValue )
    ZEL_HASH_SET( marks, SetKey )
};

struct Tracked {
    char const* name;
    Vessa::AllocationTracker const& tracker;
};

std::vector<Tracked> trackers() {
    return {
        { "entity", allocationTracker<Chip>() },
        { "sequence", allocationTracker<Port>() },
        { "ordered map", allocationTracker<ZelLinks>() },
        { "hash map", allocationTracker<std::pair<U32 const, HashValue>>() },
        { "hash set", allocationTracker<SetKey>() },
    };
}

void expectNothingLeft() {
    for( auto const& [ name, tracker ] : trackers() ) {
        SCOPED_TRACE( name );
        EXPECT_EQ( tracker.live(), 0U );
        EXPECT_EQ( tracker.liveBytes(), 0U );
    }
}

TEST( Allocation, IsCountedUnderEachTypeAndGivenBackWithTheEntity ) {
    expectNothingLeft();
    {
        Ptr<Chip> const chip( new Chip );
        for( auto const& [ name, tracker ] : trackers() ) {
            SCOPED_TRACE( name );
            EXPECT_GT( tracker.live(), 0U );
            EXPECT_GT( tracker.liveBytes(), 0U );
        }
        EXPECT_EQ( allocationTracker<Chip>().live(), 1U );
        EXPECT_EQ( allocationTracker<Chip>().liveBytes(), sizeof( Chip ) );
        // The elements, and the slots of the index.
        EXPECT_EQ( allocationTracker<Port>().live(), 2U );
        // An entry and a tree node for each key.
        EXPECT_EQ( allocationTracker<ZelLinks>().live(), 200U );
    }
    expectNothingLeft();
}

TEST( Allocation, IsGivenBackWhenTheConstructorThrows ) {
    auto const made = allocationTracker<Chip>().made();
    EXPECT_THROW( new Chip( true ), std::runtime_error );
    EXPECT_EQ( allocationTracker<Chip>().made(), made + 1 );
    expectNothingLeft();
}

TEST( Allocation, NodesAreGivenBackWhenACollectionIsEmptied ) {
    Ptr<Chip> const chip( new Chip );
    chip->linksDelAll();
    chip->linksIs( 1, "again" );
    EXPECT_EQ( allocationTracker<ZelLinks>().live(), 2U );
    chip->linksDel( 1 );
    EXPECT_EQ( allocationTracker<ZelLinks>().live(), 0U );
}

TEST( Allocation, AnEntryLivesAsLongAsItIsHeld ) {
    {
        Zel::OrderedMap<ZelLinks>::iterator held;
        {
            Ptr<Chip> const chip( new Chip );
            held = chip->links().find( 42 );
        }
        EXPECT_EQ( allocationTracker<ZelLinks>().live(), 1U );
        EXPECT_EQ( held->value(), "link" );
    }
    expectNothingLeft();
}

} // namespace
