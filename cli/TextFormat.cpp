#include "cli/TextFormat.h"

#include "cli/Utf8.h"

#include <algorithm>
#include <cstdio>

namespace Bfri {

namespace {

struct ShownText {
    String operator()( std::monostate ) const { return "-"; }
    String operator()( bool flag ) const { return flag ? "yes" : "no"; }
    String operator()( U32 number ) const { return std::to_string( number ); }
    String operator()( Hex number ) const {
        char text[ 16 ];
        std::snprintf( text, sizeof text, "0x%08x", number.value );
        return text;
    }
    String operator()( String const& text ) const { return text.empty() ? "-" : shown( text ); }
    String operator()( List const& list ) const {
        String text;
        for( Value const& value : list )
            text += ( text.empty() ? "" : " " ) + std::visit( *this, value.is );
        return text.empty() ? "-" : text;
    }
    String operator()( Row const& row ) const {
        return ( *this )( listOf( row, []( Field const& field ) { return field.value; } ) );
    }
};

} // namespace

String textOf( Value const& value ) { return std::visit( ShownText(), value.is ); }

namespace {

struct Column {
    std::size_t width = 0;
    bool hasNumbers = false;
    bool hasTexts = false;

    bool toTheRight() const { return hasNumbers && !hasTexts; }
};

using Line = std::vector<String>;

String lineOf( Line const& cells, std::vector<Column> const& columns ) {
    String line;
    for( std::size_t i = 0; i < cells.size(); ++i ) {
        String const padding( columns[ i ].width - width( cells[ i ] ), ' ' );
        line += i == 0 ? "" : "  ";
        line += columns[ i ].toTheRight() ? padding + cells[ i ] : cells[ i ] + padding;
    }
    line.erase( line.find_last_not_of( ' ' ) + 1 );
    return line;
}

/// The text, or as much of it as fits, with a mark where it was cut.
String cut( String const& text, Look const& look ) {
    if( look.columns == 0 || width( text ) <= look.columns )
        return text;
    return firstColumns( text, look.columns - 1 ) + ( look.utf8 ? "\u2026" : ">" );
}

void printAligned( std::ostream& out, std::vector<Line> const& lines, std::vector<Column> columns,
                   Look const& look ) {
    for( Line const& cells : lines ) {
        for( std::size_t i = 0; i < cells.size(); ++i )
            columns[ i ].width = std::max( columns[ i ].width, width( cells[ i ] ) );
    }
    for( Line const& cells : lines )
        out << cut( lineOf( cells, columns ), look ) << '\n';
}

void addField( std::vector<Line>& lines, Field const& field ) {
    String const name = shown( field.name );
    List const* const list = std::get_if<List>( &field.value.is );
    if( !list || list->empty() || !std::holds_alternative<Row>( list->front().is ) ) {
        lines.push_back( { name, textOf( field.value ) } );
        return;
    }
    for( Value const& value : *list )
        lines.push_back( { &value == &list->front() ? name : "", textOf( value ) } );
}

} // namespace

void printColumns( std::ostream& out, RowList const& list, Look const& look ) {
    std::vector<Line> lines( 1 );
    std::vector<Column> columns;
    for( Field const& field : list.header ) {
        lines.front().emplace_back( field.name );
        columns.push_back( { 0, std::holds_alternative<U32>( field.value.is ), false } );
    }
    for( Row const& row : list.rows ) {
        Line& line = lines.emplace_back();
        for( Field const& field : row ) {
            Column& column = columns[ line.size() ];
            column.hasNumbers |= std::holds_alternative<U32>( field.value.is );
            column.hasTexts |= std::holds_alternative<String>( field.value.is );
            line.push_back( textOf( field.value ) );
        }
    }
    printAligned( out, lines, columns, look );
}

void printFields( std::ostream& out, Row const& row ) {
    std::vector<Line> lines;
    for( Field const& field : row )
        addField( lines, field );
    printAligned( out, lines, std::vector<Column>( 2 ), {} );
}

} // namespace Bfri
