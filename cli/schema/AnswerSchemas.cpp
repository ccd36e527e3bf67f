#include "cli/schema/AnswerSchemas.h"

#include "inspect/page/Lookup.h"

namespace Bfri::Schema {

namespace {

List severityWords() { return { "error", "warning", "note" }; }

std::vector<Key> loadKeys() {
    return { { "starting", number( "resources that start in it" ) },
             { "spanning", number( "resources that are in it" ) },
             { "entries", orNull( number( "the sum of the stated sizes; null if none is stated" ) ) },
             { "stageTables", number( "stage tables in it" ) },
             { "stated", number( "of these, the ones whose size the context file states" ) } };
}

std::vector<Key> stageLoadKeys() {
    auto keys = loadKeys();
    keys.erase( keys.begin(), keys.begin() + 2 );
    keys.insert( keys.begin(), { "stage", number( "a stage that the resource is in" ) } );
    return keys;
}

Row stageObject() {
    Row const group = object( joined( { { "ingress", flag( "the side of the switch" ) },
                                        { "type", number( "the type of the resources" ) },
                                        { "typeName", text( "the same in words" ) } },
                                      loadKeys() ) );
    return object( joined( joined( { { "stage", number( "its number" ) } }, loadKeys() ),
                           { { "groups", list( "by direction and type", group ) } } ) );
}

Row use() {
    return object(
        { { "rule",
            oneOf( "the section of the rule", { "chip", "capacity", "table", "program", "growth" } ) },
          { "line", number( "of the rule in its file" ) },
          { "level", oneOf( "how severe a broken rule is", { "warn", "error" } ) },
          { "reason", text( "why the rule is there" ) },
          { "what", text( "what is used" ) },
          { "contextFile", orNull( text( "of the program; null if it is about all of them" ) ) },
          { "stage", orNull( number( "the stage that the rule is about" ) ) },
          { "used", integer( "of what is available; for growth, below 0 if there is less" ) },
          { "available", integer( "by the rule" ) },
          { "percent", orNull( number( "used of available, rounded up; null if nothing is available" ) ) },
          { "slack", integer( "available minus used" ) },
          { "unstated", number( "stage tables that state no size, so they do not count as used" ) },
          { "over", flag( "whether the rule is broken" ) } } );
}

Row finding() {
    return object( { { "code", text( "never changes: BF101" ) },
                     { "title", text( "never changes either" ) },
                     { "severity", oneOf( "of the finding", severityWords() ) },
                     { "kind", text( "of record" ) },
                     { "name", text( "of the record" ) },
                     { "handle", orNull( number( "of the record, if there is one" ) ) },
                     { "contextFile", orNull( text( "if one is known" ) ) },
                     { "file", orNull( text( "where the record is; null if unknown" ) ) },
                     { "line", orNull( number( "of the record in that file, unpacked, from 1" ) ) },
                     { "column", orNull( number( "in bytes, from 1" ) ) },
                     { "isNew", flag( "whether it is not in the baseline, if there is one" ) },
                     { "message", text( "the whole sentence" ) } } );
}

Row codeCount() {
    return object( { { "code", text( "of the findings" ) },
                     { "title", text( "of the findings" ) },
                     { "severity", oneOf( "of the finding", severityWords() ) },
                     { "findings", number( "how many there are" ) },
                     { "new", number( "how many of them are not in the baseline" ) } } );
}

Row checkedObject() {
    Row const counts =
        orNull( byName( "how many records were checked; null if it can't be loaded", number( "" ) ) );
    Row failure = fault( "why it can't be loaded; else null" );
    return object( { { "switchConf", text( "the path of the configuration" ) },
                     { "loads", flag( "whether it can be loaded" ) },
                     { "failure", orNull( std::move( failure ) ) },
                     { "checked", counts },
                     { "findings", list( "errors, warnings, notes", finding() ), true },
                     { "codes", list( "with --summary, instead of the findings", codeCount() ), true } } );
}

} // namespace

Row answer( std::vector<Key> keys, char const* meaning ) {
    Row format = integer( "the version of this layout" );
    format.push_back( { "const", U32{ 1 } } );
    keys.insert( keys.begin(), { "format", std::move( format ) } );
    return object( std::move( keys ), meaning );
}

Row failure() {
    return answer( { { "error", text( "why there is no answer, in a sentence" ) },
                     { "suggestions", list( "what may have been meant", text( "a word" ) ) },
                     { "failure", fault( "what can't be loaded, in parts" ), true } },
                   "if the command fails" );
}

Row stages() {
    Row const resource = object( joined(
        keysOf( kindOf( Kind::resources ) ),
        { { "stageNumbers", orNull( list( "the stages that it is in; null if unknown", number( "" ) ) ) },
          { "stageLoads", orNull( list( "what it has in each of them", object( stageLoadKeys() ) ) ) } } ) );
    Row const pipeline = object(
        { { "contextFile", contextFiles() },
          { "stages", list( "from 0 on, or the one that wthat was asked for", stageObject() ) },
          { "bfResources", list( "by direction, type and stages", resource ) },
          { "capacities", list( "with --budget: how much of them each stage uses", use() ), true } } );
    return answer( { { "pipelines", list( "one for each map", pipeline ) } } );
}

Row lookup() {
    Row const use =
        object( { { "kind", text( "of the record" ) },
                  { "field", orNull( text( "that has the handle; null if the resource holds it" ) ) },
                  { "name", text( "of the record" ) },
                  { "table", orNull( text( "that it belongs to, if there is just one" ) ) },
                  { "severalTables", flag( "whether it belongs to several" ) } } );
    return answer(
        { { "handles",
            list( "in the order of the command line",
                  object( { { "handle", number( "that was asked for" ) },
                            { "found", list( "the records that have it", use ) },
                            { "suggestions", list( "handles that may be meant", text( "a handle" ) ) },
                            { "omitted", omitted() } } ) ) } } );
}

Row check() {
    Row const gone = object( { { "code", text( "of the finding" ) },
                               { "kind", text( "of record" ) },
                               { "name", text( "of the record" ) },
                               { "switchConf", text( "whose finding it was" ) },
                               { "message", text( "as it was" ) } } );
    Row const explanation = object( { { "code", text( "never changes: BF101" ) },
                                      { "title", text( "never changes either" ) },
                                      { "severity", oneOf( "of the finding", severityWords() ) },
                                      { "meaning", text( "what it means" ) },
                                      { "matters", text( "why it matters" ) },
                                      { "advice", text( "what to do" ) } } );
    return anyOf( { answer( { { "configurations", list( "one for each CONF", checkedObject() ) },
                              { "gone", list( "with --baseline: its findings that are gone", gone ), true } },
                            "the findings" ),
                    answer( { { "codes", list( "the explained ones", explanation ) } }, "of --explain" ) } );
}

Row budget() {
    Row const problem = object( { { "rule", text( "the section of the rule" ) },
                                  { "line", number( "of the rule in its file" ) },
                                  { "reason", text( "why the rule is there" ) },
                                  { "problem", text( "why it can't be judged" ) } } );
    return answer( { { "switchConf", text( "the path of the configuration" ) },
                     { "rules", text( "the path of the rules" ) },
                     { "against", orNull( text( "the path of the older configuration" ) ) },
                     { "errors", number( "broken rules with level error, and problems" ) },
                     { "warnings", number( "broken rules with level warn" ) },
                     { "notJudged", number( "rules of growth without an older configuration" ) },
                     { "problems", list( "rules that match nothing, or several", problem ) },
                     { "uses", list( "the highest percent first", use() ) } } );
}

} // namespace Bfri::Schema
