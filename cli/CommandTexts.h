#pragma once

namespace Bfri {

/// What the help says about the commands: a line with the name of a command and what it does, and below it,
/// indented, paragraphs with blank lines between them, whose lines the help breaks anew, and examples, each
/// after a $.
inline constexpr char const* commandTexts = R"texts(
summary: Show the files, the pipelines, and the number of records of each kind
  Lists the context files that are read, and counts the records of each kind in the model: those that the list
  commands show. 'bfri check' names the match tables that the model omits, and says why.
  $ bfri summary switch.conf
  $ bfri summary switch.conf --json | jq .counts
show: Show everything about a record, by name, unique end of a name, or handle
  Shows every record with the name, whatever its kind: a match table with its resources and their stages, its
  counters, meters, WRED tables, registers and actions; each of these with its tables; a hash with its fields
  in order; a header; a PHV field. With --json, each kind has a member of its own.

  An action of one table is 'ACTION of TABLE'. A handle, decimal or hexadecimal with 0x, opens its owner's
  page, unless it is the name of a record. If a record belongs to a match table that the model omits, the page
  says so, and why.
  $ bfri show switch.conf ipv4_acl
  $ bfri show switch.conf 0x01000031
  $ bfri show switch.conf 'permit of ipv4_acl'
  $ bfri show switch.conf ipv4_acl --json | jq '.bfTables[].counters[].name'
table: Show the record of one match table
  Shows every field of the record ('bfri tables --help' explains them), then where the table is placed, and
  the handles that it references. 'bfri show' adds the records that belong to the table.
  $ bfri table switch.conf ipv4_acl
  $ bfri table switch.conf ipv4_acl --json | jq .size
stages: Map the stages: which resources start where, and how far they span
  Prints one map for each context file. Without a runtime_config, handles do not tell the context files apart,
  so one map shows them all. '2+1' means that two resources start in the stage, and one continues from an
  earlier stage.

  The stages of a resource are read from its context file, unit by unit; stages that it skips stay empty. A
  resource with a stage number that can't be read or has more than 32 bits is not on the map but named above
  it (finding BF412 of 'bfri check'). Conditions on the chip (table_type "condition") have stage tables in the
  file, but are no resources of the model: they are left out.

  --budget shows for each capacity of the rules, of which part each stage uses; then each context file has a
  map of its own.

  --by entries shows the sizes that the context file states for the stage tables in each stage, and the share
  of all entries. Where a stage table states no size, there is a question mark: nothing is guessed. On a
  terminal with 256 colours, the grid is a heat map.

  With --json, stageNumbers lists the stages of each resource, and stageLoads what it has in each. For each
  stage, the answer says how many resources start in it, how many span it, how many stage tables are in it,
  how many of these state a size (stated), and the sum of the stated sizes (entries), null if none does.
  $ bfri stages switch.conf
  $ bfri stages switch.conf --by entries
  $ bfri stages switch.conf --stage 8
report: Write a page for the browser: stages, room, tables and findings, or a difference
  Writes one HTML file that needs nothing else: no other file, no network, and no script to be read. It shows
  which stages are full and with what, as a map and a floor plan; what takes up the room; every match table
  with its place, fields, actions and attached resources; all other resources; PHV bytes, hit bits, hashes,
  headers, learn quantas; and the findings of 'bfri check'. The script in it adds search, sorting and filters.

  With two configurations, the page shows the new one with the difference drawn into it, and the verdict of
  'bfri diff'. The exit status is 0 when the file is written, whether or not they differ.

  The same input gives the same file.
  $ bfri report switch.conf
  $ bfri report old/switch.conf new/switch.conf -o difference.html
  $ bfri report switch.conf --svg -o floor-plan.svg
dump: Print the whole model as one JSON object
  Prints every record of every collection with all its fields, and the relations between records that the
  model knows. Unlike the other commands, dump aborts on bad context data, as an agent would.
  $ bfri dump switch.conf
  $ bfri dump switch.conf | jq '.bfTables | length'
lookup: Find every record that has one of the handles
  Prints one row for each record that has the handle, with the field that holds it, and the table that the
  record belongs to. A direct meter, WRED table or register has no field for its own handle: its resource
  holds it.

  If nothing has the handle, standard error suggests what may be meant, and the exit status is 1. Suggestions
  are the same digits with 0x, and handles with different upper four bits, where a runtime_config puts the
  pipe. Standard error also names what has the handle in the context files but is not in the model: match
  tables that it omits, what unplaced match tables list, and other unplaced tables. With --json, each handle
  has these as suggestions and omitted.
  $ bfri lookup switch.conf 0x1000001
  $ bfri lookup switch.conf 16777224 0x21400002 --json
annotate: Copy standard input, adding the owner's name after each known handle
  Each known handle is followed by its owner's name: 0x1000001 <pipe.acl>. Several names, at most three,
  appear as <pipe_a.acl|pipe_b.acl>. A handle is a whole word: hexadecimal with 0x, or decimal from 65536 on,
  as smaller numbers are rarely handles. Everything else is copied byte for byte. Nothing is held back, so the
  log may still be growing.
  $ bfri annotate switch.conf < agent.log
  $ tail -f agent.log | bfri annotate switch.conf
field: Print one field of one record and nothing else, for scripts
  FIELD is a field of that kind, as explained by the help of its list: 'bfri tables --help'. Numbers are
  decimal, flags are true or false, and lists have one element per line. The exit status is 1 if the record
  does not have the field, or if several records have the name.

  To pick one of several actions, write 'ACTION of TABLE'. The end of either name is enough, and so is the
  action's handle for ACTION. To pick one of several other records, use the handle that its list shows.
  $ bfri field switch.conf table ipv4_acl size
  $ bfri field switch.conf action 'permit of ipv4_acl' handle
  $ bfri field switch.conf phv hdr.ethernet.dst_addr ingressBytes
names: Print every name, one per line
  Prints each name once, in byte order. With --json and --csv, it also prints the kinds of record that have
  the name. Bytes that a terminal can't show appear as \xXX, so each name takes one line.
  $ bfri names switch.conf --kind table
  $ bfri show switch.conf "$(bfri names switch.conf | fzf)"
normalize: Print names of fields as the model compares them
  Prints one name per line, in the order given. Each $ and the digits after it become _1_. Then each dot and
  each square bracket becomes _.
  $ bfri normalize 'hdr.vlan[0].vid' 'hdr.stack$3.field'
check: Check whether configurations are sound, and if not, say where
  For each CONF (of a folder without a switch.conf, each one below it), prints that it is sound; or its
  findings, each with a code that never changes; or why it can't be loaded: the place in the file, what was
  expected there, and what was found. A configuration that can't be loaded does not keep the others from being
  checked.

  CODES are codes or titles of findings, separated by commas or given in several options.

  --baseline takes an earlier answer of 'check --json'. Findings that it has do not count, and are not shown;
  those that are gone are named. A finding is the same if code, kind of record, name and message are; only the
  handles in the message and the folders of files may change. A finding whose message says something else,
  such as a third table with the same name, is new. With --json, every finding is there, and isNew tells; so
  the answer is the next baseline.

  --sarif has the file, line and column of each record in its context file.

  The exit status is 0 if all are sound, 1 if there are findings (with --fail-on, only those of that severity
  or above count), and 3 if a configuration can't be loaded.
  $ bfri check build/*/switch.conf --ignore BF304,BF305 --fail-on warning
  $ bfri check switch.conf --baseline baseline.json --fail-on warning
  $ bfri check switch.conf --sarif | jq '.runs[].results[].ruleId'
  $ bfri check switch.conf --json | jq '.configurations[].findings[].code'
  $ bfri check --explain BF304
budget: Compare what a configuration takes with what the rules of a budget allow
  The rules are a file in TOML. Each rule has a level (error, warn or off) and a reason. The sections are:

  [chip]: stages, the number of stages that the chip has.

  [[capacity]]: what each stage has for resources of a type ('bfri resources' shows the types; * and ? stand
  for any characters and for one): entries or tables. With direction (ingress or egress) only for this side,
  with stages (a list) only in these.

  [[table]]: min and max, the least and the largest size of a table or another resource, such as a register.
  name is its name, the unique end of it, or a pattern with * and ?.

  [[program]]: stages, how many stages, from 0 on, a program may use. context_file is the path of its context
  file, the end of it, or a pattern; without it, the rule is for every program.

  [[growth]]: max or max_percent, by how much resources may grow since the configuration that --against names.
  Resources are the tables of every type in the context files that state a size, placed or not: match tables,
  counters, registers and all others, but no conditions. of = 'entries', the default, compares their sizes:
  without name the sum of all, with name the size of each resource that it matches. of = 'tables' compares the
  number of resources: all, or those that name matches. Without --against, a rule of growth is not judged: an
  error if its level is error, a warning if it is warn.

  The answer shows what is used of what is available, the highest percent first. For min, the least size is
  what is used, and the size is what is available. The exit status is 1 if a rule of the level error is
  broken, if a rule matches nothing, or if --against is missing for a rule of that level. A mistake in the
  file is exit status 3, with line and column.
  $ bfri budget switch.conf budget.toml
  $ bfri budget switch.conf budget.toml --against old/switch.conf --json | jq .errors
diff: Compare two configurations by name: what changed, and what an agent would notice
  Records of the same kind are matched by name within the pipes that they serve, actions also by the name of
  their table; headers, hashes and PHV fields, which the library merges, by name alone. Removed and left-out
  records have a -, new ones a +, and changed ones a ~. A ! marks what is noticed by an agent that looks
  everything up by name when it starts: a record that is gone, renamed or left out, has less room, or answers
  a query differently. The last two lines are the verdict, for such an agent and for one that keeps handles.
  Paths, white space, the order of members and of pipes, and compression are not compared.

  A removed and an added record are one with a new name if they agree in nearly everything: tables of one type
  in handle, size, stages and actions, or in three of these; with another handle, in all the rest and in the
  keys, where no third table does. Actions of one table pair by handle, learn quantas and hashes by handle
  with one other difference at most, headers and PHV fields where nothing else differs. The resource and the
  actions of a renamed table take no lines of their own.

  A program counts as replaced if its new content is a program that other pipes ran, or has more names in
  common with such a program than with the former one.

  A resource has moved when all its stages shift by the same distance. Otherwise, a change of its stages shows
  as stageStart (the stage of its first stage table), stageNumbers (all its stages, or - if they are not
  known; see finding BF412 of 'bfri check') or stageSizes (its entries in each stage). A resource that has
  moved and also differs in another field, such as its size, counts under both MOVED and CHANGED.

  Renumbered handles of records in both configurations take one line and a few examples; --json lists all.
  After them come the numbers that are now the handle of another record, and names and handles that several
  records have now. Hit-bit ranges that start elsewhere but are otherwise the same also take one line, and so
  does what the library does not read, such as keys and the parameters of actions; --unread lists it.

  Without --only, placed tables that are new, gone, moved or resized are listed as resources, and handles
  lists only changed references of placed tables.

  The exit status is 1 if any value differs, read or not; with --fail-on breaking, if an agent that looks up
  by name notices; with --fail-on handles, if such an agent or one that keeps handles does.
  $ bfri diff old/switch.conf new/switch.conf
  $ bfri diff old/switch.conf new/switch.conf --only tables --json
  $ bfri diff old/switch.conf new/switch.conf --fail-on breaking
  $ bfri diff old/switch.conf new/switch.conf --markdown
  $ bfri diff --explain BD105
tables: The match tables
  The model has the match tables of a context file that are resource-controllable and have no static entries,
  with their actions. 'bfri check' names the others (BF409).
resources: The hardware resources: their kind, direction, size and stages
counters: The counters, and the tables that they belong to
meters: The meters, and the tables that they belong to
wreds: The WRED tables, and the tables that they belong to
registers: The registers, their cells, and the tables that they belong to
learn-quantas: The learn quantas
  The model has the learn quantas of a context file that have an "lq_cfg_type". 'bfri check' names the others
  (BF409).
actions: The actions of the match tables
headers: The flexible headers, and their bytes
hashes: The dynamic hash calculations, and their fields
phv: The fields in the PHV, and the bytes that they take there
handles: Every placed table by handle, with what it references
  A match table has no parent, and the model knows no parent of direct action data.
help: Print the arguments and options of a command, with examples
  Without COMMAND, prints the help of the whole program, like 'bfri --help'. 'bfri COMMAND --help' prints the
  same as 'bfri help COMMAND'.
  $ bfri help show
schema: Print the JSON Schema of a command's answer
  The schema (JSON Schema, 2020-12) has every key of the answer with its meaning, and the answer of a command
  that fails. Later versions may add keys; as long as "format" is 1, the present ones stay. The schemas are
  also installed, in share/bfri/schemas.
  $ bfri schema check
  $ bfri schema tables --keys
complete: Print completions of the last word of a command line, for shells
man: Print the manual page, for man
)texts";

} // namespace Bfri
