#include "resourceinfo/parser/context/Actions.h"
#include "resourceinfo/parser/context/ContextFile.h"
#include "tests/resourceinfo/Fixtures.h"
#include "tests/resourceinfo/parser/context/Faults.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>
#include <tuple>

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;
using Support::Table;
using testing::ElementsAre;

/// Table, name and handle of an action.
using Action = std::tuple<String, String, U32>;

class Actions : public testing::Test {
  protected:
    void parse( Table const& table, U32 handlePipeBits = 0 ) {
        ParsedJson const json( table.text() );
        EXPECT_EQ( parseBfAction( parser_.get(), json.json(), { BfPipeMask( 1 ), handlePipeBits } ), 0 );
    }
    std::vector<Action> actions() const {
        std::vector<Action> result;
        for( BfActionInfo const& action : parser_->bfActions() )
            result.emplace_back( action.tableName, action.name, action.handle );
        return result;
    }

    Zel::Ptr<BfResourceParser> parser_ = emptyParser();
};

/// A match table with two actions of known handles.
Table aclTable() {
    return matchTable( "acl" )
        .action( "permit" )
        .with( "/actions/0/handle", "7" )
        .with( "/actions/1/handle", "4294967295" );
}

TEST_F( Actions, EveryFieldOfEveryActionIsReadInOrder ) {
    parse( aclTable() );
    EXPECT_THAT( actions(),
                 ElementsAre( Action( "acl", "NoAction", 7 ), Action( "acl", "permit", 4294967295 ) ) );
}

TEST_F( Actions, OfTheSameNameAreRecordedForEachTable ) {
    parse( aclTable() );
    parse( aclTable().with( "/name", "\"nat\"" ) );
    EXPECT_THAT( actions(),
                 ElementsAre( Action( "acl", "NoAction", 7 ), Action( "acl", "permit", 4294967295 ),
                              Action( "nat", "NoAction", 7 ), Action( "nat", "permit", 4294967295 ) ) );
}

TEST_F( Actions, OfTheSameNameInOneTableAreAllRecorded ) {
    parse( matchTable( "acl" ).action( "NoAction" ).with( "/actions/0/handle", "9" ) );
    ASSERT_EQ( parser_->bfActions().size(), 2 );
    EXPECT_EQ( parser_->bfActions().at( 0 ).handle, 9 );
    EXPECT_EQ( parser_->bfActions().at( 1 ).name, "NoAction" );
}

TEST_F( Actions, HandlesCarryThePipeBits ) {
    parse( matchTable( "acl" ).with( "/actions/0/handle", "7" ), 0x20000000 );
    EXPECT_THAT( actions(), ElementsAre( Action( "acl", "NoAction", 0x20000007 ) ) );
}

TEST_F( Actions, MayBeNone ) {
    parse( matchTable( "acl" ).with( "/actions", "[]" ) );
    EXPECT_TRUE( parser_->bfActions().empty() );
}

TEST_F( Actions, TextsEndAtTheirFirstNul ) {
    parse( matchTable( "x" )
               .with( "/name", R"("acl\u0000x")" )
               .with( "/actions/0/name", R"("permit\u0000x")" )
               .with( "/actions/0/handle", "7" ) );
    EXPECT_THAT( actions(), ElementsAre( Action( "acl", "permit", 7 ) ) );
}

TEST_F( Actions, AreTracedAtLevelSeven ) {
    Support::TraceCollector const trace( "BfResourceParser", { 0, 5, 6, 7 } );
    parse( aclTable() );
    ASSERT_THAT( trace.texts(), ElementsAre( "Parsed action NoAction", "Parsed action permit" ) );
    EXPECT_EQ( trace.lines()[ 0 ].level, 7 );
}

TEST_F( Actions, BeforeAFaultyOneAreStored ) {
    EXPECT_EQ( Support::conditionOf( [ & ] { parse( aclTable().with( "/actions/1/name", "null" ) ); } ),
               noString );
    EXPECT_THAT( actions(), ElementsAre( Action( "acl", "NoAction", 7 ) ) );
}

TEST_F( Actions, OfSkippedTablesAreNotReadWhileTheirResourcesAre ) {
    auto const context =
        ContextBuilder()
            .table( matchTable( "fixed" ).controllable( false ).with( "/actions/0/name", "null" ) )
            .table(
                matchTable( "static" ).with( "/static_entries", "[ {} ]" ).without( "/actions/0/handle" ) )
            .table( Support::actionDataTable( "adt" ).action( "x" ) )
            .table( aclTable() );
    Support::TemporaryFolder const folder;
    parseContextJson( parser_.get(), folder.write( "context.json", context.text() ), {} );
    EXPECT_THAT( actions(),
                 ElementsAre( Action( "acl", "NoAction", 7 ), Action( "acl", "permit", 4294967295 ) ) );
    std::vector<String> resources;
    for( BfResource const& resource : parser_->bfResources() )
        resources.push_back( resource.name );
    EXPECT_THAT( resources, ElementsAre( "fixed", "static", "adt", "acl" ) );
}

TEST( ActionFaults, InTheirOrder ) {
    expectFaults( aclTable().tree(),
                  {
                      { "", "null", noObject },
                      { "/name", removed, noMember },
                      { "/name", "7", noString },
                      { "/actions", removed, noMember },
                      { "/actions", "null", "actions.IsArray()" },
                      { "/actions", "{}", "actions.IsArray()" },
                      { "/actions", "\"permit\"", "actions.IsArray()" },
                      { "/actions/0", "null", "action.IsObject()" },
                      { "/actions/0", "[]", "action.IsObject()" },
                      { "/actions/0", "\"permit\"", "action.IsObject()" },
                      { "/actions/0/handle", removed, noMember },
                      { "/actions/0/handle", "null", noUnsigned },
                      { "/actions/0/handle", "-1", noUnsigned },
                      { "/actions/0/handle", "4294967296", noUnsigned },
                      { "/actions/0/handle", "\"1\"", noUnsigned },
                      { "/actions/0/name", removed, noMember },
                      { "/actions/0/name", "null", noString },
                      { "/actions/0/name", "{}", noString },
                      { "/actions/1", "1", "action.IsObject()" },
                      { "/actions/1/handle", "1.0", noUnsigned },
                      { "/actions/1/name", "true", noString },
                  },
                  []( Json json ) {
                      auto const parser = emptyParser();
                      parseBfAction( parser.get(), json, {} );
                  } );
}

} // namespace
} // namespace BfResourceInfo
