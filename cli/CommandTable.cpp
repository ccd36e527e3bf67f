#include "cli/Program.h"

#include "cli/CommandTexts.h"
#include "cli/commands/Answers.h"
#include "inspect/model/RecordKinds.h"

namespace Bfri {

namespace {

// Headings of the help.

constexpr char const* inspecting = "Inspect a configuration";
constexpr char const* finding = "Find records";
constexpr char const* judging = "Check and compare";
constexpr char const* listing = "List records, each with --filter, --where, --sort, -n, --json and --csv";
constexpr char const* helping = "Help";
constexpr char const* unlisted = "";

// Types of values.

constexpr char const* severities[] = { "error", "warning", "note" };
constexpr char const* failuresOfDiff[] = { "any", "breaking", "handles", "never" };
constexpr char const* measures[] = { "tables", "entries" };
constexpr ValueType failures = { ValueKind::choice, "", failuresOfDiff };
constexpr ValueType severity = { ValueKind::choice, "", severities };
constexpr ValueType measure = { ValueKind::choice, "", measures };
constexpr ValueType path = { ValueKind::file, "the path of a switch configuration" };
constexpr ValueType rulesPath = { ValueKind::file, "the path of a budget's rules" };
constexpr ValueType baselinePath = { ValueKind::file, "the path of an earlier answer" };
constexpr ValueType reportPath = { ValueKind::file, "the path of a file" };
constexpr ValueType stage = { ValueKind::number, "the number of a stage" };
constexpr ValueType condition = { ValueKind::condition };
constexpr ValueType codesOrAll = { ValueKind::codesOrAll };

// Arguments.

constexpr Argument conf = { "CONF", "Path of the switch configuration", path };
constexpr Argument recordName = {
    "NAME", "Name of the record, a unique end of it, or its handle", { ValueKind::name } };

constexpr Argument oneConf[] = { conf };
constexpr Argument someConfs[] = {
    { "CONF", "Path of a switch configuration, or of a folder with some", path, Arity::anyTimes } };
constexpr Argument confAndName[] = { conf, recordName };
constexpr Argument confAndTable[] = {
    conf, { "NAME", "Name of the table, a unique end of it, or its handle", { ValueKind::table } } };
constexpr Argument confAndHandles[] = {
    conf, { "HANDLE", "Decimal, or hexadecimal with 0x", { ValueKind::handle }, Arity::onceOrMore } };
constexpr Argument manyConfs = { "CONF", "Path of a switch configuration, or of a folder with some", path,
                                 Arity::onceOrMore };
constexpr Argument oneConfOrMore[] = { manyConfs };
constexpr Argument confKindNameField[] = { manyConfs,
                                           { "KIND", "Kind of record", { ValueKind::recordKind } },
                                           recordName,
                                           { "FIELD", "Field of the record", { ValueKind::field } } };
constexpr Argument fieldNames[] = {
    { "NAME", "Name of a field of a header or hash", {}, Arity::onceOrMore } };
constexpr Argument confAndRules[] = { conf, { "RULES", "Path of the budget's rules, in TOML", rulesPath } };
constexpr Argument oldAndNew[] = {
    { "OLD", "Path of the old switch configuration", path, Arity::atMostOnce }, // none with --explain
    { "NEW", "Path of the new switch configuration", path, Arity::atMostOnce } };
constexpr Argument oneOrTwoConfs[] = {
    { "CONF", "Path of the switch configuration; the old one, when a second follows", path },
    { "NEW", "Path of the new switch configuration: the page shows the difference", path,
      Arity::atMostOnce } };
constexpr Argument maybeCommand[] = {
    { "COMMAND", "A command that 'bfri --help' lists", { ValueKind::command }, Arity::atMostOnce } };
constexpr Argument oneCommand[] = { { "COMMAND", "A command that prints JSON", { ValueKind::command } } };
constexpr Argument typedWords[] = {
    { "WORD", "The words typed after bfri, the last one as far as it is typed", {}, Arity::onceOrMore } };

// Options, besides those that optionsOf adds.

constexpr Option stagesOptions[] = {
    { "--by", "MEASURE", "Measure the stages by tables (the default) or by entries", measure },
    { "--budget", "RULES", "Show how full the stages are, by the capacities in this file of rules",
      rulesPath },
    { "--list", nullptr, "Print one line per resource, with a bar over its stages" },
    { "--stage", "N", "Print the ten largest resources in stage N, or with --list all of them", stage } };
constexpr Option namesOptions[] = {
    { "--kind", "KIND", "Only names of this kind", { ValueKind::recordKind } },
    { "--filter", "REGEX", "Only names that match somewhere (ECMAScript syntax)" },
    { "--where", "EXPRESSION", "Only names for which this holds: 'kinds=table and name~=^l3'", condition } };
constexpr Option checkOptions[] = {
    { "--all", nullptr, "Show every finding, not just the first ones of each code" },
    { "--baseline", "FILE", "Count only findings that are not in this earlier answer of 'check --json'",
      baselinePath },
    { "--explain", "CODES", "Explain these findings, and what to do about them; 'all' lists every finding",
      codesOrAll, true },
    { "--ignore", "CODES", "Ignore these findings", { ValueKind::codes }, true },
    { "--fail-on", "SEVERITY", "Lowest severity for exit status 1: error, warning or note (the default)",
      severity },
    { "--summary", nullptr, "Print the number of findings of each code", {}, false, "--sarif" },
    { "--sarif", nullptr, "Print a SARIF 2.1.0 log, for code scanning", {}, false, "--json" } };
constexpr Option reportOptions[] = {
    { .name = "--output",
      .label = "FILE",
      .description = "Write this file instead of report.html; '-' is standard output",
      .type = reportPath,
      .shortName = "-o" },
    { "--budget", "RULES", "Show the map also in shares of the capacities in this file of rules", rulesPath },
    { .name = "--svg",
      .label = nullptr,
      .description = "Write only the floor plans of the stages, as a picture (report.svg)",
      .excludes = "--budget" } };
constexpr Option budgetOptions[] = {
    { "--against", "OLD", "Judge the growth since this older configuration", path } };
constexpr Option schemaOptions[] = {
    { "--keys", nullptr, "Print the keys of the answer and their meaning instead, one per line" } };
constexpr Option diffOptions[] = {
    { "--only", "KIND", "Compare only this kind", { ValueKind::recordKind } },
    { "--no-renames", nullptr, "Show a renamed record as a removed and an added one" },
    { "--unread", nullptr, "List all differences in what the library does not read" },
    { "--fail-on", "WHAT", "When the exit status is 1: any (the default), breaking, handles or never",
      failures },
    { "--markdown", nullptr, "Print Markdown for a pull request, of at most 60 kB", {}, false, "--json" },
    { "--explain", "CODE", "Explain this notice; 'all' lists every notice", { ValueKind::noticeCode } } };

constexpr Command withArguments[] = {
    { .word = "summary",
      .group = inspecting,
      .arguments = oneConfOrMore,
      .json = true,
      .show = summary,
      .rows = summaryRows,
      .print = printSummaries },
    { .word = "show", .group = inspecting, .arguments = confAndName, .json = true, .show = show },
    { .word = "table", .group = inspecting, .arguments = confAndTable, .json = true, .show = table },
    { .word = "stages",
      .group = inspecting,
      .arguments = oneConf,
      .options = stagesOptions,
      .json = true,
      .show = stages },
    { .word = "report",
      .group = inspecting,
      .arguments = oneOrTwoConfs,
      .options = reportOptions,
      .run = report },
    { .word = "dump", .group = inspecting, .arguments = oneConf, .abortsOnBadData = true, .show = dump },
    { .word = "lookup",
      .group = finding,
      .arguments = confAndHandles,
      .json = true,
      .csv = true,
      .show = lookup },
    { .word = "annotate", .group = finding, .arguments = oneConf, .show = annotate },
    { .word = "field",
      .group = finding,
      .arguments = confKindNameField,
      .rows = fieldRows,
      .print = printValues },
    { .word = "names",
      .group = finding,
      .arguments = oneConfOrMore,
      .options = namesOptions,
      .json = true,
      .csv = true,
      .blank = blankName,
      .rows = nameRows,
      .print = printNames },
    { .word = "normalize", .group = finding, .arguments = fieldNames, .run = normalize },
    { .word = "check",
      .group = judging,
      .arguments = someConfs,
      .options = checkOptions,
      .json = true,
      .run = check },
    { .word = "budget",
      .group = judging,
      .arguments = confAndRules,
      .options = budgetOptions,
      .json = true,
      .run = budget },
    { .word = "diff",
      .group = judging,
      .arguments = oldAndNew,
      .options = diffOptions,
      .json = true,
      .run = diff },
};

constexpr Command aboutTheProgram[] = {
    { .word = "help", .group = helping, .arguments = maybeCommand, .run = help },
    { .word = "schema", .group = helping, .arguments = oneCommand, .options = schemaOptions, .run = schema },
    { .word = "complete", .group = unlisted, .arguments = typedWords, .run = complete },
    { .word = "man", .group = unlisted, .arguments = {}, .run = manual },
};

/// Every kind of record has a list.
Command listCommand( RecordKind const& kind ) {
    return { .word = kind.many,
             .group = listing,
             .arguments = oneConfOrMore,
             .json = true,
             .csv = true,
             .listing = &kind,
             .blank = kind.blank,
             .rows = recordRows,
             .print = printRecords };
}

std::vector<Command> allCommands() {
    std::vector<Command> all( std::begin( withArguments ), std::end( withArguments ) );
    for( RecordKind const& kind : recordKinds() )
        all.push_back( listCommand( kind ) );
    all.insert( all.end(), std::begin( aboutTheProgram ), std::end( aboutTheProgram ) );
    return all;
}

constexpr Explanation exitStatuses[] = {
    { "0", "Done" },
    { "1", "The answer is no: not found, not unique, differs, findings" },
    { "2", "Wrong usage" },
    { "3", "Input can't be loaded" },
    { "4", "Internal error, or output can't be written" } };

constexpr Explanation environment[] = {
    { "NO_COLOR", "Turns colours off, if it is set and not empty" },
    { "ZEL_TRACE", "BfResourceParser/5-7 shows on standard error how files are read" } };

} // namespace

Program const& program() {
    static std::vector<Command> const commands = allCommands();
    static Program const bfri = { .name = "bfri",
                                  .version = BFRI_VERSION,
                                  .builtWith = "inflate: " BFRI_INFLATE,
                                  .title = "inspect the context files of a switch chip's P4 compiler",
                                  .description =
                                      "Shows what the P4 compiler's context files say about a switch chip.",
                                  .usage = "COMMAND CONF [ARG...] [OPTIONS]",
                                  .texts = commandTexts,
                                  .exitStatuses = exitStatuses,
                                  .environment = environment,
                                  .commands = commands };
    return bfri;
}

} // namespace Bfri
