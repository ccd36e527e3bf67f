#include "cli/grammar/Help.h"
#include "cli/grammar/ListTexts.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/RecordKinds.h"

#include <fmt/format.h>
#include <sstream>

namespace Bfri {

namespace {

/// The parts of a text between separators, without the empty ones.
std::vector<String> split( std::string_view text, std::string_view separator ) {
    std::vector<String> parts;
    while( !text.empty() ) {
        auto const size = std::min( text.find( separator ), text.size() );
        if( size > 0 )
            parts.emplace_back( text.substr( 0, size ) );
        text.remove_prefix( std::min( size + separator.size(), text.size() ) );
    }
    return parts;
}

/// The label of the argument or option that is a kind of record; null without one.
char const* kindLabel( Command const& command ) {
    for( Argument const& argument : command.arguments ) {
        if( argument.type.kind == ValueKind::recordKind )
            return argument.label;
    }
    for( Option const& option : command.options ) {
        if( option.type.kind == ValueKind::recordKind )
            return option.label;
    }
    return nullptr;
}

/// A filter that finds some names of the example switch.
char const* exampleFilter( Kind kind ) {
    if( kind == Kind::actions )
        return "^set_";
    return kind == Kind::headers || kind == Kind::phvFields ? "^hdr" : "^pipe_a";
}

bool hasWhere( Command const& command ) {
    auto const options = optionsOf( command );
    return std::any_of( options.begin(), options.end(), []( Option const* option ) {
        return std::string_view( option->name ) == "--where";
    } );
}

} // namespace

std::vector<String> paragraphsOf( Command const& command ) {
    if( command.listing ) {
        auto paragraphs = split( listTextOf( command.listing->kind ).note, "\n\n" );
        paragraphs.emplace_back( whereText );
        paragraphs.emplace_back(
            "The fields are named as in --sort, --json and --csv. Text output shows those that have a "
            "column." );
        return paragraphs;
    }
    auto paragraphs = split( command.details, "\n\n" );
    if( hasWhere( command ) )
        paragraphs.emplace_back( whereText );
    if( char const* const label = kindLabel( command ) )
        paragraphs.insert( paragraphs.begin(),
                           fmt::format( "{} is {}.", label, alternatives( kindWords() ) ) );
    return paragraphs;
}

String fieldTable( Command const& command ) {
    if( !command.listing )
        return {};
    RowList fields{ { { "COLUMN", {} }, { "FIELD", {} }, { "MEANING", {} } }, {} };
    auto const columns = columnsOf( command.listing->kind );
    auto const columnOf = [ & ]( FieldInfo const& field ) {
        return std::find_if( columns.begin(), columns.end(), [ & ]( Column const& column ) {
            return column.field == std::string_view( field.name );
        } );
    };
    auto known = command.listing->fields(); // in the order of the columns; last those without one
    std::stable_sort( known.begin(), known.end(), [ & ]( FieldInfo const& a, FieldInfo const& b ) {
        return columnOf( a ) < columnOf( b );
    } );
    for( FieldInfo const& field : known ) {
        auto const column = columnOf( field );
        fields.rows.push_back( { { "", column == columns.end() ? Value() : Value( column->title ) },
                                 { "", field.name },
                                 { "", field.meaning } } );
    }
    std::ostringstream lines;
    printColumns( lines, fields );
    return lines.str();
}

std::vector<String> examplesOf( Program const& program, Command const& command ) {
    if( !command.listing )
        return split( command.examples, "\n" );
    String const start = fmt::format( "{} {} switch.conf", program.name, command.word );
    return {
        start,
        fmt::format( "{} --filter {} --sort=-name -n 10", start, exampleFilter( command.listing->kind ) ),
        start + " --json" };
}

} // namespace Bfri
