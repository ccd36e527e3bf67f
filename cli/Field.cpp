#include "cli/Answers.h"
#include "cli/Names.h"
#include "cli/Utf8.h"
#include "cli/WrongWord.h"

namespace Bfri {

namespace {

Row const& rowMeant( std::vector<Row> const& rows, Listing const& kind, String const& word,
                     std::ostream& err ) {
    std::vector<String> names;
    names.reserve( rows.size() );
    for( Row const& row : rows )
        names.push_back( valueAs<String>( row, "name" ) );
    String const name = meantName( names, word, { kind.one, kind.word, kind.word } );
    noteSeveral( names, name, kind.word, err );
    auto const first = std::find( names.begin(), names.end(), name ) - names.begin();
    return rows[ static_cast<std::size_t>( first ) ];
}

/// What people see as "-".
bool isNothing( Value const& value ) {
    auto const* const text = std::get_if<String>( &value.is );
    auto const* const list = std::get_if<List>( &value.is );
    return std::holds_alternative<std::monostate>( value.is ) || ( text && text->empty() ) ||
           ( list && list->empty() );
}

/// The lines of a value.
struct Lines {
    std::ostream& out;

    void operator()( std::monostate ) const {}
    void operator()( bool flag ) const { out << ( flag ? "true\n" : "false\n" ); }
    void operator()( U32 number ) const { out << number << '\n'; }
    void operator()( Hex number ) const { out << number.value << '\n'; }
    void operator()( String const& text ) const { out << shown( text ) << '\n'; }
    void operator()( List const& list ) const {
        for( Value const& value : list )
            std::visit( *this, value.is );
    }
    void operator()( Row const& row ) const {
        for( Field const& field : row )
            std::visit( *this, field.value.is );
    }
};

} // namespace

ExitStatus field( Model const& model, Request const& request, Streams const& io ) {
    Listing const& kind = kindMeant( request.words[ 1 ] );
    String const& field = request.words[ 3 ];
    requireField( kind, field );
    auto const rows = kind.rows( *model.parser() );
    Row const& row = rowMeant( rows, kind, request.words[ 2 ], io.err );
    Value const& value = valueOf( row, field );
    if( isNothing( value ) || isNothing( valueOf( kind.shown ? kind.shown( row ) : row, field ) ) )
        throw Failure( ExitStatus::no, String( kind.one ) + " '" + shown( valueAs<String>( row, "name" ) ) +
                                           "' has no " + field );
    std::visit( Lines{ io.out }, value.is );
    return ExitStatus::done;
}

} // namespace Bfri
