#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
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

/// Whether people see a value as "-".
bool isNothing( Value const& value ) {
    auto const* const text = std::get_if<String>( &value.is );
    auto const* const list = std::get_if<List>( &value.is );
    return std::holds_alternative<std::monostate>( value.is ) || ( text && text->empty() ) ||
           ( list && list->empty() );
}

/// The lines of a value, each with the same start.
struct Lines {
    std::ostream& out;
    String const& start;

    void operator()( std::monostate ) const {}
    void operator()( bool flag ) const { out << start << ( flag ? "true\n" : "false\n" ); }
    void operator()( Hex number ) const { out << start << number.value << '\n'; }
    void operator()( String const& text ) const { out << start << escapeForTerminal( text ) << '\n'; }
    void operator()( List const& list ) const {
        for( Value const& value : list )
            std::visit( *this, value.is );
    }
    void operator()( Row const& row ) const {
        for( Field const& field : row )
            std::visit( *this, field.value.is );
    }
    void operator()( auto number ) const { out << start << number << '\n'; }
};

} // namespace

/// The value of the field that the words after the configurations ask for.
std::vector<Row> fieldRows( Configuration const& configuration, Request const& request ) {
    String const* const words = &request.words[ request.confs ];
    RecordKind const& kind = *kindOf( words[ 0 ] );
    String const& field = words[ 2 ];
    auto const rows = kind.rows( configuration.parser() );
    Row const& row = rowMeant( configuration, kind, rows, words[ 1 ] );
    Value const& value = valueOf( row, field );
    if( isNothing( value ) || isNothing( valueOf( rowForPeople( kind.kind, row ), field ) ) )
        throw Failure( ExitStatus::no,
                       fmt::format( "{} '{}' has no {}", kind.one,
                                    escapeForTerminal( valueAs<String>( row, "name" ) ), field ) );
    return { { { "value", value } } };
}

/// With several configurations, each line begins with its own and a tab.
void printValues( Answers&& answers, Request const&, Streams const& io ) {
    for( Row const& row : answers.rows ) {
        String const start =
            answers.areSeveral ? escapeForTerminal( valueAs<String>( row, "conf" ) ) + '\t' : "";
        std::visit( Lines{ io.out, start }, row.back().value.is );
    }
}

} // namespace Bfri
