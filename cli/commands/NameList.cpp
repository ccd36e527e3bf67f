#include "cli/commands/Answers.h"
#include "cli/commands/Loading.h"
#include "cli/terminal/Characters.h"
#include "inspect/model/Names.h"

namespace Bfri {

Row blankName() { return { { "name", "" }, { "kinds", List() } }; }

/// A row a name, in the order of their bytes.
std::vector<Row> nameRows( Configuration const& configuration, Request const& request ) {
    RecordKind const* const only = kindOf( std::string_view( request.option( "--kind" ) ) );
    std::map<String, List> kinds;
    for( auto const& [ name, kind ] : namesOfKinds( configuration.parser() ) ) {
        if( !only || kind == only )
            kinds[ name ].emplace_back( kind->one );
    }
    std::vector<Row> rows;
    rows.reserve( kinds.size() );
    for( auto const& [ name, ofName ] : kinds )
        rows.push_back( { { "name", name }, { "kinds", ofName } } );
    return rows;
}

/// With several configurations, names have theirs in front, after a tab.
void printNames( Answers&& answers, Request const& request, Streams const& io ) {
    if( request.format != Format::text )
        return printForPrograms( std::move( answers ), "names", request, io );
    for( Row const& row : answers.rows )
        io.out << ( answers.areSeveral ? escapeForTerminal( valueAs<String>( row, "conf" ) ) + '\t' : "" )
               << escapeForTerminal( valueAs<String>( row, "name" ) ) << '\n';
}

} // namespace Bfri
