#include "cli/schema/AnswerSchemas.h"
#include "inspect/model/RecordKinds.h"

namespace Bfri::Schema {

namespace {

std::vector<Key> summaryKeys() {
    std::vector<Key> counts;
    for( Collection const& collection : collections() )
        counts.push_back( { collection.member, number( collection.title ) } );
    return { { "switchConf", text( "the path of the switch configuration" ) },
             { "bfrtConfig", text( "the path of the run-time configuration; empty without one" ) },
             { "contextFile", contextFiles() },
             { "hitBitSmashEntries", number( "slots of the hit-bit space" ) },
             { "counts", object( std::move( counts ), "how many there are of each kind" ) } };
}

Key confKey() { return { "conf", text( "the path of the configuration" ) }; }

/// A handle with the name of its owner.
Row reference() {
    return object(
        { { "handle", number( "of what is referenced" ) },
          { "name", orNull( text( "of the placed table with this handle; null if there is none" ) ) } } );
}

/// The record of a kind without what its list adds.
Row record( Kind kind, std::vector<std::string_view> const& without ) {
    auto keys = keysOf( kindOf( kind ) );
    std::erase_if( keys, [ & ]( Key const& key ) {
        return std::find( without.begin(), without.end(), key.name ) != without.end();
    } );
    return object( std::move( keys ) );
}

/// The schema of a collection in a dump: a list of records, or an object by name.
Row content( Collection const& collection ) {
    auto const empty = BfResourceInfo::bfResourceParserFactory( "" );
    if( !collection.kind )
        return std::holds_alternative<List>( collection.content( *empty ).is )
                   ? list( collection.title, text( "the name of a resource" ) )
                   : byName( collection.title, text( "the name of its parent" ) );
    switch( *collection.kind ) {
    case Kind::headers:
        return byName( collection.title, number( "bytes of all fields" ) );
    case Kind::phvFields:
        return byName( collection.title, number( "bytes of the field" ) );
    case Kind::hashes:
        return byName( collection.title, record( Kind::hashes, { "name" } ) );
    default:
        return list( collection.title,
                     record( *collection.kind, { "typeName", "parent", "severalParents" } ) );
    }
}

/// The keys of a record on its page: what it belongs to, and its parts by kind, each a list.
Row pageRecord( RecordKind const& kind ) {
    auto keys = keysOf( kind );
    auto const addOptional = [ & ]( std::string_view name, Row schema ) {
        auto const found =
            std::find_if( keys.begin(), keys.end(), [ & ]( Key const& key ) { return key.name == name; } );
        if( found == keys.end() )
            keys.push_back( { name, std::move( schema ), true } );
        else
            found->isOptional = true;
    };
    addOptional( "parent", orNull( text( "the table that it belongs to, if the model knows just one" ) ) );
    addOptional( "severalParents", flag( "whether it belongs to several tables" ) );
    addOptional( "placed", flag( "whether it is on the chip" ) );
    for( RecordKind const& part : recordKinds() )
        addOptional( part.many, list( part.nouns, byName( "the record, or a part of it", Row() ) ) );
    addOptional( "omitted", omitted() );
    return object( std::move( keys ) );
}

} // namespace

Row summary() {
    Row const several =
        answer( { { "configurations", list( "one for each CONF that can be loaded",
                                            object( joined( { confKey() }, summaryKeys() ) ) ) },
                  { "failures", failures() } },
                "for several CONF" );
    return anyOf( { answer( summaryKeys(), "for one CONF" ), several } );
}

Row listOf( RecordKind const& kind ) {
    return anyOf(
        { answer( { { kind.member, list( kind.nouns, object( keysOf( kind ) ) ) } }, "for one CONF" ),
          answer( { { kind.member, list( kind.nouns, object( joined( { confKey() }, keysOf( kind ) ) ) ) },
                    { "failures", failures() } },
                  "for several CONF" ) } );
}

Row names() {
    std::vector<Key> const keys = {
        { "name", text( "every name once" ) },
        { "kinds", list( "of the records with this name", text( "a kind of record" ) ) } };
    return anyOf(
        { answer( { { "names", list( "by the bytes of the names", object( keys ) ) } }, "for one CONF" ),
          answer( { { "names", list( "by configuration", object( joined( { confKey() }, keys ) ) ) },
                    { "failures", failures() } },
                  "for several CONF" ) } );
}

Row show() {
    std::vector<Key> keys{ { "name", orNull( text( "of the records; null if they have several" ) ) } };
    std::vector<Key> more;
    for( RecordKind const& kind : recordKinds() ) {
        keys.push_back( { kind.member, list( kind.nouns, pageRecord( kind ) ), true } );
        more.push_back( { kind.member, number( kind.nouns ), true } );
    }
    keys.push_back(
        { "moreRecords", object( std::move( more ), "how many more there are of a kind" ), true } );
    return answer( std::move( keys ) );
}

Row table() {
    auto const references = [ & ]( char const* meaning ) { return orNull( list( meaning, reference() ) ); };
    return answer(
        joined( keysOf( kindOf( Kind::tables ) ),
                { { "placed", flag( "whether it is on the chip" ) },
                  { "stageStart", orNull( number( "stage of its first stage table" ) ) },
                  { "statReferences", references( "counters; null if it has no entry by handle" ) },
                  { "meterReferences", references( "meters and WRED tables" ) },
                  { "statefulReferences", references( "registers" ) } } ) );
}

Row dump() {
    std::vector<Key> keys{
        { "switchConf", text( "the path of the switch configuration" ) },
        { "contextFile", list( "by ascending mask", object( { { "pipeMask", number( "a bit for each pipe" ) },
                                                              { "path", text( "of the file" ) } } ) ) },
        { "bfrtConfig", text( "the path of the run-time configuration; empty without one" ) },
        { "hitBitSmashEntries", number( "slots of the hit-bit space" ) } };
    for( Collection const& collection : collections() )
        keys.push_back( { collection.member, content( collection ) } );
    return answer( std::move( keys ) );
}

} // namespace Bfri::Schema
