#include "cli/Program.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"
#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>
#include <regex>
#include <sstream>

namespace {

using namespace Support;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// The same context, but every handle in it is another one.
String renumbered( String const& context ) {
    static std::regex const handle( R"(("handle"\s*:\s*)(\d+))" );
    String text;
    auto from = context.begin();
    for( std::sregex_iterator found( context.begin(), context.end(), handle ), end; found != end; ++found ) {
        text.append( from, ( *found )[ 2 ].first );
        text += std::to_string( std::stoul( ( *found )[ 2 ] ) + 16 );
        from = ( *found )[ 2 ].second;
    }
    return text.append( from, context.end() );
}

ContextBuilder contextWith( std::initializer_list<Table> tables ) {
    ContextBuilder context;
    for( Table const& table : tables )
        context.table( table );
    return context;
}

/// The tables "t" and "u".
ContextBuilder twoTables( U32 t, U32 u ) {
    return contextWith( { matchTable( "t" ).handle( t ), matchTable( "u" ).handle( u ) } );
}

/// A handle as texts have it, that of a name or a number.
String hex( U32 handle ) { return Bfri::textOf( Bfri::Hex( handle ) ); }
String hex( char const* name ) { return hex( handleOf( name ) ); }

/// What comes before the totals, and the verdict for an agent that goes by name.
String withoutTotals( String const& text ) {
    auto const from = text.find( "KIND " );
    auto const to = text.find( "\n\n", from );
    auto const byHandle =
        std::min( text.find( "an agent that keeps handles" ), text.find( "every handle still" ) );
    return from == String::npos || to == String::npos
               ? text
               : text.substr( 0, from ) + text.substr( to + 2, byHandle - to - 2 );
}

class Diff : public InFolder {
  protected:
    static Outcome diff( ContextBuilder const& old, ContextBuilder const& now,
                         std::vector<char const*> more = {} ) {
        writeSwitch( "old", { old.text() } );
        writeSwitch( "new", { now.text() } );
        return diffAsWritten( std::move( more ) );
    }
    static Outcome diffAsWritten( std::vector<char const*> more = {} ) {
        more.insert( more.begin(), { "diff", "old", "new" } );
        return bfri( more );
    }
};

TEST_F( Diff, OfTheSameSaysSoInOneLine ) {
    auto const outcome = diff( completeContext(), completeContext() );
    EXPECT_EQ( outcome.out, "no difference\n" );
    EXPECT_EQ( outcome.err, "" );
    EXPECT_EQ( outcome.status, 0 );
}

TEST_F( Diff, DoesNotComparePaths ) {
    String const context = completeContext().text();
    writeFile( "context.json", context );
    writeSwitchConf( "context.json" );
    writeFile( "other.json", context );
    writeFile(
        "other.conf",
        R"({ "devices": [ { "pipelines": [ { "context_file": "other.json", "pipes": [ 0, 1 ] } ] } ] })" );
    EXPECT_EQ( bfri( { "diff", "switch.conf", "other.conf" } ).out, "no difference\n" );
}

TEST_F( Diff, ShowsEachKindThatDiffersThenTotalsAndVerdict ) {
    auto const old = contextWith(
        { matchTable( "gone" ), matchTable( "shrinks" ), matchTable( "moves" ), matchTable( "stays" ) } );
    auto const now =
        contextWith( { matchTable( "shrinks" ).size( 512 ),
                       matchTable( "moves" ).stages( { StageTable( "ternary_match" ).number( 5 ) } ),
                       matchTable( "stays" ), matchTable( "comes" ).size( 7 ) } );
    auto const outcome = diff( old, now );
    EXPECT_EQ( outcome.out, R"(tables
  -! gone  size 1024
  +  comes  size 7
  ~! shrinks  size, totalEntries, maxEntries 1024 -> 512

resources
  -! gone  size 1024, stage 0
  +  comes  size 7, stage 0
  ~! shrinks  size 1024 -> 512
  ~  moves  stage 0 -> 5

actions
  -! NoAction of gone
  +  NoAction of comes

KIND           ADDED  REMOVED  RENAMED  CHANGED  MOVED  SAME
tables             1        1        0        1      -     2
resources          1        1        0        1      1     1
counters           0        0        0        0      -     0
meters             0        0        0        0      -     0
wreds              0        0        0        0      -     0
registers          0        0        0        0      -     0
learn-quantas      0        0        0        0      -     0
actions            1        1        0        0      -     3
headers            0        0        0        0      -     0
hashes             0        0        0        0      -     0
phv                0        0        0        0      -     0
handles            1        1        0        0      -     3

an agent that looks everything up by name notices: 1 table removed, 1 table shrunk, 1 resource removed, 1 resource shrunk, 1 action removed
an agent that keeps handles notices: 1 table removed, 1 resource removed, 1 action removed
)" );
    EXPECT_EQ( outcome.status, 1 );
}

String verdictOf( String const& noticed ) {
    return "an agent that looks everything up by name notices" +
           ( noticed.empty() ? String( " nothing\n" ) : ": " + noticed + '\n' );
}

/// The end of a text without totals, after an empty line.
String verdict( String const& noticed ) { return '\n' + verdictOf( noticed ); }

struct Verdict {
    char const* name;
    Table old;
    Table now;
    char const* lines; ///< that the text has
    String noticed;    ///< says the verdict
};

std::ostream& operator<<( std::ostream& os, Verdict const& row ) { return os << row.name; }

class DiffOfOneTable : public Diff, public testing::WithParamInterface<Verdict> {};

TEST_P( DiffOfOneTable, HasItsLinesAndVerdict ) {
    auto const outcome = diff( contextWith( { GetParam().old } ), contextWith( { GetParam().now } ) );
    EXPECT_THAT( outcome.out, HasSubstr( GetParam().lines ) );
    EXPECT_THAT( withoutTotals( outcome.out ), EndsWith( verdict( GetParam().noticed ) ) );
    EXPECT_EQ( outcome.status, 1 );
}

Table staged( std::int64_t stage ) {
    return matchTable( "t" ).stages( { StageTable( "ternary_match" ).number( stage ) } );
}

constexpr char const* none = "";

INSTANTIATE_TEST_SUITE_P(
    Rows, DiffOfOneTable,
    testing::Values(
        Verdict{ "Grown", matchTable( "t" ), matchTable( "t" ).size( 2048 ),
                 "tables\n  ~  t  size, totalEntries, maxEntries 1024 -> 2048\n", none },
        Verdict{ "Moved", staged( 3 ), staged( 5 ), "resources\n  ~  t  stage 3 -> 5\n", none },
        Verdict{ "MovedAndGrown", staged( 3 ), staged( 5 ).size( 2048 ),
                 "resources\n  ~  t  size 1024 -> 2048; stage 3 -> 5\n", none },
        Verdict{ "Longer", matchTable( "t" ),
                 matchTable( "t" ).stages( { StageTable(), StageTable().number( 1 ) } ),
                 "resources\n  ~  t  stages 1 -> 2; stageNumbers [0] -> [0 1]; "
                 "stageSizes [0: 1024] -> [0: 1024, 1: 1024]\n",
                 none },
        Verdict{ "OfAnotherDirection", matchTable( "t" ),
                 matchTable( "t" ).with( "/direction", "\"egress\"" ),
                 "resources\n  ~! t  direction ingress -> egress\n", "1 resource changed" },
        Verdict{ "OfAnotherType", matchTable( "t" ),
                 matchTable( "t" ).stages( { StageTable( "hash_match" ) } ),
                 "resources\n  ~! t  type ternary_match -> hash_match\n", "1 resource changed" },
        Verdict{ "WithFewerPartitions", matchTable( "t" ).partitions( 4 ), matchTable( "t" ).partitions( 2 ),
                 "tables\n  ~! t  maxPartitions 4 -> 2\n", "1 table shrunk" },
        Verdict{ "WithoutIdleTime", matchTable( "t" ).idleTime( 3 ), matchTable( "t" ),
                 "tables\n  ~! t  hitBitSupported yes -> no; idleTimePrecision 3 -> 0; ", "1 table changed" },
        Verdict{ "OfAnotherPipe", matchTable( "t" ).logicalPipe( "" ), matchTable( "t" ).logicalPipe( "a" ),
                 "tables\n  ~! t  logicalPipe - -> a\n", "1 table changed" },
        Verdict{ "WithoutActions", matchTable( "t" ).action( "hit" ).action( "miss" ), matchTable( "t" ),
                 "actions\n  -! hit of t\n  -! miss of t\n", "2 actions removed" },
        Verdict{ "WithMoreActions", matchTable( "t" ), matchTable( "t" ).action( "hit" ),
                 "actions\n  +  hit of t\n", none },
        Verdict{ "WithNamesThatATerminalCantShow", matchTable( "\x1b[2J" ), matchTable( "t" ).size( 7 ),
                 "tables\n  -! \\x1b[2J  size 1024\n",
                 "1 table removed, 1 resource removed, 1 action removed" } ),
    []( auto const& row ) { return row.param.name; } );

struct Others {
    char const* name;
    ContextBuilder old;
    ContextBuilder now;
    String lines; ///< all but totals and verdict
    String noticed = none;
};

std::ostream& operator<<( std::ostream& os, Others const& row ) { return os << row.name; }

class DiffOfOthers : public Diff, public testing::WithParamInterface<Others> {};

TEST_P( DiffOfOthers, SaysWhatDiffers ) {
    EXPECT_EQ( withoutTotals( diff( GetParam().old, GetParam().now ).out ),
               GetParam().lines + verdict( GetParam().noticed ) );
}

ContextBuilder context() { return {}; }

INSTANTIATE_TEST_SUITE_P(
    Rows, DiffOfOthers,
    testing::Values(
        Others{ "HashOrder", context().dynamicHash( "h", { "a", "b" } ),
                context().dynamicHash( "h", { "b", "a" } ), "hashes\n  ~! h  fieldNames [a b] -> [b a]\n",
                "1 hash changed" },
        Others{ "HeaderGrown", context().flexibleHeader( "h", 16 ), context().flexibleHeader( "h", 32 ),
                "headers\n  ~! h  size 2 -> 4\n", "1 header changed" },
        Others{ "HeadersGone", context().flexibleHeader( "g", 8 ).flexibleHeader( "h", 16 ), context(),
                "headers\n  -! g  size 1\n  -! h  size 2\n", "2 headers removed" },
        Others{ "PhvBytes", context().phvStage( "f", 8 ), context().phvStage( "f", 16 ),
                "phv\n  ~  f  ingressBytes, egressBytes 8 -> 16\n" },
        Others{ "FewerPhvBytes", context().phvStage( "f", 16 ).phvStage( "g", 8 ),
                context().phvStage( "f", 8 ), "phv\n  -! g\n  ~! f  ingressBytes, egressBytes 16 -> 8\n",
                "1 PHV field removed, 1 PHV field shrunk" },
        Others{ "PhvSidesGone", context().phvStage( "f", 8 ).phvStage( "g", 8 ),
                context()
                    .phvStage( "f", 8 )
                    .phvStage( "g", 8 )
                    .with( "/phv_allocation/0/egress", "[]" )
                    .with( "/phv_allocation/1/egress", "[]" ),
                "phv\n  ~! f  egressBytes 8 -> -\n  ~! g  egressBytes 8 -> -\n", "2 PHV fields shrunk" },
        Others{ "LearnQuantas", context().learnQuanta( "l" ), context().learnQuanta( "m" ),
                "learn-quantas\n  -! l\n  +  m\n", "1 learn-quanta removed" },
        Others{ "DirectCounterOfAnotherTable",
                contextWith( { matchTable( "t" ).statistics( "c" ), matchTable( "u" ),
                               statisticsTable( "c" ).referenced( "direct" ) } ),
                contextWith( { matchTable( "t" ), matchTable( "u" ).statistics( "c" ),
                               statisticsTable( "c" ).referenced( "direct" ) } ),
                "counters\n  ~! c  handle " + hex( "t" ) + " (t) -> " + hex( "u" ) +
                    " (u); associatedTable t -> u\n\nhandles\n  ~  u  statReferences [] -> [" + hex( "c" ) +
                    " (c)]\n  ~  t  statReferences [" + hex( "c" ) + " (c)] -> []\n",
                "1 counter changed" },
        Others{ "AnotherActionDataTable",
                contextWith( { matchTable( "t" ).actionData( "a" ), actionDataTable( "a" ),
                               actionDataTable( "b" ) } ),
                contextWith( { matchTable( "t" ).actionData( "b" ), actionDataTable( "a" ),
                               actionDataTable( "b" ) } ),
                "tables\n  ~! t  adtHandle " + hex( "a" ) + " (a) -> " + hex( "b" ) +
                    " (b); adtName a -> b\n",
                "1 table changed" } ),
    []( auto const& row ) { return row.param.name; } );

// What is folded.

TEST_F( Diff, FoldsARenumberingOfAllHandles ) {
    writeSwitch( "old", { completeContext().text() } );
    writeSwitch( "new", { renumbered( completeContext().text() ) } );
    auto const outcome = diffAsWritten();
    String const text = withoutTotals( outcome.out );
    EXPECT_TRUE( text.starts_with( "handles of records that both have: 11 of 11 renumbered\n  " ) ) << text;
    EXPECT_THAT( text, EndsWith( "\n  and 8 more; --json has all\n\n" + verdictOf( "" ) ) );
    EXPECT_THAT( outcome.out, Not( HasSubstr( "~" ) ) );
    EXPECT_EQ( outcome.status, 1 );
}

TEST_F( Diff, CountsTheHandlesThatStay ) {
    auto const outcome = diff( contextWith( { matchTable( "t" ), matchTable( "u" ).handle( 77 ) } ),
                               contextWith( { matchTable( "t" ), matchTable( "u" ).handle( 78 ) } ) );
    EXPECT_THAT( outcome.out, HasSubstr( "both have: 1 of 3 renumbered"
                                         "\n  table u 0x0000004d -> 0x0000004e\n\n" ) );
}

TEST_F( Diff, SaysWhoseHandleIsRenumberedNotWhoReferencesIt ) {
    auto const old = contextWith( { matchTable( "t" ).actionData( "a" ), actionDataTable( "a" ) } );
    writeSwitch( "old", { old.text() } );
    writeSwitch( "new", { ContextBuilder( old )
                              .with( "/tables/0/action_data_table_refs/0/handle", "5" )
                              .with( "/tables/1/handle", "5" )
                              .text() } );
    auto const renumbered = [ & ]( std::vector<char const*> more ) {
        more.push_back( "--json" );
        auto const answer = parsed( diffAsWritten( more ).out );
        return compact( answer[ "handles" ][ "renumbered" ] );
    };
    String const numbers =
        R"(,"name":"a","from":)" + std::to_string( handleOf( "a" ) ) + R"(,"to":5,"pipes":[0]}])";
    EXPECT_EQ( renumbered( {} ), R"([{"kind":"resource")" + numbers );
    EXPECT_EQ( renumbered( { "--only", "tables" } ), R"([{"kind":"handle")" + numbers );
}

TEST_F( Diff, ShowsHandlesThatChangePlaces ) {
    auto const outcome = diff( twoTables( 1, 2 ), twoTables( 2, 1 ) );
    EXPECT_EQ( withoutTotals( outcome.out ),
               "handles of records that both have: 2 of 3 renumbered\n"
               "  table t 0x00000001 -> 0x00000002\n  table u 0x00000002 -> 0x00000001\n"
               "handles that now belong to another record: 2\n"
               "  0x00000001 table t -> table u\n  0x00000002 table u -> table t\n" +
                   verdict( "" ) );
    EXPECT_THAT( outcome.out, EndsWith( "\nan agent that keeps handles notices: 2 tables renumbered, "
                                        "2 tables with a reused handle\n" ) );
    EXPECT_EQ(
        compact( parsed( diffAsWritten( { "--json" } ).out )[ "handles" ] ),
        R"({"renumbered":[{"kind":"table","name":"t","from":1,"to":2,"pipes":[0]},)"
        R"({"kind":"table","name":"u","from":2,"to":1,"pipes":[0]}],"count":2,"of":3,"reused":[)"
        R"({"handle":1,"from":{"kind":"table","name":"t"},"to":{"kind":"table","name":"u"},"pipes":[0]},)"
        R"({"handle":2,"from":{"kind":"table","name":"u"},"to":{"kind":"table","name":"t"},"pipes":[0]}]})" );
    EXPECT_THAT( diffAsWritten( { "--only", "handle" } ).out,
                 HasSubstr( "2 of 2 renumbered\n  handle t 0x00000001 -> 0x00000002\n"
                            "  handle u 0x00000002 -> 0x00000001\n"
                            "handles that now belong to another record: 2\n" ) );
}

TEST_F( Diff, NoticesAHandleThatSeveralRecordsHaveNow ) {
    String const out = diff( twoTables( 1, 2 ), twoTables( 2, 2 ) ).out;
    EXPECT_THAT( out,
                 HasSubstr( "handles of records that both have: 1 of 3 renumbered\n"
                            "  table t 0x00000001 -> 0x00000002\n"
                            "! 0x00000002 table t with a duplicate handle: is the handle of t, u\n\n" ) );
    EXPECT_THAT( withoutTotals( out ), EndsWith( verdict( "1 table with a duplicate handle" ) ) );
    auto const json = parsed( diffAsWritten( { "--json" } ).out );
    EXPECT_EQ( compact( json[ "duplicates" ] ),
               R"([{"kind":"table","name":"t","handle":2,"names":["t","u"],"handles":[],"pipes":[0]}])" );
    EXPECT_EQ( withoutTotals( diffAsWritten( { "--only", "actions" } ).out ), "no difference in actions\n" );
}

TEST_F( Diff, NoticesAnActionsHandleThatAnotherActionHasNow ) {
    auto const old = contextWith( { matchTable( "t" ).action( "hit" ).action( "miss" ) } );
    writeSwitch( "old", { old.text() } );
    JsonTree const miss = old.tree().at( "/tables/0/actions/1/handle" );
    writeSwitch( "new", { ContextBuilder( old ).with( "/tables/0/actions/0/handle", miss ).text() } );
    auto const outcome = diffAsWritten();
    EXPECT_THAT( outcome.out, HasSubstr( "action NoAction of t with a duplicate handle: "
                                         "is the handle of NoAction, hit\n" ) );
    EXPECT_THAT( withoutTotals( outcome.out ), EndsWith( verdict( "1 action with a duplicate handle" ) ) );
}

TEST_F( Diff, SeesNoHarmInWhatHadOneHandleBefore ) {
    auto const shared = twoTables( 1, 1 );
    EXPECT_THAT( diff( shared, twoTables( 2, 2 ) ).out, Not( HasSubstr( "duplicate" ) ) );
    String const third =
        diff( shared, contextWith( { matchTable( "t" ).handle( 1 ), matchTable( "u" ).handle( 1 ),
                                     matchTable( "v" ).handle( 1 ) } ) )
            .out;
    EXPECT_THAT( third, HasSubstr( "duplicate handle: is the handle of t, u, v\n" ) );
}

TEST_F( Diff, TellsHandlesOfSeveralProgramsApartWithoutARuntimeConfiguration ) {
    String const t = contextWith( { matchTable( "t" ).handle( 1 ) } ).text();
    String const u = contextWith( { matchTable( "u" ).handle( 2 ) } ).text();
    writeSwitch( "old", { t, u } );
    writeSwitch( "new", { t, contextWith( { matchTable( "u" ).handle( 1 ) } ).text() } );
    String const out = diffAsWritten( { "--only", "tables" } ).out;
    EXPECT_THAT( out, HasSubstr( "both have: 1 of 2 renumbered\n  table u " ) );
    EXPECT_THAT( out, Not( HasSubstr( "duplicate" ) ) );
    EXPECT_THAT( out, Not( HasSubstr( "another record" ) ) );
}

TEST_F( Diff, DoesNotFoldAReferenceToNothingKnown ) {
    auto const old = contextWith( { matchTable( "t" ).statistics( "unknown" ) } );
    writeSwitch( "old", { old.text() } );
    writeSwitch( "new",
                 { ContextBuilder( old ).with( "/tables/0/statistics_table_refs/0/handle", "5" ).text() } );
    String const out = diffAsWritten().out;
    EXPECT_TRUE(
        std::regex_search(
            out, std::regex( R"(\n  ~  t  statReferences \[0x[0-9a-f]{8}\] -> \[0x00000005\]\n)" ) ) ||
        std::regex_search(
            out, std::regex( R"(^handles\n  ~  t  statReferences \[0x[0-9a-f]{8}\] -> \[0x00000005\]\n)" ) ) )
        << out;
}

TEST_F( Diff, FoldsHitBitRangesThatOnlyStartElsewhere ) {
    auto const second = matchTable( "second" ).idleTime( 3 );
    auto const outcome = diff( contextWith( { matchTable( "first" ).idleTime( 3 ), second } ),
                               contextWith( { matchTable( "first" ).idleTime( 3 ).size( 2048 ), second } ) );
    EXPECT_THAT( outcome.out, HasSubstr( "configuration\n  ~  hitBitSmashEntries " ) );
    EXPECT_THAT( outcome.out, HasSubstr( "; hitBitSmashLast " ) );
    EXPECT_THAT( outcome.out,
                 HasSubstr( "\nhit-bit ranges: 1 of 2 shifted, and each is as long as before\n" ) );
    EXPECT_THAT( outcome.out, Not( HasSubstr( "~  second" ) ) );
    EXPECT_THAT( withoutTotals( outcome.out ), EndsWith( verdict( "" ) ) );
}

// Names that several records have.

TEST_F( Diff, JoinsTablesOfOneNameByTheirPipes ) {
    String const a = contextWith( { matchTable( "t" ).size( 100 ) } ).text();
    String const b = contextWith( { matchTable( "t" ).size( 200 ) } ).text();
    String const c = contextWith( { matchTable( "t" ).size( 300 ) } ).text();
    for( bool const withRuntimeConfig : { false, true } ) {
        writeSwitch( "old", { a, b }, withRuntimeConfig );
        writeSwitch( "new", { a, c }, withRuntimeConfig );
        EXPECT_EQ( withoutTotals( diffAsWritten( { "--only", "table" } ).out ),
                   "tables\n  ~  t (pipes 1)  size, totalEntries, maxEntries 200 -> 300\n" + verdict( "" ) );
    }
}

TEST_F( Diff, TellsWhatIsGoneFromAPipe ) {
    String const t = contextWith( { matchTable( "t" ).handle( 5 ) } ).text();
    writeSwitch( "old", { t, t }, true );
    writeSwitch( "new", { contextWith( {} ).text(), t }, true );
    EXPECT_EQ( withoutTotals( diffAsWritten( { "--only", "resources" } ).out ),
               "resources\n  -! t (pipes 0)  size 1024, stage 0\n" + verdict( "1 resource removed" ) );
}

TEST_F( Diff, JoinsTheFirstOfANameWithTheFirst ) {
    EXPECT_EQ( withoutTotals( diff( contextWith( { matchTable( "t" ).size( 1 ).handle( 1 ),
                                                   matchTable( "t" ).size( 2 ).handle( 2 ) } ),
                                    contextWith( { matchTable( "t" ).size( 1 ).handle( 1 ),
                                                   matchTable( "t" ).size( 3 ).handle( 2 ),
                                                   matchTable( "t" ).size( 4 ).handle( 3 ) } ),
                                    { "--only", "resource" } )
                                  .out ),
               "resources\n  +  t  size 4, stage 0\n  ~  t  size 2 -> 3\n\n"
               "! resource t with a duplicate name: with the handles 0x00000001, 0x00000002, 0x00000003\n" +
                   verdict( "1 resource with a duplicate name" ) );
}

TEST_F( Diff, NoticesThatQueriesByNameAnswerForAnotherRecord ) {
    String const empty = contextWith( {} ).text();
    String const t = contextWith( { matchTable( "t" ) } ).text();
    writeSwitch( "old", { empty, t } );
    writeSwitch( "new", { t, t } );
    EXPECT_EQ( withoutTotals( diffAsWritten( { "--only", "table" } ).out ),
               "tables\n  +  t (pipes 0)  size 1024\n"
               "  ~! t (pipes 1)  queries by name answer for another one now\n" +
                   verdict( "1 table hidden by a namesake" ) );
}

TEST_F( Diff, ShowsWhatHasChangedOfTheConfiguration ) {
    String const empty = context().text();
    writeSwitch( "old", { empty }, false );
    writeSwitch( "new", { empty, empty }, true );
    EXPECT_EQ( withoutTotals( diffAsWritten().out ),
               "pipes\n  +  1  - -> new1.json, a first program\n\n"
               "configuration\n  ~  pipeMasks [0x00000001] -> [0x00000001 0x00000002]\n"
               "  ~  handlesCarryPipe no -> yes\n" +
                   verdict( "" ) );
}

// Options.

TEST_F( Diff, OfOnlyOneKindLeavesTheOthersOut ) {
    auto const old = contextWith( { matchTable( "t" ) } ).flexibleHeader( "h", 8 );
    auto const now = contextWith( { matchTable( "t" ).size( 1 ) } ).flexibleHeader( "h", 8 );
    EXPECT_EQ( diff( old, now, { "--only", "headers" } ).out, "no difference in headers\n" );
    EXPECT_EQ( diffAsWritten( { "--only", "headers" } ).status, 0 );
    EXPECT_EQ( diffAsWritten( { "--only", "tables" } ).out, R"(tables
  ~! t  size, totalEntries, maxEntries 1024 -> 1

KIND    ADDED  REMOVED  RENAMED  CHANGED  MOVED  SAME
tables      0        0        0        1      -     0

an agent that looks everything up by name notices: 1 table shrunk
every handle still means the same record
)" );
    EXPECT_THAT( diffAsWritten( { "--only", "handle" } ).out,
                 HasSubstr( "handles\n  ~  t  size 1024 -> 1\n" ) );
}

TEST_F( Diff, RefusesAKindThatIsNone ) {
    auto const outcome = diff( context(), context(), { "--only", "tabel" } );
    EXPECT_EQ( outcome.status, 2 );
    EXPECT_THAT( outcome.err, HasSubstr( "'tabel'" ) );
}

TEST_F( Diff, SaysWhichConfigurationCantBeLoaded ) {
    diff( context(), context() );
    for( auto const& [ old, now ] : { std::pair( "old", "none.conf" ), std::pair( "none.conf", "new" ) } ) {
        auto const outcome = bfri( { "diff", old, now } );
        EXPECT_EQ( outcome.status, 3 );
        EXPECT_EQ( outcome.out, "" );
        EXPECT_THAT( outcome.err, HasSubstr( "none.conf" ) );
    }
    writeFile( "new0.json", "{" );
    auto const outcome = diffAsWritten();
    EXPECT_EQ( outcome.status, 3 );
    EXPECT_THAT( outcome.err, HasSubstr( "new0.json" ) );
}

TEST_F( Diff, AsJsonHoldsTheRecordsAndEachFieldThatDiffers ) {
    auto const old = contextWith( { staged( 3 ).action( "hit" ) } ).flexibleHeader( "h", 8 );
    auto const now = contextWith( { staged( 5 ).size( 512 ) } ).flexibleHeader( "g", 16 );
    auto const answer = parsed( diff( old, now, { "--json" } ).out );
    EXPECT_EQ( memberNames( answer ),
               ( std::vector<String>{ "format", "old", "new", "pipes", "configuration", "kinds", "handles",
                                      "duplicates", "hitBitRanges", "unread", "verdict" } ) );
    EXPECT_EQ( compact( answer[ "new" ] ), "\"new\"" );
    EXPECT_EQ( compact( answer[ "pipes" ] ),
               R"([{"pipe":0,"from":"old0.json","to":"new0.json","change":"edited"}])" );
    auto const& kinds = answer[ "kinds" ];
    EXPECT_EQ( memberNames( kinds ).size(), Bfri::recordKinds().size() );
    EXPECT_EQ( compact( kinds[ "bfResources" ] ),
               R"({"added":[],"removed":[],"renamed":[],"leftOut":[],"cameBack":[],)"
               R"("changed":[{"name":"t","pipes":[0],"fields":[)"
               R"({"field":"size","from":1024,"to":512}],"firstOfName":true}],)"
               R"("moved":[{"name":"t","pipes":[0],"from":3,"to":5,"stages":{"from":[3],"to":[5]}}],)"
               R"("reordered":false,"same":0})" );
    EXPECT_EQ( compact( kinds[ "bfHeaders" ] ),
               R"({"added":[{"name":"g","size":2}],"removed":[{"name":"h","size":1}],"renamed":[],)"
               R"("leftOut":[],"cameBack":[],"changed":[],"moved":[],"reordered":false,"same":0})" );
    EXPECT_EQ( compact( answer[ "handles" ] ), R"({"renumbered":[],"count":0,"of":2,"reused":[]})" );
    EXPECT_EQ( compact( answer[ "unread" ] ), R"({"tables":[],"members":[]})" );
    EXPECT_EQ( compact( answer[ "verdict" ] ),
               R"({"differs":true,"modelDiffers":true,"byName":false,"byHandle":false,"notices":[)"
               R"({"level":"breaking","kind":"table","name":"t","code":"BD104",)"
               R"("text":"size, totalEntries, maxEntries 1024 -> 512","from":1024,"to":512,"pipes":[0]},)"
               R"({"level":"breaking","kind":"resource","name":"t","code":"BD104",)"
               R"("text":"size 1024 -> 512","from":1024,"to":512,"pipes":[0]},)"
               R"({"level":"breaking","kind":"action","name":"hit","code":"BD101","text":"is gone",)"
               R"("from":null,"to":null,"tableName":"t","pipes":[0]},)"
               R"({"level":"breaking","kind":"header","name":"h","code":"BD101","text":"is gone",)"
               R"("from":null,"to":null,"pipes":[]},)"
               R"({"level":"info","kind":"pipe","name":"0","code":"BD309","text":"old0.json -> new0.json",)"
               R"("from":"old0.json","to":"new0.json","pipes":[0]},)"
               R"({"level":"info","kind":"resource","name":"t","code":"BD304","text":"stage 3 -> 5",)"
               R"("from":3,"to":5,"pipes":[0]},)"
               R"({"level":"info","kind":"header","name":"g","code":"BD301","text":"is new",)"
               R"("from":null,"to":null,"pipes":[]}]})" );
}

TEST_F( Diff, AsJsonHasNumberAndWordOfAType ) {
    auto const answer = parsed( diff( contextWith( { matchTable( "t" ) } ),
                                      contextWith( { matchTable( "t" )
                                                         .stages( { StageTable( "hash_match" ) } )
                                                         .with( "/direction", "\"egress\"" ) } ),
                                      { "--json" } )
                                    .out );
    EXPECT_EQ( compact( answer[ "kinds" ][ "bfResources" ][ "changed" ][ 0 ][ "fields" ] ),
               R"([{"field":"type","from":1,"to":2},)"
               R"({"field":"typeName","from":"ternary_match","to":"hash_match"},)"
               R"({"field":"ingress","from":true,"to":false}])" );
}

TEST_F( Diff, AsJsonOfTheSameIsAnAnswer ) {
    auto const outcome = diff( completeContext(), completeContext(), { "--json" } );
    EXPECT_EQ( compact( parsed( outcome.out )[ "verdict" ] ),
               R"({"differs":false,"modelDiffers":false,"byName":true,"byHandle":true,"notices":[]})" );
    EXPECT_EQ( outcome.status, 0 );
}

TEST_F( Diff, PaintsItsMarksOnATerminal ) {
    diff( context().flexibleHeader( "gone", 16 ).flexibleHeader( "grows", 8 ),
          context().flexibleHeader( "comes", 8 ).flexibleHeader( "grows", 16 ) );
    std::ostringstream out;
    std::ostringstream err;
    char const* const arguments[] = { "bfri", "diff", "old", "new", "--only", "headers" };
    Bfri::run( 6, arguments, { out, err, { .color = true } } );
    EXPECT_THAT( out.str(), HasSubstr( "\033[31m  -! gone  size 2\033[0m\n"
                                       "\033[32m  +  comes  size 1\033[0m\n"
                                       "\033[33m  ~! grows  size 1 -> 2\033[0m\n" ) );
}

TEST( Paint, IsForColors ) {
    EXPECT_EQ( Bfri::painted( {}, Bfri::Paint::red, "text" ), "text" );
    EXPECT_EQ( Bfri::painted( { .color = true }, Bfri::Paint::red, "text" ), "\033[31mtext\033[0m" );
}

} // namespace
