#include "cli/grammar/Request.h"

#include "cli/grammar/LineParser.h"
#include "inspect/load/ConfPath.h"

#include <charconv>

namespace Bfri {

namespace {

void addOptions( Request& request, Word const& word ) {
    for( Option const* const option : word.options ) {
        if( option->label && !word.valueAt )
            continue; // the next word is the value
        auto const [ former, isFirst ] =
            request.options.try_emplace( option->name, option->label ? word.value() : String() );
        if( !isFirst && option->label )
            former->second += ',' + word.value();
    }
}

/// For a command that takes several configurations, a folder means those in it.
void addArgument( Request& request, Word const& word ) {
    Argument const& first = request.command->arguments.front();
    bool const areConfs = isRepeatable( first.arity ) && first.type.kind == ValueKind::file;
    auto const words = word.argument == &first && areConfs ? configurationsIn( word.text )
                                                           : std::vector<String>{ word.text };
    request.words.insert( request.words.end(), words.begin(), words.end() );
    request.confs += word.argument == &first ? words.size() : 0;
}

/// The selection that the options ask for, among rows with the fields of a blank one.
RowSelection selectionOf( Request const& request, Row const& blank ) {
    RowSelection choice;
    if( request.has( "--filter" ) )
        choice.filter.emplace( request.option( "--filter" ) );
    if( request.has( "--where" ) )
        choice.where = conditionOf( request.option( "--where" ), withConf( blank, "", request.confs > 1 ) );
    if( String const field = request.option( "--sort" ); request.has( "--sort" ) )
        choice.order = { field.substr( field.starts_with( '-' ) ? 1 : 0 ), field.starts_with( '-' ) };
    String const most = request.option( "-n" ); // a number too large to be counted is as good as all
    std::from_chars( most.data(), most.data() + most.size(), choice.most );
    return choice;
}

} // namespace

void choose( std::vector<Row>& rows, RowSelection const& choice ) {
    if( choice.filter )
        std::erase_if( rows, [ & ]( Row const& row ) {
            return !choice.filter->isIn( valueAs<String>( row, "name" ) );
        } );
    if( choice.where )
        std::erase_if( rows, std::not_fn( choice.where ) );
    if( auto const& order = choice.order )
        std::stable_sort( rows.begin(), rows.end(), [ & ]( Row const& a, Row const& b ) {
            Value const& left = valueOf( a, order->field );
            Value const& right = valueOf( b, order->field );
            return order->descending ? right < left : left < right;
        } );
    if( rows.size() > choice.most )
        rows.resize( choice.most );
}

Row withConf( Row row, String const& conf, bool areSeveral ) {
    if( areSeveral )
        row.insert( row.begin(), { "conf", conf } );
    return row;
}

Request requestOf( ParsedLine const& line ) {
    Request request{ .command = line.command, .confs = 0 };
    for( Word const& word : line.words ) {
        if( word.role == Role::argument )
            addArgument( request, word );
        addOptions( request, word );
    }
    request.format = line.json ? Format::json : request.has( "--csv" ) ? Format::csv : Format::text;
    if( line.command->blank )
        request.choice = selectionOf( request, line.command->blank() );
    return request;
}

} // namespace Bfri
