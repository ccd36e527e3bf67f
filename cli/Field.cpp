#include "cli/ActionWord.h"
#include "cli/Answers.h"
#include "cli/Bearers.h"
#include "cli/Join.h"
#include "cli/LeftOut.h"
#include "cli/Names.h"
#include "cli/TextFormat.h"
#include "cli/Utf8.h"
#include "cli/WrongWord.h"

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

Rows named( std::vector<Row> const& rows, Listing const& kind, String const& word,
            BfResourceInfo::BfResourceParser const& parser ) {
    std::vector<String> names;
    names.reserve( rows.size() );
    for( Row const& row : rows )
        names.push_back( valueAs<String>( row, "name" ) );
    String const name = meantName( names, word, { kind.one, kind.word, kind.word },
                                   [ & ] { return leftOutOfName( parser, word ); } );
    return chosen( rows, [ & ]( Row const& row ) { return valueAs<String>( row, "name" ) == name; } );
}

/// The actions of a name that one table has.
Rows ofTable( Rows actions, ActionWord const& word ) {
    std::vector<String> tables;
    for( Row const* const action : actions )
        tables.push_back( valueAs<String>( *action, "tableName" ) );
    String const table = word.tableMeant( tables );
    std::erase_if( actions,
                   [ & ]( Row const* action ) { return valueAs<String>( *action, "tableName" ) != table; } );
    return actions;
}

/// By name; where no record has it, by the words that tell records of one name apart.
Rows rowsMeant( std::vector<Row> const& rows, Listing const& kind, String const& word,
                BfResourceInfo::BfResourceParser const& parser ) {
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
    auto const action = kind.word == std::string_view( "actions" ) ? actionWordOf( word ) : std::nullopt;
    return action ? ofTable( named( rows, kind, action->name, parser ), *action )
                  : named( rows, kind, word, parser );
}

/// The words for each of several records: actions by their tables, else by handle.
std::vector<String> wordsFor( Rows const& rows ) {
    std::set<String> words;
    for( Row const* const row : rows ) {
        if( Identity const identity( *row ); identity.table )
            words.insert( identity.name + " of " + *identity.table );
    }
    if( words.size() < rows.size() )
        words.clear();
    for( Row const* const row : rows ) {
        auto const* const handle = std::get_if<Hex>( &valueOf( *row, "handle" ).is );
        if( words.size() < rows.size() && handle )
            words.insert( textOf( *handle ) );
    }
    return { words.begin(), words.end() };
}

Row const& rowMeant( std::vector<Row> const& rows, Listing const& kind, String const& word,
                     BfResourceInfo::BfResourceParser const& parser ) {
    Rows const meant = rowsMeant( rows, kind, word, parser );
    if( meant.size() > 1 )
        throw Failure( ExitStatus::no,
                       "'" + shown( word ) + "' means " + std::to_string( meant.size() ) + ' ' + kind.word +
                           "; say which:",
                       wordsFor( meant ) );
    return *meant.front();
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
    Row const& row = rowMeant( rows, kind, request.words[ 2 ], *model.parser() );
    Value const& value = valueOf( row, field );
    if( isNothing( value ) || isNothing( valueOf( kind.shown ? kind.shown( row ) : row, field ) ) )
        throw Failure( ExitStatus::no, String( kind.one ) + " '" + shown( valueAs<String>( row, "name" ) ) +
                                           "' has no " + field );
    std::visit( Lines{ io.out }, value.is );
    return ExitStatus::done;
}

} // namespace Bfri
