#include "cli/commands/Answers.h"
#include "cli/commands/Meant.h"
#include "cli/terminal/Characters.h"
#include "cli/terminal/RecordText.h"

#include <fmt/format.h>

namespace Bfri {

namespace {

Row const& rowMeant( Configuration const& configuration, RecordKind const& kind, std::vector<Row> const& rows,
                     String const& word ) {
    RecordFound const found = foundInReadings( word, [ & ]( String const& reading ) {
        return recordFor( configuration.parser(), kind, rows, reading );
    } );
    if( auto const* const row = std::get_if<Row const*>( &found ) )
        return **row;
    if( auto const* const several = std::get_if<SeveralRecords>( &found ) )
        refuse( word, *several );
    refuse( configuration, word, std::get<Meaning>( found ),
            { kind.one, kind.many, kind.many, kind.kind == Kind::actions } );
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
    void operator()( std::int64_t number ) const { out << number << '\n'; }
    void operator()( Hex number ) const { out << number.value << '\n'; }
    void operator()( String const& text ) const { out << escapeForTerminal( text ) << '\n'; }
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

ExitStatus field( Configuration const& configuration, Request const& request, Streams const& io ) {
    RecordKind const& kind = *kindOf( request.words[ 1 ] );
    String const& field = request.words[ 3 ];
    auto const rows = kind.rows( configuration.parser() );
    Row const& row = rowMeant( configuration, kind, rows, request.words[ 2 ] );
    Value const& value = valueOf( row, field );
    if( isNothing( value ) || isNothing( valueOf( rowForPeople( kind.kind, row ), field ) ) )
        throw Failure( ExitStatus::no,
                       fmt::format( "{} '{}' has no {}", kind.one,
                                    escapeForTerminal( valueAs<String>( row, "name" ) ), field ) );
    std::visit( Lines{ io.out }, value.is );
    return ExitStatus::done;
}

} // namespace Bfri
