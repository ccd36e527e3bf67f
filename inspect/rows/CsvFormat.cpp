#include "inspect/rows/CsvFormat.h"

namespace Bfri {

namespace {

String quotedWhereNeeded( std::string_view text ) {
    if( text.find_first_of( ",\"\r\n" ) == std::string_view::npos )
        return String( text );
    String quoted = "\"";
    for( char const c : text )
        quoted.append( c == '"' ? 2 : 1, c );
    return quoted + '"';
}

struct CsvText {
    String ( *spelling )( std::string_view );

    String operator()( std::monostate ) const { return {}; }
    String operator()( bool flag ) const { return flag ? "true" : "false"; }
    String operator()( U32 number ) const { return std::to_string( number ); }
    String operator()( std::int64_t number ) const { return std::to_string( number ); }
    String operator()( Hex number ) const { return std::to_string( number.value ); }
    String operator()( String const& text ) const { return spelling ? spelling( text ) : text; }
    String operator()( List const& list ) const {
        String text;
        for( Value const& value : list )
            text += ( text.empty() ? "" : " " ) + std::visit( *this, value.is );
        return text;
    }
    String operator()( Row const& row ) const {
        return ( *this )( listOf( row, []( Field const& field ) { return field.value; } ) );
    }
};

template<class Text>
void printLine( std::ostream& out, Row const& row, Text const& textOf ) {
    char const* separator = "";
    for( Field const& field : row ) {
        out << separator << quotedWhereNeeded( textOf( field ) );
        separator = ",";
    }
    out << '\n';
}

} // namespace

void printCsv( std::ostream& out, RowList const& list, String ( *spelling )( std::string_view ) ) {
    printLine( out, list.header, []( Field const& field ) { return field.name; } );
    for( Row const& row : list.rows )
        printLine( out, row, [ & ]( Field const& field ) {
            return std::visit( CsvText{ spelling }, field.value.is );
        } );
}

} // namespace Bfri
