#include "tests/cli/Inputs.h"

#include "cli/Run.h"

#include <gmock/gmock.h>
#include <sstream>
#include <streambuf>

namespace {

using Bfri::ExitStatus;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

struct BadLine {
    char const* what;
    std::vector<char const*> arguments;
    char const* message;
};

std::ostream& operator<<( std::ostream& os, BadLine const& row ) { return os << row.what; }

class WrongUsage : public testing::TestWithParam<BadLine> {};

TEST_P( WrongUsage, NamesTheWordAndPointsAtTheHelp ) {
    auto const outcome = bfri( GetParam().arguments );
    EXPECT_EQ( outcome.status, 2 );
    EXPECT_THAT( outcome.out, IsEmpty() );
    EXPECT_EQ( outcome.err,
               String( "bfri: " ) + GetParam().message + "\nRun 'bfri --help' to see how it is used.\n" );
}

INSTANTIATE_TEST_SUITE_P(
    Lines, WrongUsage,
    testing::Values(
        BadLine{ "no command", {}, "a command is required" },
        BadLine{ "misspelt command",
                 { "tabels", "conf" },
                 "no command 'tabels'; did you mean 'table' or 'tables'?" },
        BadLine{ "unknown command", { "frobnicate" }, "no command 'frobnicate'" },
        BadLine{ "empty command", { "" }, "no command ''" },
        BadLine{ "command with control characters", { "\x1B[2J" }, "no command '\\x1b[2J'" },
        BadLine{ "unknown option", { "--frob" }, "The following argument was not expected: --frob" },
        BadLine{ "no configuration", { "summary" }, "CONF is required" },
        BadLine{ "no name", { "table", "conf" }, "NAME is required" },
        BadLine{ "too many arguments",
                 { "tables", "conf", "more" },
                 "The following argument was not expected: more" },
        BadLine{ "misspelt option",
                 { "tables", "conf", "--jsn" },
                 "The following argument was not expected: --jsn" },
        BadLine{ "format not offered",
                 { "summary", "conf", "--csv" },
                 "The following argument was not expected: --csv" },
        BadLine{ "format of dump",
                 { "dump", "conf", "--json" },
                 "The following argument was not expected: --json" },
        BadLine{ "two formats", { "tables", "conf", "--json", "--csv" }, "--json excludes --csv" } ) );

TEST( Help, GoesToStandardOutputAndListsTheCommands ) {
    auto const outcome = bfri( { "--help" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_THAT( outcome.err, IsEmpty() );
    EXPECT_THAT( outcome.out, HasSubstr( "COMMAND CONF [ARG...]" ) );
    for( Bfri::Command const& command : Bfri::commands() )
        EXPECT_THAT( outcome.out, HasSubstr( String( "\n  " ) + command.word + " " ) );
}

TEST( Help, OfEveryCommandNamesItsArguments ) {
    for( Bfri::Command const& command : Bfri::commands() ) {
        auto const outcome = bfri( { command.word, "--help" } );
        EXPECT_EQ( outcome.status, 0 );
        EXPECT_THAT( outcome.out, StartsWith( command.description ) );
        EXPECT_THAT( outcome.out, HasSubstr( String( "bfri " ) + command.word + " [OPTIONS] CONF" ) );
        EXPECT_EQ( outcome.out.find( "--json" ) != String::npos, command.offersJson ) << command.word;
        EXPECT_EQ( outcome.out.find( "--csv" ) != String::npos, command.offersCsv ) << command.word;
    }
}

TEST( Version, IsThatOfTheProject ) {
    auto const outcome = bfri( { "--version" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_EQ( outcome.out, "bfri " BFRI_VERSION "\n" );
}

class Asking : public InFolder {
  protected:
    Asking() {
        writeSwitchConf( "context.json" );
        writeFile( "context.json",
                   contextOf( matchTable( "pipe.a.lpm", 1 ) + "," + matchTable( "pipe.b.lpm", 2 ) ) );
    }
};

TEST_F( Asking, AnsweredIsStatus0 ) {
    for( std::vector<char const*> const& arguments : { std::vector<char const*>{ "summary", "switch.conf" },
                                                       { "tables", "switch.conf", "--csv" },
                                                       { "resources", "switch.conf", "--json" },
                                                       { "table", "switch.conf", "a.lpm" },
                                                       { "table", "--json", "switch.conf", "pipe.b.lpm" },
                                                       { "dump", "switch.conf" } } ) {
        auto const outcome = bfri( arguments );
        EXPECT_EQ( outcome.status, 0 ) << arguments.front() << outcome.err;
        EXPECT_THAT( outcome.err, IsEmpty() );
        EXPECT_FALSE( outcome.out.empty() );
    }
}

TEST_F( Asking, ForWhatIsNotThereIsStatus1 ) {
    auto const outcome = bfri( { "table", "switch.conf", "lpm" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_THAT( outcome.out, IsEmpty() );
    EXPECT_EQ( outcome.err,
               "bfri: 'lpm' is the end of several tables' names:\n  pipe.a.lpm\n  pipe.b.lpm\n" );
}

TEST_F( Asking, ForWhatIsNotThereInJsonAnswersInJson ) {
    auto const outcome = bfri( { "table", "switch.conf", "lpn", "--json" } );
    EXPECT_EQ( outcome.status, 1 );
    EXPECT_EQ( compact( parsed( outcome.out ) ),
               R"({"format":1,"error":"no match table 'lpn'; names like it:",)"
               R"("suggestions":["pipe.a.lpm","pipe.b.lpm"]})" );
    EXPECT_THAT( outcome.err, StartsWith( "bfri: no match table 'lpn'; names like it:\n  pipe.a.lpm\n" ) );
}

TEST_F( Asking, ForANameThatLooksLikeAnOptionWorksBehindTwoDashes ) {
    EXPECT_THAT( bfri( { "table", "switch.conf", "--", "--odd" } ).err,
                 HasSubstr( "no match table '--odd'" ) );
}

/// Where nothing can be written, for a reason of its own.
class BrokenBuffer : public std::streambuf {
    int_type overflow( int_type ) override { throw std::runtime_error( "gone \x1B wrong" ); }
};

TEST_F( Asking, WithAnyOtherErrorIsStatus4 ) {
    BrokenBuffer buffer;
    std::ostream out( &buffer );
    out.exceptions( std::ios::badbit );
    std::ostringstream err;
    char const* const arguments[] = { "bfri", "tables", "switch.conf" };
    EXPECT_EQ( Bfri::run( 3, arguments, { out, err } ), ExitStatus::internal );
    EXPECT_EQ( err.str(), "bfri: internal error: gone \\x1b wrong\n" );
}

} // namespace
