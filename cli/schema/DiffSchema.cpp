#include "cli/schema/AnswerSchemas.h"

namespace Bfri::Schema {

namespace {

/// A value of any type.
Row any( char const* meaning ) { return { { "description", meaning } }; }

Row pipes() { return list( "on which it applies", number( "" ) ); }

Row change() {
    return object( { { "field", text( "that differs" ) },
                     { "from", any( "its value in OLD" ) },
                     { "to", any( "its value in NEW" ) } } );
}

/// The keys that identify a record.
std::vector<Key> identity() {
    return { { "name", text( "of the record" ) },
             { "tableName", text( "of an action's table" ), true },
             { "pipes", pipes(), true } };
}

Row ofRecord( std::vector<Key> const& more ) { return object( joined( identity(), more ) ); }

Row omittedRecord() {
    return ofRecord( { { "handle", orNull( number( "of the record" ) ) },
                       { "reason", text( "why the model omits it" ) },
                       { "members", list( "of the table that are the reason", text( "a name" ) ) } } );
}

Row renamed() {
    return object(
        { { "from", text( "its name in OLD" ) },
          { "to", text( "its name in NEW" ) },
          { "tableName",
            object( { { "from", text( "in OLD" ) }, { "to", text( "in NEW" ) } }, "of an action's table" ),
            true },
          { "pipes", pipes(), true } } );
}

Row moved() {
    Row const stages = object( { { "from", any( "in OLD" ) }, { "to", any( "in NEW" ) } }, "all its stages" );
    return ofRecord( { { "from", any( "its first stage in OLD" ) },
                       { "to", any( "its first stage in NEW" ) },
                       { "stages", stages } } );
}

Row kindObject( RecordKind const& kind ) {
    Row const record = byName( "a record, with the fields of its list", Row() );
    Row const changed =
        ofRecord( { { "fields", list( "what differs", change() ) },
                    { "firstOfName", flag( "whether a query by name answers for it, as before" ) } } );
    return object( { { "added", list( "only in NEW", record ) },
                     { "removed", list( "only in OLD", record ) },
                     { "renamed", list( "with another name", renamed() ) },
                     { "leftOut", list( "that the model of NEW omits", omittedRecord() ) },
                     { "cameBack", list( "that the model of OLD omits", omittedRecord() ) },
                     { "changed", list( "with different fields", changed ) },
                     { "moved", list( "whose stages all shifted by the same distance", moved() ) },
                     { "reordered", flag( "whether the records are in another order" ) },
                     { "same", number( "records without a difference" ) } },
                   kind.nouns );
}

std::vector<Key> owner() {
    return { { "kind", text( "of record" ) },
             { "name", text( "of the record" ) },
             { "tableName", text( "of an action's table" ), true } };
}

Row handles() {
    Row const renumbered = object( joined( owner(), { { "from", number( "its handle in OLD" ) },
                                                      { "to", number( "its handle in NEW" ) },
                                                      { "pipes", pipes() } } ) );
    Row const reused = object( { { "handle", number( "that other records have now" ) },
                                 { "from", object( owner(), "the record with this handle in OLD" ) },
                                 { "to", object( owner(), "the record with this handle in NEW" ) },
                                 { "pipes", pipes() } } );
    return object( { { "renumbered", list( "records with another handle", renumbered ) },
                     { "count", number( "how many handles have changed" ) },
                     { "of", number( "handles of records in both" ) },
                     { "reused", list( "handles that now belong to another record", reused ) } },
                   "handles of records in both" );
}

Row duplicate() {
    return object( joined( owner(), { { "handle", orNull( number( "that several records have" ) ) },
                                      { "names", list( "of these records", text( "a name" ) ) },
                                      { "handles", list( "of these records", number( "a handle" ) ) },
                                      { "pipes", pipes() } } ) );
}

Row pipe() {
    return object(
        { { "pipe", number( "its number" ) },
          { "from", orNull( text( "its context file in OLD" ) ) },
          { "to", orNull( text( "its context file in NEW" ) ) },
          { "change", oneOf( "of its program", { "edited", "replaced", "removed", "added" } ) } } );
}

Row unread() {
    Row const ofTable = object( { { "name", text( "of the table" ) },
                                  { "change", oneOf( "of its values", { "changed", "added", "removed" } ) },
                                  { "members", list( "that differ", text( "the path of a member" ) ) },
                                  { "pipes", pipes() } } );
    Row const member = object( { { "name", text( "of a member of the file" ) }, { "pipes", pipes() } } );
    return object( { { "tables", list( "with values that differ", ofTable ) },
                     { "members", list( "outside of tables, that differ", member ) } },
                   "what the library does not read" );
}

Row verdict() {
    Row const notice = object( { { "level", oneOf( "who notices", { "breaking", "handle", "info" } ) },
                                 { "kind", text( "of record, or pipe, member, configuration" ) },
                                 { "name", text( "the old name, if there is one" ) },
                                 { "code", text( "never changes: BD101" ) },
                                 { "text", text( "what differs" ) },
                                 { "from", any( "the value in OLD, if there is one" ) },
                                 { "to", any( "the value in NEW, if there is one" ) },
                                 { "tableName", text( "of an action's table" ), true },
                                 { "pipes", pipes() } } );
    return object(
        { { "differs", flag( "whether any value differs" ) },
          { "modelDiffers", flag( "whether any value that the library reads differs" ) },
          { "byName", flag( "whether an agent that looks everything up by name notices nothing" ) },
          { "byHandle", flag( "whether every handle still means the same record" ) },
          { "notices", list( "what there is to notice, worst first", notice ) } },
        "what the differences mean" );
}

} // namespace

Row diff() {
    std::vector<Key> kinds;
    for( RecordKind const& kind : recordKinds() )
        kinds.push_back( { kind.member, kindObject( kind ), true } );
    Row const shifted =
        object( { { "shifted", number( "ranges that are elsewhere" ) }, { "of", number( "all ranges" ) } },
                "of hit bits" );
    Row const explanation = object( { { "code", text( "never changes: BD101" ) },
                                      { "title", text( "never changes, either" ) },
                                      { "level", oneOf( "who notices", { "breaking", "handle", "info" } ) },
                                      { "meaning", text( "what it means" ) },
                                      { "advice", text( "what to do" ) } } );
    return anyOf(
        { answer( { { "old", text( "the path of OLD" ) },
                    { "new", text( "the path of NEW" ) },
                    { "pipes", list( "whose context file or its path differs", pipe() ) },
                    { "configuration", list( "what differs in the configurations themselves", change() ) },
                    { "kinds", object( std::move( kinds ), "by kind of record" ) },
                    { "handles", handles() },
                    { "duplicates",
                      list( "names and handles that several records share only in NEW", duplicate() ) },
                    { "hitBitRanges", shifted },
                    { "unread", unread() },
                    { "verdict", verdict() } },
                  "the differences" ),
          answer( { { "codes", list( "the explained ones", explanation ) } }, "of --explain" ) } );
}

} // namespace Bfri::Schema
