#include "cli/grammar/Request.h"

#include "cli/grammar/ParsedLine.h"

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

RowSelection choiceOf( Request const& request ) {
    RowSelection choice;
    if( request.has( "--filter" ) )
        choice.filter.emplace( request.option( "--filter" ) );
    if( request.has( "--sort" ) )
        choice.order = orderBy( request.option( "--sort" ) );
    if( request.has( "-n" ) )
        choice.most = countIn( request.option( "-n" ) );
    return choice;
}

} // namespace

Request requestOf( ParsedLine const& line ) {
    Request request{ .command = line.command };
    for( Word const& word : line.words ) {
        if( word.role == Role::argument )
            request.words.push_back( word.text );
        addOptions( request, word );
    }
    if( request.has( "--csv" ) )
        request.format = Format::csv;
    if( line.json )
        request.format = Format::json;
    if( line.command->listing )
        request.choice = choiceOf( request );
    return request;
}

} // namespace Bfri
