#include "tests/cli/Inputs.h"

#include "cli/Program.h"
#include "cli/grammar/Help.h"
#include "inspect/model/RecordKinds.h"

#include <gmock/gmock.h>
#include <set>
#include <sstream>
#include <streambuf>

namespace {

using Bfri::ExitStatus;
using testing::AllOf;
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
    auto const& words = GetParam().arguments;
    if( std::find( words.begin(), words.end(), String( "--json" ) ) == words.end() )
        EXPECT_THAT( outcome.out, IsEmpty() );
    else
        EXPECT_EQ( String( parsed( outcome.out )[ "error" ].GetString() ), GetParam().message );
    auto const word = std::find_if( words.begin(), words.end(), []( char const* w ) { return *w != '-'; } );
    bool const known = word != words.end() && Bfri::findCommand( Bfri::program(), *word );
    EXPECT_EQ( outcome.err, String( "bfri: " ) + GetParam().message + "\nRun 'bfri " +
                                ( known ? *word + String( " " ) : "" ) + "--help' to see how it is used.\n" );
}

TEST( Help, IsACommandToo ) {
    EXPECT_EQ( bfri( { "help" } ).out, bfri( { "--help" } ).out );
    EXPECT_EQ( bfri( { "help", "show" } ).out, bfri( { "show", "--help" } ).out );
    EXPECT_THAT( bfri( { "help", "show" } ).out, HasSubstr( "Show everything about a record" ) );
    EXPECT_EQ( bfri( { "help", "shwo" } ).status, 2 );
    EXPECT_THAT( bfri( { "help", "shwo" } ).err,
                 StartsWith( "bfri: no command 'shwo'; did you mean 'show'" ) );
}

TEST( Help, IsACommandWithHelpOfItsOwn ) {
    EXPECT_EQ( bfri( { "help", "help" } ).status, 0 );
    EXPECT_THAT( bfri( { "help", "help" } ).out, AllOf( HasSubstr( "Usage: bfri help [OPTIONS] [COMMAND]" ),
                                                        HasSubstr( "bfri help show" ) ) );
    EXPECT_EQ( bfri( { "help", "--help" } ).out, bfri( { "help", "help" } ).out );
    EXPECT_THAT( bfri( { "--help" } ).out, HasSubstr( "\n  help  " ) );
}

TEST( Help, HasTextsOfEveryCommandAndOfNothingElse ) {
    std::istringstream lines( Bfri::program().texts );
    std::set<String> commands;
    for( String line; std::getline( lines, line ); ) {
        if( line.empty() || line.starts_with( "  " ) )
            continue;
        String const command = line.substr( 0, line.find( ": " ) );
        EXPECT_TRUE( Bfri::findCommand( Bfri::program(), command ) ) << line;
        EXPECT_TRUE( commands.insert( command ).second ) << line;
    }
    EXPECT_EQ( commands.size(), Bfri::program().commands.size() );
}

TEST( Help, OfTheTablesSaysWhichOnesTheModelLeavesOut ) {
    EXPECT_THAT( bfri( { "tables", "--help" } ).out, HasSubstr( "have no static\nentries" ) );
}

TEST( UsageInJson, HasTheNamesThatItAnnounces ) {
    auto const outcome = bfri( { "check", "--explain", "BF30", "--json" } );
    EXPECT_EQ( outcome.status, 2 );
    auto const answer = parsed( outcome.out );
    EXPECT_STREQ( answer[ "error" ].GetString(),
                  "no finding has the code 'BF30'; codes like it: BF301, BF302, BF303, BF304, BF305" );
    EXPECT_EQ( compact( answer[ "suggestions" ] ), R"(["BF301","BF302","BF303","BF304","BF305"])" );
    EXPECT_THAT( outcome.err,
                 StartsWith( "bfri: no finding has the code 'BF30'; codes like it:\n  BF301\n" ) );
}

TEST( UsageOfACommand, PointsAtTheHelpOfTheCommand ) {
    EXPECT_THAT( bfri( { "field", "conf" } ).err,
                 testing::EndsWith( "\nRun 'bfri field --help' to see how it is used.\n" ) );
    EXPECT_THAT( bfri( { "feild" } ).err,
                 testing::EndsWith( "\nRun 'bfri --help' to see how it is used.\n" ) );
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
        BadLine{
            "unknown option", { "--frob" }, "options go after the command, but '--frob' comes before it" },
        BadLine{ "option in front of the command",
                 { "--json", "tables", "conf" },
                 "options go after the command, but '--json' comes before it" },
        BadLine{ "help for two commands",
                 { "help", "show", "extra" },
                 "unexpected argument 'extra'; the command is 'bfri help [COMMAND]'" },
        BadLine{ "empty configuration",
                 { "summary", "" },
                 "CONF is empty; it must be the path of a switch configuration" },
        BadLine{ "empty configuration, JSON",
                 { "summary", "", "--json" },
                 "CONF is empty; it must be the path of a switch configuration" },
        BadLine{ "empty one of several configurations",
                 { "check", "conf", "" },
                 "CONF is empty; it must be the path of a switch configuration" },
        BadLine{ "empty new configuration",
                 { "diff", "conf", "" },
                 "NEW is empty; it must be the path of a switch configuration" },
        BadLine{ "no configuration", { "summary" }, "CONF is required" },
        BadLine{ "no name", { "table", "conf" }, "NAME is required" },
        BadLine{ "too many arguments",
                 { "table", "conf", "a", "more", "still more" },
                 "unexpected argument 'more'; the command is 'bfri table CONF NAME'" },
        BadLine{ "an argument too many behind dashes",
                 { "field", "conf", "table", "a", "size", "--", "more" },
                 "unexpected argument 'more'; the command is 'bfri field CONF... KIND NAME FIELD'" },
        BadLine{ "misspelt option",
                 { "tables", "conf", "--jsn" },
                 "'tables' has no option '--jsn'; did you mean '--json' or '--csv'?" },
        BadLine{
            "number with a sign",
            { "lookup", "conf", "-1" },
            "'lookup' has no option '-1'; did you mean '-h'? Put '--' before names that start with a dash" },
        BadLine{
            "name with a dash in front",
            { "field", "conf", "hash", "-dash", "fieldCount" },
            "'field' has no option '-d'; did you mean '-h'? Put '--' before names that start with a dash" },
        BadLine{ "name with two dashes in front",
                 { "table", "conf", "--acl" },
                 "'table' has no option '--acl'. Put '--' before names that start with a dash" },
        BadLine{ "misspelt option of a command with names",
                 { "table", "conf", "--jsn" },
                 "'table' has no option '--jsn'; did you mean '--json'?" },
        BadLine{ "format not offered", { "summary", "conf", "--csv" }, "'summary' has no option '--csv'" },
        BadLine{ "format of dump", { "dump", "conf", "--json" }, "'dump' has no option '--json'" },
        BadLine{ "two formats",
                 { "tables", "conf", "--json", "--csv" },
                 "--json and --csv can't be combined" } ) );

INSTANTIATE_TEST_SUITE_P(
    Choices, WrongUsage,
    testing::Values(
        BadLine{ "choice of rows where there are none",
                 { "summary", "conf", "-n", "1" },
                 "'summary' has no option '-n'; did you mean '-h'?" },
        BadLine{ "bad expression",
                 { "tables", "conf", "--filter", "pipe[" },
                 "can't use --filter 'pipe[' at offset 5: missing terminating ] for character class" },
        BadLine{ "bad expression, JSON",
                 { "tables", "conf", "--json", "--filter", "*" },
                 "can't use --filter '*' at offset 0: quantifier does not follow a repeatable item" },
        BadLine{ "no expression", { "tables", "conf", "--filter" }, "--filter requires REGEX" },
        BadLine{ "two orders",
                 { "tables", "conf", "--sort", "name", "--sort=size" },
                 "--sort given more than once" },
        BadLine{
            "nothing behind the equals sign", { "tables", "--filter=", "conf" }, "--filter requires REGEX" },
        BadLine{ "two numbers", { "tables", "conf", "-n2", "-n", "3" }, "-n given more than once" },
        BadLine{ "misspelt field",
                 { "learn-quantas", "conf", "--sort", "handel" },
                 "can't sort by 'handel'; did you mean 'handle'? The fields are name, handle" },
        BadLine{ "misspelt field, downwards",
                 { "learn-quantas", "conf", "--sort=-nam" },
                 "can't sort by 'nam'; did you mean 'name'? The fields are name, handle" },
        BadLine{ "field of another list",
                 { "headers", "conf", "--sort", "meterReferences" },
                 "can't sort by 'meterReferences'. The fields are name, size" },
        BadLine{ "title in place of the field",
                 { "headers", "conf", "--sort", "BYTES" },
                 "can't sort by 'BYTES'. The fields are name, size" },
        BadLine{ "field with control characters",
                 { "headers", "conf", "--sort", "\x1B[2J" },
                 "can't sort by '\\x1b[2J'. The fields are name, size" },
        BadLine{ "empty field",
                 { "headers", "conf", "--sort", "" },
                 "can't sort by ''. The fields are name, size" },
        BadLine{ "negative number",
                 { "tables", "conf", "-n", "-1" },
                 "-n takes a number of rows, 0 or more, not '-1'" },
        BadLine{ "fraction",
                 { "tables", "conf", "-n", "1.5" },
                 "-n takes a number of rows, 0 or more, not '1.5'" },
        BadLine{ "sign", { "tables", "conf", "-n", "+1" }, "-n takes a number of rows, 0 or more, not '+1'" },
        BadLine{ "hexadecimal",
                 { "tables", "conf", "-n", "0x1" },
                 "-n takes a number of rows, 0 or more, not '0x1'" },
        BadLine{
            "word", { "tables", "conf", "-n", "all" }, "-n takes a number of rows, 0 or more, not 'all'" },
        BadLine{ "white space",
                 { "tables", "conf", "-n", " 1" },
                 "-n takes a number of rows, 0 or more, not ' 1'" },
        BadLine{
            "empty number", { "tables", "conf", "-n", "" }, "-n takes a number of rows, 0 or more, not ''" },
        BadLine{ "no number", { "tables", "conf", "-n" }, "-n requires N" } ) );

INSTANTIATE_TEST_SUITE_P(
    Codes, WrongUsage,
    testing::Values(
        BadLine{ "no code",
                 { "check", "conf", "--ignore", "" },
                 "--ignore takes codes or titles with commas between, not ''" },
        BadLine{ "commas alone",
                 { "check", "conf", "--ignore", ",," },
                 "--ignore takes codes or titles with commas between, not ',,'" },
        BadLine{ "nothing behind the comma",
                 { "check", "conf", "--ignore=BF304, " },
                 "--ignore takes codes or titles with commas between, not 'BF304, '" },
        BadLine{ "no code in one of two options",
                 { "check", "conf", "--ignore=BF304", "--ignore", "" },
                 "--ignore takes codes or titles with commas between, not 'BF304,'" },
        BadLine{ "unknown code among others",
                 { "check", "conf", "--ignore", "BF304,frob,BF305" },
                 "no finding has the code 'frob'; '--explain all' lists them" },
        BadLine{ "no code to explain",
                 { "check", "--explain", "" },
                 "--explain takes codes or titles with commas between, not ''" },
        BadLine{ "explanation of the findings in one",
                 { "check", "conf", "--explain", "BF304" },
                 "--explain goes without CONF" },
        BadLine{ "nothing to check", { "check" }, "check takes one CONF or more, or --explain CODES" } ) );

TEST( Help, GoesToStandardOutputAndListsTheCommands ) {
    auto const outcome = bfri( { "--help" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_THAT( outcome.err, IsEmpty() );
    EXPECT_THAT( outcome.out, HasSubstr( "Usage: bfri COMMAND CONF [ARG...] [OPTIONS]\n" ) );
    for( Bfri::Command const& command : Bfri::program().commands ) {
        bool const listed = outcome.out.find( String( "\n  " ) + command.word + " " ) != String::npos;
        EXPECT_EQ( listed, *command.group != 0 ) << command.word;
    }
}

TEST( Help, OfEveryCommandNamesItsArguments ) {
    for( Bfri::Command const& command : Bfri::program().commands ) {
        auto const outcome = bfri( { command.word, "--help" } );
        EXPECT_EQ( outcome.status, 0 );
        EXPECT_THAT( outcome.out,
                     StartsWith( Bfri::textOf( Bfri::program(), command ).description + "\nUsage: bfri " ) );
        EXPECT_THAT( outcome.out, HasSubstr( String( "bfri " ) + command.word + " [OPTIONS]" ) );
        for( Bfri::Argument const& argument : command.arguments )
            EXPECT_THAT( outcome.out, testing::ContainsRegex( String( "\n  " ) + argument.label +
                                                              "(\\.\\.\\.)? +" + argument.description ) );
        EXPECT_EQ( outcome.out.find( "--json" ) != String::npos, command.json ) << command.word;
        EXPECT_EQ( outcome.out.find( "--csv" ) != String::npos, command.csv ) << command.word;
        EXPECT_EQ( outcome.out.find( "--filter" ) != String::npos,
                   command.listing || command.word == String( "names" ) )
            << command.word;
    }
}

TEST( Help, OfAListSaysWhatItsFieldsAre ) {
    EXPECT_THAT( bfri( { "headers", "--help" } ).out, HasSubstr( "\n\nCOLUMN  FIELD  MEANING\n"
                                                                 "NAME    name   name in the P4 program\n"
                                                                 "BYTES   size   bytes of all its fields\n"
                                                                 "\nExamples:\n" ) );
    EXPECT_THAT( bfri( { "tables", "--help" } ).out,
                 HasSubstr( "\n-            hitBitSupported    whether " ) );
}

TEST( Help, OfAListFitsTheTerminal ) {
    for( Bfri::RecordKind const& listing : Bfri::recordKinds() ) {
        std::istringstream lines( bfri( { listing.many, "--help" } ).out );
        for( String line; std::getline( lines, line ); )
            EXPECT_LE( line.size(), 100U ) << line;
    }
}

TEST( Version, IsThatOfTheProjectWithItsInflater ) {
    auto const outcome = bfri( { "--version" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_EQ( outcome.out, "bfri " BFRI_VERSION "\ninflate: " BFRI_INFLATE "\n" );
}

TEST( Explaining, SeveralCodesIsOneBehindTheOtherEachOnce ) {
    String const one = bfri( { "check", "--explain", "BF304" } ).out;
    String const other = bfri( { "check", "--explain", "BF101" } ).out;
    EXPECT_THAT( one, StartsWith( "BF304 several-parents (note)\n" ) );
    for( std::vector<char const*> const& line :
         { std::vector<char const*>{ "check", "--explain", "BF304,BF101" },
           { "check", "--explain", "several-parents, bf101,BF304" },
           { "check", "--explain", "BF304", "--explain=BF101" } } ) {
        auto const outcome = bfri( line );
        EXPECT_EQ( outcome.status, 0 );
        EXPECT_EQ( outcome.out, one + "\n\n" + other );
    }
    auto const answer = parsed( bfri( { "check", "--explain", "BF304,BF101", "--json" } ).out );
    ASSERT_EQ( answer[ "codes" ].Size(), 2U );
    EXPECT_STREQ( answer[ "codes" ][ 1 ][ "code" ].GetString(), "BF101" );
    EXPECT_EQ( bfri( { "check", "--explain", "BF304,all" } ).out,
               bfri( { "check", "--explain", "all" } ).out );
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

TEST_F( Asking, ToIgnoreFindingsAddsUp ) {
    writeFile( "context.json",
               contextOf( matchTable( "same", 1, R"(, "size": 0)" ) + "," + matchTable( "same", 1 ) ) );
    auto const codesWith = []( std::vector<char const*> line ) {
        line.insert( line.begin(), { "check", "switch.conf", "--json" } );
        auto const answer = parsed( bfri( line ).out );
        std::set<String> codes;
        for( auto const& finding : answer[ "configurations" ][ 0 ][ "findings" ].GetArray() )
            codes.emplace( finding[ "code" ].GetString() );
        return codes;
    };
    auto const all = codesWith( {} );
    ASSERT_GE( all.size(), 2U );
    String const first = *all.begin();
    String const second = *std::next( all.begin() );
    std::set<String> const rest( std::next( all.begin(), 2 ), all.end() );
    EXPECT_EQ( codesWith( { "--ignore", first.c_str(), "--ignore", second.c_str() } ), rest );
    EXPECT_EQ( codesWith( { "--ignore", ( first + " , " + second ).c_str() } ), rest );
}

struct GoodLine {
    std::vector<char const*> options;
    std::vector<char const*> names; ///< in the order of the answer
};

TEST_F( Asking, ForSomeRowsOfAListGivesThose ) {
    writeFile( "context.json", contextOf( matchTable( "b", 3 ) + "," + matchTable( "a.lpm", 2 ) + "," +
                                          matchTable( "B.lpm", 0x1000001 ) ) );
    GoodLine const rows[] = {
        { {}, { "b", "a.lpm", "B.lpm" } },
        { { "--filter", "lpm" }, { "a.lpm", "B.lpm" } },
        { { "--filter=^b|^a" }, { "b", "a.lpm" } },
        { { "--filter", "" }, { "b", "a.lpm", "B.lpm" } },
        { { "--filter", "none" }, {} },
        { { "--sort", "name" }, { "B.lpm", "a.lpm", "b" } },
        { { "--sort=-name" }, { "b", "a.lpm", "B.lpm" } },
        { { "--sort", "-name" }, { "b", "a.lpm", "B.lpm" } },
        { { "--sort", "handle" }, { "a.lpm", "b", "B.lpm" } },
        { { "--sort", "-size" }, { "b", "a.lpm", "B.lpm" } }, // all of one size
        { { "-n", "0" }, {} },
        { { "-n", "2" }, { "b", "a.lpm" } },
        { { "-n2" }, { "b", "a.lpm" } },
        { { "-n", "007" }, { "b", "a.lpm", "B.lpm" } },
        { { "-n", "99999999999999999999" }, { "b", "a.lpm", "B.lpm" } },
        { { "-n", "1", "--sort", "-handle", "--filter", "^[ab]" }, { "b" } },
    };
    for( GoodLine const& row : rows ) {
        std::vector<char const*> line = { "tables", "switch.conf", "--json" };
        line.insert( line.end(), row.options.begin(), row.options.end() );
        auto const outcome = bfri( line );
        EXPECT_EQ( outcome.status, 0 ) << outcome.err;
        auto const answer = parsed( outcome.out );
        std::vector<String> names;
        for( auto const& table : answer[ "bfTables" ].GetArray() )
            names.emplace_back( table[ "name" ].GetString() );
        EXPECT_EQ( names, std::vector<String>( row.names.begin(), row.names.end() ) )
            << testing::PrintToString( row.options );
    }
}

TEST_F( Asking, ForRowsThatAreNotThereIsStatus0InEveryFormat ) {
    struct {
        char const* format;
        char const* answer;
    } const rows[] = { { "--json", "{\n  \"format\": 1,\n  \"bfLearnQuantaInfos\": []\n}\n" },
                       { "--csv", "name,handle\n" },
                       { nullptr, "HANDLE  NAME\n" } };
    for( auto const& row : rows ) {
        std::vector<char const*> line = { "learn-quantas", "switch.conf", "--filter", "none" };
        if( row.format )
            line.push_back( row.format );
        auto const outcome = bfri( line );
        EXPECT_EQ( outcome.status, 0 );
        EXPECT_EQ( outcome.out, row.answer );
        EXPECT_THAT( outcome.err, IsEmpty() );
    }
}

TEST_F( Asking, WithAnExpressionThatTakesForeverIsWrongUsage ) {
    writeFile( "context.json", contextOf( matchTable( String( 40, 'a' ) + "!", 1 ) ) );
    auto const outcome = bfri( { "tables", "switch.conf", "--json", "--filter", "^(a|aa)+$" } );
    EXPECT_EQ( outcome.status, 2 );
    char const* const reason = "can't use --filter '^(a|aa)+$' on a name of 41 bytes: match limit exceeded";
    EXPECT_STREQ( parsed( outcome.out )[ "error" ].GetString(), reason );
    EXPECT_THAT( outcome.err, StartsWith( String( "bfri: " ) + reason + "\n" ) );
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
               R"({"format":1,"error":"no match table 'lpn'; names like it: pipe.a.lpm, pipe.b.lpm",)"
               R"("suggestions":["pipe.a.lpm","pipe.b.lpm"]})" );
    EXPECT_THAT( outcome.err, StartsWith( "bfri: no match table 'lpn'; names like it:\n  pipe.a.lpm\n" ) );
}

TEST_F( Asking, ForANameThatLooksLikeAnOptionWorksBehindTwoDashes ) {
    EXPECT_THAT( bfri( { "table", "switch.conf", "--", "--odd" } ).err,
                 HasSubstr( "no match table '--odd'" ) );
    EXPECT_THAT( bfri( { "field", "switch.conf", "table", "--", "-dash", "size" } ).err,
                 HasSubstr( "no table '-dash'" ) );
    EXPECT_THAT( bfri( { "lookup", "switch.conf", "--", "-1" } ).err, HasSubstr( "'-1'" ) );
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
