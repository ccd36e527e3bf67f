#include "cli/grammar/Request.h"

#include "cli/grammar/ParsedLine.h"
#include "inspect/load/ConfPath.h"
#include "inspect/model/RecordKinds.h"

#include <charconv>

namespace Bfri {

namespace {

void addOption( Request& request, Option const& option, String const& value ) {
    auto const [ former, isFirst ] = request.options.try_emplace( option.name, value );
    if( !isFirst && option.label )
        former->second += ',' + value;
}

void addOptions( Request& request, Word const& word ) {
    for( Option const* const option : word.options ) {
        if( !option->label || word.valueAt )
            addOption( request, *option, option->label ? word.value() : String() );
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

Order orderBy( String const& word ) {
    bool const descending = word.starts_with( '-' );
    return { word.substr( descending ? 1 : 0 ), descending };
}

/// A number too large to be counted is as good as all.
std::size_t countIn( String const& digits ) {
    std::size_t count = RowSelection().most;
    std::from_chars( digits.data(), digits.data() + digits.size(), count );
    return count;
}

/// With several configurations, rows have the one that they are of.
Row withConf( Row blank, bool several ) {
    if( several )
        blank.insert( blank.begin(), { "conf", "" } );
    return blank;
}

} // namespace

RowSelection selectionOf( Request const& request, Row const& blank ) {
    RowSelection choice;
    if( request.has( "--filter" ) )
        choice.filter.emplace( request.option( "--filter" ) );
    if( request.has( "--where" ) )
        choice.where.emplace( request.option( "--where" ), withConf( blank, request.confs > 1 ) );
    if( request.has( "--sort" ) )
        choice.order = orderBy( request.option( "--sort" ) );
    if( request.has( "-n" ) )
        choice.most = countIn( request.option( "-n" ) );
    return choice;
}

Request requestOf( ParsedLine const& line ) {
    Request request{ .command = line.command, .confs = 0 };
    for( Word const& word : line.words ) {
        if( word.role == Role::argument )
            addArgument( request, word );
        addOptions( request, word );
    }
    if( request.has( "--csv" ) )
        request.format = Format::csv;
    if( line.json )
        request.format = Format::json;
    if( line.command->listing )
        request.choice = selectionOf( request, line.command->listing->blank() );
    return request;
}

} // namespace Bfri
