#include "cli/terminal/TextFormat.h"

#include "cli/terminal/Characters.h"
#include "inspect/rows/CsvFormat.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <sstream>

namespace Bfri {

namespace {

struct ShownText {
    String operator()( std::monostate ) const { return "-"; }
    String operator()( bool flag ) const { return flag ? "yes" : "no"; }
    String operator()( U32 number ) const { return std::to_string( number ); }
    String operator()( std::int64_t number ) const { return std::to_string( number ); }
    String operator()( Hex number ) const { return hexText( number.value ); }
    String operator()( String const& text ) const { return text.empty() ? "-" : escapeForTerminal( text ); }
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

String countText( std::size_t number, std::string_view one, std::string_view several ) {
    return fmt::format( "{} {}{}", number, number == 1 || several.empty() ? one : several,
                        number == 1 || !several.empty() ? "" : "s" );
}

TextList::TextList( std::initializer_list<char const*> titles ) {
    for( char const* const title : titles )
        header.push_back( { title, {} } );
}

void TextList::add( std::initializer_list<Value> values ) {
    Row row;
    for( Value const& value : values )
        row.push_back( { header[ row.size() ].name, value } );
    rows.push_back( std::move( row ) );
}

namespace {

bool isNumber( Value const& value ) {
    return std::holds_alternative<U32>( value.is ) || std::holds_alternative<std::int64_t>( value.is );
}

struct GridColumn {
    String title;
    std::size_t width = 0;
    bool hasNumbers = false;
    bool hasTexts = false;

    bool toTheRight() const { return hasNumbers && !hasTexts; }
    bool hasNames() const {
        static constexpr std::string_view titles[] = { "NAME", "TABLE", "OF TABLE", "PARENT", "FIELD" };
        return std::find( std::begin( titles ), std::end( titles ), title ) != std::end( titles );
    }
    /// The width that it has where room is scarce.
    std::size_t least() const {
        constexpr std::size_t readable = 16;
        return hasNames() ? std::min( width, readable ) : width;
    }
};

using Line = std::vector<String>;

String lineOf( Line const& cells, std::vector<GridColumn> const& columns ) {
    String line;
    for( std::size_t i = 0; i < cells.size(); ++i ) {
        String const padding( columns[ i ].width - width( cells[ i ] ), ' ' );
        line += i == 0 ? "" : "  ";
        line += columns[ i ].toTheRight() ? padding + cells[ i ] : cells[ i ] + padding;
    }
    line.erase( line.find_last_not_of( ' ' ) + 1 );
    return line;
}

/// Lines of cells, the columns as wide as their widest.
class Grid {
  public:
    Grid( std::vector<Line> lines, std::vector<GridColumn> columns )
        : lines_( std::move( lines ) ), columns_( std::move( columns ) ) {
        for( Line const& cells : lines_ ) {
            for( std::size_t i = 0; i < cells.size(); ++i )
                columns_[ i ].width = std::max( columns_[ i ].width, width( cells[ i ] ) );
        }
    }

    /// Takes away from columns and names what the terminal has no room for.
    void fit( TerminalStyle const& look ) {
        if( look.columns == 0 || widthOf( columns_.size(), &GridColumn::width ) <= look.columns )
            return;
        eraseAbsent();
        bool const canHoldAll = widthOf( columns_.size(), &GridColumn::least ) <= look.columns;
        if( !canHoldAll )
            makeWayForNames( look );
        shortenNames( canHoldAll ? columns_.size() : columnsWithNames(), look );
    }

    void print( std::ostream& out, TerminalStyle const& look ) const {
        for( Line const& cells : lines_ ) {
            String const line = lineOf( cells, columns_ );
            out << ( look.columns == 0 ? line : cutAtEnd( line, look.columns, look ) ) << '\n';
        }
    }

  private:
    /// The width of the first columns of a line, with the gaps between them.
    template<class Width>
    std::size_t widthOf( std::size_t columns, Width width ) const {
        std::size_t sum = 0;
        for( std::size_t i = 0; i < columns; ++i )
            sum += ( i == 0 ? 0 : 2 ) + std::invoke( width, columns_[ i ] );
        return sum;
    }
    /// The number of columns up to the last one of names.
    std::size_t columnsWithNames() const {
        std::size_t count = columns_.size();
        while( count > 0 && !columns_[ count - 1 ].hasNames() )
            --count;
        return count;
    }
    void erase( std::size_t column ) {
        auto const place = static_cast<std::ptrdiff_t>( column );
        columns_.erase( columns_.begin() + place );
        for( Line& cells : lines_ )
            cells.erase( cells.begin() + place );
    }
    void eraseAbsent() {
        for( std::size_t i = columns_.size(); i-- > 0; ) {
            bool const absent = std::all_of( lines_.begin() + 1, lines_.end(),
                                             [ & ]( Line const& cells ) { return cells[ i ] == "-"; } );
            if( absent && lines_.size() > 1 && columns_[ i ].title != "NAME" )
                erase( i );
        }
    }
    /// From the right, as a cut would take them.
    void makeWayForNames( TerminalStyle const& look ) {
        bool marked = false;
        for( std::size_t i = columnsWithNames();
             i-- > 0 && widthOf( columnsWithNames(), &GridColumn::least ) > look.columns; ) {
            if( columns_[ i ].hasNames() )
                continue;
            if( std::exchange( marked, true ) )
                erase( i + 1 );
            columns_[ i ] = { "", 1 };
            for( Line& cells : lines_ )
                cells[ i ] = look.utf8 ? "\u2026" : ">";
        }
    }
    /// The longest first, so that they end up alike.
    void shortenNames( std::size_t columns, TerminalStyle const& look ) {
        while( widthOf( columns, &GridColumn::width ) > look.columns ) {
            auto const surplus = []( GridColumn const& column ) { return column.width - column.least(); };
            auto const widest = std::max_element(
                columns_.begin(), columns_.end(),
                [ & ]( GridColumn const& a, GridColumn const& b ) { return surplus( a ) < surplus( b ); } );
            if( surplus( *widest ) == 0 )
                break;
            --widest->width;
        }
        for( Line& cells : lines_ ) {
            for( std::size_t i = 0; i < cells.size(); ++i )
                cells[ i ] = cutAtFront( cells[ i ], columns_[ i ].width, look );
        }
    }

    std::vector<Line> lines_; ///< titles first
    std::vector<GridColumn> columns_;
};

} // namespace

String cutAtFront( String const& shownText, std::size_t most, TerminalStyle const& look ) {
    if( width( shownText ) <= most )
        return shownText;
    return ( look.utf8 ? "\u2026" : "<" ) + lastColumns( shownText, most - 1 );
}

String cutAtEnd( String const& shownText, std::size_t most, TerminalStyle const& look ) {
    if( width( shownText ) <= most )
        return shownText;
    return firstColumns( shownText, most - 1 ) + ( look.utf8 ? "\u2026" : ">" );
}

String inLines( String const& text, TerminalStyle const& look ) {
    std::istringstream words( text );
    String lines;
    std::size_t column = 0;
    for( String word; words >> word; ) {
        bool const fits = look.columns == 0 || column + 1 + width( word ) <= look.columns;
        lines += ( lines.empty() ? "" : fits ? " " : "\n" ) + word;
        column = ( fits && column > 0 ? column + 1 : 0 ) + width( word );
    }
    return lines + '\n';
}

namespace {

/// Each row as a block of its own, its fields under the names of the header; nothing of what is absent.
void printBlocks( std::ostream& out, RowList const& list ) {
    for( Row const& row : list.rows ) {
        Row block;
        for( std::size_t i = 0; i < row.size(); ++i ) {
            if( textOf( row[ i ].value ) != "-" )
                block.push_back( { list.header[ i ].name, row[ i ].value } );
        }
        out << ( &row == &list.rows.front() ? "" : "\n" );
        printFields( out, block );
    }
}

} // namespace

void printColumns( std::ostream& out, RowList const& list, TerminalStyle const& look, std::size_t fewest ) {
    if( look.columns > 0 && look.columns < fewest && !list.rows.empty() )
        return printBlocks( out, list );
    std::vector<Line> lines( 1 );
    std::vector<GridColumn> columns;
    for( Field const& field : list.header ) {
        lines.front().emplace_back( field.name );
        columns.push_back( { String( field.name ), 0, isNumber( field.value ) } );
    }
    for( Row const& row : list.rows ) {
        Line& line = lines.emplace_back();
        for( Field const& field : row ) {
            GridColumn& column = columns[ line.size() ];
            column.hasNumbers |= isNumber( field.value );
            column.hasTexts |= std::holds_alternative<String>( field.value.is );
            line.push_back( textOf( field.value ) );
        }
    }
    Grid grid( std::move( lines ), std::move( columns ) );
    grid.fit( look );
    grid.print( out, look );
}

void printFields( std::ostream& out, Row const& row ) {
    std::vector<Line> lines;
    for( Field const& field : row ) {
        lines.push_back( { escapeForTerminal( field.name ), textOf( field.value ) } );
        List const* const list = std::get_if<List>( &field.value.is );
        if( !list || list->empty() || !std::holds_alternative<Row>( list->front().is ) )
            continue;
        lines.back().back() = textOf( list->front() );
        for( auto value = list->begin() + 1; value != list->end(); ++value )
            lines.push_back( { "", textOf( *value ) } );
    }
    Grid const grid( std::move( lines ), std::vector<GridColumn>( 2 ) );
    grid.print( out, {} );
}

void printCsv( Streams const& io, RowList const& list ) {
    printCsv( io.out, list, io.look.columns > 0 ? escapeForTerminal : nullptr );
}

} // namespace Bfri
