#include "cli/CommandTable.h"

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
      .description = "Show the files, the pipelines, and the number of records of each kind",
      .arguments = oneConfOrMore,
      .json = true,
      .examples = "bfri summary switch.conf\n"
                  "bfri summary switch.conf --json | jq .counts",
      .show = summary,
      .rows = summaryRows,
      .print = printSummaries },
    { .word = "show",
      .group = inspecting,
      .description = "Show everything about a record, by name, unique end of a name, or handle",
      .arguments = confAndName,
      .json = true,
      .examples = "bfri show switch.conf ipv4_acl\n"
                  "bfri show switch.conf 0x01000031\n"
                  "bfri show switch.conf 'permit of ipv4_acl'\n"
                  "bfri show switch.conf ipv4_acl --json | jq '.bfTables[].counters[].name'",
      .show = show },
    { .word = "table",
      .group = inspecting,
      .description = "Show the record of one match table",
      .arguments = confAndTable,
      .json = true,
      .examples = "bfri table switch.conf ipv4_acl\n"
                  "bfri table switch.conf ipv4_acl --json | jq .size",
      .show = table },
    { .word = "stages",
      .group = inspecting,
      .description = "Map the stages: which resources start where, and how far they span",
      .arguments = oneConf,
      .options = stagesOptions,
      .json = true,
      .examples = "bfri stages switch.conf\n"
                  "bfri stages switch.conf --by entries\n"
                  "bfri stages switch.conf --stage 8",
      .show = stages },
    { .word = "report",
      .group = inspecting,
      .description = "Write a page for the browser: stages, room, tables and findings, or a difference",
      .arguments = oneOrTwoConfs,
      .options = reportOptions,
      .examples = "bfri report switch.conf\n"
                  "bfri report old/switch.conf new/switch.conf -o difference.html\n"
                  "bfri report switch.conf --svg -o floor-plan.svg",
      .run = report },
    { .word = "dump",
      .group = inspecting,
      .description = "Print the whole model as one JSON object",
      .arguments = oneConf,
      .onBadData = OnBadData::dieAsLibrary,
      .examples = "bfri dump switch.conf\n"
                  "bfri dump switch.conf | jq '.bfTables | length'",
      .show = dump },
    { .word = "lookup",
      .group = finding,
      .description = "Find every record that has one of the handles",
      .arguments = confAndHandles,
      .json = true,
      .csv = true,
      .examples = "bfri lookup switch.conf 0x1000001\n"
                  "bfri lookup switch.conf 16777224 0x21400002 --json",
      .show = lookup },
    { .word = "annotate",
      .group = finding,
      .description = "Copy standard input, adding the owner's name after each known handle",
      .arguments = oneConf,
      .examples = "bfri annotate switch.conf < agent.log\n"
                  "tail -f agent.log | bfri annotate switch.conf",
      .show = annotate },
    { .word = "field",
      .group = finding,
      .description = "Print one field of one record and nothing else, for scripts",
      .arguments = confKindNameField,
      .examples = "bfri field switch.conf table ipv4_acl size\n"
                  "bfri field switch.conf action 'permit of ipv4_acl' handle\n"
                  "bfri field switch.conf phv hdr.ethernet.dst_addr ingressBytes",
      .rows = fieldRows,
      .print = printValues },
    { .word = "names",
      .group = finding,
      .description = "Print every name, one per line",
      .arguments = oneConfOrMore,
      .options = namesOptions,
      .json = true,
      .csv = true,
      .blank = blankName,
      .examples = "bfri names switch.conf --kind table\n"
                  "bfri show switch.conf \"$(bfri names switch.conf | fzf)\"",
      .rows = nameRows,
      .print = printNames },
    { .word = "normalize",
      .group = finding,
      .description = "Print names of fields as the model compares them",
      .arguments = fieldNames,
      .examples = "bfri normalize 'hdr.vlan[0].vid' 'hdr.stack$3.field'",
      .run = normalize },
    { .word = "check",
      .group = judging,
      .description = "Check whether configurations are sound, and if not, say where",
      .arguments = someConfs,
      .options = checkOptions,
      .json = true,
      .examples = "bfri check build/*/switch.conf --ignore BF304,BF305 --fail-on warning\n"
                  "bfri check switch.conf --baseline baseline.json --fail-on warning\n"
                  "bfri check switch.conf --sarif | jq '.runs[].results[].ruleId'\n"
                  "bfri check switch.conf --json | jq '.configurations[].findings[].code'\n"
                  "bfri check --explain BF304",
      .run = check },
    { .word = "budget",
      .group = judging,
      .description = "Compare what a configuration takes with what the rules of a budget allow",
      .arguments = confAndRules,
      .options = budgetOptions,
      .json = true,
      .examples = "bfri budget switch.conf budget.toml\n"
                  "bfri budget switch.conf budget.toml --against old/switch.conf --json | jq .errors",
      .run = budget },
    { .word = "diff",
      .group = judging,
      .description = "Compare two configurations by name: what changed, and what an agent would notice",
      .arguments = oldAndNew,
      .options = diffOptions,
      .json = true,
      .examples = "bfri diff old/switch.conf new/switch.conf\n"
                  "bfri diff old/switch.conf new/switch.conf --only tables --json\n"
                  "bfri diff old/switch.conf new/switch.conf --fail-on breaking\n"
                  "bfri diff old/switch.conf new/switch.conf --markdown\n"
                  "bfri diff --explain BD105",
      .run = diff },
};

constexpr Command aboutTheProgram[] = {
    { .word = "help",
      .group = helping,
      .description = "Print the arguments and options of a command, with examples",
      .arguments = maybeCommand,
      .examples = "bfri help show",
      .run = help },
    { .word = "schema",
      .group = helping,
      .description = "Print the JSON Schema of a command's answer",
      .arguments = oneCommand,
      .options = schemaOptions,
      .examples = "bfri schema check\n"
                  "bfri schema tables --keys",
      .run = schema },
    { .word = "complete",
      .group = unlisted,
      .description = "Print completions of the last word of a command line, for shells",
      .arguments = typedWords,
      .run = complete },
    { .word = "man",
      .group = unlisted,
      .description = "Print the manual page, for man",
      .arguments = {},
      .run = manual },
};

/// What the list of each kind shows, in the order of the enumeration.
constexpr char const* listDescriptions[] = { "The match tables",
                                             "The hardware resources: their kind, direction, size and stages",
                                             "The counters, and the tables that they belong to",
                                             "The meters, and the tables that they belong to",
                                             "The WRED tables, and the tables that they belong to",
                                             "The registers, their cells, and the tables that they belong to",
                                             "The learn quantas",
                                             "The actions of the match tables",
                                             "The flexible headers, and their bytes",
                                             "The dynamic hash calculations, and their fields",
                                             "The fields in the PHV, and the bytes that they take there",
                                             "Every placed table by handle, with what it references" };
static_assert( std::size( listDescriptions ) == static_cast<std::size_t>( Kind::handles ) + 1 );

Command listCommand( RecordKind const& kind ) {
    return { .word = kind.many,
             .group = listing,
             .description = listDescriptions[ static_cast<std::size_t>( kind.kind ) ],
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
                                  .details = commandTexts,
                                  .exitStatuses = exitStatuses,
                                  .environment = environment,
                                  .commands = commands };
    return bfri;
}

} // namespace Bfri
