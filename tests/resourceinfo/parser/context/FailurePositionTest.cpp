#include "tests/resourceinfo/Fixtures.h"
#include "tests/support/Assertions.h"
#include "tests/support/TraceCollector.h"

#include <gmock/gmock.h>

// What a failure says of the place in the input: file, place of the value, member asked for, table.

namespace BfResourceInfo {
namespace {

using Support::ContextBuilder;
using Support::matchTable;

class FailurePosition : public testing::Test {
  protected:
    Zel::AssertionFailure failureOfLoading( ContextBuilder const& context ) const {
        String const conf = folder_.conf( context );
        return Support::failureOf( [ & ] { bfResourceInfoIntfFactory( conf ); } );
    }

    SwitchFolder folder_;
    String const file_ = "context file " + folder_.path( "context.json" );
};

TEST_F( FailurePosition, NamesFileValueMemberAndTable ) {
    struct Row {
        char const* pointer;
        std::optional<char const*> json;
        String position;
    };
    for( auto const& [ pointer, json, position ] : {
             Row{ "/tables/1/size", {}, " at /tables/1, member \"size\", table 1 \"acl\"" },
             Row{ "/tables/1/size", "null", " at /tables/1/size, table 1 \"acl\"" },
             Row{ "/tables/1/match_attributes/stage_tables/0/stage_number",
                  {},
                  " at /tables/1/match_attributes/stage_tables/0, member \"stage_number\", table 1 \"acl\"" },
             Row{ "/tables/1/statistics_table_refs/0/handle", "-1",
                  " at /tables/1/statistics_table_refs/0/handle, table 1 \"acl\"" },
             Row{ "/tables/1/name", {}, " at /tables/1, member \"name\", table 1" },
             Row{ "/tables/1/name", "7", " at /tables/1/name, table 1" },
             Row{ "/tables/1", "null", " at /tables/1, table 1" },
             Row{ "/tables/1/match_attributes/match_type",
                  {},
                  " at /tables/1/match_attributes, member "
                  "\"match_type\", table 1 \"acl\"" },
             Row{ "/tables", {}, ", member \"tables\"" },
             Row{ "/tables", "null", " at /tables" },
             Row{ "/phv_allocation", {}, ", member \"phv_allocation\"" },
             Row{ "/learn_quanta", "null", " at /learn_quanta" },
             Row{ "/dynamic_hash_calculations", "7", " at /dynamic_hash_calculations" },
         } ) {
        auto context =
            ContextBuilder().table( matchTable( "first" ) ).table( matchTable( "acl" ).statistics( "s" ) );
        if( json )
            context.with( pointer, *json );
        else
            context.without( pointer );
        auto const failure = failureOfLoading( context );
        EXPECT_EQ( failure.position, file_ + position );
        EXPECT_EQ( failure.source, "BfResourceParser" );
        EXPECT_GT( failure.line, 0 );
        EXPECT_NE( failure.function, "" );
    }
}

TEST_F( FailurePosition, NamesTheTableOfAReferenceThatIsMissing ) {
    Support::TraceCollector const quiet( "BfResourceParser", {} );
    auto const failure =
        failureOfLoading( ContextBuilder().table( matchTable( "acl" ).actionData( "nowhere" ) ) );
    EXPECT_EQ( failure.condition, "parser->resourceHandlesHas( adtTblHdl )" );
    EXPECT_THAT( failure.position,
                 testing::AllOf( testing::StartsWith( file_ ), testing::EndsWith( ", table 0 \"acl\"" ) ) );
}

TEST_F( FailurePosition, IsPartOfTheWholeText ) {
    auto const failure = failureOfLoading( ContextBuilder().table( matchTable( "acl" ).without( "/size" ) ) );
    EXPECT_EQ( Zel::toText( failure ), "BfResourceParser:" + std::to_string( failure.line ) + ": " +
                                           failure.function + ": assertion failed: false\nin " + file_ +
                                           " at /tables/0, member \"size\", table 0 \"acl\"\n" );
}

} // namespace
} // namespace BfResourceInfo
