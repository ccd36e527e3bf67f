#include "cli/LeftOut.h"

#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using namespace Support;

constexpr char const* of =
    "context.json has the match table \"pipe.marks\", which the model leaves out: it has 1 static entry";
constexpr char const* ofWhatItHas = "context.json has it with the match table \"pipe.marks\", which the "
                                    "model leaves out: it has 1 static entry";
constexpr char const* ofAction =
    "context.json has the action \"mark\" of the match table \"pipe.marks\", which "
    "the model leaves out: it has 1 static entry";

/// The tables "pipe.acl", "pipe.marks", which is left out, and "hits", a counter of that.
String tables( std::vector<StageTable> const& stagesOfMarks, char const* howReferenced = "indirect" ) {
    return ContextBuilder()
        .table( Support::matchTable( "pipe.acl" ).handle( 1 ) )
        .table( Support::matchTable( "pipe.marks" )
                    .handle( 7 )
                    .stages( stagesOfMarks )
                    .action( "mark" )
                    .with( "/actions/1/handle", "77" )
                    .with( "/static_entries", "[{}]" )
                    .with( "/statistics_table_refs",
                           R"([{"handle":5,"name":"hits","how_referenced":"direct"}])" ) )
        .table( statisticsTable( "hits" ).handle( 5 ).referenced( howReferenced ) )
        .table( actionDataTable( "lone" ).handle( 6 ) )
        .text();
}

class LeftOut : public InFolder {
  protected:
    LeftOut() {
        writeFile( "context.json", tables( {} ) );
        writeFile( "switch.conf",
                   SwitchConfBuilder()
                       .device( DeviceBuilder().runtimeConfig( "r" ).pipeline( "context.json", { 1 } ) )
                       .text() );
    }
};

/// As a sentence; empty for nothing.
String said( std::optional<Bfri::LeftOut> const& leftOut ) { return leftOut ? sentenceOf( *leftOut ) : ""; }

TEST_F( LeftOut, IsKnownByNameAndByTheEndOfIt ) {
    auto const model = BfResourceInfo::bfResourceInfoIntfFactory( "switch.conf" );
    Bfri::LeftOutTables leftOut( *model->parser() );
    for( char const* const word : { "pipe.marks", "marks" } )
        EXPECT_EQ( said( leftOut.named( word ) ), of ) << word;
    for( char const* const word : { "mark", "mark of marks", "mark of pipe.marks" } )
        EXPECT_EQ( said( leftOut.named( word ) ), ofAction ) << word;
    for( char const* const word : { "pipe.acl", "acl", "arks", "", "mark of acl", "hits" } )
        EXPECT_THAT( said( leftOut.named( word ) ), IsEmpty() ) << word;
}

TEST_F( LeftOut, IsKnownByHandle ) {
    auto const model = BfResourceInfo::bfResourceInfoIntfFactory( "switch.conf" );
    Bfri::LeftOutTables leftOut( *model->parser() );
    EXPECT_EQ( said( leftOut.withHandle( 0x10000007 ) ), of );
    EXPECT_EQ( said( leftOut.withHandle( 0x10000000 + 77 ) ), ofAction );
    for( U32 const handle : { 7U, 0x10000001U, 0U } )
        EXPECT_THAT( said( leftOut.withHandle( handle ) ), IsEmpty() ) << handle;
}

TEST_F( LeftOut, IsKnownBehindWhatTheModelHas ) {
    auto const model = BfResourceInfo::bfResourceInfoIntfFactory( "switch.conf" );
    Bfri::LeftOutTables leftOut( *model->parser() );
    EXPECT_EQ( said( leftOut.behind( 0x10000005, "" ) ), ofWhatItHas );           // lists it
    EXPECT_EQ( said( leftOut.behind( 0x10000007, "" ) ), of );                    // has it
    EXPECT_EQ( said( leftOut.behind( 0x10000099, "pipe.marks" ) ), ofWhatItHas ); // is named
    EXPECT_EQ( said( leftOut.behind( 0x10000005, "pipe.acl" ) ), "" );            // another is known
    for( U32 const handle : { 5U, 0x10000006U } )
        EXPECT_EQ( said( leftOut.behind( handle, "" ) ), "" ) << handle;
}

TEST_F( LeftOut, IsSaidOfAHandleThatIsLookedUp ) {
    auto const outcome = bfri( { "lookup", "switch.conf", "0x10000007" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_EQ( outcome.err, "bfri: nothing has the handle 0x10000007; " + String( of ) + "\n" );
}

TEST_F( LeftOut, IsAMemberOfTheJsonOfLookup ) {
    auto const answer =
        parsed( bfri( { "lookup", "switch.conf", "0x10000007", "0x1000004d", "--json" } ).out );
    EXPECT_EQ( compact( answer[ "handles" ][ 0 ] ),
               R"({"handle":268435463,"found":[],"suggestions":[],"leftOut":{"kind":"table",)"
               R"("name":"pipe.marks","table":null,"handle":268435463,"contextFile":"context.json",)"
               R"("reason":"it has 1 static entry"}})" );
    EXPECT_EQ( compact( answer[ "handles" ][ 1 ][ "leftOut" ] ),
               R"({"kind":"action","name":"mark","table":"pipe.marks","handle":268435533,)"
               R"("contextFile":"context.json","reason":"it has 1 static entry"})" );
}

TEST_F( LeftOut, IsSaidOfAFieldThatIsAskedFor ) {
    EXPECT_THAT( bfri( { "field", "switch.conf", "table", "marks", "size" } ).err,
                 HasSubstr( String( " 'marks': " ) + of + "\n" ) );
    EXPECT_THAT( bfri( { "field", "switch.conf", "action", "mark of marks", "handle" } ).err,
                 HasSubstr( String( " 'mark of marks': " ) + ofAction + "\n" ) );
}

TEST_F( LeftOut, IsSaidOfANameOrHandleThatIsAskedFor ) {
    for( char const* const command : { "table", "show" } ) {
        for( char const* const word : { "marks", "0x10000007" } ) {
            auto const outcome = bfri( { command, "switch.conf", word } );
            EXPECT_EQ( outcome.status, 1 );
            EXPECT_THAT( outcome.err, HasSubstr( " '" + String( word ) + "': " + of + "\n" ) );
        }
    }
}

TEST_F( LeftOut, IsNotSaidOfOtherNames ) {
    EXPECT_EQ( bfri( { "table", "switch.conf", "acl" } ).status, 0 );
    EXPECT_EQ( bfri( { "table", "switch.conf", "akl" } ).err,
               "bfri: no match table 'akl'; names like it:\n  pipe.acl\n" );
}

TEST_F( LeftOut, IsSaidOfWhatAPlacedOneHas ) {
    for( char const* const how : { "direct", "indirect" } ) {
        writeFile( "context.json", tables( { StageTable() }, how ) );
        struct {
            char const* command;
            char const* word;
            String start;
            char const* said;
        } const rows[] = { { "lookup", "0x10000005", "bfri: 0x10000005: ", ofWhatItHas },
                           { "lookup", "0x10000007", "bfri: 0x10000007: ", of },
                           { "show", "hits", "\n\n  ", ofWhatItHas },
                           { "show", "0x10000005", "\n\n  ", ofWhatItHas },
                           { "show", "marks", "\n\n  ", of } };
        for( auto const& row : rows ) {
            auto const outcome = bfri( { row.command, "switch.conf", row.word } );
            EXPECT_EQ( outcome.status, 0 );
            EXPECT_THAT( outcome.out + outcome.err, HasSubstr( row.start + row.said + "\n" ) ) << row.word;
        }
        EXPECT_EQ( parsed( bfri( { "show", "switch.conf", "marks", "--json" } )
                               .out )[ "bfResources" ][ 0 ][ "leftOutTable" ][ "reason" ],
                   "it has 1 static entry" );
    }
}

TEST_F( LeftOut, IsNotSaidOfWhatOthersHave ) {
    writeFile( "context.json", tables( { StageTable() } ) );
    for( char const* const word : { "acl", "lone" } ) {
        auto const page = bfri( { "show", "switch.conf", word } );
        EXPECT_EQ( page.status, 0 );
        EXPECT_THAT( page.out, Not( HasSubstr( "leaves out" ) ) ) << word;
    }
    EXPECT_EQ( bfri( { "lookup", "switch.conf", "0x10000001", "0x10000006" } ).err, "" );
}

} // namespace
