#include "inspect/page/Lookup.h"

#include "inspect/model/RecordKinds.h"
#include "tests/inspect/Inputs.h"

#include <gmock/gmock.h>

namespace {

using Bfri::HandleAnswer;
using Bfri::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class HandleLookup : public InFolder {
  protected:
    std::vector<HandleAnswer> lookUp( std::vector<String> const& words ) {
        return Bfri::lookUp( *model, words );
    }

    ConfigurationPtr const model = emptyModel();
};

TEST_F( HandleLookup, HasAnAnswerForEachHandleInTheirOrder ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "acl", 1 ) );
    model->parser().bfTablesPush( named<BfTableInfo>( "lpm", 2 ) );
    auto const answers = lookUp( { "2", "7", "1" } );
    ASSERT_EQ( answers.size(), 3U );
    EXPECT_EQ( answers[ 0 ].uses.at( 0 ).name, "lpm" );
    EXPECT_EQ( answers[ 0 ].uses.at( 0 ).kind, Kind::tables );
    EXPECT_THAT( answers[ 1 ].uses, IsEmpty() );
    EXPECT_EQ( answers[ 2 ].uses.at( 0 ).name, "acl" );
    EXPECT_EQ( rowsOf( answers ).size(), 2U );
    EXPECT_EQ( objectsOf( answers ).size(), 3U );
}

TEST_F( HandleLookup, OfAnUnknownHandleHasWhatMayBeMeant ) {
    model->parser().bfTablesPush( named<BfTableInfo>( "acl", 0x10 ) );
    auto const answers = lookUp( { "0x30000010", "10", "0x10" } );
    EXPECT_THAT( answers[ 0 ].others, ElementsAre( Pair( 0x10U, "acl" ) ) ); // the pipe is lost in the model
    EXPECT_THAT( answers[ 1 ].others, IsEmpty() );
    EXPECT_EQ( answers[ 1 ].without0x, 0x10U );
    EXPECT_THAT( answers[ 2 ].others, IsEmpty() ); // known
    EXPECT_EQ( answers[ 2 ].without0x, std::nullopt );
}

TEST_F( HandleLookup, HasWhatTheModelOmits ) {
    auto const omitting = modelOf( Support::ContextBuilder().table(
        Support::matchTable( "acl" ).with( "/is_resource_controllable", "false" ) ) );
    std::vector<String> const words{ std::to_string( Support::handleOf( "acl" ) ) };
    auto const answers = Bfri::lookUp( *omitting, words );
    ASSERT_EQ( answers.at( 0 ).omitted.size(), 1U );
    EXPECT_EQ( answers[ 0 ].omitted[ 0 ].table->name, "acl" );
}

} // namespace
