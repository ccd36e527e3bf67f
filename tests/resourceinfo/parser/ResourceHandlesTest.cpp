#include "resourceinfo/parser/ResourceHandles.h"

#include "vessa/AllocationTracker.h"

#include <gmock/gmock.h>
#include <map>
#include <random>

// The reverse lookup, which must follow every change of the entries.

namespace BfResourceInfo {
namespace {

constexpr char const* statistics = "statistics_table_refs";
constexpr char const* meters = "meter_table_refs";
constexpr char const* statefuls = "stateful_table_refs";

/// The references of an entry, by kind.
struct References {
    std::vector<U32> statistics;
    std::vector<U32> meters;
    std::vector<U32> statefuls;
};

BfZelResource entry( References const& references ) {
    BfZelResource result;
    for( U32 const handle : references.statistics )
        result.statReferencesEnq( handle );
    for( U32 const handle : references.meters )
        result.meterReferencesEnq( handle );
    for( U32 const handle : references.statefuls )
        result.statefulReferencesEnq( handle );
    return result;
}

TEST( Handles, AreFoundWithTheirEntries ) {
    ResourceHandles handles;
    EXPECT_TRUE( handles.empty() );
    EXPECT_EQ( handles.begin(), handles.end() );
    BfZelResource entry;
    entry.name = "acl";
    handles.is( 7, entry );
    EXPECT_FALSE( handles.empty() );
    EXPECT_EQ( handles.size(), 1 );
    EXPECT_TRUE( handles.has( 7 ) );
    EXPECT_FALSE( handles.has( 8 ) );
    ASSERT_NE( handles.find( 7 ), nullptr );
    EXPECT_EQ( handles.find( 7 )->name, "acl" );
    EXPECT_EQ( handles.find( 8 ), nullptr );
    EXPECT_EQ( handles.value( 7 ), entry );
    EXPECT_FALSE( handles.value( 8 ) );
    std::map<U32, String> names;
    for( auto const& [ handle, resource ] : handles )
        names[ handle ] = resource.name;
    EXPECT_THAT( names, testing::ElementsAre( testing::Pair( 7, "acl" ) ) );
}

TEST( Referrer, IsFoundByItsKindOnly ) {
    ResourceHandles handles;
    handles.is( 7, entry( { { 1 }, { 2 }, { 3 } } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 7 );
    EXPECT_EQ( handles.referrer( meters, 2 ), 7 );
    EXPECT_EQ( handles.referrer( statefuls, 3 ), 7 );
    for( U32 const handle : { 2U, 3U, 7U, 0U } )
        EXPECT_EQ( handles.referrer( statistics, handle ), std::nullopt ) << handle;
    for( U32 const handle : { 1U, 3U, 7U, 0U } )
        EXPECT_EQ( handles.referrer( meters, handle ), std::nullopt ) << handle;
    for( U32 const handle : { 1U, 2U, 7U, 0U } )
        EXPECT_EQ( handles.referrer( statefuls, handle ), std::nullopt ) << handle;
}

TEST( Referrer, OfAnUnknownKindIsNone ) {
    ResourceHandles handles;
    handles.is( 7, entry( { { 1 }, { 1 }, { 1 } } ) );
    for( char const* kind : { "", "statistics_table_ref", "statistics_table_refs ", "Meter_table_refs",
                              "action_data_table_refs", "selection_table_refs" } )
        EXPECT_EQ( handles.referrer( kind, 1 ), std::nullopt ) << kind;
    using namespace std::string_view_literals;
    EXPECT_EQ( handles.referrer( "meter_table_refs\0"sv, 1 ), std::nullopt );
    EXPECT_EQ( handles.referrer( "meter_table_refs and more"sv.substr( 0, 16 ), 1 ), 7 );
}

TEST( Referrer, OfSeveralIsTheLowestWhateverTheirOrder ) {
    for( std::vector<U32> const& order :
         { std::vector<U32>{ 3, 5, 7 }, { 7, 5, 3 }, { 5, 3, 7 }, { 7, 3, 5 } } ) {
        ResourceHandles handles;
        for( U32 const handle : order )
            handles.is( handle, entry( { { 1 }, {}, {} } ) );
        EXPECT_EQ( handles.referrer( statistics, 1 ), 3 );
        handles.del( 3 );
        EXPECT_EQ( handles.referrer( statistics, 1 ), 5 );
        handles.del( 7 );
        EXPECT_EQ( handles.referrer( statistics, 1 ), 5 );
        handles.del( 5 );
        EXPECT_EQ( handles.referrer( statistics, 1 ), std::nullopt );
    }
}

TEST( Referrer, HandlesAreComparedAsUnsigned ) {
    ResourceHandles handles;
    handles.is( 0x80000000, entry( { { 1 }, {}, {} } ) );
    handles.is( 0x7FFFFFFF, entry( { { 1 }, {}, {} } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 0x7FFFFFFF );
    handles.is( 0, entry( { { 1, 0xFFFFFFFF, 0 }, {}, {} } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 0 );
    EXPECT_EQ( handles.referrer( statistics, 0xFFFFFFFF ), 0 );
    EXPECT_EQ( handles.referrer( statistics, 0 ), 0 );
}

TEST( Referrer, IsTheKeyAndNotTheEntrysOwnHandle ) {
    ResourceHandles handles;
    BfZelResource other = entry( { { 1 }, {}, {} } );
    other.handle = 99;
    handles.is( 7, other );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 7 );
}

TEST( Referrer, ReferencesOfAReplacedEntryAreGone ) {
    ResourceHandles handles;
    handles.is( 7, entry( { { 1, 2 }, { 1 }, {} } ) );
    handles.is( 9, entry( { { 1 }, {}, {} } ) );
    handles.is( 7, entry( { { 2 }, {}, { 1 } } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 9 ) << "only the other one lists it now";
    EXPECT_EQ( handles.referrer( statistics, 2 ), 7 );
    EXPECT_EQ( handles.referrer( meters, 1 ), std::nullopt );
    EXPECT_EQ( handles.referrer( statefuls, 1 ), 7 );
}

TEST( Referrer, ReferenceListedTwiceIsGoneWithItsEntry ) {
    ResourceHandles handles;
    handles.is( 7, entry( { { 1, 2, 1, 1 }, {}, {} } ) );
    handles.is( 9, entry( { { 1, 1 }, {}, {} } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 7 );
    handles.del( 7 );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 9 );
    EXPECT_EQ( handles.referrer( statistics, 2 ), std::nullopt );
    handles.is( 9, entry( { { 3, 3, 4 }, {}, {} } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), std::nullopt );
    handles.del( 9 );
    EXPECT_EQ( handles.referrer( statistics, 4 ), std::nullopt ) << "what stands behind the repeated one";
}

TEST( Referrer, IsAsBeforeWhenAMissingHandleIsRemoved ) {
    ResourceHandles handles;
    handles.is( 7, entry( { { 1 }, {}, {} } ) );
    EXPECT_FALSE( handles.del( 1 ) );
    EXPECT_FALSE( handles.del( 8 ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 7 );
    EXPECT_EQ( handles.size(), 1 );
}

TEST( Referrer, IsNoneWhenAllAreRemoved ) {
    ResourceHandles handles;
    handles.is( 7, entry( { { 1 }, { 2 }, { 3 } } ) );
    handles.delAll();
    EXPECT_TRUE( handles.empty() );
    for( char const* kind : { statistics, meters, statefuls } ) {
        for( U32 const handle : { 1U, 2U, 3U } )
            EXPECT_EQ( handles.referrer( kind, handle ), std::nullopt );
    }
    handles.is( 9, entry( { { 1 }, {}, {} } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), 9 );
}

TEST( Referrer, CopyGoesItsOwnWay ) {
    ResourceHandles handles;
    handles.is( 7, entry( { { 1 }, {}, {} } ) );
    ResourceHandles copy = handles;
    handles.del( 7 );
    copy.is( 5, entry( { { 2 }, {}, {} } ) );
    EXPECT_EQ( handles.referrer( statistics, 1 ), std::nullopt );
    EXPECT_EQ( handles.referrer( statistics, 2 ), std::nullopt );
    EXPECT_EQ( copy.referrer( statistics, 1 ), 7 );
    EXPECT_EQ( copy.referrer( statistics, 2 ), 5 );
}

/// The entries as plain lists, and the look-up as a walk over all of them.
using Model = std::map<U32, References>;

std::optional<U32> walk( Model const& model, std::vector<U32> References::*kind, U32 reference ) {
    for( auto const& [ handle, references ] : model ) {
        for( U32 const listed : references.*kind ) {
            if( listed == reference )
                return handle;
        }
    }
    return std::nullopt;
}

constexpr U32 someHandles = 12; // few, so that they meet

void expectSame( ResourceHandles const& handles, Model const& model ) {
    ASSERT_EQ( handles.size(), model.size() );
    for( U32 handle = 0; handle < someHandles; ++handle ) {
        ASSERT_EQ( handles.has( handle ), model.count( handle ) == 1 );
        ASSERT_EQ( handles.referrer( statistics, handle ), walk( model, &References::statistics, handle ) );
        ASSERT_EQ( handles.referrer( meters, handle ), walk( model, &References::meters, handle ) );
        ASSERT_EQ( handles.referrer( statefuls, handle ), walk( model, &References::statefuls, handle ) );
    }
}

TEST( Referrer, IsThatOfANaiveWalkAfterAnyChanges ) {
    std::mt19937 random( 3 );
    auto const below = [ & ]( U32 bound ) { return static_cast<U32>( random() % bound ); };
    auto const list = [ & ] {
        std::vector<U32> result( below( 5 ) );
        for( U32& handle : result )
            handle = below( someHandles );
        return result;
    };
    ResourceHandles handles;
    Model model;
    int found = 0;
    for( int round = 0; round < 20000; ++round ) {
        U32 const handle = below( someHandles );
        U32 const what = below( 100 );
        if( what < 55 ) {
            References const references{ list(), list(), list() };
            handles.is( handle, entry( references ) );
            model[ handle ] = references;
        } else if( what < 99 ) {
            handles.del( handle );
            model.erase( handle );
        } else {
            handles.delAll();
            model.clear();
        }
        ASSERT_NO_FATAL_FAILURE( expectSame( handles, model ) ) << "round " << round;
        found += handles.referrer( statistics, handle ).has_value();
    }
    EXPECT_GT( found, 1000 );
    EXPECT_LT( found, 19000 );
}

/// Enters and removes a hundred entries whose references no other round has.
void enterAndRemove( ResourceHandles& handles, U32 round ) {
    for( U32 handle = 0; handle < 100; ++handle ) {
        U32 const reference = round * 1000 + handle;
        handles.is( handle, entry( { { reference, reference }, { reference }, { round, round } } ) );
    }
    for( U32 handle = 0; handle < 100; ++handle )
        handles.del( handle );
}

TEST( Referrer, KeepsNothingOfEntriesThatAreGone ) {
    auto& tracker = Vessa::allocationTracker<std::pair<U32 const, BfZelResource>>();
    auto const before = tracker.live();
    {
        ResourceHandles handles;
        enterAndRemove( handles, 1 );
        auto const once = tracker.live();
        enterAndRemove( handles, 2 );
        enterAndRemove( handles, 3 );
        EXPECT_EQ( tracker.live(), once );
    }
    EXPECT_EQ( tracker.live(), before );
}

} // namespace
} // namespace BfResourceInfo
