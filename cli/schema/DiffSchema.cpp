#include "cli/schema/AnswerSchemas.h"

namespace Bfri::Schema {

namespace {

Row change() {
    Row const any; // a value of any type
    return object( { { "field", text( "that differs" ) }, { "from", any }, { "to", any } } );
}

std::vector<Key> identity() {
    return { { "name", text( "of the record" ) }, { "tableName", text( "of an action's table" ), true } };
}

Row kindObject( RecordKind const& kind ) {
    Row const rows = byName( "a record, as its list has it", Row() );
    return object(
        { { "added", list( "only in NEW", rows ) },
          { "removed", list( "only in OLD", rows ) },
          { "changed",
            list( "with different fields",
                  object( joined( identity(),
                                  { { "fields", list( "what differs", change() ) },
                                    { "firstOfName",
                                      flag( "whether a query by name answers for it, as before" ) } } ) ) ) },
          { "moved", list( "all stages by one distance",
                           object( joined( identity(), { { "from", Row() }, { "to", Row() } } ) ) ) },
          { "same", number( "records without a difference" ) } },
        kind.nouns );
}

} // namespace

Row diff() {
    std::vector<Key> kinds;
    for( RecordKind const& kind : recordKinds() )
        kinds.push_back( { kind.member, kindObject( kind ), true } );
    Row const renumbered = object( joined(
        { { "kind", text( "of record" ) } },
        joined( identity(), { { "from", number( "old handle" ) }, { "to", number( "new handle" ) } } ) ) );
    std::vector<Key> const shared = { { "handle", number( "of several records" ) },
                                      { "names", list( "of these", text( "a name" ) ) } };
    Row const notice = object( { { "kind", text( "of record" ) },
                                 { "name", text( "of the record" ), true },
                                 { "tableName", text( "of an action's table" ), true },
                                 { "handle", number( "that several records have" ), true },
                                 { "names", list( "of these", text( "a name" ) ), true },
                                 { "effect", text( "what an agent would notice" ) } } );
    Row const tally =
        object( { { "shifted", number( "ranges that are elsewhere" ) }, { "of", number( "all ranges" ) } },
                "of hit bits" );
    return answer(
        { { "old", text( "the path of OLD" ) },
          { "new", text( "the path of NEW" ) },
          { "configuration", list( "what differs in the configurations themselves", change() ) },
          { "kinds", object( std::move( kinds ), "by kind of record" ) },
          { "handles", object( { { "renumbered", list( "records with another handle", renumbered ) },
                                 { "count", number( "renumbered handles" ) },
                                 { "of", number( "handles of records in both" ) },
                                 { "reused", number( "handles that other records have now" ) },
                                 { "shared", orNull( list( "handles that several records have since",
                                                           object( shared ) ) ) } } ) },
          { "hitBitRanges", tally },
          { "verdict",
            object( { { "differs", flag( "whether anything does" ) },
                      { "compatible", flag( "whether an agent that programs by name notices nothing" ) },
                      { "notices", list( "what it would notice", notice ) } } ) } } );
}

} // namespace Bfri::Schema
