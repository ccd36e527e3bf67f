#include "inspect/model/Omissions.h"

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

class Omissions : public InFolder {
  protected:
    Omissions() {
        writeFile( "context.json", tables( {} ) );
        writeFile( "switch.conf",
                   SwitchConfBuilder()
                       .device( DeviceBuilder().runtimeConfig( "r" ).pipeline( "context.json", { 1 } ) )
                       .text() );
    }
};

/// As sentences; empty for nothing.
String said( std::optional<Bfri::Omission> const& omission ) {
    return omission ? sentenceOf( *omission ) : "";
}
String said( Bfri::Omissions const& all ) { return sentencesOf( all ); }

TEST_F( Omissions, IsKnownByNameAndByTheEndOfIt ) {
    auto const model = loaded();
    Bfri::OmittedTables const omitted( *model );
    for( char const* const word : { "pipe.marks", "marks" } )
        EXPECT_EQ( said( omitted.named( word ) ), of ) << word;
    for( char const* const word : { "mark", "mark of marks", "mark of pipe.marks" } )
        EXPECT_EQ( said( omitted.named( word ) ), ofAction ) << word;
    for( char const* const word : { "pipe.acl", "acl", "arks", "", "mark of acl", "hits" } )
        EXPECT_THAT( said( omitted.named( word ) ), IsEmpty() ) << word;
}

TEST_F( Omissions, IsKnownByHandle ) {
    auto const model = loaded();
    Bfri::OmittedTables const omitted( *model );
    EXPECT_EQ( said( omitted.withHandle( 0x10000007 ) ), of );
    EXPECT_EQ( said( omitted.withHandle( 0x10000000 + 77 ) ), ofAction );
    for( U32 const handle : { 7U, 0x10000001U, 0U } )
        EXPECT_THAT( said( omitted.withHandle( handle ) ), IsEmpty() ) << handle;
}

TEST_F( Omissions, IsKnownOfWhatTheModelHas ) {
    auto const model = loaded();
    Bfri::OmittedTables const omitted( *model );
    EXPECT_EQ( said( omitted.of( 0x10000005, "" ) ), ofWhatItHas );  // lists it
    EXPECT_EQ( said( omitted.of( 0x10000007, "pipe.marks" ) ), of ); // is it
    EXPECT_EQ( said( omitted.of( 0x10000007, "hits" ) ), "" );
    model->parser().parentTableIs( "named", "pipe.marks" );
    EXPECT_EQ( said( omitted.of( 0x10000099, "named" ) ), ofWhatItHas );
    EXPECT_EQ( said( omitted.of( 0x20000099, "named" ) ), "" ); // of another file
    for( U32 const handle : { 5U, 0x10000006U } )
        EXPECT_EQ( said( omitted.of( handle, "" ) ), "" ) << handle;
}

TEST_F( Omissions, OfADirectCounterAreNoneWhereTheModelHasItsTable ) {
    String const hits = R"([{"handle":5,"name":"hits","how_referenced":"direct"}])";
    for( auto const& [ staticEntries, omissions ] : { std::pair( "[]", 0U ), std::pair( "[{}]", 1U ) } ) {
        writeFile( "context.json", ContextBuilder()
                                       .table( Support::matchTable( "pipe.acl" )
                                                   .handle( 1 )
                                                   .with( "/statistics_table_refs", hits.c_str() )
                                                   .with( "/static_entries", staticEntries ) )
                                       .table( statisticsTable( "hits" ).handle( 5 ).referenced( "direct" ) )
                                       .text() );
        EXPECT_EQ( Bfri::OmittedTables( *loaded() ).of( 0x10000005, "hits" ).size(), omissions );
    }
}

TEST_F( Omissions, IsSaidOfAHandleThatIsLookedUp ) {
    auto const outcome = bfri( { "lookup", "switch.conf", "0x10000007" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_EQ( outcome.err, "bfri: nothing has the handle 0x10000007; " + String( of ) + "\n" );
}

TEST_F( Omissions, IsAMemberOfTheJsonOfLookup ) {
    auto const answer =
        parsed( bfri( { "lookup", "switch.conf", "0x10000007", "0x1000004d", "--json" } ).out );
    EXPECT_EQ( compact( answer[ "handles" ][ 0 ] ),
               R"({"handle":268435463,"found":[],"suggestions":[],"omitted":[{"kind":"table",)"
               R"("name":"pipe.marks","table":null,"handle":268435463,"contextFile":"context.json",)"
               R"("missing":"record","reason":"it has 1 static entry"}]})" );
    EXPECT_EQ( compact( answer[ "handles" ][ 1 ][ "omitted" ] ),
               R"([{"kind":"action","name":"mark","table":"pipe.marks","handle":268435533,)"
               R"("contextFile":"context.json","missing":"record","reason":"it has 1 static entry"}])" );
}

TEST_F( Omissions, IsSaidOfAFieldThatIsAskedFor ) {
    EXPECT_THAT( bfri( { "field", "switch.conf", "table", "marks", "size" } ).err,
                 HasSubstr( String( " 'marks': " ) + of + "\n" ) );
    EXPECT_THAT( bfri( { "field", "switch.conf", "action", "mark of marks", "handle" } ).err,
                 HasSubstr( String( " 'mark of marks': " ) + ofAction + "\n" ) );
}

TEST_F( Omissions, IsSaidOfANameOrHandleThatIsAskedFor ) {
    for( char const* const command : { "table", "show" } ) {
        for( char const* const word : { "marks", "0x10000007" } ) {
            auto const outcome = bfri( { command, "switch.conf", word } );
            EXPECT_EQ( outcome.status, 1 );
            EXPECT_THAT( outcome.err, HasSubstr( " '" + String( word ) + "': " + of + "\n" ) );
        }
    }
}

TEST_F( Omissions, IsNotSaidOfOtherNames ) {
    EXPECT_EQ( bfri( { "table", "switch.conf", "acl" } ).status, 0 );
    EXPECT_EQ( bfri( { "table", "switch.conf", "akl" } ).err,
               "bfri: no match table 'akl'; names like it:\n  pipe.acl\n" );
}

TEST_F( Omissions, IsSaidOfWhatAPlacedOneHas ) {
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
                               .out )[ "bfResources" ][ 0 ][ "omitted" ][ 0 ][ "reason" ],
                   "it has 1 static entry" );
    }
}

TEST_F( Omissions, IsNotSaidOfWhatOthersHave ) {
    writeFile( "context.json", tables( { StageTable() } ) );
    for( char const* const word : { "acl", "lone" } ) {
        auto const page = bfri( { "show", "switch.conf", word } );
        EXPECT_EQ( page.status, 0 );
        EXPECT_THAT( page.out, Not( HasSubstr( "leaves out" ) ) ) << word;
    }
    EXPECT_EQ( bfri( { "lookup", "switch.conf", "0x10000001", "0x10000006" } ).err, "" );
}

/// Registers of which several tables are left out, or on no stage, or which are on none themselves.
class SeveralOmissions : public Omissions {
  protected:
    SeveralOmissions() {
        auto const table = []( char const* name, U32 handle, char const* reference ) {
            return Support::matchTable( name ).handle( handle ).with( "/stateful_table_refs", reference );
        };
        constexpr char const* cells = R"([{"handle":5,"name":"cells","how_referenced":"indirect"}])";
        constexpr char const* own = R"([{"handle":6,"name":"own","how_referenced":"direct"}])";
        constexpr char const* members = R"([{"handle":10,"name":"members","how_referenced":"indirect"}])";
        constexpr char const* few = R"([{"handle":9,"name":"few","how_referenced":"indirect"}])";
        writeFile(
            "context.json",
            ContextBuilder()
                .table( table( "acl", 1, cells ) )
                .table( table( "marks", 2, cells ).with( "/static_entries", "[{}]" ) )
                .table( table( "more", 3, cells ).with( "/static_entries", "[{},{}]" ) )
                .table( table( "big", 4, few ).stages( {} ).with( "/action_data_table_refs", members ) )
                .table( actionDataTable( "members" ).handle( 10 ) )
                .table( table( "lpm", 7, own ) )
                .table( table( "late", 8, own ).with( "/static_entries", "[{}]" ) )
                .table( statefulTable( "cells" ).handle( 5 ) )
                .table( statefulTable( "own" ).handle( 6 ).referenced( "direct" ).stages( {} ) )
                .table( statefulTable( "few" ).handle( 9 ) )
                .text() );
    }
};

TEST_F( SeveralOmissions, AreTheSameForLookupAndShow ) {
    using Lines = std::vector<String>;
    String const has = "context.json has it with the match table ";
    String const ofOwn = has + R"("late", which the model leaves out: it has 1 static entry)";
    struct {
        char const* handle;
        char const* name;
        Lines said;
    } const rows[] = {
        { "0x10000005",
          "cells",
          { has + R"("marks", which the model leaves out: it has 1 static entry)",
            has + R"("more", which the model leaves out: it has 2 static entries)" } },
        { "0x10000009",
          "few",
          { has + R"("big", whose references the model leaves out: it has no stage table)" } },
        { "0x10000001", "acl", {} },
        { "0x1000000a", "members", {} }, // which the model knows the table of
    };
    for( auto const& row : rows ) {
        SCOPED_TRACE( row.name );
        String notes;
        for( String const& line : row.said )
            notes += "bfri: " + String( row.handle ) + ": " + line + '\n';
        EXPECT_EQ( bfri( { "lookup", "switch.conf", row.handle } ).err, notes );
        for( char const* const word : { row.name, row.handle } ) {
            String const page = bfri( { "show", "switch.conf", word } ).out;
            for( String const& line : row.said )
                EXPECT_THAT( page, HasSubstr( "\n\n  " + line + '\n' ) );
            EXPECT_EQ( page.find( "leaves out" ) != String::npos, !row.said.empty() );
        }
    }
    EXPECT_THAT( bfri( { "show", "switch.conf", "own" } ).out, HasSubstr( "\n\n  " + ofOwn + '\n' ) );
}

TEST_F( SeveralOmissions, HaveTheOwnHandleOfWhatIsOnNoStage ) {
    String const own = R"(context.json has the stateful table "own", whose handle the model leaves out: )"
                       "it has no stage table";
    String const owner = R"(context.json has it with the match table "late", which the model leaves out: )"
                         "it has 1 static entry";
    auto const found = bfri( { "lookup", "switch.conf", "0x10000006" } );
    EXPECT_EQ( found.status, 0 );
    EXPECT_EQ( found.err, "bfri: 0x10000006: " + own + "\nbfri: 0x10000006: " + owner + '\n' );
    EXPECT_EQ( compact( parsed( bfri( { "lookup", "switch.conf", "0x10000006", "--json" } )
                                    .out )[ "handles" ][ 0 ][ "omitted" ][ 0 ] ),
               R"({"kind":"resource","name":"own","table":null,"handle":268435462,)"
               R"("contextFile":"context.json","missing":"handle","reason":"it has no stage table"})" );
    auto const page = bfri( { "show", "switch.conf", "0x10000006" } );
    EXPECT_EQ( page.status, 1 );
    EXPECT_THAT( page.err, HasSubstr( " as its own; " + own + "; these refer to it:\n" ) );
}

} // namespace
