#include "tests/cli/Inputs.h"

#include "cli/grammar/Completion.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

Bfri::Candidates candidatesFor( std::vector<String> const& line ) {
    return Bfri::candidatesFor( Bfri::program(), line );
}

class Completion : public InFolder {
  protected:
    Completion() { modelOf( completeContext() ); }

    std::vector<String> wordsFor( std::vector<String> const& line ) { return candidatesFor( line ).words; }
};

TEST_F( Completion, OfTheFirstWordOffersTheCommandsOfTheHelp ) {
    EXPECT_THAT( wordsFor( { "" } ), IsSupersetOf( { "show", "tables", "--help", "--version" } ) );
    EXPECT_THAT( wordsFor( { "" } ), Not( Contains( "complete" ) ) );
}

TEST_F( Completion, OfAConfigurationLeavesPathsToTheShell ) {
    EXPECT_TRUE( candidatesFor( { "tables", "" } ).files );
    EXPECT_TRUE( candidatesFor( { "diff", "switch.conf", "" } ).files );
    EXPECT_TRUE( candidatesFor( { "check", "a", "b", "c" } ).files );
    EXPECT_FALSE( candidatesFor( { "diff", "a", "b", "" } ).files );
    EXPECT_FALSE( candidatesFor( { "table", "switch.conf", "" } ).files );
}

struct LineRow {
    std::vector<String> line;
    std::vector<String> some; ///< of the words that are offered
};

TEST_F( Completion, OfAnArgumentOffersWhatTheModelHas ) {
    LineRow const rows[] = {
        { { "table", "switch.conf", "" }, { "pipe.acl" } },
        { { "table", "--json", "switch.conf", "pi" }, { "pipe.acl" } },
        { { "show", "switch.conf", "" }, { "pipe.acl", "counter", "hdr.mac", "hash" } },
        { { "field", "switch.conf", "" }, { "table", "counter", "phv" } },
        { { "field", "switch.conf", "counter", "" }, { "counter", "hits" } },
        { { "field", "switch.conf", "tables", "pipe.acl", "" }, { "name", "size", "adtHandle" } },
        { { "names", "switch.conf", "--kind", "" }, { "table", "header" } },
        { { "tables", "switch.conf", "--sort", "" }, { "name", "totalEntries" } },
        { { "tables", "switch.conf", "--color", "" }, { "auto", "always", "never" } },
        { { "tables", "switch.conf", "--j" }, { "--json", "--csv", "--filter", "-n", "--help" } },
        { { "check", "--explain", "" }, { "BF201", "BF304", "all" } },
        { { "help", "" }, { "show", "tables", "help" } },
    };
    for( LineRow const& row : rows )
        EXPECT_THAT( wordsFor( row.line ), IsSupersetOf( row.some ) ) << testing::PrintToString( row.line );
}

TEST_F( Completion, OfAConditionOffersFieldsWhereItMayHaveOne ) {
    for( char const* const start :
         { "", " ", "(", "size>1 and ", "size>1 or not (", "not ", "((name=a) or ", "name='and ' and " } ) {
        auto const offered = candidatesFor( { "headers", "switch.conf", "--where", start } );
        EXPECT_EQ( offered.written, start );
        EXPECT_THAT( offered.words, ElementsAre( "name", "size" ) ) << start;
    }
    for( char const* const start : { "size>", "size>1 ", "size>1 and", "size>1 na", "name='", "name=' and ",
                                     "siz =1 and ", "not", "size>1)" } )
        EXPECT_THAT( wordsFor( { "headers", "switch.conf", "--where", start } ), IsEmpty() ) << start;
    struct {
        std::vector<char const*> line;
        char const* offered;
    } const rows[] = { { { "headers", "switch.conf", "--where", "na" }, "name\n" },
                       { { "headers", "switch.conf", "--where=not (s" }, "--where=not (size\n" },
                       { { "tables", "switch.conf", "--where", "size>1 and adt" },
                         "size>1 and adtHandle\nsize>1 and adtName\n" },
                       { { "names", "switch.conf", "--where", "k" }, "kinds\n" },
                       { { "headers", "switch.conf", "--where", "co" }, "" },
                       { { "headers", "switch.conf", "switch.conf", "--where", "co" }, "conf\n" } };
    for( auto const& row : rows ) {
        std::vector<char const*> line = { "complete", "--" };
        line.insert( line.end(), row.line.begin(), row.line.end() );
        EXPECT_EQ( bfri( line ).out, row.offered ) << row.line.back();
    }
}

TEST_F( Completion, OfAHandleOffersThoseOfPlacedTables ) {
    writeFile( "context.json", contextOf( matchTable( "a", 1 ) + "," + matchTable( "b", 0x2000010 ) ) );
    EXPECT_THAT( wordsFor( { "lookup", "switch.conf", "1", "" } ),
                 ElementsAre( "0x00000001", "0x02000010" ) );
    struct {
        char const* word;
        char const* offered;
    } const rows[] = { { "0", "0x00000001\n0x02000010\n" },
                       { "0x02", "0x02000010\n" },
                       { "0x2", "0x2000010\n" },
                       { "0x1", "0x1\n" },
                       { "0x3", "" },
                       { "3", "33554448\n" },
                       { "0X0", "0X00000001\n0X02000010\n" },
                       { "0X2", "0X2000010\n" },
                       { "x", "" } };
    for( auto const& row : rows )
        EXPECT_EQ( bfri( { "complete", "--", "lookup", "switch.conf", row.word } ).out, row.offered )
            << row.word;
}

TEST_F( Completion, OfANameThatBeginsAsAHandleOffersHandlesToo ) {
    writeFile( "context.json", Support::ContextBuilder()
                                   .table( Support::matchTable( "1st" ).handle( 1 ) )
                                   .table( Support::statisticsTable( "counter" ).handle( 0x2000010 ) )
                                   .text() );
    struct {
        std::vector<char const*> line;
        char const* offered;
    } const rows[] = { { { "show", "switch.conf", "0x" }, "0x00000001\n0x02000010\n" },
                       { { "show", "switch.conf", "0x2" }, "0x2000010\n" },
                       { { "show", "switch.conf", "33554" }, "33554448\n" },
                       { { "show", "switch.conf", "1" }, "1st\n1\n" },
                       { { "table", "switch.conf", "0x" }, "0x00000001\n" },
                       { { "field", "switch.conf", "table", "0x0" }, "0x00000001\n" },
                       { { "field", "switch.conf", "counter", "0x0" }, "0x02000010\n" },
                       { { "field", "switch.conf", "header", "0x0" }, "" },
                       { { "table", "switch.conf", "" }, "1st\n" } };
    for( auto const& row : rows ) {
        std::vector<char const*> line = { "complete", "--" };
        line.insert( line.end(), row.line.begin(), row.line.end() );
        EXPECT_EQ( bfri( line ).out, row.offered ) << row.line.back();
    }
}

TEST_F( Completion, OfAHandleInCapitalsOffersCapitals ) {
    writeFile( "context.json", contextOf( matchTable( "a", 0x20000AB ) ) );
    for( auto const& [ word, offered ] :
         { std::pair( "0x020000A", "0x020000AB\n" ), { "0x020000a", "0x020000ab\n" } } )
        EXPECT_EQ( bfri( { "complete", "--", "lookup", "switch.conf", word } ).out, offered );
}

TEST_F( Completion, OfAnOptionAndItsValueInOneWordIsThatOfTheValue ) {
    struct {
        std::vector<char const*> line;
        char const* offered;
    } const rows[] = { { { "tables", "switch.conf", "--color=a" }, "--color=auto\n--color=always\n" },
                       { { "headers", "switch.conf", "--sort=" }, "--sort=name\n--sort=size\n" },
                       { { "headers", "switch.conf", "--sort=-s" }, "--sort=-size\n" },
                       { { "headers", "switch.conf", "--sort", "-s" }, "-size\n" },
                       { { "headers", "switch.conf", "--sort", "-" }, "-name\n-size\n" },
                       { { "check", "--ignore=BF304,bf20" }, "--ignore=BF304,bf201\n" },
                       { { "headers", "switch.conf", "--frob=" }, "" },
                       { { "headers", "switch.conf", "--json=" }, "" },
                       { { "headers", "switch.conf", "--filter=s" }, "" } };
    for( auto const& row : rows ) {
        std::vector<char const*> line = { "complete", "--" };
        line.insert( line.end(), row.line.begin(), row.line.end() );
        String const out = bfri( line ).out;
        EXPECT_TRUE( row.offered[ 0 ] ? out.starts_with( row.offered ) : out.empty() )
            << row.line.back() << ": " << out;
    }
}

TEST_F( Completion, OfAnActionOfATableOffersItsTables ) {
    String const tables = bfri( { "actions", "switch.conf", "--csv" } ).out;
    ASSERT_THAT( tables, testing::HasSubstr( ",count,pipe.acl\n" ) );
    auto const offered = []( std::vector<char const*> line ) {
        line.insert( line.begin(), { "complete", "--" } );
        return bfri( line ).out;
    };
    EXPECT_EQ( offered( { "show", "switch.conf", "count of " } ), "count of pipe.acl\n" );
    EXPECT_EQ( offered( { "show", "switch.conf", "count of pi" } ), "count of pipe.acl\n" );
    EXPECT_EQ( offered( { "show", "switch.conf", "count of ac" } ), "count of pipe.acl\n" );
    EXPECT_EQ( offered( { "field", "switch.conf", "action", "count of ac" } ), "count of pipe.acl\n" );
    EXPECT_EQ( offered( { "field", "switch.conf", "table", "count of ac" } ), "" );
    EXPECT_EQ( offered( { "show", "switch.conf", "nothing of ac" } ), "" );
}

TEST_F( Completion, OfCodesWithCommasBetweenIsThatOfTheLastOne ) {
    struct {
        char const* option;
        char const* word;
        char const* offered;
    } const rows[] = { { "--ignore", "BF304,BF20", "BF304,BF201\nBF304,BF202\n" },
                       { "--ignore", "BF201,BF304,BF20", "BF201,BF304,BF202\n" },
                       { "--ignore", "BF304,BF304", "" },
                       { "--explain", "BF304,BF20", "BF304,BF201\nBF304,BF202\n" },
                       { "--explain", "a", "all\n" },
                       { "--ignore", "a", "" },
                       { "--explain", "BF304,a", "" },
                       { "--ignore", "bf20", "bf201\nbf202\n" },
                       { "--ignore", "unread", "unread-context-file\n" },
                       { "--ignore", "BF304,dup", "BF304,duplicate-table-name\n" } };
    for( auto const& row : rows ) {
        String const out = bfri( { "complete", "--", "check", row.option, row.word } ).out;
        EXPECT_TRUE( row.offered[ 0 ] ? out.starts_with( row.offered ) : out.empty() )
            << row.word << ": " << out;
    }
}

TEST_F( Completion, OfTheEndOfANameOffersTheName ) {
    EXPECT_EQ( bfri( { "complete", "--", "table", "switch.conf", "ac" } ).out, "pipe.acl\n" );
    EXPECT_EQ( bfri( { "complete", "--", "show", "switch.conf", "hash" } ).out, "hash\n" );
    std::vector<String> const names{ "a.b.cd", "cx", "a.cy.z", "acd" };
    EXPECT_THAT( Bfri::beginningLike( "c", names ), ElementsAre( "cx" ) );
    EXPECT_THAT( Bfri::beginningLike( "cd", names ), ElementsAre( "a.b.cd" ) );
    EXPECT_THAT( Bfri::beginningLike( "cy.z", names ), ElementsAre( "a.cy.z" ) );
    EXPECT_THAT( Bfri::beginningLike( "z", names ), ElementsAre( "a.cy.z" ) );
    EXPECT_THAT( Bfri::beginningLike( "d", names ), IsEmpty() );
    EXPECT_EQ( Bfri::beginningLike( "", names ), names );
}

TEST_F( Completion, OfANameThatLooksLikeAnOptionFollowsTwoDashes ) {
    writeFile( "context.json", contextOf( matchTable( "-odd", 1 ) + "," + matchTable( "--odder", 2 ) ) );
    EXPECT_EQ( bfri( { "complete", "--", "table", "switch.conf", "--", "-" } ).out, "--odder\n-odd\n" );
    EXPECT_EQ( bfri( { "complete", "--", "table", "switch.conf", "--", "--" } ).out, "--odder\n" );
    EXPECT_EQ( bfri( { "complete", "--", "table", "switch.conf", "-" } ).out, "--help\n--json\n--color\n" );
}

TEST_F( Completion, OfATableOffersNoOtherNames ) {
    EXPECT_THAT( wordsFor( { "table", "switch.conf", "" } ), ElementsAre( "pipe.acl" ) );
}

TEST_F( Completion, OfWhatNothingCanStandForOffersNothing ) {
    for( std::vector<String> const& line : { std::vector<String>{ "frobnicate", "" },
                                             { "table", "switch.conf", "pipe.acl", "" },
                                             { "table", "missing.conf", "" },
                                             { "field", "switch.conf", "nothing", "x", "" },
                                             { "tables", "switch.conf", "--filter", "" },
                                             { "man", "" } } )
        EXPECT_THAT( wordsFor( line ), IsEmpty() ) << testing::PrintToString( line );
}

TEST_F( Completion, PrintsWhatBeginsAsTheLastWordDoes ) {
    EXPECT_EQ( bfri( { "complete", "--", "tab" } ).out, "table\ntables\n" );
    EXPECT_EQ( bfri( { "complete", "--", "tables", "sw" } ).out, ":files\n" );
    EXPECT_EQ( bfri( { "complete", "--", "tables", "switch.conf", "--js" } ).out, "--json\n" );
    EXPECT_EQ( bfri( { "complete", "--", "table", "missing.conf", "" } ).out, "" );
    EXPECT_EQ( bfri( { "complete", "--", "table", "missing.conf", "" } ).err, "" );
}

TEST( Manual, ShowsEveryCommandOfTheHelpWithItsOptions ) {
    auto const page = bfri( { "man" } ).out;
    EXPECT_THAT( page, testing::StartsWith( ".TH BFRI 1 \"\" \"bfri " BFRI_VERSION "\"" ) );
    for( Bfri::Command const& command : Bfri::program().commands ) {
        String word;
        for( char const c : String( command.word ) )
            word += c == '-' ? String( "\\-" ) : String( 1, c );
        bool const there = page.find( ".SS \\fB" + word + "\\fR" ) != String::npos;
        EXPECT_EQ( there, *command.group != 0 ) << command.word;
    }
    EXPECT_THAT( page, testing::HasSubstr( "\\fB\\-\\-filter\\fR \\fIREGEX\\fR" ) );
    EXPECT_THAT( page, testing::HasSubstr( ".SH \"EXIT STATUS\"" ) );
}

} // namespace
