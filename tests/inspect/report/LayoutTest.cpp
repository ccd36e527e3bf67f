#include "inspect/report/FloorPlan.h"
#include "inspect/report/StageGrid.h"
#include "inspect/report/Treemap.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>
#include <numeric>

namespace {

using Bfri::Box;
using Support::StageTable;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;

int sum( std::vector<int> const& heights ) { return std::accumulate( heights.begin(), heights.end(), 0 ); }

TEST( Heights, AreSharesOfAll ) {
    EXPECT_THAT( Bfri::heightsOf( { 1, 3 }, { 15, 15 }, 100 ), ElementsAre( 25, 75 ) );
    EXPECT_THAT( Bfri::heightsOf( { 1, 1, 1 }, { 15, 15, 15 }, 100 ), ElementsAre( 33, 34, 33 ) );
    EXPECT_THAT( Bfri::heightsOf( {}, {}, 100 ), IsEmpty() );
}

TEST( Heights, HaveAMinimumThatTheOthersPayFor ) {
    EXPECT_THAT( Bfri::heightsOf( { 1000, 1, 0 }, { 15, 15, 9 }, 100 ), ElementsAre( 76, 15, 9 ) );
    EXPECT_THAT( Bfri::heightsOf( { 0, 0 }, { 15, 15 }, 30 ), ElementsAre( 15, 15 ) );
    // The minimum of one makes another fall below its own.
    auto const heights = Bfri::heightsOf( { 800, 170, 15, 15 }, { 15, 15, 15, 15 }, 100 );
    EXPECT_THAT( heights, Each( Ge( 15 ) ) );
    EXPECT_EQ( sum( heights ), 100 );
}

double area( Box const& box ) { return box.width * box.height; }

TEST( Squarified, BoxesHaveTheAreasOfTheirValues ) {
    std::vector<double> const values{ 60, 20, 10, 5, 3, 1, 1 };
    auto const boxes = Bfri::squarified( values, { 10, 20, 50, 20 } );
    ASSERT_EQ( boxes.size(), values.size() );
    for( std::size_t i = 0; i < boxes.size(); ++i ) {
        EXPECT_NEAR( area( boxes[ i ] ), values[ i ] * 10, 1e-6 );
        EXPECT_GE( boxes[ i ].x, 10 - 1e-9 );
        EXPECT_GE( boxes[ i ].y, 20 - 1e-9 );
        EXPECT_LE( boxes[ i ].x + boxes[ i ].width, 60 + 1e-6 );
        EXPECT_LE( boxes[ i ].y + boxes[ i ].height, 40 + 1e-6 );
        for( std::size_t j = 0; j < i; ++j ) {
            bool const isApart = boxes[ i ].x >= boxes[ j ].x + boxes[ j ].width - 1e-6 ||
                                 boxes[ j ].x >= boxes[ i ].x + boxes[ i ].width - 1e-6 ||
                                 boxes[ i ].y >= boxes[ j ].y + boxes[ j ].height - 1e-6 ||
                                 boxes[ j ].y >= boxes[ i ].y + boxes[ i ].height - 1e-6;
            EXPECT_TRUE( isApart ) << i << " and " << j;
        }
    }
}

TEST( Squarified, FourEqualValuesAreSquares ) {
    for( Box const& box : Bfri::squarified( { 1, 1, 1, 1 }, { 0, 0, 20, 20 } ) )
        EXPECT_NEAR( box.width, box.height, 1e-9 );
    EXPECT_THAT( Bfri::squarified( {}, { 0, 0, 1, 1 } ), IsEmpty() );
}

class Layouts : public InFolder {
  protected:
    static Support::Table table( String const& name,
                                 std::vector<std::pair<std::int64_t, U32>> const& stages ) {
        std::vector<StageTable> all;
        U32 size = 0;
        for( auto const& [ stage, entries ] : stages ) {
            all.push_back( StageTable().number( stage ).size( entries ) );
            size += entries;
        }
        return Support::matchTable( name ).stages( all ).size( size );
    }
    Bfri::Chip chip( Support::ContextBuilder const& context ) {
        loaded_ = modelOf( context );
        return Bfri::chipOf( *loaded_ );
    }

  private:
    ConfigurationPtr loaded_;
};

TEST_F( Layouts, AFloorPlanJoinsTheStagesOfATable ) {
    auto const all = chip( Support::ContextBuilder()
                               .table( table( "pipe.a", { { 0, 300 }, { 1, 100 }, { 3, 100 } } ) )
                               .table( table( "pipe.b", { { 1, 300 } } ) ) );
    auto const plan = Bfri::floorPlanOf( all, all.programs[ 0 ], true );
    ASSERT_EQ( plan.columns.size(), 4U );
    EXPECT_EQ( plan.height, 150 );
    EXPECT_EQ( plan.columns[ 1 ].entries, 400U );
    ASSERT_EQ( plan.columns[ 1 ].blocks.size(), 2U );
    EXPECT_EQ( plan.columns[ 1 ].blocks[ 0 ].resource->name(), "pipe.a" ); // it starts earlier
    EXPECT_EQ( plan.columns[ 1 ].blocks[ 1 ].height, 112 );
    ASSERT_EQ( plan.bands.size(), 2U );
    EXPECT_EQ( plan.bands[ 1 ].from, 1U );
    EXPECT_EQ( plan.bands[ 1 ].to, 3U );
    EXPECT_EQ( Bfri::floorPlanOf( all, all.programs[ 0 ], false ).height, 0 );
}

TEST_F( Layouts, AFullColumnAddsTheSmallOnesUp ) {
    Support::ContextBuilder context;
    context.table( table( "pipe.large", { { 0, 100000 } } ) );
    for( int i = 0; i < 200; ++i )
        context.table( table( "pipe.small" + std::to_string( i ), { { 0, 100 } } ) );
    auto const all = chip( context );
    auto const plan = Bfri::floorPlanOf( all, all.programs[ 0 ], true );
    ASSERT_EQ( plan.columns.at( 0 ).blocks.size(), 2U );
    EXPECT_EQ( plan.columns[ 0 ].blocks[ 0 ].resource->name(), "pipe.large" );
    EXPECT_EQ( plan.columns[ 0 ].blocks[ 1 ].several, 200U );
    EXPECT_EQ( plan.columns[ 0 ].blocks[ 1 ].entries, 20000U );
    EXPECT_EQ( plan.columns[ 0 ].blocks[ 0 ].height + plan.columns[ 0 ].blocks[ 1 ].height, plan.height );
}

TEST_F( Layouts, AStageGridCountsEachResourceInEachOfItsStages ) {
    auto const all = chip( Support::ContextBuilder()
                               .table( table( "pipe.a", { { 0, 300 }, { 1, 100 } } ) )
                               .table( table( "pipe.b", { { 1, 50 } } ) ) );
    auto const grid = Bfri::stageGridOf( all, all.programs[ 0 ], true );
    ASSERT_EQ( grid.rows.size(), 1U );
    EXPECT_EQ( grid.rows[ 0 ].resources, 2U );
    EXPECT_EQ( grid.rows[ 0 ].cells[ 1 ].resources, 2U );
    EXPECT_EQ( grid.rows[ 0 ].cells[ 1 ].starting, 1U );
    EXPECT_EQ( grid.rows[ 0 ].cells[ 1 ].entries, 150U );
    EXPECT_EQ( grid.rows[ 0 ].sum().entries, 450U );
    EXPECT_EQ( grid.mostEntries(), 300U );
    EXPECT_TRUE( Bfri::stageGridOf( all, all.programs[ 0 ], false ).isEmpty() );
}

TEST_F( Layouts, ACellTakesTheTightestCapacityOfItsKind ) {
    auto const all = chip( Support::ContextBuilder().table( table( "pipe.a", { { 2, 90 } } ) ) );
    writeFile( "rules.toml",
               "[[capacity]]\ntype = '*_match'\nentries = 1000\nlevel = 'warn'\nreason = 'x'\n"
               "[[capacity]]\ntype = 'ternary_match'\nentries = 80\nlevel = 'warn'\nreason = 'x'\n"
               "[[capacity]]\ntype = 'meter'\nentries = 1\nlevel = 'warn'\nreason = 'x'\n" );
    auto const rules = std::get<Bfri::Rules>( Bfri::readRules( "rules.toml" ) );
    auto const uses = Bfri::capacityUsesOf( all, rules );
    auto const grid = Bfri::stageGridOf( all, all.programs[ 0 ], true );
    ASSERT_EQ( uses.size(), 1U );
    auto const share = Bfri::capacityShareOf( uses[ 0 ], &grid.rows.at( 0 ), true, all, 2 );
    ASSERT_TRUE( share.use );
    EXPECT_EQ( share.used, 90U );
    EXPECT_EQ( share.available(), 80U );
    EXPECT_TRUE( share.use->isOver() );
}

TEST_F( Layouts, EachProgramUsesItsOwnCapacity ) {
    // No runtime_config: handles do not tell the context files apart.
    String const text = Support::ContextBuilder().table( table( "pipe.a", { { 2, 90 } } ) ).text();
    writeFile( "a.json", text );
    writeFile( "b.json", text );
    writeFile( "switch.conf",
               Support::SwitchConfBuilder()
                   .device( Support::DeviceBuilder().pipeline( "a.json", { 0 } ).pipeline( "b.json", { 1 } ) )
                   .text() );
    writeFile( "rules.toml",
               "[[capacity]]\ntype = 'ternary_match'\nentries = 100\nlevel = 'warn'\nreason = 'x'\n" );
    auto const both = loaded();
    auto const rules = std::get<Bfri::Rules>( Bfri::readRules( "rules.toml" ) );
    auto const uses = Bfri::capacityUsesOf( Bfri::chipOf( *both ), rules );
    ASSERT_EQ( uses.size(), 2U );
    for( auto const& ofProgram : uses ) {
        ASSERT_EQ( ofProgram.size(), 3U ); // stages
        EXPECT_EQ( ofProgram[ 2 ].used, 90 );
    }
}

TEST_F( Layouts, ATreemapNestsNamesAndKeepsAllEntries ) {
    Support::ContextBuilder context;
    for( int i = 0; i < 3; ++i )
        context.table( table( "In.acl.t" + std::to_string( i ), { { 0, 1000U } } ) );
    context.table( table( "Out.tiny", { { 0, 1U } } ) );
    auto const all = chip( context );
    auto const map = Bfri::treemapOf( all, false );
    EXPECT_EQ( map.entries, 3001U );
    std::uint64_t leaves = 0;
    std::vector<String> labels;
    for( auto const& box : map.boxes ) {
        bool const isLeaf =
            box.is == Bfri::TreemapBox::Is::resource || box.is == Bfri::TreemapBox::Is::several;
        leaves += isLeaf ? box.entries : 0;
        if( !isLeaf )
            labels.push_back( box.label );
        EXPECT_GT( area( box.place ), 0 );
    }
    EXPECT_EQ( leaves, 3001U );
    EXPECT_THAT( labels, testing::Contains( "In" ) );
    EXPECT_THAT( labels, testing::Contains( "acl" ) );
}

} // namespace
