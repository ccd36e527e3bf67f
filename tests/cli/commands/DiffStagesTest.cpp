#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using namespace Support;
using testing::StartsWith;
using Numbers = std::vector<std::int64_t>;

class DiffOfStages : public InFolder {
  protected:
    /// Of a table in those stages, as it was and as it is; the number 1000 stands for 1.5, which is none.
    Outcome diff( Numbers const& old, Numbers const& now, std::vector<char const*> more = {} ) {
        write( "old", old );
        write( "new", now );
        more.insert( more.begin(), { "diff", "old.conf", "new.conf" } );
        return bfri( more );
    }

  private:
    static void write( String const& name, Numbers const& numbers ) {
        std::vector<StageTable> stages;
        for( auto const number : numbers )
            stages.push_back( number == 1000 ? StageTable( "ternary_match" ).with( "/stage_number", "1.5" )
                                             : StageTable( "ternary_match" ).number( number ) );
        String const file = name + ".json";
        writeFile( file, ContextBuilder().table( Support::matchTable( "t" ).stages( stages ) ).text() );
        writeFile( name + ".conf",
                   SwitchConfBuilder().device( DeviceBuilder().pipeline( file, { 0 } ) ).text() );
    }
};

TEST_F( DiffOfStages, TellsThoseThatAreOthersUnlessAllMoveAlike ) {
    struct {
        Numbers old, now;
        char const* says;
    } const rows[] = {
        { { 0, 1 }, { 0, 2 }, "stageNumbers [0 1] -> [0 2]" },
        { { 0, 1 },
          { 0, 1, 3 },
          "stages 2 -> 3; stageNumbers [0 1] -> [0 1 3]; "
          "stageSizes [0: 1024, 1: 1024] -> [0: 1024, 1: 1024, 3: 1024]" },
        { { 2, 4 }, { 5, 7 }, "stage 2 -> 5" },
        { { 5, 7 }, { 2, 4 }, "stage 5 -> 2" },
        { { 2, 4 }, { 5, 6 }, "stageStart 2 -> 5; stageNumbers [2 4] -> [5 6]" },
        { { 3, 4, 5 }, { 6, 4, 5 }, "stageStart 3 -> 6; stageNumbers [3 4 5] -> [4 5 6]" },
        { { 3, 4, 5 }, { 5, 4, 3 }, "stageStart 3 -> 5" },
        { { 2, 4 },
          { 5 },
          "stages 2 -> 1; stageStart 2 -> 5; stageNumbers [2 4] -> [5]; "
          "stageSizes [2: 1024, 4: 1024] -> [5: 1024]" },
        { { 2, 2, 4 }, { 3, 5, 5 }, "stageSizes [2: 2048, 4: 1024] -> [3: 1024, 5: 2048]; stage 2 -> 3" },
        { { 0, 0, 1 }, { 0, 1, 1 }, "stageSizes [0: 2048, 1: 1024] -> [0: 1024, 1: 2048]" },
    };
    for( auto const& row : rows ) {
        auto const outcome = diff( row.old, row.now );
        EXPECT_EQ( outcome.status, 1 );
        EXPECT_THAT( outcome.out, StartsWith( String( "resources\n  ~  t  " ) + row.says + "\n\n" ) );
        EXPECT_THAT( outcome.out,
                     testing::HasSubstr( "\nan agent that looks everything up by name notices nothing\n" ) );
    }
}

TEST_F( DiffOfStages, IsNoneWhereTheSameAreTaken ) {
    EXPECT_EQ( diff( { 0, 2 }, { 0, 2 } ).out, "no difference\n" );
    EXPECT_EQ( diff( { 0, 1 }, { 0, 2 }, { "--only", "tables" } ).out, "no difference in tables\n" );
}

TEST_F( DiffOfStages, TellsThoseThatAreNotKnown ) {
    struct {
        Numbers old, now;
        char const* says;
    } const rows[] = {
        { { 3, 4, 5 }, { 3, 1000, 5 }, "stageNumbers [3 4 5] -> -" },
        { { 3, 1000, 5 }, { 3, 4, 5 }, "stageNumbers - -> [3 4 5]" },
        { { 3, 1000, 5 }, { 4, 5, 6 }, "stageStart 3 -> 4; stageNumbers - -> [4 5 6]" },
        { { 3, 1000 }, { 4, 1000 }, "stageStart 3 -> 4" },
    };
    for( auto const& row : rows ) {
        auto const outcome = diff( row.old, row.now );
        EXPECT_EQ( outcome.status, 1 );
        EXPECT_THAT( outcome.out, StartsWith( String( "resources\n  ~  t  " ) + row.says + "\n\n" ) );
    }
    EXPECT_EQ( diff( { 3, 1000 }, { 3, 1000 } ).status, 0 );
    auto const json = parsed( diff( { 3, 4 }, { 3, 1000 }, { "--json" } ).out );
    EXPECT_EQ(
        compact( json[ "kinds" ][ "bfResources" ][ "changed" ] ),
        R"([{"name":"t","pipes":[0],"fields":[{"field":"stageNumbers","from":[3,4],"to":null}],"firstOfName":true}])" );
    EXPECT_TRUE( json[ "verdict" ][ "differs" ].GetBool() );
}

TEST_F( DiffOfStages, CountsAsMovedWhatMovesAsAWhole ) {
    struct {
        Numbers old, now;
        char const* totals;
    } const rows[] = {
        { { 2, 4 }, { 5, 7 }, "resources      0        0        0        0      1     0\n" },
        { { 2, 4 }, { 4, 2 }, "resources      0        0        0        1      0     0\n" },
        { { 2, 4 }, { 5, 6 }, "resources      0        0        0        1      0     0\n" },
    };
    for( auto const& row : rows )
        EXPECT_THAT( diff( row.old, row.now, { "--only", "resources" } ).out,
                     testing::HasSubstr( row.totals ) );
    EXPECT_THAT( diff( { 2, 4 }, { 5, 7 }, { "--only", "handles" } ).out,
                 StartsWith( "handles\n  ~  t  stageStart 2 -> 5\n\n" ) );
}

TEST_F( DiffOfStages, AsJsonHasBoth ) {
    auto const json = parsed( diff( { 0, 1 }, { 0, 2 }, { "--json" } ).out );
    EXPECT_EQ( compact( json[ "kinds" ][ "bfResources" ][ "changed" ][ 0 ][ "fields" ] ),
               R"([{"field":"stageNumbers","from":[0,1],"to":[0,2]}])" );
    EXPECT_TRUE( json[ "verdict" ][ "byName" ].GetBool() );
}

} // namespace
