#include "cli/schema/Schemas.h"

#include "cli/grammar/Commands.h"
#include "inspect/model/RecordKinds.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

// The keys of the records, by kind, in the same notation as those of the answers.

/// The answer of a kind's list: its word, its member in JSON, its noun.
constexpr char const* listAnswer = R"(
{0} for one CONF
  {1}: {1}[] {2}
{0} for several CONF
  {1}: object[] {2}
    + Conf
    + {1}
  + Failures
)";

String typeOf( Field const& field ) {
    bool const isText = field.name == "parent" || field.name == "fieldNames";
    String const unknown = isText ? "text" : "number"; // a blank row does not tell
    String const byAlternative[] = { unknown + "?", "flag", "number",      "integer",
                                     "number",      "text", unknown + "[]" };
    return byAlternative[ field.value.is.index() ];
}

/// A line for each field of a kind's rows, except for those that its records do not have.
String fieldLines( RecordKind const& kind, char const* indent, std::string_view without = "" ) {
    String lines;
    auto const fields = kind.fields();
    auto field = fields.begin();
    for( Field const& blank : kind.blank() ) {
        if( without.find( fmt::format( " {} ", blank.name ) ) == without.npos )
            lines += fmt::format( "{}{}: {} {}\n", indent, blank.name, typeOf( blank ), field->meaning );
        ++field;
    }
    return lines;
}

/// A collection in a dump: a list of records, or an object by name.
String collectionLines( Collection const& collection ) {
    auto const line = [ & ]( char const* type ) {
        return fmt::format( "  {}: {}\n", collection.member,
                            fmt::format( fmt::runtime( type ), collection.title ) );
    };
    auto const empty = BfResourceInfo::bfResourceParserFactory( "" );
    if( !collection.kind )
        return std::holds_alternative<List>( collection.content( *empty ).is )
                   ? line( "text[] {} | the name of a resource" )
                   : line( "text{{}} {} | the name of its parent" );
    RecordKind const& kind = kindOf( *collection.kind );
    switch( kind.kind ) {
    case Kind::headers:
        return line( "number{{}} {} | bytes of all fields" );
    case Kind::phvFields:
        return line( "number{{}} {} | bytes of the field" );
    case Kind::hashes:
        return line( "object{{}} {}" ) + fieldLines( kind, "    ", " name " );
    default:
        return line( "object[] {}" ) + fieldLines( kind, "    ", " typeName parent severalParents " );
    }
}

String recordKeys() {
    String lists, groups, pages = "Pages\n", more = "MoreRecords\n", parts = "Parts\n",
                          differences = "Differences\n", counts = "Counts\n", all = "Collections\n";
    for( RecordKind const& kind : recordKinds() ) {
        lists += fmt::format( fmt::runtime( listAnswer ), kind.many, kind.member, kind.nouns );
        groups += fmt::format( "{}\n{}", kind.member, fieldLines( kind, "  " ) );
        pages += fmt::format( "  {0}?: object[] {1}\n    + {0}\n    + Page\n", kind.member, kind.nouns );
        more += fmt::format( "  {}?: number {}\n", kind.member, kind.nouns );
        parts += fmt::format( "  {}?: any{{}}[] {} | the record, or a part of it\n", kind.many, kind.nouns );
        differences += fmt::format( "  {}?: DifferencesOfKind {}\n", kind.member, kind.nouns );
    }
    for( Collection const& collection : collections() ) {
        counts += fmt::format( "  {}: number {}\n", collection.member, collection.title );
        all += collectionLines( collection );
    }
    return lists + groups + pages + more + parts + differences + counts + all;
}

// Reading the notation.

struct Line {
    std::size_t indent;
    std::string_view name;
    std::string_view rest;
};
using Lines = std::span<Line const>;

std::string_view takeUntil( std::string_view mark, std::string_view& text ) {
    std::string_view const taken = text.substr( 0, text.find( mark ) );
    text.remove_prefix( std::min( taken.size() + mark.size(), text.size() ) );
    return taken;
}

bool takeEnd( std::string_view end, std::string_view& text ) {
    bool const isThere = text.ends_with( end );
    text.remove_suffix( isThere ? end.size() : 0 );
    return isThere;
}

std::vector<Line> linesOf( std::string_view text ) {
    std::vector<Line> lines;
    while( !text.empty() ) {
        std::string_view line = takeUntil( "\n", text );
        std::size_t const indent = std::min( line.find_first_not_of( ' ' ), line.size() );
        line.remove_prefix( indent );
        if( !line.empty() ) {
            std::string_view const name = takeUntil( " ", line );
            lines.push_back( { indent, name, line } );
        }
    }
    return lines;
}

/// All lines, for the life of the process, as the names in a schema point into them.
Lines allLines() {
    static String const text = answerKeys + recordKeys();
    static std::vector<Line> const lines = linesOf( text );
    return lines;
}

/// The lines that belong to the first one: those after it that are indented more.
Lines below( Lines lines ) {
    auto const isDeeper = [ & ]( Line const& line ) { return line.indent > lines.front().indent; };
    return { lines.begin() + 1, std::find_if_not( lines.begin() + 1, lines.end(), isDeeper ) };
}

/// The first line of each answer or group with the name, with all that follow.
std::vector<Lines> named( std::string_view name ) {
    std::vector<Lines> found;
    for( Lines lines = allLines(); !lines.empty(); lines = lines.subspan( 1 ) ) {
        if( lines.front().indent == 0 && lines.front().name == name )
            found.push_back( lines );
    }
    return found;
}

// Schemas.

Row typed( char const* type, std::string_view meaning ) {
    Row schema{ { "type", type } };
    if( !meaning.empty() )
        schema.push_back( { "description", String( meaning ) } );
    return schema;
}

struct Keys {
    Row properties = {};
    std::vector<String> required = {};

    void add( Lines lines );
};

Row object( Keys keys, std::string_view meaning ) {
    Row schema = typed( "object", meaning );
    schema.push_back( { "properties", std::move( keys.properties ) } );
    schema.push_back( { "required", listOf( keys.required, []( String const& key ) { return key; } ) } );
    return schema;
}

/// A type with its meaning; the lines are the keys of an object.
Row schemaOf( std::string_view type, std::string_view meaning, Lines keys ) {
    if( takeEnd( "?", type ) ) {
        Row schema = schemaOf( type, meaning, keys );
        schema.front().value = List{ schema.front().value, "null" };
        return schema;
    }
    bool const isList = takeEnd( "[]", type );
    if( isList || takeEnd( "{}", type ) ) {
        Row schema = typed( isList ? "array" : "object", takeUntil( " | ", meaning ) );
        schema.push_back( { isList ? "items" : "additionalProperties", schemaOf( type, meaning, keys ) } );
        return schema;
    }
    if( auto const groups = named( type ); type == "object" || !groups.empty() ) {
        Keys all;
        all.add( groups.empty() ? keys : below( groups.front() ) );
        return object( std::move( all ), meaning );
    }
    bool const isChoice = type.find( '/' ) != type.npos;
    bool const isText = type == "text" || isChoice;
    Row schema = typed( isText ? "string" : type == "flag" ? "boolean" : "integer", meaning );
    if( type == "any" )
        schema.erase( schema.begin() );
    if( type == "number" )
        schema.push_back( { "minimum", U32{ 0 } } );
    if( isChoice ) {
        List words;
        while( !type.empty() )
            words.emplace_back( String( takeUntil( "/", type ) ) );
        schema.push_back( { "enum", std::move( words ) } );
    }
    return schema;
}

void Keys::add( Lines lines ) {
    for( ; !lines.empty(); lines = lines.subspan( 1 + below( lines ).size() ) ) {
        auto [ indent, name, rest ] = lines.front();
        if( name == "+" ) {
            add( below( named( rest ).at( 0 ) ) );
            continue;
        }
        takeEnd( ":", name );
        bool const isOptional = takeEnd( "?", name );
        std::string_view const type = takeUntil( " ", rest );
        if( std::ranges::find( properties, name, &Field::name ) == properties.end() ) {
            properties.push_back( { name, schemaOf( type, rest, below( lines ) ) } );
            required.emplace_back( name );
        }
        if( isOptional ) // even if a group has added it
            std::erase( required, name );
    }
}

/// The answers of that name: the object of each, or one of them.
Row answer( std::string_view name ) {
    List answers;
    for( Lines const lines : named( name ) ) {
        Row format = typed( "integer", "the version of this layout" );
        format.push_back( { "const", U32{ 1 } } );
        Keys keys{ { { "format", std::move( format ) } }, { "format" } };
        keys.add( below( lines ) );
        answers.push_back( object( std::move( keys ), lines.front().rest ) );
    }
    return answers.size() == 1 ? std::get<Row>( answers.front().is )
                               : Row{ { "anyOf", std::move( answers ) } };
}

} // namespace

bool hasSchema( Command const& command ) { return !named( command.word ).empty(); }

Row schemaOf( Command const& command ) {
    List answers{ answer( command.word ), answer( "failure" ) };
    return { { "$schema", "https://json-schema.org/draft/2020-12/schema" },
             { "$id", String( "urn:bfri:format-1:" ) + command.word },
             { "title", String( "bfri " ) + command.word + ( command.json ? " --json" : "" ) },
             { "anyOf", std::move( answers ) } };
}

} // namespace Bfri
