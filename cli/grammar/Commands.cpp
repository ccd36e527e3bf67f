#include "cli/grammar/Commands.h"

#include "cli/commands/Answers.h"
#include "cli/grammar/ListTexts.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"

#include <sstream>

namespace Bfri {

namespace {

constexpr char const* look = "See what is there";
constexpr char const* find = "Find and follow";
constexpr char const* judge = "Check and compare";
constexpr char const* lists = "Lists, each with --filter, --sort, -n, --json and --csv";

constexpr Argument conf = { "CONF", "Path of the switch configuration", CompletionKind::file };

constexpr Argument onlyConf[] = { conf };
constexpr Argument confAndTable[] = {
    conf, { "NAME", "Its name, the end of it from a dot on, or its handle", CompletionKind::table } };
constexpr Argument confAndName[] = {
    conf, { "NAME", "A name, the end of one from a dot on, or a handle", CompletionKind::name } };
constexpr Argument confAndHandles[] = {
    conf, { "HANDLE", "Decimal, or hexadecimal behind 0x", CompletionKind::handle, Arity::onceOrMore } };
constexpr Argument confKindNameField[] = {
    conf,
    { "KIND", "One of those below", CompletionKind::kind },
    { "NAME", "Its name, the end of it from a dot on, or its handle", CompletionKind::name },
    { "FIELD", "One of the kind's fields", CompletionKind::field } };
constexpr Argument someNames[] = {
    { "NAME", "A name of a header's or hash's field", CompletionKind::nothing, Arity::onceOrMore } };
constexpr Argument someConfs[] = {
    { "CONF", "Path of a switch configuration", CompletionKind::file, Arity::anyTimes } };
constexpr Argument oldAndNew[] = {
    { "OLD", "Path of the switch configuration as it was", CompletionKind::file },
    { "NEW", "Path of the one that takes its place", CompletionKind::file } };

constexpr Option stagesOptions[] = { { "--list", nullptr, "A line a resource, with a bar over its stages" },
                                     { "--stage", "N", "The same of the resources in stage N alone" } };
constexpr Option namesOptions[] = { { "--kind", "KIND", "Only those of one kind", CompletionKind::kind } };
constexpr Option checkOptions[] = {
    { "--explain", "CODES", "Say what these findings mean, and what to do; all: list them",
      CompletionKind::codesOrAll, true },
    { "--ignore", "CODES", "Leave these findings out", CompletionKind::codes, true },
    { "--fail-on", "SEVERITY", "Exit status 1 from this severity on: error, warning or note (the default)",
      CompletionKind::severity } };
constexpr Option diffOptions[] = { { "--only", "KIND", "Only one kind", CompletionKind::kind } };

constexpr char const* summaryDetails =
    "A line a context file that is read, and how many records of each kind the model has: those that the\n"
    "lists show. Which match tables it leaves out, and why, 'bfri check' says.\n\n"
    "Examples:\n"
    "  bfri summary switch.conf\n"
    "  bfri summary switch.conf --json | jq .counts";

constexpr char const* tableDetails =
    "Every field of the record, as 'bfri tables --help' has them, then where the table is placed and\n"
    "what it references, by handle. 'bfri show' has what belongs to it, too.\n\n"
    "Examples:\n"
    "  bfri table switch.conf ipv4_acl\n"
    "  bfri table switch.conf ipv4_acl --json | jq .size";

constexpr char const* dumpDetails =
    "Every record of every collection, with each field, and what the model knows of the relations between\n"
    "them. Unlike the other commands it dies of bad context data as an agent would.\n\n"
    "Examples:\n"
    "  bfri dump switch.conf\n"
    "  bfri dump switch.conf | jq '.bfTables | length'";

constexpr char const* showDetails =
    "Each record that bears the name, of whatever kind: a match table with the resources that it takes\n"
    "and their stages, its counters, meters, WRED tables, registers and actions; any of those with its\n"
    "tables; a hash with its fields in order; a header; a field of the PHV. With --json a member for each\n"
    "kind. An action of one table is 'NAME of TABLE'. A handle, decimal or behind 0x, that is no name\n"
    "shows what has it as its own. What belongs to a match table that the model leaves out says so, and\n"
    "why.\n\n"
    "Examples:\n"
    "  bfri show switch.conf ipv4_acl\n"
    "  bfri show switch.conf 0x01000031\n"
    "  bfri show switch.conf 'permit of ipv4_acl'\n"
    "  bfri show switch.conf ipv4_acl --json | jq '.bfTables[].counters[].name'";

constexpr char const* stagesDetails =
    "A map for each context file; one for all without a runtime_config, where the handles do not tell them\n"
    "apart. 2+1 in a stage: two resources start in it, and one goes on from an earlier one. Which stages a\n"
    "resource takes is read from its context file, unit by unit; stages that it leaves out stay empty. With\n"
    "--json stageNumbers has the stages of each resource, and for each stage stands how many resources "
    "start\n"
    "in it, how many span it, and the entries of those that start in it. A resource with a stage number\n"
    "that can't be read, or has more than 32 bits, is not on the map but named above it (BF412 of\n"
    "'bfri check').\n\n"
    "Examples:\n"
    "  bfri stages switch.conf\n"
    "  bfri stages switch.conf --stage 8";

constexpr char const* lookupDetails =
    "One row for each record that bears the handle, with the field of it that does, and the table that it\n"
    "belongs to. A direct meter, WRED table or register has no such field: its resource holds its handle.\n"
    "Standard error names each handle that nothing bears, and what may be meant: the same behind 0x, or\n"
    "with other upper four bits, where a runtime_config puts the pipe; the exit status then is 1. It also\n"
    "names what the context files have of the handle and the model leaves out: match tables, and, without a\n"
    "stage table, what they list and the handles of others. With --json that is suggestions and omitted of\n"
    "each handle.\n\n"
    "Examples:\n"
    "  bfri lookup switch.conf 0x1000001\n"
    "  bfri lookup switch.conf 16777224 0x21400002 --json";

constexpr char const* annotateDetails =
    "Behind each handle stands the name of what has it: 0x1000001 <pipe.acl>; several names, three at most,\n"
    "are <pipe_a.acl|pipe_b.acl>. A handle is a whole word: hexadecimal behind 0x, or decimal from\n"
    "65536 on, as smaller numbers count other things as a rule. All else is copied byte for byte, and at\n"
    "once, so that the log may still grow.\n\n"
    "Examples:\n"
    "  bfri annotate switch.conf < agent.log\n"
    "  tail -f agent.log | bfri annotate switch.conf";

constexpr char const* fieldDetails =
    "KIND is table, resource, counter, meter, wred, register, learn-quanta, action, header, hash, phv or\n"
    "handle; FIELD is one of those that 'bfri tables --help' and its like name. Numbers are decimal, flags\n"
    "true or false, lists one element a line. A field that the record does not have is exit status 1, and "
    "so\n"
    "is a name that several records have. One of several actions is 'NAME of TABLE', where the end of "
    "either\n"
    "or the action's handle will do; one of several others is its handle, as the lists show it.\n\n"
    "Examples:\n"
    "  bfri field switch.conf table ipv4_acl size\n"
    "  bfri field switch.conf action 'permit of ipv4_acl' handle\n"
    "  bfri field switch.conf phv hdr.ethernet.dst_addr ingressBytes";

constexpr char const* namesDetails =
    "Each name once, in the order of their bytes; with --json and --csv the kinds that bear it, too. What a\n"
    "terminal could not show stands as \\xXX, so that a name is one line.\n\n"
    "Examples:\n"
    "  bfri names switch.conf --kind table\n"
    "  bfri show switch.conf \"$(bfri names switch.conf | fzf)\"";

constexpr char const* normalizeDetails =
    "One a line, in the order given: each $ with the digits behind it becomes _1_, then each . [ and ]\n"
    "becomes _.\n\n"
    "Examples:\n"
    "  bfri normalize 'hdr.vlan[0].vid' 'hdr.stack$3.field'";

constexpr char const* checkDetails =
    "For each CONF: sound; or what is odd about it, each finding with a code that stays the same; or why it\n"
    "cannot be loaded: the place in the file, what should stand there and what does. One that is bad does "
    "not\n"
    "keep the others from being checked. CODES are codes or titles with commas between, or in several\n"
    "options; '--explain all' lists them.\n"
    "Exit status: 0 all sound, 1 findings (with --fail-on only from that severity on), 3 one cannot be\n"
    "loaded.\n\n"
    "Examples:\n"
    "  bfri check build/*/switch.conf --ignore BF304,BF305 --fail-on warning\n"
    "  bfri check switch.conf --json | jq '.configurations[].findings[].code'\n"
    "  bfri check --explain BF304";

constexpr char const* diffDetails =
    "Records of a kind are joined on their names, actions on their table's, too; of several of a name those\n"
    "of the same pipeline, in their order. Lines with - are gone, with + new, with ~ changed; ! marks what\n"
    "an agent that programs by name would notice: what is removed, has less room, or answers a query in\n"
    "another way. The last line is the verdict. Exit status: 0 the same, 1 not. Paths are not compared.\n"
    "A resource has moved, 'stage' from and to, where all its stages have by one distance. Else stageStart,\n"
    "the stage of its first stage table, differs, or stageNumbers, the stages that it takes: - where they\n"
    "are not known (BF412 of 'bfri check'). What has moved and differs in more, its size, say, counts under\n"
    "MOVED and under CHANGED.\n\n"
    "Handles that are other numbers, of records that both have, are one line and a few examples; --json has\n"
    "them all. Behind it stand the handles that have become those of several records, which tables or\n"
    "actions can then not be told by. Hit-bit ranges that only start elsewhere are one line, too.\n\n"
    "KIND is table, resource, counter, meter, wred, register, learn-quanta, action, header, hash, phv or\n"
    "handle. Without --only, what comes, goes, moves or has another size stands under resources, and\n"
    "handles tells what placed tables reference.\n\n"
    "Examples:\n"
    "  bfri diff old/switch.conf new/switch.conf\n"
    "  bfri diff old/switch.conf new/switch.conf --only tables --json";

constexpr Command first[] = {
    { .word = "summary",
      .group = look,
      .description = "What is loaded: files, pipelines and counts of every kind",
      .arguments = onlyConf,
      .json = true,
      .details = summaryDetails,
      .show = summary },
    { .word = "show",
      .group = look,
      .description = "One page on whatever bears a name",
      .arguments = confAndName,
      .json = true,
      .details = showDetails,
      .show = show },
    { .word = "table",
      .group = look,
      .description = "The record of one match table",
      .arguments = confAndTable,
      .json = true,
      .details = tableDetails,
      .show = table },
    { .word = "stages",
      .group = look,
      .description = "The map of the stages: what starts where, and how far it spans",
      .arguments = onlyConf,
      .options = stagesOptions,
      .json = true,
      .details = stagesDetails,
      .show = stages },
    { .word = "dump",
      .group = look,
      .description = "The whole model as one JSON object",
      .arguments = onlyConf,
      .onBadData = OnBadData::dieAsLibrary,
      .details = dumpDetails,
      .show = dump },
    { .word = "lookup",
      .group = find,
      .description = "Everything that bears one of these handles",
      .arguments = confAndHandles,
      .json = true,
      .csv = true,
      .details = lookupDetails,
      .show = lookup },
    { .word = "annotate",
      .group = find,
      .description = "Copies standard input, with the name behind each handle that is known",
      .arguments = onlyConf,
      .details = annotateDetails,
      .show = annotate },
    { .word = "field",
      .group = find,
      .description = "One field of one record, bare, for scripts",
      .arguments = confKindNameField,
      .details = fieldDetails,
      .show = field },
    { .word = "names",
      .group = find,
      .description = "Every name, one a line",
      .arguments = onlyConf,
      .options = namesOptions,
      .json = true,
      .csv = true,
      .details = namesDetails,
      .show = names },
    { .word = "normalize",
      .group = find,
      .description = "Names of fields as the model compares them",
      .arguments = someNames,
      .details = normalizeDetails,
      .run = normalize },
    { .word = "check",
      .group = judge,
      .description = "Whether configurations are sound, and if not, where",
      .arguments = someConfs,
      .options = checkOptions,
      .json = true,
      .details = checkDetails,
      .run = check },
    { .word = "diff",
      .group = judge,
      .description = "What has changed from one configuration to another, joined on names",
      .arguments = oldAndNew,
      .options = diffOptions,
      .json = true,
      .details = diffDetails,
      .run = diff },
};

constexpr Argument wordsOfALine[] = {
    { "WORD", "Those of a command line behind bfri, the last as far as it is written",
      CompletionKind::nothing, Arity::onceOrMore } };

constexpr Argument someCommand[] = {
    { "COMMAND", "One of those that 'bfri --help' lists", CompletionKind::command, Arity::atMostOnce } };

constexpr char const* helpDetails =
    "Without COMMAND: of the whole program, as 'bfri --help'. 'bfri COMMAND --help' is the same of one.\n\n"
    "Examples:\n"
    "  bfri help show";

constexpr Command served[] = {
    { .word = "help",
      .group = "Help",
      .description = "What a command takes and shows, with examples",
      .arguments = someCommand,
      .details = helpDetails,
      .run = help },
    { .word = "complete",
      .group = "",
      .description = "What may stand in the place of a command line's last word, for the shells' completion",
      .arguments = wordsOfALine,
      .run = complete },
    { .word = "man",
      .group = "",
      .description = "The manual page, as man reads it",
      .arguments = {},
      .run = manual },
};

constexpr Option filterOption = { "--filter", "REGEX",
                                  "Only rows whose name this (ECMAScript) matches, anywhere in it" };
constexpr Option sortOption = { "--sort", "FIELD",
                                "Sort by one of the fields below; -FIELD: the other way round",
                                CompletionKind::order };
constexpr Option mostOption = { "-n", "N", "Only the first N of these rows" };
constexpr Option jsonOption = { "--json", nullptr, "Print one JSON object" };
constexpr Option csvOption = { "--csv", nullptr, "Print comma-separated values" };
constexpr Option colorOption = { "--color", "WHEN", "auto (on a terminal, without NO_COLOR), always or never",
                                 CompletionKind::color };

Command listCommand( RecordKind const& listing ) {
    return { .word = listing.many,
             .group = lists,
             .description = listTextOf( listing.kind ).description,
             .arguments = onlyConf,
             .json = true,
             .csv = true,
             .listing = &listing,
             .show = list };
}

String fieldLines( RecordKind const& listing ) {
    RowList fields{ { { "COLUMN", {} }, { "FIELD", {} }, { "WHAT IT SAYS", {} } }, {} };
    for( FieldInfo const& field : listing.fields ) {
        char const* const title = columnTitleOf( listing.kind, field.name );
        fields.rows.push_back(
            { { "", title ? Value( title ) : Value() }, { "", field.name }, { "", field.meaning } } );
    }
    std::ostringstream lines;
    printColumns( lines, fields );
    return String( listTextOf( listing.kind ).note ) +
           "Fields, as --sort, --json and --csv name them; the text has those with a column:\n\n" +
           lines.str();
}

/// What some names of the example switch begin with.
char const* frontOfNames( Kind kind ) {
    if( kind == Kind::actions )
        return "set_";
    return kind == Kind::headers || kind == Kind::phvFields ? "hdr" : "pipe_a";
}

String exampleLines( RecordKind const& listing ) {
    String const start = String( "  bfri " ) + listing.many + " switch.conf";
    return "\nExamples:\n" + start + "\n" + start + " --filter ^" + frontOfNames( listing.kind ) +
           " --sort=-name -n 10\n" + start + " --json";
}

} // namespace

char const* const programDescription = "Shows what the P4 compiler's context files say about a switch chip.";

char const* const exitStatusText = "0 done, 1 the answer is no (not found, not unique, differs, findings), 2 "
                                   "wrong usage, 3 input cannot be\n"
                                   "loaded, 4 internal error or output not written.";

char const* const environmentText =
    "NO_COLOR, when set and not empty, keeps colours off.\n"
    "ZEL_TRACE=BfResourceParser/5-7 shows on standard error how files are read.";

std::span<Command const> commands() {
    static std::vector<Command> const all = [] {
        std::vector<Command> both( std::begin( first ), std::end( first ) );
        for( RecordKind const& listing : recordKinds() )
            both.push_back( listCommand( listing ) );
        both.insert( both.end(), std::begin( served ), std::end( served ) );
        return both;
    }();
    return all;
}

Command const* commandOf( std::string_view word ) {
    auto const all = commands();
    auto const found = std::find_if( all.begin(), all.end(),
                                     [ & ]( Command const& command ) { return word == command.word; } );
    return found == all.end() ? nullptr : &*found;
}

std::vector<Option> optionsOf( Command const& command ) {
    std::vector<Option> options( command.options.begin(), command.options.end() );
    if( command.listing )
        options.insert( options.end(), { filterOption, sortOption, mostOption } );
    if( command.json )
        options.push_back( jsonOption );
    if( command.csv )
        options.push_back( csvOption );
    options.push_back( colorOption );
    return options;
}

String argumentsOf( Command const& command, char const* before, char const* behind ) {
    String text;
    for( Argument const& argument : command.arguments ) {
        Arity const times = argument.times;
        bool const optional = times == Arity::atMostOnce || times == Arity::anyTimes;
        bool const several = times == Arity::onceOrMore || times == Arity::anyTimes;
        text.append( optional ? " [" : " " ).append( before ).append( argument.label ).append( behind );
        text.append( several ? "..." : "" ).append( optional ? "]" : "" );
    }
    return text;
}

String detailsOf( Command const& command ) {
    if( command.listing )
        return fieldLines( *command.listing ) + exampleLines( *command.listing );
    return command.details;
}

} // namespace Bfri
