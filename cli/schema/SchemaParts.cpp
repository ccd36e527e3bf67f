#include "cli/schema/SchemaParts.h"

#include <algorithm>

namespace Bfri::Schema {

namespace {

Row typed( char const* type, char const* meaning ) {
    Row schema{ { "type", type } };
    if( *meaning )
        schema.push_back( { "description", meaning } );
    return schema;
}

/// The type of a field's values or elements, if a blank row does not tell it.
Row untyped( std::string_view field, char const* meaning ) {
    static constexpr std::string_view texts[] = { "parent", "fieldNames" };
    bool const isText = std::find( std::begin( texts ), std::end( texts ), field ) != std::end( texts );
    return isText ? text( meaning ) : number( meaning );
}

Row schemaOf( Field const& field, char const* meaning ) {
    struct OfValue {
        std::string_view field;
        char const* meaning;

        Row operator()( std::monostate ) const { return orNull( untyped( field, meaning ) ); }
        Row operator()( bool ) const { return flag( meaning ); }
        Row operator()( U32 ) const { return number( meaning ); }
        Row operator()( Hex ) const { return number( meaning ); }
        Row operator()( std::int64_t ) const { return integer( meaning ); }
        Row operator()( String const& ) const { return text( meaning ); }
        Row operator()( List const& ) const { return list( meaning, untyped( field, "" ) ); }
        Row operator()( Row const& ) const { return typed( "object", meaning ); }
    };
    return std::visit( OfValue{ field.name, meaning }, field.value.is );
}

} // namespace

Row number( char const* meaning ) {
    Row schema = typed( "integer", meaning );
    schema.push_back( { "minimum", U32{ 0 } } );
    return schema;
}

Row integer( char const* meaning ) { return typed( "integer", meaning ); }
Row text( char const* meaning ) { return typed( "string", meaning ); }
Row flag( char const* meaning ) { return typed( "boolean", meaning ); }

Row oneOf( char const* meaning, List words ) {
    Row schema = typed( "string", meaning );
    schema.push_back( { "enum", std::move( words ) } );
    return schema;
}

Row orNull( Row schema ) {
    Value& type = schema.front().value;
    type = List{ type, "null" };
    return schema;
}

Row list( char const* meaning, Row element ) {
    Row schema = typed( "array", meaning );
    schema.push_back( { "items", std::move( element ) } );
    return schema;
}

Row byName( char const* meaning, Row value ) {
    Row schema = typed( "object", meaning );
    schema.push_back( { "additionalProperties", std::move( value ) } );
    return schema;
}

Row object( std::vector<Key> keys, char const* meaning ) {
    Row properties;
    List required;
    for( Key& key : keys ) {
        if( !key.isOptional )
            required.emplace_back( String( key.name ) );
        properties.push_back( { key.name, std::move( key.schema ) } );
    }
    Row schema = typed( "object", meaning );
    schema.push_back( { "properties", std::move( properties ) } );
    schema.push_back( { "required", std::move( required ) } );
    return schema;
}

Row anyOf( List schemas ) { return { { "anyOf", std::move( schemas ) } }; }

std::vector<Key> keysOf( RecordKind const& kind ) {
    std::vector<Key> keys;
    Row const blank = kind.blank();
    for( FieldInfo const& field : kind.fields() )
        keys.push_back( { field.name, schemaOf( blank[ keys.size() ], field.meaning ) } );
    return keys;
}

std::vector<Key> joined( std::vector<Key> keys, std::vector<Key> const& more ) {
    keys.insert( keys.end(), more.begin(), more.end() );
    return keys;
}

Row contextFiles() {
    return list( "the context files that are read, by ascending mask of their pipes",
                 object( { { "pipeMask", number( "a bit for each pipe" ) },
                           { "pipes", list( "the numbers of the pipes", number( "a pipe" ) ) },
                           { "path", text( "of the file" ) } } ) );
}

Row omitted() {
    return list( "what the context files have, but the model omits",
                 object( { { "kind", oneOf( "what it would be", { "table", "action", "resource" } ) },
                           { "name", text( "of the table or action" ) },
                           { "table", orNull( text( "of the action; null if it is the table itself" ) ) },
                           { "handle", orNull( number( "as it would be in the model" ) ) },
                           { "contextFile", text( "the path of the file" ) },
                           { "missing",
                             oneOf( "what the model lacks of the table: its record and its actions, what it "
                                    "refers to, or what has its handle",
                                    { "record", "references", "handle" } ) },
                           { "reason", text( "why the model omits it" ) } } ) );
}

Row failures() {
    return list( "the configurations without an answer",
                 object( { { "conf", text( "the path of the configuration" ) },
                           { "error", text( "what is wrong, in a sentence" ) },
                           { "suggestions", list( "what may have been meant", text( "a word" ) ) },
                           { "failure", fault( "the parts of what can't be loaded" ), true } } ) );
}

Row fault( char const* meaning ) {
    return object(
        { { "file", text( "that can't be used" ) },
          { "isContextFile", flag( "whether it is a context file, and not a switch configuration" ) },
          { "problem", orNull( text( "why it can't be read, or what is wrong with its syntax" ) ) },
          { "line", orNull( number( "from 1" ) ) },
          { "column", orNull( number( "in bytes, from 1" ) ) },
          { "excerpt", orNull( text( "of that line" ) ) },
          { "pointer", orNull( text( "JSON pointer to the value that was read last" ) ) },
          { "member", orNull( text( "of that value, which was asked for" ) ) },
          { "tableIndex", orNull( number( "of the element of \"tables\" that it is in" ) ) },
          { "table", orNull( text( "the name of that table" ) ) },
          { "expected", orNull( text( "what should be there" ) ) },
          { "handle", orNull( number( "that leads to no table" ) ) },
          { "found", orNull( text( "what is there" ) ) },
          { "reported", list( "what else the library reported", text( "a line" ) ) },
          { "condition", orNull( text( "the broken condition, as written in the library" ) ) },
          { "function", orNull( text( "of the library, that requires the condition" ) ) },
          { "hint", orNull( text( "what to do" ) ) } },
        meaning );
}

} // namespace Bfri::Schema
