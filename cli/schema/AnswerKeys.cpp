#include "cli/schema/Schemas.h"

namespace Bfri {

/// The keys of every JSON answer, and their meanings; Schemas.cpp adds those of the kinds of record.
///
/// A line without indent names an answer, with its meaning if a command has several, or, in a capital, a
/// group of keys. Each line below it is a key (`key?` may be absent), its type, and its meaning:
///   text, flag, integer, number (from 0 on), any, a/b/c (one of these words)
///   Group     an object with the group's keys
///   object    an object with the keys of the lines below it
///   text[]    a list of texts; the meaning of the elements comes after a |
///   text{}    an object whose keys are names in the file
///   text?     a text, or null
/// `+ Group` takes over the group's keys.
char const* const answerKeys = R"(
summary for one CONF
  switchConf: text the path of the switch configuration
  bfrtConfig: text the path of the run-time configuration; empty without one
  contextFile: ContextFile[] the context files that are read, by ascending mask of their pipes
  hitBitSmashEntries: number slots of the hit-bit space
  counts: Counts how many there are of each kind
summary for several CONF
  configurations: object[] one for each CONF that can be loaded
    + Conf
    + summary
  + Failures
ContextFile
  pipeMask: number a bit for each pipe
  pipes: number[] the numbers of the pipes | a pipe
  path: text of the file
Conf
  conf: text the path of the configuration

failure if the command fails
  error: text why there is no answer, in a sentence
  suggestions: text[] what may have been meant | a word
  failure?: Fault what can't be loaded, in parts
Failures
  failures: object[] the configurations without an answer
    + Conf
    error: text what is wrong, in a sentence
    suggestions: text[] what may have been meant | a word
    failure?: Fault the parts of what can't be loaded
Fault
  file: text that can't be used
  isContextFile: flag whether it is a context file, and not a switch configuration
  problem: text? why it can't be read, or what is wrong with its syntax
  line: number? from 1
  column: number? in bytes, from 1
  excerpt: text? of that line
  pointer: text? JSON pointer to the value that was read last
  member: text? of that value, which was asked for
  tableIndex: number? of the element of "tables" that it is in
  table: text? the name of that table
  expected: text? what should be there
  handle: number? that leads to no table
  found: text? what is there
  reported: text[] what else the library reported | a line
  condition: text? the broken condition, as written in the library
  function: text? of the library, that requires the condition
  hint: text? what to do

show
  name: text? of the records; null if they have several
  + Pages
  moreRecords?: MoreRecords how many more there are of a kind
Page
  parent?: text? the table that it belongs to, if the model knows just one
  severalParents?: flag whether it belongs to several tables
  placed?: flag whether it is on the chip
  + Parts
  omitted?: Omission[] what the context files have, but the model omits
Omission
  kind: table/action/resource what it would be
  name: text of the table or action
  table: text? of the action; null if it is the table itself
  handle: number? as it would be in the model
  contextFile: text the path of the file
  missing: record/references/handle what the model lacks of the table: its record and its actions, what it refers to, or what has its handle
  reason: text why the model omits it

table
  + bfTables
  placed: flag whether it is on the chip
  stageStart: number? stage of its first stage table
  statReferences: Reference[]? counters; null if it has no entry by handle
  meterReferences: Reference[]? meters and WRED tables
  statefulReferences: Reference[]? registers
Reference
  handle: number of what is referenced
  name: text? of the placed table with this handle; null if there is none

stages
  pipelines: object[] one for each map
    contextFile: ContextFile[] the context files that are read, by ascending mask of their pipes
    stages: object[] from 0 on, or the one that was asked for
      stage: number its number
      + Starts
      + Load
      groups: object[] by direction and type
        ingress: flag the side of the switch
        type: number the type of the resources
        typeName: text the same in words
        + Starts
        + Load
    bfResources: object[] by direction, type and stages
      + bfResources
      stageNumbers: number[]? the stages that it is in; null if unknown
      stageLoads: object[]? what it has in each of them
        stage: number a stage that the resource is in
        + Load
    capacities?: Use[] with --budget: how much of them each stage uses
Starts
  starting: number resources that start in it
  spanning: number resources that are in it
Load
  entries: number? the sum of the stated sizes; null if none is stated
  stageTables: number stage tables in it
  stated: number of these, the ones whose size the context file states

dump
  switchConf: text the path of the switch configuration
  contextFile: object[] by ascending mask
    pipeMask: number a bit for each pipe
    path: text of the file
  bfrtConfig: text the path of the run-time configuration; empty without one
  hitBitSmashEntries: number slots of the hit-bit space
  + Collections

lookup
  handles: object[] in the order of the command line
    handle: number that was asked for
    found: object[] the records that have it
      kind: text of the record
      field: text? that has the handle; null if the resource holds it
      name: text of the record
      table: text? that it belongs to, if there is just one
      severalTables: flag whether it belongs to several
    suggestions: text[] handles that may be meant | a handle
    omitted: Omission[] what the context files have, but the model omits

names for one CONF
  names: Name[] by the bytes of the names
names for several CONF
  names: object[] by configuration
    + Conf
    + Name
  + Failures
Name
  name: text every name once
  kinds: text[] of the records with this name | a kind of record

check the findings
  configurations: object[] one for each CONF
    switchConf: text the path of the configuration
    loads: flag whether it can be loaded
    failure: Fault? why it can't be loaded; else null
    checked: number{}? how many records were checked; null if it can't be loaded
    findings?: Finding[] errors, warnings, notes
    codes?: object[] with --summary, instead of the findings
      code: text of the findings
      title: text of the findings
      severity: error/warning/note of the finding
      findings: number how many there are
      new: number how many of them are not in the baseline
  gone?: object[] with --baseline: its findings that are gone
    code: text of the finding
    kind: text of record
    name: text of the record
    switchConf: text whose finding it was
    message: text as it was
check of --explain
  codes: object[] the explained ones
    code: text never changes: BF101
    title: text never changes either
    severity: error/warning/note of the finding
    meaning: text what it means
    matters: text why it matters
    advice: text what to do
Finding
  code: text never changes: BF101
  title: text never changes either
  severity: error/warning/note of the finding
  kind: text of record
  name: text of the record
  handle: number? of the record, if there is one
  contextFile: text? if one is known
  file: text? where the record is; null if unknown
  line: number? of the record in that file, unpacked, from 1
  column: number? in bytes, from 1
  isNew: flag whether it is not in the baseline, if there is one
  message: text the whole sentence

budget
  switchConf: text the path of the configuration
  rules: text the path of the rules
  against: text? the path of the older configuration
  errors: number broken rules and problems of the level error
  warnings: number broken rules and problems of the level warn
  notJudged: number rules of growth without an older configuration
  problems: object[] rules that match nothing, or several, and those that are not judged
    rule: text the section of the rule
    line: number of the rule in its file
    level: warn/error what it means
    reason: text why the rule is there
    problem: text why it can't be judged
  uses: Use[] the highest percent first
Use
  rule: chip/capacity/table/program/growth the section of the rule
  line: number of the rule in its file
  level: warn/error how severe a broken rule is
  reason: text why the rule is there
  what: text what is used
  contextFile: text? of the program; null if it is about all of them
  stage: number? the stage that the rule is about
  used: integer of what is available; for growth, below 0 if there is less
  available: integer by the rule
  percent: number? used of available, rounded up; null if nothing is available
  slack: integer available minus used
  unstated: number stage tables that state no size, so they do not count as used
  over: flag whether the rule is broken

diff the differences
  old: text the path of OLD
  new: text the path of NEW
  pipes: object[] whose context file or its path differs
    pipe: number its number
    from: text? its context file in OLD
    to: text? its context file in NEW
    change: edited/replaced/removed/added of its program
  configuration: Change[] what differs in the configurations themselves
  kinds: Differences by kind of record
  handles: object handles of records in both
    renumbered: object[] records with another handle
      + Owner
      from: number its handle in OLD
      to: number its handle in NEW
      pipes: number[] on which it applies
    count: number how many handles have changed
    of: number handles of records in both
    reused: object[] handles that now belong to another record
      handle: number that other records have now
      from: Owner the record with this handle in OLD
      to: Owner the record with this handle in NEW
      pipes: number[] on which it applies
  duplicates: object[] names and handles that several records share only in NEW
    + Owner
    handle: number? that several records have
    names: text[] of these records | a name
    handles: number[] of these records | a handle
    pipes: number[] on which it applies
  hitBitRanges: object of hit bits
    shifted: number ranges that are elsewhere
    of: number all ranges
  unread: object what the library does not read
    tables: object[] with values that differ
      name: text of the table
      change: changed/added/removed of its values
      members: text[] that differ | the path of a member
      pipes: number[] on which it applies
    members: object[] outside of tables, that differ
      name: text of a member of the file
      pipes: number[] on which it applies
  verdict: object what the differences mean
    differs: flag whether any value differs
    modelDiffers: flag whether any value that the library reads differs
    byName: flag whether an agent that looks everything up by name notices nothing
    byHandle: flag whether every handle still means the same record
    notices: object[] what there is to notice, worst first
      level: breaking/handle/info who notices
      kind: text of record, or pipe, member, configuration
      name: text the old name, if there is one
      code: text never changes: BD101
      text: text what differs
      from: any the value in OLD, if there is one
      to: any the value in NEW, if there is one
      tableName?: text of an action's table
      pipes: number[] on which it applies
diff of --explain
  codes: object[] the explained ones
    code: text never changes: BD101
    title: text never changes, either
    level: breaking/handle/info who notices
    meaning: text what it means
    advice: text what to do
DifferencesOfKind
  added: any{}[] only in NEW | a record, with the fields of its list
  removed: any{}[] only in OLD | a record, with the fields of its list
  renamed: object[] with another name
    from: text its name in OLD
    to: text its name in NEW
    tableName?: object of an action's table
      from: text in OLD
      to: text in NEW
    pipes?: number[] on which it applies
  leftOut: OmittedRecord[] that the model of NEW omits
  cameBack: OmittedRecord[] that the model of OLD omits
  changed: object[] with different fields
    + Identity
    fields: Change[] what differs
    firstOfName: flag whether a query by name answers for it, as before
  moved: object[] whose stages all shifted by the same distance
    + Identity
    from: any its first stage in OLD
    to: any its first stage in NEW
    stages: object all its stages
      from: any in OLD
      to: any in NEW
  reordered: flag whether the records are in another order
  same: number records without a difference
OmittedRecord
  + Identity
  handle: number? of the record
  reason: text why the model omits it
  members: text[] of the table that are the reason | a name
Identity
  name: text of the record
  tableName?: text of an action's table
  pipes?: number[] on which it applies
Owner
  kind: text of record
  name: text of the record
  tableName?: text of an action's table
Change
  field: text that differs
  from: any its value in OLD
  to: any its value in NEW
)";

} // namespace Bfri
