#include "cli/grammar/LineParser.h"

#include <gmock/gmock.h>
#include <sstream>

namespace {

using namespace Bfri;

// A program with every kind of argument and option.

constexpr char const* modes[] = { "fast", "safe" };
constexpr Argument copyArguments[] = { { "FROM", "", { ValueKind::file, "a path" } },
                                       { "TO", "", {}, Arity::onceOrMore } };
constexpr Option copyOptions[] = {
    { .name = "--force", .label = nullptr, .description = "", .shortName = "-f" },
    { .name = "--level",
      .label = "N",
      .description = "",
      .type = { ValueKind::number, "a level" },
      .shortName = "-l" },
    { .name = "--tag", .label = "TAG", .description = "", .repeatable = true },
    { .name = "--mode", .label = "MODE", .description = "", .type = { ValueKind::choice, "", modes } },
    { .name = "--dry", .label = nullptr, .description = "", .excludes = "--force", .shortName = "-d" },
    { .name = "-n", .label = "N", .description = "" } };
constexpr Argument maybeArguments[] = { { "WHAT", "", {}, Arity::atMostOnce } };
constexpr Argument anyArguments[] = { { "WHAT", "", {}, Arity::anyTimes } };

Program const& toy() {
    static Command const commands[] = {
        { .word = "copy", .group = "All", .arguments = copyArguments, .options = copyOptions },
        { .word = "maybe", .group = "All", .arguments = maybeArguments, .json = true },
        { .word = "any", .group = "All", .arguments = anyArguments, .json = true, .csv = true },
        { .word = "none", .group = "All", .arguments = {} } };
    static Program const program = { .name = "toy", .commands = commands };
    return program;
}

/// The words between the spaces; "''" is an empty one.
std::vector<String> wordsOf( String const& line ) {
    std::istringstream words( line );
    std::vector<String> all;
    for( String word; words >> word; )
        all.push_back( word == "''" ? "" : word );
    return all;
}

ParsedLine parsed( String const& line ) {
    LineParser parser( toy() );
    for( String const& word : wordsOf( line ) )
        parser.take( word );
    return std::move( parser ).finish();
}

/// What a word gives: "copy", "FROM=a", "--level", "--level=3", "--".
String textOf( Word const& word ) {
    switch( word.role ) {
    case Role::command:
    case Role::endOfOptions:
        return word.text;
    case Role::argument:
        return word.argument->label + ( '=' + word.value() );
    case Role::optionValue:
        return '=' + word.value();
    case Role::wrong:
        return "wrong";
    case Role::option:
        break;
    }
    String text;
    for( Option const* const option : word.options )
        text += ( text.empty() ? "" : "+" ) + String( option->name );
    return text + ( word.valueAt ? '=' + word.value() : "" );
}

String textOf( ParsedLine const& line ) {
    String text;
    for( Word const& word : line.words )
        text += ( text.empty() ? "" : " " ) + textOf( word );
    return text;
}

TEST( Line, MeansWordByWord ) {
    struct {
        char const* line;
        char const* meaning;
    } const rows[] = {
        { "copy a b", "copy FROM=a TO=b" },
        { "copy a b c", "copy FROM=a TO=b TO=c" },
        { "copy a -- b", "copy FROM=a -- TO=b" },
        { "copy -- a b", "copy -- FROM=a TO=b" },
        { "copy a -- --force -f", "copy FROM=a -- TO=--force TO=-f" },
        { "copy a -- -- b", "copy FROM=a -- TO=-- TO=b" },
        { "copy a - b", "copy FROM=a TO=- TO=b" },
        { "copy a b --force", "copy FROM=a TO=b --force" },
        { "copy --force a b", "copy --force FROM=a TO=b" },
        { "copy a --force b", "copy FROM=a --force TO=b" },
        { "copy a b --force --force", "copy FROM=a TO=b --force --force" },
        { "copy a b -f", "copy FROM=a TO=b --force" },
        { "copy a b --level 3", "copy FROM=a TO=b --level =3" },
        { "copy a b --level=3", "copy FROM=a TO=b --level=3" },
        { "copy a b -l 3", "copy FROM=a TO=b --level =3" },
        { "copy a b -l3", "copy FROM=a TO=b --level=3" },
        { "copy a b -fl3", "copy FROM=a TO=b --force+--level=3" },
        { "copy a b -fl 3", "copy FROM=a TO=b --force+--level =3" },
        { "copy a b -n-1", "copy FROM=a TO=b -n=-1" },
        { "copy a b --tag x --tag=y", "copy FROM=a TO=b --tag =x --tag=y" },
        { "copy a b --tag=x=y", "copy FROM=a TO=b --tag=x=y" },
        { "copy a b --tag --", "copy FROM=a TO=b --tag =--" },
        { "copy a b --tag --force", "copy FROM=a TO=b --tag =--force" },
        { "copy a b --tag --help", "copy FROM=a TO=b --tag =--help" },
        { "copy a b --tag ''", "copy FROM=a TO=b --tag =" },
        { "copy a ''", "copy FROM=a TO=" },
        { "copy a b --mode safe", "copy FROM=a TO=b --mode =safe" },
        { "maybe", "maybe" },
        { "maybe a", "maybe WHAT=a" },
        { "any", "any" },
        { "any a b c", "any WHAT=a WHAT=b WHAT=c" },
        { "any copy", "any WHAT=copy" },
        { "none --", "none --" },
        { "none --color=never", "none --color=never" },
    };
    for( auto const& row : rows ) {
        ParsedLine const line = parsed( row.line );
        EXPECT_EQ( textOf( line ), row.meaning ) << row.line;
        EXPECT_FALSE( line.error ) << row.line << ": " << usageMessage( toy(), line );
        EXPECT_EQ( line.asked, ParsedLine::Asked::answer ) << row.line;
    }
}

TEST( Line, WithAMistakeSaysWhichWord ) {
    struct {
        char const* line;
        Mistake mistake;
        std::size_t position;
        char const* message;
    } const rows[] = {
        { "", Mistake::noCommand, 0, "a command is required" },
        { "cpoy a b", Mistake::unknownCommand, 0, "no command 'cpoy'; did you mean 'copy'?" },
        { "cpoy --frob", Mistake::unknownCommand, 0, "no command 'cpoy'; did you mean 'copy'?" },
        { "'' a", Mistake::unknownCommand, 0, "no command ''" },
        { "--force copy a b", Mistake::optionTooEarly, 0,
          "options go after the command, but '--force' comes before it" },
        { "- copy a b", Mistake::optionTooEarly, 0, "options go after the command, but '-' comes before it" },
        { "-- copy a b", Mistake::optionTooEarly, 0,
          "options go after the command, but '--' comes before it" },
        { "--help=x copy", Mistake::optionTooEarly, 0,
          "options go after the command, but '--help=x' comes before it" },
        { "copy a b --froce", Mistake::unknownOption, 3,
          "'copy' has no option '--froce'; did you mean '--force'?" },
        { "copy a --frob=1 --orce b", Mistake::unknownOption, 2,
          "'copy' has no option '--frob'. Put '--' before names that start with a dash" },
        { "copy a b -x", Mistake::unknownOption, 3,
          "'copy' has no option '-x'; did you mean '-h' or '-n'? Put '--' before names that start with a "
          "dash" },
        { "copy a b -fx", Mistake::unknownOption, 3,
          "'copy' has no option '-x'; did you mean '-h' or '-n'? Put '--' before names that start with a "
          "dash" },
        { "copy a b --version", Mistake::unknownOption, 3,
          "'copy' has no option '--version'. Put '--' before names that start with a dash" },
        { "none --froce", Mistake::unknownOption, 1, "'none' has no option '--froce'" },
        { "copy a b --level", Mistake::missingValue, 4, "--level requires N" },
        { "copy a b -l", Mistake::missingValue, 4, "--level requires N" },
        { "copy a --level= b", Mistake::missingValue, 2, "--level requires N" },
        { "copy a b --force=yes", Mistake::unexpectedValue, 3, "--force takes no value" },
        { "copy a b --force=", Mistake::unexpectedValue, 3, "--force takes no value" },
        { "copy a b --level 1 -l2", Mistake::repeatedOption, 5, "--level given more than once" },
        { "copy a b -f --dry", Mistake::conflictingOptions, 4, "--force and --dry can't be combined" },
        { "copy a b -d --force", Mistake::conflictingOptions, 4, "--dry and --force can't be combined" },
        { "copy a b -df", Mistake::conflictingOptions, 3, "--dry and --force can't be combined" },
        { "any --csv --json", Mistake::conflictingOptions, 2, "--csv and --json can't be combined" },
        { "copy", Mistake::missingArgument, 1, "FROM is required" },
        { "copy a --force", Mistake::missingArgument, 3, "TO is required" },
        { "none a b", Mistake::unexpectedArgument, 1, "unexpected argument 'a'; the command is 'toy none'" },
        { "maybe a b", Mistake::unexpectedArgument, 2,
          "unexpected argument 'b'; the command is 'toy maybe [WHAT]'" },
        { "none -- --", Mistake::unexpectedArgument, 2,
          "unexpected argument '--'; the command is 'toy none'" },
        { "none a --frob", Mistake::unknownOption, 2, "'none' has no option '--frob'" },
        { "copy '' b", Mistake::wrongValue, 1, "FROM is empty; it must be a path" },
        { "copy a b --level x", Mistake::wrongValue, 4, "--level takes a level, not 'x'" },
        { "copy a b -l=3", Mistake::wrongValue, 3, "--level takes a level, not '=3'" },
        { "copy a b --level ''", Mistake::wrongValue, 4, "--level takes a level, not ''" },
        { "copy a b --mode=slow", Mistake::wrongValue, 3, "--mode takes fast or safe, not 'slow'" },
        { "copy a b --color \x1B[2J", Mistake::wrongValue, 4,
          "--color takes auto, always or never, not '\\x1b[2J'" },
    };
    for( auto const& row : rows ) {
        ParsedLine const line = parsed( row.line );
        ASSERT_TRUE( line.error ) << row.line;
        EXPECT_EQ( line.error->mistake, row.mistake ) << row.line;
        EXPECT_EQ( line.error->position, row.position ) << row.line;
        EXPECT_EQ( usageMessage( toy(), line ), row.message ) << row.line;
    }
}

TEST( Line, AsksForHelpWhateverFollows ) {
    struct {
        char const* line;
        ParsedLine::Asked asked;
        char const* command;
    } const rows[] = { { "--help", ParsedLine::Asked::help, nullptr },
                       { "-h", ParsedLine::Asked::help, nullptr },
                       { "--help copy", ParsedLine::Asked::help, "copy" },
                       { "copy --help", ParsedLine::Asked::help, "copy" },
                       { "copy -fh", ParsedLine::Asked::help, "copy" },
                       { "copy a --help --frob --level", ParsedLine::Asked::help, "copy" },
                       { "none a b --help", ParsedLine::Asked::help, "none" },
                       { "copy a b --mode slow --help", ParsedLine::Asked::help, "copy" },
                       { "--version", ParsedLine::Asked::version, nullptr },
                       { "--help --version", ParsedLine::Asked::version, nullptr },
                       { "--version copy --frob", ParsedLine::Asked::version, "copy" } };
    for( auto const& row : rows ) {
        ParsedLine const line = parsed( row.line );
        EXPECT_EQ( line.asked, row.asked ) << row.line;
        EXPECT_EQ( line.command, row.command ? findCommand( toy(), row.command ) : nullptr ) << row.line;
        EXPECT_FALSE( line.error ) << row.line;
    }
    EXPECT_EQ( parsed( "copy --frob --help" ).error->mistake, Mistake::unknownOption );
    EXPECT_EQ( parsed( "--help cpoy" ).error->mistake, Mistake::unknownCommand );
}

TEST( Line, AsksForJsonAlsoWhereItIsNotUnderstood ) {
    for( char const* const line : { "any --json", "any --json --frob", "any --frob --json", "cpoy --json",
                                    "--json any", "none --json", "any --csv --json" } )
        EXPECT_TRUE( parsed( line ).json ) << line;
    for( char const* const line :
         { "any", "any -- --json", "copy a b --tag --json", "any --json=1", "cpoy json" } )
        EXPECT_FALSE( parsed( line ).json ) << line;
}

TEST( Line, SoFarSaysWhatMayComeNext ) {
    struct {
        char const* line;
        bool command;
        char const* options;
    } const rows[] = { { "", true, "--help --version" },
                       { "--help", true, "--version" },
                       { "cpoy", false, "" },
                       { "any", false, "--help --json --csv --color" },
                       { "any a --json", false, "--help --color" },
                       { "any --color", false, "" },
                       { "any --color never", false, "--help --json --csv" },
                       { "any --", false, "" },
                       { "copy -l3 --tag=x --dry", false, "--help --tag --mode -n --color" } };
    for( auto const& row : rows ) {
        LineParser parser( toy() );
        for( String const& word : wordsOf( row.line ) )
            parser.take( word );
        String options;
        for( Option const* const option : parser.possibleOptions() )
            options += ( options.empty() ? "" : " " ) + String( option->name );
        EXPECT_EQ( options, row.options ) << row.line;
        EXPECT_EQ( parser.takesOptions(), *row.options != '\0' ) << row.line;
        EXPECT_EQ( parser.takesCommand(), row.command ) << row.line;
    }
}

TEST( Request, HasArgumentsOptionsAndFormat ) {
    auto const request = requestOf( parsed( "copy a -f --tag x b --tag=y -l3 -- -c" ) );
    EXPECT_EQ( request.command->word, String( "copy" ) );
    EXPECT_THAT( request.words, testing::ElementsAre( "a", "b", "-c" ) );
    EXPECT_EQ( request.format, Format::text );
    EXPECT_THAT( request.options,
                 testing::ElementsAre( testing::Pair( "--force", "" ), testing::Pair( "--level", "3" ),
                                       testing::Pair( "--tag", "x,y" ) ) );
    EXPECT_EQ( request.option( "--level" ), "3" );
    EXPECT_EQ( request.option( "--mode" ), "" );
    EXPECT_TRUE( request.has( "--force" ) );
    EXPECT_FALSE( request.has( "--dry" ) );
    EXPECT_EQ( requestOf( parsed( "any --json" ) ).format, Format::json );
    EXPECT_EQ( requestOf( parsed( "any --csv" ) ).format, Format::csv );
    EXPECT_EQ( requestOf( parsed( "copy a --tag '' --tag x b" ) ).option( "--tag" ), ",x" );
}

} // namespace
