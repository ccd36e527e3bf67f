#include "inspect/report/Chip.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::Chip;
using Bfri::ChipLink;
using Bfri::Mark;
using Support::StageTable;
using testing::ElementsAre;
using testing::IsEmpty;

StageTable sized( std::int64_t stage, U32 entries ) { return StageTable().number( stage ).size( entries ); }

class ChipOf : public InFolder {
  protected:
    Chip chip( Support::ContextBuilder const& context ) {
        loaded_.push_back( modelOf( context ) );
        return Bfri::chipOf( *loaded_.back() );
    }
    static Support::Table acl( U32 size, std::vector<StageTable> const& stages ) {
        return Support::matchTable( "pipe.acl" ).stages( stages ).size( size );
    }

  private:
    std::vector<ConfigurationPtr> loaded_;
};

TEST_F( ChipOf, AFileHasItsPartsLinkedBothWays ) {
    auto const all = chip( completeContext() );
    ASSERT_EQ( all.programs.size(), 1U );
    EXPECT_THAT( all.programs[ 0 ].pipes, ElementsAre( 0U, 1U ) );
    ASSERT_EQ( all.tables.size(), 1U );
    std::vector<String> attached;
    for( std::size_t const number : all.tables[ 0 ].attached ) {
        attached.push_back( all.resources[ number ].name() );
        EXPECT_THAT( all.resources[ number ].owners, ElementsAre( ChipLink{ ChipLink::To::table, 0 } ) );
    }
    EXPECT_THAT( attached, testing::UnorderedElementsAre( "counter", "hits", "police", "seen" ) );
    EXPECT_EQ( all.tables[ 0 ].actions.size(), 2U );
    EXPECT_EQ( all.fields.size(), 1U );
    EXPECT_EQ( all.nameOf( all.byName.find( "wred" )->second ), "wred" );
}

TEST_F( ChipOf, EntriesAreThoseStatedAndDrawnEvenlyWhereNoneAre ) {
    auto const all = chip( Support::ContextBuilder()
                               .table( acl( 100, { sized( 2, 60 ), sized( 4, 40 ) } ) )
                               .table( Support::matchTable( "even" )
                                           .stages( { StageTable().number( 1 ).without( "/size" ),
                                                      StageTable().number( 3 ).without( "/size" ) } )
                                           .size( 7 ) ) );
    ASSERT_EQ( all.resources.size(), 2U );
    EXPECT_TRUE( all.resources[ 0 ].isStated );
    EXPECT_EQ( all.resources[ 0 ].stages[ 0 ].entries, 60U );
    EXPECT_EQ( all.resources[ 0 ].stages[ 0 ].drawn, 60U );
    EXPECT_FALSE( all.resources[ 1 ].isStated );
    EXPECT_EQ( all.resources[ 1 ].stages[ 0 ].entries, 0U );
    EXPECT_EQ( all.resources[ 1 ].stages[ 0 ].drawn, 4U );
    EXPECT_EQ( all.resources[ 1 ].stages[ 1 ].drawn, 3U );
    EXPECT_THAT( all.stages, ElementsAre( 0U, 1U, 2U, 3U, 4U ) );
}

TEST_F( ChipOf, StagesThatNoChipHasAreNotFilledUp ) {
    EXPECT_THAT( Bfri::allStagesUpTo( { 900, 2, 2 } ), ElementsAre( 2U, 900U ) );
    EXPECT_THAT( Bfri::allStagesUpTo( { 2, 1 } ), ElementsAre( 0U, 1U, 2U ) );
    EXPECT_THAT( Bfri::allStagesUpTo( {} ), IsEmpty() );
}

class ComparedChips : public ChipOf {
  protected:
    void compare( Support::ContextBuilder const& before, Support::ContextBuilder const& after ) {
        old = chip( before );
        now = chip( after );
        Bfri::compare( now, old, renames );
    }
    Bfri::Marks marks( std::size_t resource = 0 ) const { return now.resources.at( resource ).marks; }

    Chip old, now;
    Bfri::Renames renames;
};

TEST_F( ComparedChips, AlikeHaveNoMarks ) {
    compare( completeContext(), completeContext() );
    for( auto const& resource : now.resources )
        EXPECT_TRUE( resource.marks.none() ) << resource.name();
    EXPECT_THAT( now.removed, IsEmpty() );
    EXPECT_THAT( now.programs[ 0 ].ghosts, IsEmpty() );
}

TEST_F( ComparedChips, HaveAMarkForEachDifference ) {
    compare(
        Support::ContextBuilder().table( acl( 64, { sized( 3, 64 ) } ) ),
        Support::ContextBuilder().table( acl( 128, { sized( 4, 64 ), sized( 5, 64 ) } ).action( "new" ) ) );
    EXPECT_TRUE( has( marks(), Mark::grew ) );
    EXPECT_TRUE( has( marks(), Mark::moved ) );
    EXPECT_TRUE( has( marks(), Mark::changed ) ); // an action more
    EXPECT_FALSE( has( marks(), Mark::shrank ) );
    EXPECT_EQ( now.tables[ 0 ].marks, marks() );
    ASSERT_EQ( now.programs[ 0 ].ghosts.size(), 1U );
    EXPECT_EQ( now.programs[ 0 ].ghosts[ 0 ].place.stage, 3U );
    EXPECT_EQ( now.programs[ 0 ].ghosts[ 0 ].now, &now.resources[ 0 ] );
}

TEST_F( ComparedChips, KnowWhatIsAddedRemovedAndRenamed ) {
    renames = { { "pipe.list", "pipe.acl" } };
    compare( Support::ContextBuilder()
                 .table( acl( 64, { sized( 9, 64 ) } ) )
                 .table( Support::matchTable( "gone" ) ),
             Support::ContextBuilder()
                 .table( Support::matchTable( "pipe.list" ).stages( { sized( 9, 64 ) } ).size( 64 ) )
                 .table( Support::matchTable( "new" ) ) );
    ASSERT_TRUE( now.resources[ 0 ].old );
    EXPECT_EQ( now.resources[ 0 ].old->name(), "pipe.acl" );
    EXPECT_TRUE( has( marks( 1 ), Mark::added ) );
    ASSERT_EQ( now.removed.size(), 1U );
    EXPECT_EQ( now.removed[ 0 ]->name(), "gone" );
    EXPECT_THAT( now.removedTables, IsEmpty() ) << "its place says so";
    EXPECT_EQ( now.stages.size(), 10U );
}

TEST_F( ComparedChips, KnowTablesWithoutAPlaceToo ) {
    renames = { { "named", "unnamed" } };
    compare( Support::ContextBuilder()
                 .table( Support::matchTable( "unnamed" ).stages( {} ) )
                 .table( Support::matchTable( "gone" ).stages( {} ) ),
             Support::ContextBuilder().table( Support::matchTable( "named" ).stages( {} ) ) );
    EXPECT_THAT( now.removed, IsEmpty() );
    ASSERT_EQ( now.removedTables.size(), 1U );
    EXPECT_EQ( now.removedTables[ 0 ]->record->name, "gone" );
    EXPECT_TRUE( has( now.tables.at( 0 ).marks, Mark::changed ) );
}

} // namespace
