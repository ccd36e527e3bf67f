#include "inspect/diff/Verdict.h"
#include "tests/cli/Inputs.h"

#include <gmock/gmock.h>

namespace {

using namespace Support;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class DiffVerdict : public InFolder {
  protected:
    static Outcome diff( ContextBuilder const& old, ContextBuilder const& now,
                         std::vector<char const*> more = {} ) {
        writeFile( "old.json", old.text() );
        writeFile( "new.json", now.text() );
        more.insert( more.begin(), { "diff", "old.json", "new.json" } );
        return bfri( more );
    }
    /// Of two switches whose programs run on one pipe each.
    static Outcome diffOfSwitches( std::vector<ContextBuilder> const& old,
                                   std::vector<ContextBuilder> const& now,
                                   std::vector<char const*> more = {} ) {
        auto const textsOf = []( std::vector<ContextBuilder> const& contexts ) {
            std::vector<String> texts;
            for( ContextBuilder const& context : contexts )
                texts.push_back( context.text() );
            return texts;
        };
        writeSwitch( "old", textsOf( old ) );
        writeSwitch( "new", textsOf( now ) );
        more.insert( more.begin(), { "diff", "old", "new" } );
        return bfri( more );
    }
    static ContextBuilder tables( std::initializer_list<char const*> names ) {
        ContextBuilder context;
        for( char const* const name : names )
            context.table( Support::matchTable( name ) );
        return context;
    }
    static ContextBuilder program( String const& name = "t" ) {
        return ContextBuilder()
            .table( Support::matchTable( name ).with( "/match_attributes/key_fields", "[1]" ) )
            .table( Support::matchTable( "u" ) )
            .with( "/parser", "1" );
    }
};

TEST_F( DiffVerdict, DecidesAboutTheExitStatus ) {
    ContextBuilder const old = program();
    struct {
        ContextBuilder now;
        int any, breaking, handles;
    } const rows[] = {
        { program(), 0, 0, 0 },
        { program().with( "/parser", "2" ), 1, 0, 0 },
        { program().with( "/tables/0/handle", "5" ), 1, 0, 1 },
        { program().with( "/tables/0/size", "5" ), 1, 1, 1 },
    };
    for( auto const& row : rows ) {
        EXPECT_EQ( diff( old, row.now ).status, row.any );
        EXPECT_EQ( diff( old, row.now, { "--fail-on", "any" } ).status, row.any );
        EXPECT_EQ( diff( old, row.now, { "--fail-on", "breaking" } ).status, row.breaking );
        EXPECT_EQ( diff( old, row.now, { "--fail-on", "handles" } ).status, row.handles );
        EXPECT_EQ( diff( old, row.now, { "--fail-on", "never" } ).status, 0 );
    }
    EXPECT_EQ( diff( old, old, { "--fail-on", "never" } ).out, "no difference\n" );
    EXPECT_EQ( diff( old, old, { "--fail-on", "all" } ).status, 2 );
    EXPECT_EQ( bfri( { "diff", "old.json", "missing.json", "--fail-on", "never" } ).status, 3 );
}

TEST_F( DiffVerdict, SaysWhatTheLibraryDoesNotRead ) {
    auto const edited = program()
                            .with( "/parser", "2" )
                            .with( "/tables/0/match_attributes/key_fields", "[2]" )
                            .with( "/tables/1/memory", "[]" );
    EXPECT_EQ( diff( program(), edited ).out,
               "no difference in what the library reads; 2 tables and 1 section differ in what it does not: "
               "t, u, parser\n" );
    EXPECT_EQ( diff( program(), edited, { "--unread" } ).out,
               "no difference in what the library reads; 2 tables and 1 section differ in what it does not:\n"
               "not read by the library\n"
               "  ~  table t  match_attributes/key_fields\n"
               "  ~  table u  memory\n"
               "  ~  section parser\n\n" );
    auto resized = edited;
    EXPECT_THAT(
        diff( program(), resized.with( "/tables/0/size", "9" ) ).out,
        HasSubstr( "\nnot read by the library: 2 tables and 1 section (t, u, parser); --unread lists "
                   "all\n" ) );
    EXPECT_EQ( diff( program(), program().with( "/parser", "2" ) ).out,
               "no difference in what the library reads; 1 section differs in what it does not: parser\n" );
}

TEST_F( DiffVerdict, FoldsARenameIntoOneLine ) {
    ContextBuilder renamed = program();
    renamed.with( "/tables/0/name", "\"tt\"" );
    String const text = diff( program(), renamed ).out;
    EXPECT_THAT( text, StartsWith( "tables\n  ~! t -> tt\n\nKIND " ) );
    EXPECT_THAT( text, HasSubstr( "\ntables             0        0        1        0      -     1\n" ) );
    EXPECT_THAT( text, HasSubstr( "\nresources          0        0        0        0      0     2\n" ) );
    EXPECT_THAT( text, HasSubstr( "\nactions            0        0        0        0      -     2\n" ) );
    EXPECT_THAT( text, HasSubstr( " notices: 1 table renamed\n" ) );
    auto const json = parsed( diff( program(), renamed, { "--json" } ).out );
    EXPECT_EQ( compact( json[ "kinds" ][ "bfTables" ][ "renamed" ] ),
               R"([{"from":"t","to":"tt","pipes":[0]}])" );
    EXPECT_EQ( compact( json[ "kinds" ][ "bfActions" ][ "renamed" ] ),
               R"([{"from":"NoAction","to":"NoAction","tableName":{"from":"t","to":"tt"},"pipes":[0]}])" );
    String const apart = diff( program(), renamed, { "--no-renames" } ).out;
    EXPECT_THAT( apart, StartsWith( "tables\n  -! t  size 1024\n  +  tt  size 1024\n" ) );
    EXPECT_THAT( apart, HasSubstr( "handles that now belong to another record: 1\n" ) );
}

TEST_F( DiffVerdict, CountsWhatIsRenamedAndChanged ) {
    ContextBuilder renamed = program();
    renamed.with( "/tables/0/name", "\"tt\"" ).with( "/tables/0/size", "2048" );
    EXPECT_THAT( diff( program(), renamed ).out,
                 HasSubstr( "\nresources          0        0        0        1      0     1\n" ) );
}

TEST_F( DiffVerdict, TellsOfHitBitsInOtherSlots ) {
    auto const both = []( Support::Table const& t, Support::Table const& u ) {
        return ContextBuilder().table( t ).table( u );
    };
    auto const t = Support::matchTable( "t" ).size( 1024 );
    auto const withBits = Support::Table( t ).idleTime( 3 );
    auto const larger = Support::Table( withBits ).size( 2048 );
    auto const u = Support::matchTable( "u" ).idleTime( 3 );
    struct {
        ContextBuilder old, now;
        std::vector<String> texts;
    } const rows[] = {
        { both( withBits, u ),
          both( larger, u ),
          { "hitBitSmashLast 33 -> 65", "1 of 2 hit-bit ranges start elsewhere" } },
        { both( u, larger ), both( u, withBits ), { "hitBitSmashLast 99 -> 67" } },
        { both( u, withBits ), both( u, t ), { "hitBitSmashOffset 34 -> 0", "hitBitSmashLast 67 -> 0" } },
    };
    for( auto const& row : rows ) {
        auto const json = parsed( diff( row.old, row.now, { "--json" } ).out );
        std::vector<String> texts;
        for( auto const& notice : json[ "verdict" ][ "notices" ].GetArray() ) {
            if( notice[ "code" ] == "BD305" )
                texts.push_back( notice[ "text" ].GetString() );
        }
        EXPECT_EQ( texts, row.texts );
    }
    String const meaning = bfri( { "diff", "--explain", "BD305" } ).out;
    for( char const* const part : { "start elsewhere", "end elsewhere", "new or gone" } )
        EXPECT_THAT( meaning, HasSubstr( part ) );
    EXPECT_THAT( meaning, Not( HasSubstr( "as long as" ) ) );
}

TEST_F( DiffVerdict, SaysWhyATableIsLeftOut ) {
    String const out = diff( program(), program().with( "/tables/0/static_entries", "[1,2]" ) ).out;
    EXPECT_THAT( out, StartsWith( "tables\n  -! t  left out: it has 2 static entries\n" ) );
    EXPECT_THAT( out, HasSubstr( "KIND           ADDED  REMOVED  LEFT OUT  BACK  RENAMED " ) );
    auto const json = parsed(
        diff( program().with( "/tables/0/is_resource_controllable", "false" ), program(), { "--json" } )
            .out );
    EXPECT_EQ( compact( json[ "kinds" ][ "bfTables" ][ "cameBack" ] ),
               R"([{"name":"t","handle":)" + std::to_string( handleOf( "t" ) ) +
                   R"(,"pipes":[0],"reason":"its \"is_resource_controllable\" is false",)"
                   R"("members":["is_resource_controllable"]}])" );
}

TEST_F( DiffVerdict, HasOneLineForEachProgramOnOtherPipes ) {
    auto const one = tables( { "a", "b" } ).flexibleHeader( "h", 16 );
    auto const other = tables( { "c", "d", "e" } );
    String const text = diffOfSwitches( { one, other }, { other, one } ).out;
    EXPECT_THAT( text, StartsWith( "pipes\n"
                                   "  ~! 0  old0.json -> new0.json, another program\n"
                                   "  ~! 1  old1.json -> new1.json, another program\n\nKIND " ) );
    EXPECT_THAT( text, HasSubstr( "\ntables             5        5        0        0      -     0\n" ) );
    EXPECT_THAT( text,
                 testing::EndsWith(
                     "\nan agent that looks everything up by name notices: 2 pipes with another program\n"
                     "an agent that keeps handles notices: 2 pipes with another program\n" ) );
    String const markdown = diffOfSwitches( { one, other }, { other, one }, { "--markdown" } ).out;
    EXPECT_THAT( markdown, HasSubstr( "<summary>pipes (2)</summary>" ) );
    for( char const* const section : { "<summary>tables", "<summary>handles", "<summary>not read" } )
        EXPECT_THAT( markdown, Not( HasSubstr( section ) ) );
    auto const json = parsed( diffOfSwitches( { one, other }, { other, one }, { "--json" } ).out );
    EXPECT_EQ( json[ "kinds" ][ "bfTables" ][ "removed" ].Size(), 5U );
    EXPECT_EQ( json[ "verdict" ][ "notices" ][ 2 ][ "code" ], "BD101" );
}

TEST_F( DiffVerdict, ListsWhatDiffersOnOtherPipesThanThoseOfReplacedPrograms ) {
    auto const one = tables( { "a" } );
    auto const other = tables( { "c", "d" } );
    String const text =
        diffOfSwitches( { one, other, tables( { "x", "y" } ) }, { other, one, tables( { "x" } ) } ).out;
    EXPECT_THAT( text, HasSubstr( "\ntables\n  -! y (pipes 2)  size 1024\n\nresources" ) );
    EXPECT_THAT( text, HasSubstr( "by name notices: 2 pipes with another program, 1 table removed, " ) );
}

TEST_F( DiffVerdict, SaysOnWhichPipesUnreadValuesDiffer ) {
    auto edited = program();
    edited.with( "/parser", "2" ).with( "/tables/0/memory", "[]" );
    EXPECT_THAT( diffOfSwitches( { program(), program() }, { program(), edited }, { "--unread" } ).out,
                 HasSubstr( "not read by the library\n"
                            "  ~  table t (pipes 1)  memory\n"
                            "  ~  section parser (pipes 1)\n" ) );
}

TEST_F( DiffVerdict, ExplainsItsCodes ) {
    auto const one = bfri( { "diff", "--explain", "bd104" } );
    EXPECT_EQ( one.status, 0 );
    EXPECT_THAT( one.out, StartsWith( "BD104 shrunk-record (breaking)\n\n" ) );
    EXPECT_THAT( one.out, HasSubstr( "\n\nWhat to do: " ) );
    auto const all = bfri( { "diff", "--explain", "all" } );
    EXPECT_THAT( all.out, HasSubstr( "\nBD202  reused-handle (handle)\n" ) );
    auto const json = parsed( bfri( { "diff", "--explain", "all", "--json" } ).out );
    EXPECT_EQ( json[ "codes" ].Size(), Bfri::noticeKinds().size() );
    EXPECT_THAT( bfri( { "complete", "--", "diff", "--explain", "bd10" } ).out, HasSubstr( "bd104\n" ) );
    EXPECT_EQ( bfri( { "diff", "--explain", "BD999" } ).status, 2 );
    EXPECT_EQ( bfri( { "diff", "old", "new", "--explain", "BD104" } ).status, 2 );
    EXPECT_EQ( bfri( { "diff", "old" } ).status, 2 );
    EXPECT_EQ( bfri( { "diff" } ).status, 2 );
}

TEST_F( DiffVerdict, AsMarkdownHasVerdictCountsAndDetails ) {
    auto const outcome = diff( program(), program().with( "/tables/0/size", "9" ), { "--markdown" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_THAT( outcome.out,
                 StartsWith( "**Breaking**: an agent that looks everything up by name notices" ) );
    EXPECT_THAT( outcome.out, HasSubstr( "| KIND | ADDED | REMOVED | RENAMED | CHANGED | MOVED | SAME |\n"
                                         "| --- | --- | --- | --- | --- | --- | --- |\n"
                                         "| tables | 0 | 0 | 0 | 1 |  | 1 |\n" ) );
    EXPECT_THAT( outcome.out, HasSubstr( "<details><summary>tables (1)</summary>" ) );
    EXPECT_EQ( diff( program(), program(), { "--markdown" } ).out, "**no difference**\n" );
    EXPECT_EQ( diff( program(), program(), { "--markdown", "--json" } ).status, 2 );
}

TEST_F( DiffVerdict, AsMarkdownIsNoMarkupOfItsNames ) {
    for( char const* const name :
         { "</details><script>x</script>", "`code`", "**bold**", "[link](http://x.y)", "![i](//x)",
           "@user #12", "www.example.com", "| cell |", "a\nb\n# title", "<!-- ", "&lt;", "__x__", "~~x~~",
           "https://x.y" } ) {
        String const out = diff( program( name ), ContextBuilder(), { "--markdown" } ).out;
        EXPECT_THAT( out, Not( HasSubstr( name ) ) );
        for( char const* const mark :
             { "<script", "`", "](", "@", "//", "www.", "\n# ", "<!--", "__", "~~" } )
            EXPECT_THAT( out, Not( HasSubstr( mark ) ) ) << name;
    }
}

TEST_F( DiffVerdict, AsMarkdownIsNoLongerThanAPullRequestMayBe ) {
    ContextBuilder old;
    for( int i = 0; i < 1500; ++i )
        old.table(
            Support::matchTable( "a.rather.long.name.of.a.table.which.is.number_" + std::to_string( i ) ) );
    String const out = diff( old, ContextBuilder(), { "--markdown" } ).out;
    EXPECT_LE( out.size(), 60'000U );
    EXPECT_GE( out.size(), 50'000U );
    EXPECT_THAT( out, testing::ContainsRegex( "\nAnd [0-9]+ more: bfri diff lists them all.\n$" ) );
    auto const count = []( String const& text, String const& part ) {
        int found = 0;
        for( auto at = text.find( part ); at != String::npos; at = text.find( part, at + 1 ) )
            ++found;
        return found;
    };
    EXPECT_EQ( count( out, "<details>" ), count( out, "</details>" ) );
}

} // namespace
