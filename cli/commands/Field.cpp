#include "cli/commands/Answers.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/model/ActionWord.h"
#include "inspect/model/HandleUses.h"
#include "inspect/model/Kinds.h"
#include "inspect/model/Names.h"
#include "inspect/model/Omissions.h"
#include "inspect/rows/Utf8.h"

#include <set>

namespace Bfri {

namespace {

using Rows = std::vector<Row const*>;

template<class Rule>
Rows chosen( std::vector<Row> const& rows, Rule rule ) {
    Rows some;
    for( Row const& row : rows ) {
        if( rule( row ) )
            some.push_back( &row );
    }
    return some;
}

bool isAction( RecordKind const& kind ) { return kind.word == std::string_view( "actions" ); }

Rows named( std::vector<Row> const& rows, RecordKind const& kind, String const& word,
            Configuration const& configuration ) {
    std::vector<String> names;
    names.reserve( rows.size() );
    for( Row const& row : rows )
        names.push_back( valueAs<String>( row, "name" ) );
    String const name = meantName( names, word, { kind.one, kind.word, kind.word }, [ & ] {
        String why = whyMissing( configuration, word );
        if( why.empty() && isAction( kind ) )
            refuseTableOf( configuration.parser(), word );
        return why;
    } );
    return chosen( rows, [ & ]( Row const& row ) { return valueAs<String>( row, "name" ) == name; } );
}

/// By name; where no record has it, by the words that tell records of one name apart.
Rows rowsMeant( std::vector<Row> const& rows, RecordKind const& kind, String const& word,
                Configuration const& configuration ) {
    auto exact = chosen( rows, [ & ]( Row const& row ) { return valueAs<String>( row, "name" ) == word; } );
    if( !exact.empty() )
        return exact;
    auto const number = handleIn( word );
    auto withHandle = chosen( rows, [ & ]( Row const& row ) {
        auto const* const handle = std::get_if<Hex>( &valueOf( row, "handle" ).is );
        return handle && number == handle->value;
    } );
    if( !withHandle.empty() )
        return withHandle;
    Rows actions;
    if( isAction( kind ) ) {
        for( U32 const place : actionsMeant( configuration.parser(), word ) )
            actions.push_back( &rows.at( place ) );
    }
    return actions.empty() ? named( rows, kind, word, configuration ) : actions;
}

/// What to type for each of several records: of actions also the table, of others the handle.
std::vector<String> wordsFor( Rows const& meant, std::vector<Row> const& rows, RecordKind const& kind,
                              Configuration const& configuration ) {
    std::vector<BfActionInfo const*> actions;
    std::set<String> words;
    for( Row const* const row : meant ) {
        if( isAction( kind ) )
            actions.push_back(
                &configuration.parser().bfActions().at( static_cast<U32>( row - rows.data() ) ) );
        else
            words.insert( textOf( valueOf( *row, "handle" ) ) );
    }
    return isAction( kind ) ? wordsForActions( actions ) : std::vector( words.begin(), words.end() );
}

/// One of each that are the same in every field.
Rows differing( Rows rows ) {
    auto const isLess = []( Row const* a, Row const* b ) { return *a < *b; };
    std::sort( rows.begin(), rows.end(), isLess );
    auto const isSame = [ & ]( Row const* a, Row const* b ) { return !isLess( a, b ); };
    rows.erase( std::unique( rows.begin(), rows.end(), isSame ), rows.end() );
    return rows;
}

Row const& rowMeant( std::vector<Row> const& rows, RecordKind const& kind, String const& word,
                     Configuration const& configuration ) {
    Rows const meant = differing( rowsMeant( rows, kind, word, configuration ) );
    if( meant.size() == 1 )
        return *meant.front();
    auto const words = wordsFor( meant, rows, kind, configuration );
    String const means =
        "'" + escapeForTerminal( word ) + "' means " + std::to_string( meant.size() ) + ' ' + kind.word;
    if( words.size() == meant.size() )
        throw Failure( ExitStatus::no, means + "; say which:", words );
    throw Failure(
        ExitStatus::no,
        means + ", and no word tells all of them apart; 'bfri " + kind.word + "' lists them:", words );
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
    Row const& row = rowMeant( rows, kind, request.words[ 2 ], configuration );
    Value const& value = valueOf( row, field );
    if( isNothing( value ) || isNothing( valueOf( kind.shown ? kind.shown( row ) : row, field ) ) )
        throw Failure( ExitStatus::no, String( kind.one ) + " '" +
                                           escapeForTerminal( valueAs<String>( row, "name" ) ) + "' has no " +
                                           field );
    std::visit( Lines{ io.out }, value.is );
    return ExitStatus::done;
}

} // namespace Bfri
