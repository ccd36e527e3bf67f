#include "inspect/stages/StageMap.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Support::StageTable;
using testing::ElementsAre;

/// Stage tables of a resource or a load, those that state a size, and the sum of these sizes.
template<class Load>
std::vector<std::uint64_t> entriesOf( Load const& load ) {
    return { load.tables, load.stated, load.entries };
}

class StagesWithEntries : public InFolder {
  protected:
    static Support::Table statedIn( String const& name, std::vector<StageTable> const& stages ) {
        return Support::matchTable( name ).stages( stages );
    }
    static StageTable sized( std::int64_t stage, U32 entries ) {
        return StageTable().number( stage ).size( entries );
    }
    static StageTable unsized( std::int64_t stage ) {
        return StageTable().number( stage ).without( "/size" );
    }
};

TEST_F( StagesWithEntries, AreTheSizesOfTheStageTablesInThem ) {
    auto const configuration = modelOf( Support::ContextBuilder().table(
        statedIn( "acl", { sized( 2, 512 ), sized( 1, 1024 ), sized( 2, 4294967295 ) } ) ) );
    auto const placed = Bfri::placedStages( *configuration );
    ASSERT_EQ( placed.size(), 1U );
    ASSERT_EQ( placed[ 0 ]->size(), 2U );
    EXPECT_EQ( placed[ 0 ]->at( 0 ).stage, 1U );
    EXPECT_THAT( entriesOf( placed[ 0 ]->at( 0 ) ), ElementsAre( 1U, 1U, 1024U ) );
    EXPECT_EQ( placed[ 0 ]->at( 1 ).stage, 2U );
    EXPECT_THAT( entriesOf( placed[ 0 ]->at( 1 ) ), ElementsAre( 2U, 2U, 4294967295U + 512ULL ) );
}

TEST_F( StagesWithEntries, AreNotGuessedWhereTheFileStatesNone ) {
    auto const configuration =
        modelOf( Support::ContextBuilder()
                     .table( statedIn( "none", { unsized( 0 ), unsized( 3 ) } ).size( 2048 ) )
                     .table( statedIn( "some", { sized( 3, 0 ), unsized( 3 ), sized( 3, 7 ) } ) ) );
    auto const maps = Bfri::stageMapsOf( *configuration );
    ASSERT_EQ( maps.size(), 1U );
    auto const& loads = maps[ 0 ].loads;
    EXPECT_THAT( entriesOf( loads.at( 0 ) ), ElementsAre( 1U, 0U, 0U ) );
    EXPECT_THAT( entriesOf( loads.at( 1 ) ), ElementsAre( 0U, 0U, 0U ) );
    EXPECT_THAT( entriesOf( loads.at( 3 ) ), ElementsAre( 4U, 2U, 7U ) );
    EXPECT_EQ( loads.at( 3 ).starting, 1U );
    EXPECT_EQ( loads.at( 3 ).spanning, 2U );
}

TEST_F( StagesWithEntries, OfAllUnitsCount ) {
    auto const table = Support::matchTable( "atcam" )
                           .matchType( "algorithmic_tcam" )
                           .partitions( 1 )
                           .units( { { sized( 0, 10 ) }, { sized( 0, 20 ), sized( 1, 5 ) } } );
    auto const maps = Bfri::stageMapsOf( *modelOf( Support::ContextBuilder().table( table ) ) );
    EXPECT_THAT( entriesOf( maps.at( 0 ).loads.at( 0 ) ), ElementsAre( 2U, 2U, 30U ) );
    EXPECT_THAT( entriesOf( maps.at( 0 ).loads.at( 1 ) ), ElementsAre( 1U, 1U, 5U ) );
}

} // namespace
