#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using namespace Support;
using testing::StartsWith;
using Numbers = std::vector<std::int64_t>;

class DiffOfStages : public InFolder {
  protected:
    /// Of a table in those stages, as it was and as it is.
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
            stages.push_back( StageTable( "ternary_match" ).number( number ) );
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
        { { 0, 1 }, { 0, 1, 3 }, "stages 2 -> 3; stageNumbers [0 1] -> [0 1 3]" },
        { { 2, 4 }, { 5, 7 }, "stage 2 -> 5" },
        { { 5, 7 }, { 2, 4 }, "stage 5 -> 2" },
        { { 2, 4 }, { 5, 6 }, "stageNumbers [2 4] -> [5 6]; stage 2 -> 5" },
    };
    for( auto const& row : rows ) {
        auto const outcome = diff( row.old, row.now );
        EXPECT_EQ( outcome.status, 1 );
        EXPECT_THAT( outcome.out, StartsWith( String( "resources\n  ~  t  " ) + row.says + "\n\n" ) );
        EXPECT_THAT( outcome.out, testing::EndsWith( "\nnames and sizes are compatible\n" ) );
    }
}

TEST_F( DiffOfStages, IsNoneWhereTheSameAreTaken ) {
    EXPECT_EQ( diff( { 0, 2 }, { 0, 2 } ).out, "no difference\n" );
    EXPECT_EQ( diff( { 0, 0, 1 }, { 0, 1, 1 } ).out, "no difference\n" );
    EXPECT_EQ( diff( { 0, 1 }, { 0, 2 }, { "--only", "tables" } ).out, "no difference in tables\n" );
}

TEST_F( DiffOfStages, AsJsonHasBoth ) {
    auto const json = parsed( diff( { 0, 1 }, { 0, 2 }, { "--json" } ).out );
    EXPECT_EQ( compact( json[ "kinds" ][ "bfResources" ][ "changed" ][ 0 ][ "fields" ] ),
               R"([{"field":"stageNumbers","from":[0,1],"to":[0,2]}])" );
    EXPECT_TRUE( json[ "verdict" ][ "compatible" ].GetBool() );
}

} // namespace
